// The standard input, output and error of the run, in whatever state it was started with.
#pragma once

namespace halcyra {

// Opens the null device in place of each of the three that is closed; else the first pipe or
// connection of the run would get its number, and what is meant for the stream would be written
// into that. Lets writing to a pipe whose reader has gone fail instead of ending the run by
// SIGPIPE; the commands that the run starts find that signal at its default.
// Must run before anything is opened. Cannot fail; without a null device streams stay closed.
void secure_standard_streams();

}  // namespace halcyra
