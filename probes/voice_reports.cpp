#include "probes/voice_reports.hpp"

#include <re2/re2.h>

#include "probes/first_match.hpp"

namespace halcyra {
namespace {

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace

void read_voice_reports(const std::string& status, const std::string& persistence,
                        VoiceStatus& voice) {
  static const re2::RE2 kLiveProcessing("live_processing: ([^\\n]+)", re2::RE2::Latin1);
  static const re2::RE2 kDefaultSource("default_source: ([^\\n]+)", re2::RE2::Latin1);
  static const re2::RE2 kUserActive("systemd_user_active: ([^\\n]+)", re2::RE2::Latin1);
  voice.live_processing = first_match(status, kLiveProcessing, "unknown");
  voice.default_source = first_match(status, kDefaultSource, "unknown");
  const bool present =
      contains(status, "sonmere_beamformed_mic") || contains(status, "Sonmere Beamformed Mic");
  voice.mic_presence = present ? "present" : "not present";
  voice.systemd_user_active = first_match(persistence, kUserActive, "unknown");
  voice.live_running = contains(voice.live_processing, "running");
}

void read_voice_event(const std::string& event, VoiceStatus& voice) {
  static const re2::RE2 kAngle(R"("direction_angle_degrees"[\s\v]*:[\s\v]*([-0-9.]+))",
                               re2::RE2::Latin1);
  static const re2::RE2 kConfidence(R"("direction_confidence"[\s\v]*:[\s\v]*([-0-9.]+))",
                                    re2::RE2::Latin1);
  voice.direction_angle = first_match(event, kAngle, "unknown");
  voice.direction_confidence = first_match(event, kConfidence, "unknown");
  voice.direction_low_confidence = contains(event, "\"direction_low_confidence\": true");
}

}  // namespace halcyra
