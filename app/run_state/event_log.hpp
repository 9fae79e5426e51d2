// The recent-event log of a run, kept in the status record and shown on the dashboard.
#pragma once

#include <string>

namespace halcyra {

struct RuntimeStatus;

// Puts the local time as HH:MM:SS, two spaces and the message at the front of the events and drops
// the oldest beyond 11. Takes the message as it is; callers decide when to log. Cannot fail.
void add_event(RuntimeStatus& status, const std::string& message);

}  // namespace halcyra
