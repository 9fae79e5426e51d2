// Whether the Corvane assistant is active, and whether it hears through the Sonmere microphone.
#pragma once

#include <string>

namespace halcyra {

struct CorvaneStatus {
  std::string user_state = "unknown";    // answer of the user's service manager
  std::string system_state = "unknown";  // answer of the system's service manager
  std::string mic_routing = "unknown";
  std::string warning = "not evaluated";
};

}  // namespace halcyra
