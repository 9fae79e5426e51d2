// When ./run sets up the sensor's driver, and what it starts then.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/scripts/script_stage.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRule = "system/etc/udev/rules.d/60-halcyra-kinect-v2.rules";
const std::string kDriverLine = "Kinect driver: libfreenect2 with the pipeline cpu\n";
const std::string kOnTheSensor = kDriverLine + "program with pipeline cpu and <>\n";

class Run : public ::testing::Test {
 protected:
  // Whether the run fetched the driver's source.
  bool fetched() const { return stage_.calls().find("git ") != std::string::npos; }

  void expect_demonstration(const ScriptResult& result) const {
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_NE(result.output.find("starting the demonstration"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("\ndemonstration with pipeline  and <>"), std::string::npos)
        << result.output;
  }

  ScriptStage stage_;
};

TEST_F(Run, SetsTheDriverUpForAnAttachedSensor) {
  stage_.attach("045e", "02c4");
  const ScriptResult result = stage_.run("run");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, kOnTheSensor) << result.errors;
  EXPECT_NE(result.errors.find("Setting up libfreenect2"), std::string::npos) << result.errors;
  EXPECT_TRUE(fs::exists(stage_.path("checkout/build/libfreenect2/lib/libfreenect2.so")));
  EXPECT_TRUE(fs::exists(stage_.path(kRule)));
  EXPECT_TRUE(fetched());
}

TEST_F(Run, SetsTheDriverUpOnce) {
  stage_.attach("045e", "02c4");
  stage_.run("run");
  stage_.calls();
  EXPECT_EQ(stage_.run("run").output, kOnTheSensor);
  EXPECT_FALSE(fetched());
}

TEST_F(Run, UsesADriverThatTheMachineHas) {
  stage_.attach("045e", "02d8");
  write_text(stage_.path("system-driver"), "");
  EXPECT_EQ(stage_.run("run").output, kOnTheSensor);
  EXPECT_FALSE(fetched());
}

TEST_F(Run, DemonstratesWhereTheDriverCannotBeBuilt) {
  stage_.attach("045e", "02c4");
  write_text(stage_.path("compile-error"), "");
  const ScriptResult result = stage_.run("run");
  expect_demonstration(result);
  EXPECT_NE(result.errors.find("libfreenect2 was not set up: it could not be compiled"),
            std::string::npos)
      << result.errors;
  EXPECT_FALSE(fs::exists(stage_.path("checkout/build/libfreenect2")));
  EXPECT_FALSE(fs::exists(stage_.path(kRule)));
}

TEST_F(Run, NeedsNoDriverWithoutASensor) {
  expect_demonstration(stage_.run("run"));
  stage_.attach("045e", "02d9");
  expect_demonstration(stage_.run("run"));
  EXPECT_FALSE(fetched());
}

TEST_F(Run, NeedsNoDriverWhereTheSensorIsNotWanted) {
  stage_.attach("045e", "02c4");
  for (const char* argument : {"--no-camera", "--layout-test", "--help", "-h"}) {
    const std::string expected = "program with pipeline  and <" + std::string(argument) + ">\n";
    EXPECT_EQ(stage_.run("run", {argument}).output, expected);
  }
  stage_.environment["VIRTUAL_KINECT"] = "some/recording";
  EXPECT_EQ(stage_.run("run").output, "demonstration with pipeline  and <>\n");
  EXPECT_FALSE(fetched());
}

TEST_F(Run, NeedsNoDriverWhereTheVirtualOneWasChosen) {
  stage_.attach("045e", "02c4");
  write_text(stage_.path("cache"), "HALCYRA_KINECT_DRIVER:STRING=virtual\n");
  expect_demonstration(stage_.run("run"));
  EXPECT_FALSE(fetched());
}

TEST_F(Run, GoesOnWithoutTheRightToInstallTheDeviceRule) {
  stage_.attach("045e", "02c4");
  stage_.root_is_refused();
  const ScriptResult result = stage_.run("run");
  EXPECT_EQ(result.output, kOnTheSensor);
  EXPECT_NE(result.errors.find("The rule that lets you use the Kinect v2 was not installed"),
            std::string::npos)
      << result.errors;
}

TEST_F(Run, InstallsTheDeviceRuleWhereRightsAreMissing) {
  stage_.attach("045e", "02c4");
  write_text(stage_.path("system-driver"), "");
  const fs::path device = stage_.path("system/dev/bus/usb/002/007");
  write_text(device, "");
  stage_.run("run");
  EXPECT_FALSE(fs::exists(stage_.path(kRule)));

  fs::permissions(device, fs::perms::owner_read);
  stage_.bound_by_modes = true;
  stage_.run("run");
  EXPECT_TRUE(fs::exists(stage_.path(kRule)));
}

TEST_F(Run, StartsAToolOnTheSensor) {
  stage_.attach("045e", "02c4");
  const ScriptResult result = stage_.run("run", {"enroll", "--per-pose", "5"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "halcyra-enroll with pipeline cpu and <--per-pose 5>\n");
  EXPECT_NE(result.errors.find(kDriverLine), std::string::npos) << result.errors;
  EXPECT_TRUE(fetched());
  EXPECT_FALSE(fs::exists(stage_.path("checkout/build/halcyra-control-center")));
}

TEST_F(Run, StartsAToolWithoutASensor) {
  const ScriptResult result = stage_.run("run", {"record", "my recording"});
  EXPECT_EQ(result.output, "halcyra-record with pipeline  and <my recording>\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(Run, StartsAToolOnAChosenScene) {
  stage_.attach("045e", "02c4");
  stage_.environment["VIRTUAL_KINECT"] = "some/recording";
  EXPECT_EQ(stage_.run("run", {"enroll"}).output, "halcyra-enroll with pipeline  and <>\n");
  write_text(stage_.path("system-driver"), "");
  EXPECT_EQ(stage_.run("run", {"enroll"}).output,
            "halcyra-enroll-on-virtual with pipeline  and <>\n");
  EXPECT_FALSE(fetched());
}

TEST_F(Run, NeedsNoDriverForAToolThatLooksForNoSensor) {
  stage_.attach("045e", "02c4");
  for (const char* argument : {"--report", "--from", "--help", "--version"}) {
    EXPECT_EQ(stage_.run("run", {"enroll", argument}).output,
              "halcyra-enroll with pipeline  and <" + std::string(argument) + ">\n");
  }
  EXPECT_FALSE(fetched());
}

TEST_F(Run, SaysWhatAToolWillMissOfTheSensor) {
  stage_.attach("045e", "02d9");
  EXPECT_EQ(stage_.run("run", {"enroll"}).errors,
            "Only the hub of a Kinect v2 answers, so its power supply may be missing.\n");
  stage_.attach("045e", "02c4", "480");
  write_text(stage_.path("system-driver"), "");
  const std::string errors = stage_.run("run", {"enroll"}).errors;
  EXPECT_NE(errors.find("The Kinect v2 is connected with 480 Mbit/s"), std::string::npos) << errors;
}

}  // namespace
}  // namespace halcyra
