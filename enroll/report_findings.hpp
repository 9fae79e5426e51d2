// What should be done about the samples of a report.
#pragma once

#include <cstddef>
#include <vector>

#include "enroll/sample_report.hpp"

namespace halcyra {

// By the index of the sample that is taken for the face in view, then by that of the sample it is
// compared with; infinite where either of the two cannot be decoded.
using DistanceTable = std::vector<std::vector<double>>;

// The findings about a report that holds everything else, the most urgent first.
std::vector<Finding> find_faults(const SampleReport& report, const DistanceTable& distances);

}  // namespace halcyra
