#include "tests/e2e/desktop_run.hpp"

#include <algorithm>
#include <stdexcept>

#include "tests/e2e/known_messages.hpp"
#include "tests/e2e/waiting.hpp"

namespace halcyra {
namespace {

ProgramStart on_display(ProgramStart start, const std::string& display) {
  start.display = display;
  return start;
}

}  // namespace

std::vector<std::string> in_readable_window(const std::vector<std::string>& more) {
  std::vector<std::string> arguments = {"--width", "1440",         "--height",
                                        "1080",    "--font-scale", "0.86"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

DesktopRun::DesktopRun(const Stage& stage, const ProgramStart& start)
    : DesktopRun(stage, start, std::make_unique<XServer>()) {}

DesktopRun::DesktopRun(const Stage& stage, const ProgramStart& start,
                       std::unique_ptr<XServer> own_server)
    : DesktopRun(stage, *own_server, start) {
  own_server_ = std::move(own_server);
}

DesktopRun::DesktopRun(const Stage& stage, const XServer& server, const ProgramStart& start)
    : reader_{kFontScale, known_messages(), std::time(nullptr)},
      program_(stage, on_display(start, server.display())),
      desktop_(server.display()) {
  if (!desktop_.find_window()) {
    throw std::runtime_error("no window; standard error: " + program_.errors());
  }
}

void DesktopRun::expect_messages(const std::vector<std::string>& messages) {
  reader_.messages.insert(reader_.messages.end(), messages.begin(), messages.end());
}

std::vector<std::string> DesktopRun::messages() {
  const cv::Mat picture = desktop_.screenshot();
  return picture.empty() ? std::vector<std::string>() : messages_of(reader_.lines(picture));
}

bool DesktopRun::wait_for_messages(
    const std::function<bool(const std::vector<std::string>& messages)>& condition) {
  return wait_until([&] { return condition(messages()); });
}

bool DesktopRun::wait_for_message(const std::string& message) {
  return wait_for_messages([&](const std::vector<std::string>& shown) {
    return std::find(shown.begin(), shown.end(), message) != shown.end();
  });
}

std::string DesktopRun::wait_for(ExpectedDashboard expected) {
  expected.from = started();
  std::string last_difference;
  wait_until([&] {
    last_difference = difference(desktop_.screenshot(), expected);
    return last_difference.empty();
  });
  return last_difference;
}

bool DesktopRun::quit() {
  desktop_.press("q");
  const std::optional<ProcessEnd> end = program_.wait_for_end();
  return end && end->exit_status == 0;
}

}  // namespace halcyra
