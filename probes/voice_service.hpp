// Asks the Sonmere voice service how it is and where it last heard a voice.
//
// Its state files lie in .local/state/halcyra under the home folder ($HOME, or the working folder
// when that is not set).
#pragma once

namespace halcyra {

struct RuntimeStatus;

// Relative to the working folder; takes a verb as its argument.
constexpr char kVoiceControlScript[] = "./install/sonmerectl";

// Rewrites `status.voice`, blocking while the control script runs. A missing script or key reads as
// "unknown"; the direction and the paths keep their last values while the event file is missing.
void refresh_voice(RuntimeStatus& status);

}  // namespace halcyra
