#include "app/key_commands.hpp"

#include <string>

#include "app/run_state/event_log.hpp"
#include "app/run_state/runtime_status.hpp"
#include "app/run_state/views.hpp"
#include "probes/assistant_service.hpp"
#include "probes/shell_command.hpp"
#include "probes/voice_service.hpp"

namespace halcyra {
namespace {

constexpr int kTab = 9;
constexpr int kEscape = 27;

// The view that a key selects, null for other keys.
const char* view_for_key(int key) {
  switch (key) {
    case '1':
      return "rgb";
    case '2':
    case 'i':
    case 'I':
      return "ir";
    case '3':
    case 'd':
    case 'D':
      return "depth";
    case '4':
      return "skeletal";
    case '5':
    case 'a':
    case 'A':
      return "combo";
    case '6':
    case 'o':
    case 'O':
      return "room_overview";
    case '7':
    case 'f':
    case 'F':
      return "follow";
    default:
      return nullptr;
  }
}

void show_view(const char* view, Options& options, RuntimeStatus& status) {
  select_view(options, view, false);
  options.debug = false;
  add_event(status, "Current view: " + view_label(options.view));
}

void toggle(bool& flag, const std::string& name, RuntimeStatus& status) {
  flag = !flag;
  add_event(status, name + (flag ? " enabled" : " disabled"));
}

void refresh_services(RuntimeStatus& status) {
  refresh_voice(status);
  refresh_corvane(status);
  add_event(status, "Status refreshed");
}

void drive_voice_service(const std::string& verb, const std::string& event, RuntimeStatus& status) {
  run_action(kVoiceControlScript + (" " + verb));
  refresh_voice(status);
  add_event(status, event);
}

void handle_command_key(int key, Options& options, RuntimeStatus& status) {
  switch (key) {
    case kTab:
      return add_event(status, "Target cycle requested: " + status.room.target);
    case 'b':
    case 'B':
      return toggle(options.debug, "Debug boxes/detail", status);
    case 'm':
    case 'M':
      return toggle(options.mic_hud, "Mic HUD", status);
    case 'v':
    case 'V':
      return refresh_services(status);
    case 'k':
    case 'K':
      return drive_voice_service("start", "Sonmere start requested", status);
    case 't':
    case 'T':
      return drive_voice_service("stop", "Sonmere stop requested", status);
    case 'x':
    case 'X':
      return drive_voice_service("make-default", "Default mic change requested", status);
    case 'z':
    case 'Z':
      return drive_voice_service("restore-default", "Default mic restore requested", status);
    default:
      return;
  }
}

}  // namespace

bool handle_key(int key, Options& options, RuntimeStatus& status) {
  if (key == 'q' || key == 'Q' || key == kEscape) return false;
  if (const char* view = view_for_key(key)) {
    show_view(view, options, status);
  } else {
    handle_command_key(key, options, status);
  }
  return true;
}

}  // namespace halcyra
