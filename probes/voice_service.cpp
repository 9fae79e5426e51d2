#include "probes/voice_service.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

#include "app/run_state/runtime_status.hpp"
#include "probes/shell_command.hpp"
#include "probes/voice_reports.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

bool is_there(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

// "" unless it is a readable regular file: a pipe would block, and a device might never end.
std::string read_file(const fs::path& path) {
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return "";
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();  // does not throw when reading fails, unlike an iterator
  return text.fail() ? "" : text.str();
}

fs::path state_folder() {
  const char* home = std::getenv("HOME");
  return fs::path(home == nullptr ? "." : home) / ".local/state/halcyra";
}

}  // namespace

void refresh_voice(RuntimeStatus& status) {
  VoiceStatus& voice = status.voice;
  const std::string report = run_capture(kVoiceControlScript + std::string(" status"));
  const std::string persistence =
      run_capture(kVoiceControlScript + std::string(" persistence-status"));
  read_voice_reports(report, persistence, voice);
  const fs::path folder = state_folder();
  const fs::path event_file = folder / "first-run-event.json";
  const fs::path recording = folder / "first-run-beamformed.wav";
  if (is_there(recording)) voice.wav_path = recording.string();
  if (!is_there(event_file)) return;
  voice.event_path = event_file.string();
  read_voice_event(read_file(event_file), voice);
}

}  // namespace halcyra
