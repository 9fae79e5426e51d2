// One run of the recorder, from the command line to the exit status.
#pragma once

namespace halcyra::record {

// Records until the end that the command line asks for, or until a signal. Returns 0 then, 2 for
// wrong use, and 1 for anything that keeps the recording from starting or ends it early. Each of
// these is said in a sentence on standard error. A recording with at least one set is summed up in
// a sentence on standard output, however it ended; without any, nothing of it is left.
int run_recorder(int argc, const char* const* argv);

}  // namespace halcyra::record
