// The two reports of the voice service, compared with a search that knows no expressions.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "probes/text.hpp"
#include "probes/voice_reports.hpp"
#include "tests/fuzz/requirement.hpp"
#include "tests/fuzz/text_input.hpp"

namespace halcyra {
namespace {

// What follows the first `label` that anything follows, up to the end of the line.
std::string value_after(const std::string& text, const std::string& label) {
  for (std::size_t at = text.find(label); at != std::string::npos; at = text.find(label, at + 1)) {
    const std::size_t begin = at + label.size();
    if (begin == text.size() || text[begin] == '\n') continue;
    return trim(text.substr(begin, text.find('\n', begin) - begin));
  }
  return "unknown";
}

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

void check(const std::string& status, const std::string& persistence, const VoiceStatus& voice) {
  require(voice.live_processing == value_after(status, "live_processing: "), "live_processing");
  require(voice.default_source == value_after(status, "default_source: "), "default_source");
  require(voice.systemd_user_active == value_after(persistence, "systemd_user_active: "),
          "systemd_user_active");
  const bool present =
      contains(status, "sonmere_beamformed_mic") || contains(status, "Sonmere Beamformed Mic");
  require(voice.mic_presence == (present ? "present" : "not present"), "mic_presence");
  require(voice.live_running == contains(voice.live_processing, "running"), "live_running");
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra;
  const std::vector<std::string> reports = texts_of(data, size, 2);
  VoiceStatus voice;
  voice.direction_angle = "12";
  read_voice_reports(reports[0], reports[1], voice);
  check(reports[0], reports[1], voice);
  require(voice.direction_angle == "12", "the direction is not the reports' matter");
  return 0;
}
