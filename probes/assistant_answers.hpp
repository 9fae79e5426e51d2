// Interprets the answers of the two service managers about the Corvane assistant. Runs nothing.
#pragma once

#include <string>

#include "app/run_state/corvane_status.hpp"
#include "app/run_state/voice_status.hpp"

namespace halcyra {

// Rewrites `corvane` from the answers of the user's and of the system's service manager, which may
// hold any bytes, and from the microphone in `voice`. An empty answer reads as "unknown".
void read_assistant_answers(const std::string& user_answer, const std::string& system_answer,
                            const VoiceStatus& voice, CorvaneStatus& corvane);

}  // namespace halcyra
