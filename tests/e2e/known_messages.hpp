// The event messages that the tests can read off the dashboard.
#pragma once

#include <string>
#include <vector>

namespace halcyra {

// Every message with a fixed wording, and the variants of the others that the tests need.
std::vector<std::string> known_messages();

}  // namespace halcyra
