// `halcyra --demonstration`, as it is installed, in the cache folder that it makes and marks.
#include <filesystem>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "tests/e2e/child_process.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class InstalledDemonstration : public ::testing::Test {
 protected:
  InstalledDemonstration() {
    const fs::path programs = prefix() / "libexec/halcyra-control-center/demonstration";
    fs::create_directories(prefix() / "bin");
    fs::create_directories(programs);
    fs::copy(HALCYRA_LAUNCHER, prefix() / "bin/halcyra");
    fs::copy(HALCYRA_DEMO "/demonstrate", programs / "demonstrate");
    fs::copy(HALCYRA_DEMO "/install", programs / "install");
    write_text(prefix() / "bin/halcyra-control-center", "#!/bin/sh\necho \"in $PWD with $*\"\n");
    fs::permissions(prefix() / "bin/halcyra-control-center", fs::perms::owner_all);
    write_text(prefix() / "share/halcyra-control-center/demonstration/faces/dorran/1.png", "new");
  }

  fs::path prefix() const { return folder_.path() / "prefix"; }
  fs::path cache() const { return folder_.path() / "person/.cache/halcyra/demonstration"; }

  std::optional<ProcessEnd> start() const {
    ProcessStart start;
    start.executable = (prefix() / "bin/halcyra").string();
    start.arguments = {"--demonstration", "--view", "rgb"};
    start.environment = {{"PATH", "/usr/bin:/bin"}, {"HOME", (folder_.path() / "person").string()}};
    start.working_folder = folder_.path();
    start.stdout_file = folder_.path() / "output";
    start.stderr_file = folder_.path() / "errors";
    return ChildProcess(start).wait_for_end();
  }

  void expect_started() const {
    const std::optional<ProcessEnd> end = start();
    EXPECT_TRUE(end && end->exit_status == 0) << read_text(folder_.path() / "errors");
    EXPECT_EQ(read_text(folder_.path() / "output"),
              "in " + cache().string() + " with --view rgb\n");
    EXPECT_EQ(read_text(cache() / "faces/dorran/1.png"), "new");
    EXPECT_TRUE(fs::exists(cache() / "install/sonmerectl"));
  }

  TemporaryFolder folder_;
};

TEST_F(InstalledDemonstration, StartsForTheFirstTimeAndAgain) {
  expect_started();
  write_text(cache() / "faces/old.png", "of an older version");
  write_text(cache() / "home/leftover", "");
  expect_started();
  EXPECT_FALSE(fs::exists(cache() / "faces/old.png"));
  EXPECT_FALSE(fs::exists(cache() / "home/leftover"));
}

TEST_F(InstalledDemonstration, StartsInAnEmptyFolder) {
  fs::create_directories(cache());
  expect_started();
}

TEST_F(InstalledDemonstration, StartsInTheFolderThatVersion100MadeWithoutMarker) {
  write_text(cache() / "faces/dorran/1.png", "old");
  write_text(cache() / "home/leftover", "");
  fs::create_symlink("/nowhere/bin/halcyra-control-center", cache() / "halcyra-control-center");
  expect_started();
}

TEST_F(InstalledDemonstration, RefusesAFolderThatSomebodyElseMade) {
  const fs::path other = folder_.path() / "other";
  for (const char* name : {"faces/of the family", "home/letter", "install/notes"}) {
    write_text(other / name, "kept");
  }
  fs::create_directories(cache().parent_path());
  fs::create_directory_symlink(other, cache());
  const std::optional<ProcessEnd> end = start();
  EXPECT_TRUE(end && end->exit_status == 1);
  EXPECT_EQ(read_text(folder_.path() / "errors"),
            "halcyra: " + cache().string() +
                " was not made by the demonstration; move it away to start\n");
  for (const char* name : {"faces/of the family", "home/letter", "install/notes"}) {
    EXPECT_EQ(read_text(other / name), "kept") << name;
  }
  EXPECT_FALSE(fs::exists(other / "halcyra-control-center"));
}

}  // namespace
}  // namespace halcyra
