#include "probes/assistant_answers.hpp"

#include "probes/text.hpp"

namespace halcyra {
namespace {

std::string unit_state(const std::string& answer) {
  return answer.empty() ? "unknown" : trim(answer);
}

}  // namespace

void read_assistant_answers(const std::string& user_answer, const std::string& system_answer,
                            const VoiceStatus& voice, CorvaneStatus& corvane) {
  corvane.user_state = unit_state(user_answer);
  corvane.system_state = unit_state(system_answer);

  const bool active = corvane.user_state == "active" || corvane.system_state == "active";
  const bool default_is_voice = voice.default_source.find("sonmere") != std::string::npos;
  const bool mic_present = voice.mic_presence == "present";
  corvane.mic_routing =
      mic_present && default_is_voice ? "likely yes" : "not through Sonmere default";
  if (active && !default_is_voice) {
    corvane.warning = "Corvane active but default mic is not Sonmere";
  } else if (mic_present) {
    corvane.warning = "no active warning";
  } else {
    corvane.warning = "Sonmere Beamformed Mic is not present";
  }
}

}  // namespace halcyra
