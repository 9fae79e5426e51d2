// The report on samples as a program reads it.
#pragma once

#include <ostream>

#include "enroll/sample_report.hpp"

namespace halcyra {

// One JSON object, in UTF-8, indented, with a line feed at the end. Bytes of names that are not
// UTF-8 become U+FFFD.
void write_report_json(std::ostream& out, const SampleReport& report);

}  // namespace halcyra
