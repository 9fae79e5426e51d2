#include "probes/assistant_service.hpp"

#include <string>

#include "app/runtime_status.hpp"
#include "probes/shell_command.hpp"
#include "probes/text.hpp"

namespace halcyra {
namespace {

std::string unit_state(const std::string& command) {
  const std::string answer = run_capture(command);
  return answer.empty() ? "unknown" : trim(answer);
}

}  // namespace

void refresh_corvane(RuntimeStatus& status) {
  CorvaneStatus& corvane = status.corvane;
  corvane.user_state = unit_state("systemctl --user is-active corvane.service");
  corvane.system_state = unit_state("systemctl is-active corvane.service");

  const bool active = corvane.user_state == "active" || corvane.system_state == "active";
  const bool default_is_voice = status.voice.default_source.find("sonmere") != std::string::npos;
  const bool mic_present = status.voice.mic_presence == "present";
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
