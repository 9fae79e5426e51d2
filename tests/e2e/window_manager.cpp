#include "tests/e2e/window_manager.hpp"

#include <stdexcept>

#include "tests/e2e/waiting.hpp"
#include "tests/e2e/x_desktop.hpp"

namespace halcyra {

WindowManager::WindowManager(const XServer& server, const Stage& stage) {
  ProcessStart start;
  start.executable = "openbox";
  start.arguments = {"--sm-disable"};
  start.environment = {
      {"DISPLAY", server.display()}, {"HOME", stage.home().string()}, {"PATH", "/usr/bin:/bin"}};
  process_ = std::make_unique<ChildProcess>(start);
  XDesktop desktop(server.display());
  if (!wait_until([&desktop] { return desktop.windows_are_managed(); })) {
    throw std::runtime_error("the window manager did not start");
  }
}

}  // namespace halcyra
