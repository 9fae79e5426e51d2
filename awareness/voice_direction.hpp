// The direction that a voice last came from, parsed from the voice service's texts.
#pragma once

#include "app/run_state/voice_status.hpp"

namespace halcyra {

struct VoiceDirection {
  double angle;    // degrees, negative to the left; NaN or infinite when unreadable
  bool has_angle;  // the angle is a finite number
  bool trusted;    // confidence is a finite number of at least 0.45, and not flagged low
};

// Cannot fail: unreadable texts give a direction without an angle, or one that is not trusted.
VoiceDirection voice_direction(const VoiceStatus& voice);

}  // namespace halcyra
