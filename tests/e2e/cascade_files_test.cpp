// Faulty cascade files: one that cannot be opened is logged as unavailable, one that opens but is
// not a cascade ends the run with OpenCV's exception.
#include <signal.h>

#include <functional>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "app/run_state/options.hpp"
#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/scenes.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

struct CascadeFault {
  std::string name;
  std::function<void(const fs::path& file)> inflict;
};

void PrintTo(const CascadeFault& fault, std::ostream* stream) { *stream << fault.name; }

using Parameter = std::tuple<std::string, CascadeFault>;

std::string fault_name(const ::testing::TestParamInfo<Parameter>& info) {
  const bool profile = std::get<0>(info.param) == "--profile-cascade";
  return (profile ? "Profile" : "Frontal") + std::get<1>(info.param).name;
}

class CascadeFile : public ::testing::TestWithParam<Parameter> {
 protected:
  CascadeFile() { std::get<1>(GetParam()).inflict(stage_.working_folder() / "cascade.xml"); }

  ProgramStart start(const std::vector<std::string>& more) const {
    std::vector<std::string> arguments = {"--no-camera", option(), "cascade.xml"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    ProgramStart start{in_readable_window(arguments)};
    start.bound_by_modes = true;
    return start;
  }

  static std::string option() { return std::get<0>(GetParam()); }

  Stage stage_;
};

void copy_unreadable(const fs::path& file) {
  fs::copy_file(Options().cascade_path, file);
  fs::permissions(file, fs::perms::none);
}

std::vector<CascadeFault> unopenable_files() {
  return {{"Missing", [](const fs::path&) {}},
          {"DanglingLink", [](const fs::path& file) { fs::create_symlink("nowhere.xml", file); }},
          {"CircleOfLinks", [](const fs::path& file) { fs::create_symlink(file, file); }},
          {"Unreadable", copy_unreadable}};
}

using UnopenableCascade = CascadeFile;

TEST_P(UnopenableCascade, IsUnavailable) {
  DesktopRun run(stage_, start({}));
  ExpectedDashboard scene = camera_less_scene("combo");
  const std::string message = option() == "--cascade"
                                  ? "Frontal cascade unavailable"
                                  : "Profile cascade unavailable; profile detection fallback";
  const auto samples =
      std::find(scene.messages.begin(), scene.messages.end(), "Recognition samples unavailable");
  scene.messages.insert(samples + 1, message);
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
}

INSTANTIATE_TEST_SUITE_P(Files, UnopenableCascade,
                         ::testing::Combine(::testing::Values("--cascade", "--profile-cascade"),
                                            ::testing::ValuesIn(unopenable_files())),
                         fault_name);

void cut_off(const fs::path& file) {
  const std::string whole = read_text(Options().cascade_path);
  write_text(file, whole.substr(0, whole.size() / 2));
}

void write_picture(const fs::path& file) {
  const fs::path picture = file.parent_path() / "picture.png";
  cv::imwrite(picture.string(), cv::Mat(4, 4, CV_8UC1, cv::Scalar(9)));
  fs::rename(picture, file);
}

std::vector<CascadeFault> other_files() {
  return {
      {"Empty", [](const fs::path& file) { write_text(file, ""); }},
      {"Folder", [](const fs::path& file) { fs::create_directories(file); }},
      {"CutOff", cut_off},
      {"Text", [](const fs::path& file) { write_text(file, "no cascade\n"); }},
      {"Picture", write_picture},
      {"OtherXml",
       [](const fs::path& file) {
         write_text(file, "<?xml version=\"1.0\"?>\n<opencv_storage><a>1</a></opencv_storage>\n");
       }},
  };
}

using OtherCascade = CascadeFile;

TEST_P(OtherCascade, EndsTheRun) {
  Program program(stage_, start({"--frames", "1"}));
  const std::optional<ProcessEnd> end = program.wait_for_end();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->signal, SIGABRT);
  EXPECT_EQ(program.output(), "");
  EXPECT_NE(program.errors().find("terminate called"), std::string::npos) << program.errors();
}

INSTANTIATE_TEST_SUITE_P(Files, OtherCascade,
                         ::testing::Combine(::testing::Values("--cascade", "--profile-cascade"),
                                            ::testing::ValuesIn(other_files())),
                         fault_name);

}  // namespace
}  // namespace halcyra
