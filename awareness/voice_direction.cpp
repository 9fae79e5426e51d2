#include "awareness/voice_direction.hpp"

#include <cmath>

#include "probes/text.hpp"

namespace halcyra {
namespace {

constexpr double kLeastConfidence = 0.45;

}  // namespace

VoiceDirection voice_direction(const VoiceStatus& voice) {
  const double confidence = parse_double_or_nan(voice.direction_confidence);
  VoiceDirection direction;
  direction.angle = parse_double_or_nan(voice.direction_angle);
  direction.has_angle = std::isfinite(direction.angle);
  direction.trusted = std::isfinite(confidence) && confidence >= kLeastConfidence &&
                      !voice.direction_low_confidence;
  return direction;
}

}  // namespace halcyra
