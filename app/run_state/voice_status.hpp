// What the Sonmere voice service reported. Texts are kept as it printed them, without white space
// at their ends.
#pragma once

#include <string>

namespace halcyra {

struct VoiceStatus {
  std::string live_processing = "unknown";
  std::string default_source = "unknown";  // the sound server's default input
  std::string mic_presence = "unknown";    // "present" or "not present" after the first refresh
  std::string systemd_user_active = "unknown";
  std::string event_path = "unknown";            // set once the event file was seen
  std::string wav_path = "unknown";              // set once the recording was seen
  std::string direction_angle = "unknown";       // degrees, negative to the left
  std::string direction_confidence = "unknown";  // 0 to 1
  bool direction_low_confidence = false;
  bool live_running = false;
};

}  // namespace halcyra
