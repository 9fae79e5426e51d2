// Takes samples from the sensor, with a window that says what to do.
#pragma once

#include "enroll/enroll_options.hpp"

namespace halcyra {

// Runs until the person ends it, then judges all samples of the folder. Each sample taken or taken
// back is told in a line on standard output. Returns the exit status: 0 if the samples are good, 1
// if they are not, or if something failed; a failure is told in one sentence on standard error.
int enroll_live(const EnrollOptions& options);

}  // namespace halcyra
