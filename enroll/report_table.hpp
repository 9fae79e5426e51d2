// The report on samples as a person reads it.
#pragma once

#include <ostream>

#include "enroll/sample_report.hpp"

namespace halcyra {

// A row for each sample, a row for each stage, and what should be done. With usual file names no
// line is longer than 100 characters. Of a report with a complaint only that is written.
void write_report_table(std::ostream& out, const SampleReport& report);

}  // namespace halcyra
