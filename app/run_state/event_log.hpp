// The recent-event log of a run, kept in the status record and shown on the dashboard.
#pragma once

#include <string>

namespace halcyra {

struct RuntimeStatus;

// Puts a new event at the front: the local time as HH:MM:SS, two spaces and the message, unchanged.
// Keeps the 11 newest. Repeated messages are logged again.
void add_event(RuntimeStatus& status, const std::string& message);

}  // namespace halcyra
