// What the person in front of the camera is told to do.
#pragma once

#include <string>

#include "enroll/enrolment_progress.hpp"
#include "enroll/sample_taker.hpp"

namespace halcyra {

// One sentence for each obstacle, quality verdict and asked pose; never empty.
std::string instruction(const EnrolmentProgress& progress, const Observation& observation,
                        const Judgement& judgement);

}  // namespace halcyra
