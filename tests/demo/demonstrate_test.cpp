// Which folders demo/demonstrate accepts: it deletes two folders below the one it is given.
#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/e2e/child_process.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMarker = ".halcyra-demonstration";

class Demonstrate : public ::testing::Test {
 protected:
  // A folder with everything that the demonstration replaces, as a user might have it by chance.
  fs::path folder_with_home(const std::string& name) const {
    const fs::path folder = folder_.path() / name;
    write_text(folder / "home/somebody/letter", "dear");
    write_text(folder / "install/notes", "mine");
    write_text(folder / "halcyra-control-center", "#!/bin/sh\necho started in \"$PWD\"\n");
    fs::permissions(folder / "halcyra-control-center", fs::perms::owner_all);
    return folder;
  }

  static void expect_untouched(const fs::path& folder) {
    EXPECT_EQ(read_text(folder / "home/somebody/letter"), "dear");
    EXPECT_EQ(read_text(folder / "install/notes"), "mine");
    EXPECT_FALSE(fs::exists(folder / "install/sonmerectl"));
  }

  std::optional<ProcessEnd> run(const std::vector<std::string>& arguments) const {
    ProcessStart start;
    start.executable = HALCYRA_DEMO "/demonstrate";
    start.arguments = arguments;
    start.environment = {{"PATH", "/usr/bin:/bin"}, {"HOME", folder_.path().string()}};
    start.working_folder = folder_.path();
    start.stdout_file = folder_.path() / "output";
    start.stderr_file = folder_.path() / "errors";
    return ChildProcess(start).wait_for_end();
  }

  void expect_refused(const std::vector<std::string>& arguments) const {
    const std::optional<ProcessEnd> end = run(arguments);
    EXPECT_TRUE(end && end->exit_status == 1);
    EXPECT_EQ(read_text(folder_.path() / "output"), "");
    const std::string errors = read_text(folder_.path() / "errors");
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    EXPECT_NE(errors.find(kMarker), std::string::npos) << errors;
  }

  TemporaryFolder folder_;
};

TEST_F(Demonstrate, StartsInAMarkedFolderWithAFreshHome) {
  const fs::path folder = folder_with_home("marked");
  write_text(folder / kMarker, "");
  write_text(folder / "faces/dorran/1.png", "kept");
  const std::optional<ProcessEnd> end = run({folder.string()});
  EXPECT_TRUE(end && end->exit_status == 0);
  EXPECT_EQ(read_text(folder_.path() / "output"), "started in " + folder.string() + "\n");
  EXPECT_FALSE(fs::exists(folder / "home/somebody"));
  EXPECT_FALSE(fs::exists(folder / "install/notes"));
  EXPECT_TRUE(fs::exists(folder / "install/sonmerectl"));
  EXPECT_EQ(read_text(folder / "faces/dorran/1.png"), "kept");
}

TEST_F(Demonstrate, RefusesAFolderWithoutTheMarker) {
  const fs::path folder = folder_with_home("root");
  expect_refused({folder.string()});
  expect_untouched(folder);
}

TEST_F(Demonstrate, RefusesALinkToAFolderWithoutTheMarker) {
  const fs::path folder = folder_with_home("root");
  fs::create_directory_symlink(folder, folder_.path() / "link");
  expect_refused({(folder_.path() / "link").string()});
  expect_refused({(folder_.path() / "link").string() + "/"});
  expect_untouched(folder);
}

TEST_F(Demonstrate, RefusesAMarkerThatIsNoFile) {
  const fs::path folder = folder_with_home("root");
  fs::create_directory(folder / kMarker);
  expect_refused({folder.string()});
  fs::remove(folder / kMarker);
  write_text(folder_.path() / "some file", "");
  fs::create_symlink(folder_.path() / "some file", folder / kMarker);
  expect_refused({folder.string()});
  expect_untouched(folder);
}

TEST_F(Demonstrate, RefusesWhatIsNoFolder) {
  const fs::path folder = folder_with_home(".");
  expect_refused({});
  expect_refused({""});
  expect_refused({"missing"});
  expect_refused({"missing/folder"});
  expect_refused({"halcyra-control-center"});
  expect_untouched(folder);
}

TEST_F(Demonstrate, LeavesAloneWhatLinksInTheFolderLeadTo) {
  const fs::path elsewhere = folder_with_home("elsewhere");
  const fs::path folder = folder_with_home("marked");
  write_text(folder / kMarker, "");
  for (const char* name : {"home", "install"}) {
    fs::remove_all(folder / name);
    fs::create_directory_symlink(elsewhere / name, folder / name);
  }
  const std::optional<ProcessEnd> end = run({folder.string()});
  EXPECT_TRUE(end && end->exit_status == 0);
  expect_untouched(elsewhere);
}

}  // namespace
}  // namespace halcyra
