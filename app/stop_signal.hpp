// Lets Ctrl-C and its like end a run in order.
#pragma once

namespace halcyra {

// From now on the first SIGINT, SIGTERM or SIGHUP only asks for the end; the same signal once more
// ends the process at once. SIGHUP stays ignored where it is, as under nohup. SIGINT does not:
// shells ignore it for what a script starts in the background, which should still end in order when
// the script says so. Also lets a write beyond the permitted size of files fail, where SIGXFSZ
// would end the process.
void watch_stop_signals();

// Whether the end was asked for.
bool stop_requested();

}  // namespace halcyra
