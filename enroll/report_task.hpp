// Runs halcyra-enroll's task to report on the samples that are there.
#pragma once

#include "enroll/enroll_options.hpp"

namespace halcyra {

// Writes the report to standard output, as a table or as JSON, and the contact sheet if one is
// asked for. Returns the exit status: 0 if nothing needs to be done about the samples, otherwise 1.
// It is also 1, with a sentence on standard error, if there is nothing to report on or if the sheet
// cannot be written. JSON is written even if there is nothing to report on.
int report_on_folder(const EnrollOptions& options);

}  // namespace halcyra
