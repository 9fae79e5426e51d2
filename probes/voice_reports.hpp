// Parses what the Sonmere voice service writes: the two reports of its control script and the file
// with its latest event. Runs nothing and opens nothing.
#pragma once

#include <string>

#include "app/run_state/voice_status.hpp"

namespace halcyra {

// Sets `live_processing`, `live_running`, `default_source`, `mic_presence` and
// `systemd_user_active` from the answers to "status" and "persistence-status". The texts may hold
// any bytes; a missing key reads as "unknown".
void read_voice_reports(const std::string& status, const std::string& persistence,
                        VoiceStatus& voice);

// Sets `direction_angle`, `direction_confidence` and `direction_low_confidence` from the text of
// the event file, which may hold any bytes and need not be JSON. A direction whose key is missing,
// or not followed by minus signs, digits or points, reads as "unknown".
void read_voice_event(const std::string& event, VoiceStatus& voice);

}  // namespace halcyra
