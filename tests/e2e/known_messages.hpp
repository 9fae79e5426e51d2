// The event messages that the tests can read off the dashboard.
#pragma once

#include <string>
#include <vector>

namespace halcyra {

// Every message with a fixed wording, and those with a number or name as the tests meet them.
std::vector<std::string> known_messages();

}  // namespace halcyra
