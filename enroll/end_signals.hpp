// Lets Ctrl-C and SIGTERM end a run in good order.
#pragma once

namespace halcyra {

// From now on SIGINT and SIGTERM are only remembered. For one of the two that the process was
// started to ignore, nothing changes.
void catch_end_signals();

// Whether one of them has arrived.
bool end_was_signalled();

}  // namespace halcyra
