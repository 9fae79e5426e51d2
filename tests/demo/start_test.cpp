// What scripts/start.sh starts, where, and what it says about it.
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/e2e/child_process.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// Stands in for the program: prints where it runs and what it was called with.
constexpr const char* kEcho =
    "#!/bin/sh\n"
    "echo \"$(basename \"$(dirname \"$0\")\") in $(basename \"$PWD\")"
    " home $(basename \"$HOME\") scene '$VIRTUAL_KINECT' display "
    "'${DISPLAY%%:*}${DISPLAY:+some}'\"\n"
    "printf '<%s>' \"$@\"\n"
    "echo\n";

class Start : public ::testing::Test {
 protected:
  Start() {
    for (const char* folder : {"build/demonstration", "usb/1-1", "here", "person"}) {
      fs::create_directories(folder_.path() / folder);
    }
    write_text(folder_.path() / "build/demonstration/.halcyra-demonstration", "");
    write_program("build/halcyra-control-center");
    write_program("build/demonstration/halcyra-control-center");
    choose_driver("virtual");
    attach("1d6b", "0003");
  }

  void write_program(const std::string& name, const std::string& script = kEcho) const {
    write_text(folder_.path() / name, script);
    fs::permissions(folder_.path() / name, fs::perms::owner_all);
  }

  void choose_driver(const std::string& driver) const {
    write_text(folder_.path() / "build/kinect-driver", driver + "\n");
  }

  void attach(const std::string& vendor, const std::string& product) const {
    write_text(folder_.path() / "usb/1-1/idVendor", vendor + "\n");
    write_text(folder_.path() / "usb/1-1/idProduct", product + "\n");
  }

  // Runs the script to its end and returns everything that it printed.
  std::string started(const std::vector<std::string>& arguments = {}) {
    ProcessStart start;
    start.executable = HALCYRA_SCRIPTS "/start.sh";
    start.arguments = {(folder_.path() / "build").string()};
    start.arguments.insert(start.arguments.end(), arguments.begin(), arguments.end());
    start.environment = environment_;
    start.working_folder = folder_.path() / "here";
    start.stdout_file = folder_.path() / "output";
    start.stderr_file = folder_.path() / "errors";
    ChildProcess process(start);
    const std::optional<ProcessEnd> end = process.wait_for_end();
    EXPECT_TRUE(end && end->exit_status == 0);
    return read_text(start.stdout_file) + read_text(start.stderr_file);
  }

  TemporaryFolder folder_;
  std::map<std::string, std::string> environment_ = {
      {"PATH", "/usr/bin:/bin"},
      {"HOME", (folder_.path() / "person").string()},
      {"DISPLAY", ":none"},
      {"HALCYRA_USB_DEVICES", (folder_.path() / "usb").string()}};
};

const std::string kOnTheSensor = "build in here home person scene '' display 'some'\n";
const std::string kDemonstration =
    "demonstration in demonstration home home scene 'room' display 'some'\n";

TEST_F(Start, DemonstratesWithoutKinect) {
  EXPECT_EQ(started(),
            "No Kinect v2 is attached: starting the demonstration, a rendered room with its "
            "people.\n" +
                kDemonstration + "<>\n");
}

TEST_F(Start, PassesArgumentsOn) {
  EXPECT_EQ(started({"--view", "follow", "--samples-dir", "my face"}),
            "No Kinect v2 is attached: starting the demonstration, a rendered room with its "
            "people.\n" +
                kDemonstration + "<--view><follow><--samples-dir><my face>\n");
}

TEST_F(Start, UsesAnAttachedKinect) {
  choose_driver("libfreenect2");
  for (const char* product : {"02c4", "02d8", "02d9"}) {
    attach("045e", product);
    EXPECT_EQ(started({"--view", "rgb"}), kOnTheSensor + "<--view><rgb>\n") << product;
  }
}

TEST_F(Start, DemonstratesBesideOtherDevices) {
  choose_driver("libfreenect2");
  for (const auto& [vendor, product] : {std::pair("045e", "02ae"), std::pair("046d", "02c4")}) {
    attach(vendor, product);
    EXPECT_NE(started().find(kDemonstration), std::string::npos) << vendor << ":" << product;
  }
}

TEST_F(Start, SaysWhenAnAttachedKinectCannotBeUsed) {
  attach("045e", "02c4");
  EXPECT_EQ(started(),
            "A Kinect v2 is attached, but the program was built without libfreenect2: starting the "
            "demonstration, a rendered room with its people.\n" +
                kDemonstration + "<>\n");
}

TEST_F(Start, StaysOutOfTheWayOfAChosenScene) {
  environment_["VIRTUAL_KINECT"] = "some/recording";
  EXPECT_EQ(started(),
            "demonstration in here home person scene 'some/recording' display 'some'\n<>\n");
}

TEST_F(Start, StaysOutOfTheWayOfRunsWithoutSensor) {
  for (const char* argument : {"--no-camera", "--layout-test", "--help", "-h"}) {
    EXPECT_EQ(started({argument}), kOnTheSensor + "<" + argument + ">\n");
  }
}

TEST_F(Start, EndsByItselfOnAVirtualDisplay) {
  environment_.erase("DISPLAY");
  EXPECT_NE(started().find(kDemonstration + "<--frames><90>\n"), std::string::npos);
  EXPECT_EQ(started({"--no-camera"}), kOnTheSensor + "<--no-camera><--frames><90>\n");
  EXPECT_EQ(started({"--no-camera", "--frames", "7"}),
            kOnTheSensor + "<--no-camera><--frames><7>\n");
  EXPECT_EQ(started({"--no-camera", "--smoke"}), kOnTheSensor + "<--no-camera><--smoke>\n");
  EXPECT_EQ(started({"--layout-test"}), kOnTheSensor + "<--layout-test>\n");
}

TEST_F(Start, LeavesAChosenPlatformAlone) {
  environment_.erase("DISPLAY");
  environment_["QT_QPA_PLATFORM"] = "offscreen";
  EXPECT_EQ(started({"--no-camera"}),
            "build in here home person scene '' display ''\n<--no-camera>\n");
}

TEST_F(Start, GivesThePermissionToOpenWindowsAlong) {
  write_text(folder_.path() / "person/.Xauthority", "");
  write_program("build/demonstration/halcyra-control-center",
                "#!/bin/sh\nbasename \"$(dirname \"$XAUTHORITY\")\"\n");
  EXPECT_NE(started().find("\nperson\n"), std::string::npos);
  environment_["XAUTHORITY"] = "/elsewhere/file";
  EXPECT_NE(started().find("\nelsewhere\n"), std::string::npos);
}

}  // namespace
}  // namespace halcyra
