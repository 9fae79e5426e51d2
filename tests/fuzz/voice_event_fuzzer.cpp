// The event file of the voice service, compared with a search that knows no expressions, and the
// direction that is read out of its values.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "awareness/direction_zone.hpp"
#include "awareness/voice_direction.hpp"
#include "probes/voice_reports.hpp"
#include "tests/fuzz/requirement.hpp"
#include "tests/fuzz/text_input.hpp"

namespace halcyra {
namespace {

// Where the first byte that is none of these stands, counted from `at`.
std::size_t skip(const std::string& text, std::size_t at, const char* bytes) {
  const std::size_t end = text.find_first_not_of(bytes, at);
  return end == std::string::npos ? text.size() : end;
}

std::string number_after(const std::string& text, const std::string& key) {
  constexpr const char* kWhiteSpace = " \t\n\v\f\r";
  for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at + 1)) {
    const std::size_t colon = skip(text, at + key.size(), kWhiteSpace);
    if (colon == text.size() || text[colon] != ':') continue;
    const std::size_t begin = skip(text, colon + 1, kWhiteSpace);
    const std::size_t end = skip(text, begin, "-0123456789.");
    if (end > begin) return text.substr(begin, end - begin);
  }
  return "unknown";
}

void check_direction(const VoiceStatus& voice) {
  const VoiceDirection direction = voice_direction(voice);
  require(direction.has_angle == std::isfinite(direction.angle), "an angle is finite");
  require(!(direction.trusted && voice.direction_low_confidence), "a flag takes the trust away");
  require((direction_zone(direction.angle) == "unknown") == !direction.has_angle,
          "each angle has a zone");
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra;
  const std::string event = text_of(data, size);
  VoiceStatus voice;
  voice.default_source = "sonmere";
  read_voice_event(event, voice);
  require(voice.direction_angle == number_after(event, "\"direction_angle_degrees\""), "angle");
  require(voice.direction_confidence == number_after(event, "\"direction_confidence\""),
          "confidence");
  require(voice.default_source == "sonmere", "the reports' values are not the event's matter");
  check_direction(voice);
  return 0;
}
