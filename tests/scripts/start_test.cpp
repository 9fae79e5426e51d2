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
    "'${DISPLAY%%:*}${DISPLAY:+some}'${LIBFREENECT2_PIPELINE:+ pipeline $LIBFREENECT2_PIPELINE}\"\n"
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
    tell("idVendor", vendor);
    tell("idProduct", product);
  }

  // What the kernel tells about the device.
  void tell(const std::string& name, const std::string& value) const {
    write_text(folder_.path() / "usb/1-1" / name, value + "\n");
  }

  // Runs the script to its end and returns everything that it printed.
  std::string started(const std::vector<std::string>& arguments = {}) {
    ProcessStart start;
    start.executable = HALCYRA_PROJECT "/scripts/start.sh";
    start.arguments = {(folder_.path() / "build").string()};
    start.arguments.insert(start.arguments.end(), arguments.begin(), arguments.end());
    start.environment = environment_;
    start.working_folder = folder_.path() / "here";
    start.stdout_file = folder_.path() / "output";
    start.stderr_file = folder_.path() / "errors";
    start.bound_by_modes = bound_by_modes_;
    ChildProcess process(start);
    const std::optional<ProcessEnd> end = process.wait_for_end();
    EXPECT_TRUE(end && end->exit_status == 0);
    return read_text(start.stdout_file) + read_text(start.stderr_file);
  }

  TemporaryFolder folder_;
  bool bound_by_modes_ = false;
  std::map<std::string, std::string> environment_ = {
      {"PATH", "/usr/bin:/bin"},
      {"HOME", (folder_.path() / "person").string()},
      {"DISPLAY", ":none"},
      {"HALCYRA_USB_DEVICES", (folder_.path() / "usb").string()},
      {"HALCYRA_SYSTEM", (folder_.path() / "system").string()}};
};

const std::string kWithoutSensor = "build in here home person scene '' display 'some'\n";
const std::string kOnTheSensor =
    "Kinect driver: libfreenect2 with the pipeline cpu\n"
    "build in here home person scene '' display 'some' pipeline cpu\n";
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
  for (const char* product : {"02c4", "02d8"}) {
    attach("045e", product);
    EXPECT_EQ(started({"--view", "rgb"}), kOnTheSensor + "<--view><rgb>\n") << product;
  }
}

TEST_F(Start, LeavesAChosenPipelineAlone) {
  choose_driver("libfreenect2");
  attach("045e", "02c4");
  environment_["LIBFREENECT2_PIPELINE"] = "gl";
  EXPECT_EQ(started(),
            "Kinect driver: libfreenect2 with the pipeline gl\n"
            "build in here home person scene '' display 'some' pipeline gl\n<>\n");
}

TEST_F(Start, SaysNothingOfASensorThatIsConnectedWell) {
  choose_driver("libfreenect2");
  attach("045e", "02d8");
  tell("busnum", "2");
  tell("devnum", "7");
  write_text(folder_.path() / "system/dev/bus/usb/002/007", "");
  bound_by_modes_ = true;
  for (const char* speed : {"5000", "10000"}) {
    tell("speed", speed);
    EXPECT_EQ(started(), kOnTheSensor + "<>\n") << speed;
  }
}

TEST_F(Start, WarnsOfAUsb2Port) {
  choose_driver("libfreenect2");
  attach("045e", "02c4");
  for (const char* speed : {"480", "12", "1.5"}) {
    tell("speed", speed);
    EXPECT_EQ(started(), kOnTheSensor + "<>\nThe Kinect v2 is connected with " + speed +
                             " Mbit/s, as USB 2 is, and will fail to open. Use a USB 3 port of the "
                             "computer itself and the sensor's own cable.\n");
  }
}

TEST_F(Start, WarnsOfMissingRights) {
  choose_driver("libfreenect2");
  attach("045e", "02c4");
  tell("busnum", "2");
  tell("devnum", "17");
  const fs::path device = folder_.path() / "system/dev/bus/usb/002/017";
  write_text(device, "");
  bound_by_modes_ = true;
  for (const fs::perms rights : {fs::perms::owner_read, fs::perms::owner_write}) {
    fs::permissions(device, rights);
    const std::string shown = started();
    EXPECT_EQ(shown.find(kOnTheSensor + "<>\nYou may not read and write " + device.string() +
                         ", so the Kinect v2 will not be detected. Run "),
              0u)
        << shown;
  }
}

TEST_F(Start, DemonstratesWithAHubAlone) {
  choose_driver("libfreenect2");
  attach("045e", "02d9");
  EXPECT_EQ(started(),
            "Only the hub of a Kinect v2 answers, so its power supply may be missing: starting the "
            "demonstration, a rendered room with its people.\n" +
                kDemonstration + "<>\n");
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
    EXPECT_EQ(started({argument}), kWithoutSensor + "<" + argument + ">\n");
  }
}

TEST_F(Start, EndsByItselfOnAVirtualDisplay) {
  environment_.erase("DISPLAY");
  EXPECT_NE(started().find(kDemonstration + "<--frames><90>\n"), std::string::npos);
  const std::string end =
      "\nNo picture of the window: it was not on the screen, or only for a moment.\n";
  EXPECT_EQ(started({"--no-camera"}), kWithoutSensor + "<--no-camera><--frames><90>" + end);
  EXPECT_EQ(started({"--no-camera", "--frames", "7"}),
            kWithoutSensor + "<--no-camera><--frames><7>" + end);
  EXPECT_EQ(started({"--no-camera", "--smoke"}), kWithoutSensor + "<--no-camera><--smoke>" + end);
  EXPECT_EQ(started({"--layout-test"}), kWithoutSensor + "<--layout-test>" + end);
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
