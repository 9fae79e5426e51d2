// What scripts/install-packages.sh asks of whom.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/scripts/script_stage.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

constexpr const char* kScript = "scripts/install-packages.sh";

class InstallPackages : public ::testing::Test {
 protected:
  ScriptStage stage_;
};

TEST_F(InstallPackages, InstallsNothingTwice) {
  const ScriptResult result = stage_.run(kScript, {"run", "libfreenect2"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output + stage_.calls(), "");
}

TEST_F(InstallPackages, AsksForRootThroughSudo) {
  stage_.packages_are_missing();
  const ScriptResult result = stage_.run(kScript, {"libfreenect2-opengl"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "Installing: libglfw3-dev libgl-dev\n");
  EXPECT_EQ(stage_.calls(), "sudo apt-get update -qq\n");
}

TEST_F(InstallPackages, WithoutSudoNamesWhatIsMissing) {
  stage_.packages_are_missing();
  fs::remove(stage_.path("bin/sudo"));
  for (const char* name : {"bash", "dirname", "readlink"}) {
    fs::create_symlink(fs::path("/usr/bin") / name, stage_.path("bin") / name);
  }
  stage_.environment["PATH"] = stage_.path("bin");
  const ScriptResult result = stage_.run(kScript, {"libfreenect2-vaapi"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "These packages are missing and need root to be installed: libva-dev libjpeg-dev\n");
}

TEST_F(InstallPackages, RefusesAnUnknownGroup) {
  const ScriptResult result = stage_.run(kScript, {"run", "libfreenect"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors.find("usage: "), 0u);
}

}  // namespace
}  // namespace halcyra
