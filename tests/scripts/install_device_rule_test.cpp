// What scripts/install-device-rule.sh installs and when.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/scripts/script_stage.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

constexpr const char* kScript = "scripts/install-device-rule.sh";
const std::string kName = "60-halcyra-kinect-v2.rules";

class InstallDeviceRule : public ::testing::Test {
 protected:
  std::string rule() const { return read_text(stage_.path("checkout/packaging/udev/" + kName)); }
  fs::path installed() const { return stage_.path("system/etc/udev/rules.d/" + kName); }

  ScriptStage stage_;
};

TEST_F(InstallDeviceRule, CountsForASensorThatIsPluggedIn) {
  const ScriptResult result = stage_.run(kScript);
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "Installed " + installed().string() +
                               ": whoever sits at this machine may use the Kinect v2.\n");
  EXPECT_EQ(read_text(installed()), rule());
  EXPECT_EQ(stage_.calls(),
            "udevadm control --reload-rules\n"
            "udevadm trigger --settle --subsystem-match=usb --attr-match=idVendor=045e\n");
}

TEST_F(InstallDeviceRule, IsNotNeededWhereItIsAlready) {
  for (const char* folder : {"etc/udev", "usr/lib/udev"}) {
    const fs::path there = stage_.path("system") / folder / "rules.d" / kName;
    write_text(there, rule());
    const ScriptResult result = stage_.run(kScript);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output + result.errors + stage_.calls(), "") << folder;
    fs::remove(there);
  }
}

TEST_F(InstallDeviceRule, ReplacesAnOtherOneOfItsName) {
  write_text(stage_.path("system/usr/lib/udev/rules.d/" + kName), rule());
  write_text(installed(), "# an older one, which udev prefers\n");
  EXPECT_EQ(stage_.run(kScript).status, 0);
  EXPECT_EQ(read_text(installed()), rule());
}

TEST_F(InstallDeviceRule, WithoutRootSaysWhatToDo) {
  stage_.root_is_refused();
  const ScriptResult result = stage_.run(kScript);
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("was not installed, as that needs root: as root, copy " +
                               stage_.path("checkout/packaging/udev/" + kName).string() + " to " +
                               installed().parent_path().string() + "/, then unplug the sensor"),
            std::string::npos)
      << result.errors;
  EXPECT_FALSE(fs::exists(installed()));
}

TEST_F(InstallDeviceRule, WithoutUdevWaitsForTheNextStart) {
  stage_.write_command("udevadm", "exit 1\n");
  EXPECT_EQ(stage_.run(kScript).status, 0);
  EXPECT_EQ(read_text(installed()), rule());
}

}  // namespace
}  // namespace halcyra
