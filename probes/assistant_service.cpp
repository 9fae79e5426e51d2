#include "probes/assistant_service.hpp"

#include <string>

#include "app/run_state/runtime_status.hpp"
#include "probes/assistant_answers.hpp"
#include "probes/shell_command.hpp"

namespace halcyra {

void refresh_corvane(RuntimeStatus& status) {
  const std::string user_answer = run_capture("systemctl --user is-active corvane.service");
  const std::string system_answer = run_capture("systemctl is-active corvane.service");
  read_assistant_answers(user_answer, system_answer, status.voice, status.corvane);
}

}  // namespace halcyra
