// A run of the program in a window, as a person sees and drives it.
#pragma once

#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/event_transcript.hpp"
#include "tests/e2e/expected_dashboard.hpp"
#include "tests/e2e/program.hpp"
#include "tests/e2e/x_desktop.hpp"
#include "tests/e2e/x_server.hpp"

namespace halcyra {

// A window in which the whole event log can be read.
constexpr int kWidth = 1440;
constexpr int kHeight = 1080;
constexpr double kFontScale = 0.86;

// The options for such a window, followed by `more`.
std::vector<std::string> in_readable_window(const std::vector<std::string>& more);

class DesktopRun {
 public:
  // On an X server of its own. Waits for the window; throws when it does not appear.
  DesktopRun(const Stage& stage, const ProgramStart& start);

  // The same on a given X server, which must outlive the run.
  DesktopRun(const Stage& stage, const XServer& server, const ProgramStart& start);

  Program& program() { return program_; }
  XDesktop& desktop() { return desktop_; }

  // Adds messages that this run may log in addition to known_messages().
  void expect_messages(const std::vector<std::string>& messages);

  // The messages in the event panel, newest first.
  std::vector<std::string> messages();

  // Waits until the messages fulfil the condition. False: they did not before the deadline.
  bool wait_for_messages(
      const std::function<bool(const std::vector<std::string>& messages)>& condition);
  bool wait_for_message(const std::string& message);

  // Waits for exactly this dashboard. Returns "" once it is shown, else the last difference.
  std::string wait_for(ExpectedDashboard expected);

  // Presses q and waits for the end. False: the program did not end with status 0.
  bool quit();

  std::time_t started() const { return reader_.from; }

 private:
  DesktopRun(const Stage& stage, const ProgramStart& start, std::unique_ptr<XServer> own_server);

  std::unique_ptr<XServer> own_server_;
  EventReader reader_;
  Program program_;
  XDesktop desktop_;
};

}  // namespace halcyra
