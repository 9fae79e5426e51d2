#include "probes/voice_service.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

#include <re2/re2.h>

#include "app/runtime_status.hpp"
#include "probes/shell_command.hpp"
#include "probes/text.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

bool is_there(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

// "" for anything but a readable file: a pipe would block and a device might never end.
std::string read_file(const fs::path& path) {
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return "";
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();  // unlike an iterator, does not throw when reading fails
  return text.fail() ? "" : text.str();
}

fs::path state_folder() {
  const char* home = std::getenv("HOME");
  return fs::path(home == nullptr ? "." : home) / ".local/state/halcyra";
}

void read_reports(VoiceStatus& voice) {
  static const re2::RE2 kLiveProcessing("live_processing: ([^\\n]+)", re2::RE2::Latin1);
  static const re2::RE2 kDefaultSource("default_source: ([^\\n]+)", re2::RE2::Latin1);
  static const re2::RE2 kUserActive("systemd_user_active: ([^\\n]+)", re2::RE2::Latin1);
  const std::string status = run_capture("./install/sonmerectl status");
  const std::string persistence = run_capture("./install/sonmerectl persistence-status");
  voice.live_processing = first_match(status, kLiveProcessing, "unknown");
  voice.default_source = first_match(status, kDefaultSource, "unknown");
  const bool present =
      contains(status, "sonmere_beamformed_mic") || contains(status, "Sonmere Beamformed Mic");
  voice.mic_presence = present ? "present" : "not present";
  voice.systemd_user_active = first_match(persistence, kUserActive, "unknown");
  voice.live_running = contains(voice.live_processing, "running");
}

void read_direction(VoiceStatus& voice, const fs::path& event_file) {
  static const re2::RE2 kAngle(R"("direction_angle_degrees"[\s\v]*:[\s\v]*([-0-9.]+))",
                               re2::RE2::Latin1);
  static const re2::RE2 kConfidence(R"("direction_confidence"[\s\v]*:[\s\v]*([-0-9.]+))",
                                    re2::RE2::Latin1);
  const std::string text = read_file(event_file);
  voice.direction_angle = first_match(text, kAngle, "unknown");
  voice.direction_confidence = first_match(text, kConfidence, "unknown");
  voice.direction_low_confidence = contains(text, "\"direction_low_confidence\": true");
}

}  // namespace

void refresh_voice(RuntimeStatus& status) {
  VoiceStatus& voice = status.voice;
  read_reports(voice);
  const fs::path folder = state_folder();
  const fs::path event_file = folder / "first-run-event.json";
  const fs::path recording = folder / "first-run-beamformed.wav";
  if (is_there(recording)) voice.wav_path = recording.string();
  if (!is_there(event_file)) return;
  voice.event_path = event_file.string();
  read_direction(voice, event_file);
}

}  // namespace halcyra
