// The command lines of the enrolment and of the recorder: the input's lines are the words. NUL
// bytes divide words, too, as no argument can hold one.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "enroll/command_line.hpp"
#include "record/command_line.hpp"
#include "tests/fuzz/requirement.hpp"
#include "tests/fuzz/text_input.hpp"

namespace halcyra {
namespace {

using Words = std::vector<std::string>;

Words words_of(std::string text) {
  std::replace(text.begin(), text.end(), '\0', '\n');
  std::istringstream lines(text);
  Words words;
  for (std::string word; std::getline(lines, word);) words.push_back(word);
  return words;
}

void check_enrolment(const Words& words) {
  std::vector<const char*> arguments = {"halcyra-enroll"};
  for (const std::string& word : words) arguments.push_back(word.c_str());
  EnrollOptions options;
  std::string complaint;
  const auto request =
      parse_enroll_args(static_cast<int>(arguments.size()), arguments.data(), options, complaint);
  require(request.has_value() == complaint.empty(), "what is refused is explained");
  if (request != EnrollRequest::kRun) return;
  require(options.per_pose >= 1 && options.per_pose <= 1000, "per_pose");
  require((options.task == EnrollTask::kFromPictures) == !options.pictures.empty(),
          "pictures are for one task alone");
  require(!options.json || options.task == EnrollTask::kReport, "JSON is for the report");
}

void check_recorder(const Words& words) {
  const record::CommandLine line = record::parse_command_line(words);
  require((line.request == record::Request::kWrongUse) == !line.fault.empty(),
          "what is refused is explained");
  if (line.request != record::Request::kRecord) return;
  const record::RecordOptions& options = line.options;
  require(!options.folder.empty(), "there is a folder");
  require(options.sets >= 1 && options.sets <= record::kMostSets, "sets");
  require(options.seconds <= 86400, "seconds");
  require(options.jpeg_quality >= 1 && options.jpeg_quality <= 100, "jpeg_quality");
  require(std::count(options.streams.begin(), options.streams.end(), true) > 0, "streams");
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto words = halcyra::words_of(halcyra::text_of(data, size));
  halcyra::check_enrolment(words);
  halcyra::check_recorder(words);
  return 0;
}
