// A captures folder in which the layout image cannot be written: the run still logs the image and
// ends with status 0.
#include <functional>

#include <gtest/gtest.h>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/scenes.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

const char kImage[] = "captures/control-center-layout-test-1440x1080.png";

struct CapturesFault {
  std::string name;
  std::function<void(const fs::path& working_folder)> inflict;
};

void PrintTo(const CapturesFault& fault, std::ostream* stream) { *stream << fault.name; }

std::string fault_name(const ::testing::TestParamInfo<CapturesFault>& info) {
  return info.param.name;
}

void link_image_to(const fs::path& working_folder, const fs::path& target) {
  fs::create_directories(working_folder / "captures");
  fs::create_symlink(target, working_folder / kImage);
}

constexpr fs::perms kReadOnly = fs::perms::owner_read | fs::perms::owner_exec;

std::vector<CapturesFault> captures_faults() {
  return {
      {"Unwritable",
       [](const fs::path& folder) {
         fs::create_directories(folder / "captures");
         fs::permissions(folder / "captures", kReadOnly);
       }},
      {"CannotBeMade", [](const fs::path& folder) { fs::permissions(folder, kReadOnly); }},
      {"File", [](const fs::path& folder) { write_text(folder / "captures", "in the way"); }},
      {"DanglingLink",
       [](const fs::path& folder) { fs::create_symlink("nowhere", folder / "captures"); }},
      {"CircleOfLinks",
       [](const fs::path& folder) { fs::create_symlink("captures", folder / "captures"); }},
      {"ImageIsAFolder", [](const fs::path& folder) { fs::create_directories(folder / kImage); }},
      {"ImageIsADanglingLink",
       [](const fs::path& folder) { link_image_to(folder, "no/such/folder/image.png"); }},
      {"ImageIsUnwritable",
       [](const fs::path& folder) {
         write_text(folder / kImage, "older");
         fs::permissions(folder / kImage, fs::perms::owner_read);
       }},
      {"DiskIsFull", [](const fs::path& folder) { link_image_to(folder, "/dev/full"); }},
      {"ImageIsThere", [](const fs::path& folder) { write_text(folder / kImage, "older"); }},
  };
}

class FaultyCaptures : public ::testing::TestWithParam<CapturesFault> {
 protected:
  FaultyCaptures() { GetParam().inflict(stage_.working_folder()); }
  ~FaultyCaptures() override { fs::permissions(stage_.working_folder(), fs::perms::owner_all); }

  Stage stage_;
};

INSTANTIATE_TEST_SUITE_P(Faults, FaultyCaptures, ::testing::ValuesIn(captures_faults()),
                         fault_name);

TEST_P(FaultyCaptures, DoNotEndTheRun) {
  ProgramStart start{in_readable_window({"--layout-test", "--frames", "100000"})};
  start.bound_by_modes = true;
  DesktopRun run(stage_, start);
  ExpectedDashboard scene = camera_less_scene("room_overview");
  log_message(scene, std::string("Layout test image written: ") + kImage);
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output())["current_view"], "room_overview");
}

}  // namespace
}  // namespace halcyra
