// Makes the run independent of the state of its standard input, output and error.
#pragma once

namespace halcyra {

// Opens the null device for each of the three that is closed. Otherwise the first pipe or
// connection of the run would get its number, and output meant for the stream would be written
// there. Also lets a write to a pipe without a reader fail, where SIGPIPE would end the run;
// commands that the run starts have the default action for that signal. Must run before anything is
// opened. Cannot fail; without a null device the streams stay closed.
void secure_standard_streams();

}  // namespace halcyra
