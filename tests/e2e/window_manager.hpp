// A window manager on an X server of the test's own.
#pragma once

#include <memory>

#include "tests/e2e/child_process.hpp"
#include "tests/e2e/stage.hpp"
#include "tests/e2e/x_server.hpp"

namespace halcyra {

class WindowManager {
 public:
  // Waits until it manages windows; throws when it does not.
  WindowManager(const XServer& server, const Stage& stage);

 private:
  std::unique_ptr<ChildProcess> process_;
};

}  // namespace halcyra
