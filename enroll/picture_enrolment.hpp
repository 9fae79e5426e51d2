// Runs halcyra-enroll's task to take samples from picture files.
#pragma once

#include "enroll/enroll_options.hpp"

namespace halcyra {

// Takes a sample from each picture that shows exactly one face, if the quality gate accepts the
// face and it is not a near-copy of a sample that is already there. Faces are searched at the
// picture's own size with the dashboard's settings, so a face of many megapixels is cut out whole.
// The pose is that in which the face was found. All such pictures are taken, whatever
// `options.per_pose` says.
//
// Writes a line for each file to standard output, then the report on all samples. If only standard
// error is a terminal, the progress stands there. The exit status: 0 if every name given could be
// opened and nothing needs to be done about the samples afterwards, otherwise 1. It is 1, with a
// sentence on standard error, if the cascades cannot be used, samples cannot be written, or there
// is no file to read.
int enroll_from_pictures(const EnrollOptions& options);

}  // namespace halcyra
