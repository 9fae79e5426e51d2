#include "enroll/command_line.hpp"

#include <array>
#include <charconv>
#include <set>
#include <vector>

namespace halcyra {
namespace {

using Words = std::vector<std::string>;

bool is_option(const std::string& word) { return word.size() > 1 && word.front() == '-'; }

// Each setter returns a complaint, empty if the value is good.
std::string set_text(std::string& option, const std::string& value) {
  option = value;
  return "";
}

std::string set_per_pose(EnrollOptions& options, const std::string& value) {
  std::int32_t number = 0;
  const char* const end = value.data() + value.size();
  const auto read = std::from_chars(value.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end || number < 1 || number > 1000) {
    return "--per-pose takes a number from 1 to 1000, not \"" + value + "\".";
  }
  options.per_pose = number;
  return "";
}

std::string set_sheet(EnrollOptions& options, const std::string& value) {
  const std::size_t ending = std::string(".png").size();
  if (value.size() <= ending || value.substr(value.size() - ending) != ".png") {
    return "--sheet takes a file that ends in .png, not \"" + value + "\".";
  }
  return set_text(options.sheet, value);
}

struct ValueOption {
  const char* name;
  std::string (*apply)(EnrollOptions& options, const std::string& value);
};

std::string set_samples_dir(EnrollOptions& options, const std::string& value) {
  return set_text(options.pipeline.samples_dir, value);
}

std::string set_cascade(EnrollOptions& options, const std::string& value) {
  return set_text(options.pipeline.cascade_path, value);
}

std::string set_profile_cascade(EnrollOptions& options, const std::string& value) {
  return set_text(options.pipeline.profile_cascade_path, value);
}

constexpr std::array<ValueOption, 5> kValueOptions = {{
    {"--per-pose", set_per_pose},
    {"--samples-dir", set_samples_dir},
    {"--cascade", set_cascade},
    {"--profile-cascade", set_profile_cascade},
    {"--sheet", set_sheet},
}};

struct Switch {
  const char* name;
  void (*apply)(EnrollOptions& options);
};

constexpr std::array<Switch, 3> kSwitches = {{
    {"--report", [](EnrollOptions& o) { o.task = EnrollTask::kReport; }},
    {"--json", [](EnrollOptions& o) { o.json = true; }},
    {"--fullscreen", [](EnrollOptions& o) { o.fullscreen = true; }},
}};

// Takes all words from `next` up to the next option.
std::string take_pictures(const Words& words, std::size_t& next, EnrollOptions& options) {
  const std::size_t first = next;
  for (; next < words.size() && !is_option(words[next]); ++next) {
    if (words[next].empty()) return "--from takes files and folders, not an empty name.";
    options.pictures.push_back(words[next]);
  }
  if (next == first) return "--from takes at least one file or folder.";
  options.task = EnrollTask::kFromPictures;
  return "";
}

// Reads the option `name`, whose values begin at `next`, and moves `next` behind them. Returns a
// complaint, empty if all is well.
std::string read_option(const std::string& name, const Words& words, std::size_t& next,
                        EnrollOptions& options) {
  if (name == "--from") return take_pictures(words, next, options);
  for (const Switch& known : kSwitches) {
    if (name != known.name) continue;
    known.apply(options);
    return "";
  }
  for (const ValueOption& known : kValueOptions) {
    if (name != known.name) continue;
    if (next >= words.size() || words[next].empty()) return name + " needs a value.";
    return known.apply(options, words[next++]);
  }
  return "There is no option \"" + name + "\".";
}

// A complaint if options were given that do not go together, else empty.
std::string conflict(const std::set<std::string>& given) {
  const auto has = [&](const char* name) { return given.count(name) != 0; };
  if (has("--report")) {
    for (const char* other : {"--from", "--fullscreen", "--cascade", "--profile-cascade"}) {
      if (has(other)) return std::string(other) + " does not go with --report.";
    }
    return "";
  }
  for (const char* other : {"--json", "--sheet"}) {
    if (has(other)) return std::string(other) + " only goes with --report.";
  }
  if (has("--from") && has("--fullscreen")) return "--fullscreen does not go with --from.";
  return "";
}

}  // namespace

std::optional<EnrollRequest> parse_enroll_args(int argc, const char* const* argv,
                                               EnrollOptions& options, std::string& complaint) {
  Words words;
  for (int i = 1; i < argc; ++i) words.emplace_back(argv[i]);
  std::set<std::string> given;
  for (std::size_t next = 0; next < words.size();) {
    const std::string name = words[next++];
    if (name == "--help" || name == "-h") return EnrollRequest::kShowHelp;
    if (name == "--version") return EnrollRequest::kShowVersion;
    complaint = read_option(name, words, next, options);
    if (!complaint.empty()) return std::nullopt;
    given.insert(name);
  }
  complaint = conflict(given);
  if (!complaint.empty()) return std::nullopt;
  return EnrollRequest::kRun;
}

void write_enroll_usage(std::ostream& out, const std::string& program) {
  out << "Usage: " << program
      << " [--per-pose N] [--samples-dir DIR] [--fullscreen] [--cascade FILE]"
         " [--profile-cascade FILE]\n"
         "       "
      << program
      << " --from FILE_OR_FOLDER... [--per-pose N] [--samples-dir DIR] [--cascade FILE]"
         " [--profile-cascade FILE]\n"
         "       "
      << program
      << " --report [--json] [--sheet FILE.png] [--samples-dir DIR] [--per-pose N]\n"
         "       "
      << program
      << " --help | --version\n"
         "  Takes samples of the owner's face for the recognition of the Halcyra Control Center:"
         " from the sensor, or from picture files. Or reports on the samples that there are.\n"
         "  Defaults: 10 samples of each pose, in the folder faces/dorran.\n"
         "  Keys: space pause, u take back the last sample, n skip the pose, q/Esc end.\n"
         "  Exit status: 0 the samples are good, 1 something failed or should be done, 2 wrong"
         " use.\n";
}

void write_enroll_version(std::ostream& out) {
  out << "halcyra-enroll " << HALCYRA_VERSION << "\n";
}

}  // namespace halcyra
