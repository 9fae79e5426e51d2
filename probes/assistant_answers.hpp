// Judges what the two service managers answered about the Corvane assistant. Asks nobody itself.
#pragma once

#include <string>

#include "app/run_state/corvane_status.hpp"
#include "app/run_state/voice_status.hpp"

namespace halcyra {

// Rewrites `corvane` from the answers of the user's and of the system's service manager, which may
// hold any bytes, and from the microphone that `voice` tells of. An empty answer reads as
// "unknown".
void read_assistant_answers(const std::string& user_answer, const std::string& system_answer,
                            const VoiceStatus& voice, CorvaneStatus& corvane);

}  // namespace halcyra
