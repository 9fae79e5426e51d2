// Asks the Sonmere voice service for its state and for the direction of the last voice.
//
// Its state files lie in .local/state/halcyra under the home folder ($HOME, or the working folder
// when that is not set).
#pragma once

namespace halcyra {

struct RuntimeStatus;

// Relative to the working folder; takes a verb as its argument.
constexpr char kVoiceControlScript[] = "./install/sonmerectl";

// Updates `status.voice`; blocks while the control script runs. With a missing script or key its
// values are "unknown", the microphone "not present". While the event file is missing, the
// direction keeps its last value; each path keeps its last value while its file is missing.
void refresh_voice(RuntimeStatus& status);

}  // namespace halcyra
