// What the service managers answer about the assistant, with whatever the voice service said.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "probes/assistant_answers.hpp"
#include "probes/text.hpp"
#include "tests/fuzz/requirement.hpp"
#include "tests/fuzz/text_input.hpp"

namespace halcyra {
namespace {

void check_state(const std::string& state, const std::string& answer) {
  require(state == (answer.empty() ? "unknown" : trim(answer)), "a state is the answer, trimmed");
}

bool is_known_warning(const std::string& warning) {
  return warning == "Corvane active but default mic is not Sonmere" ||
         warning == "no active warning" || warning == "Sonmere Beamformed Mic is not present";
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra;
  const std::vector<std::string> texts = texts_of(data, size, 4);
  VoiceStatus voice;
  voice.default_source = texts[2];
  voice.mic_presence = texts[3];
  CorvaneStatus corvane;
  read_assistant_answers(texts[0], texts[1], voice, corvane);
  check_state(corvane.user_state, texts[0]);
  check_state(corvane.system_state, texts[1]);
  const bool likely = corvane.mic_routing == "likely yes";
  require(likely || corvane.mic_routing == "not through Sonmere default", "mic_routing");
  require(is_known_warning(corvane.warning), "warning");
  require(!likely || corvane.warning == "no active warning", "a good route gives no warning");
  return 0;
}
