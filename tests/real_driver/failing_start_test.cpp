// A sensor that cannot be opened, or whose streams do not start.
#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/real_driver/usb_sensor_run.hpp"

namespace halcyra {
namespace {

// A failure, and what the driver itself leaves behind after it.
struct Failure {
  const char* word;
  SensorCounts left = nothing_left();
};

SensorCounts left_with(const std::string& name, long count) {
  SensorCounts result = nothing_left();
  result[name] = count;
  return result;
}

std::string failure_name(const ::testing::TestParamInfo<Failure>& info) {
  std::string name = info.param.word;
  for (char& letter : name) {
    if (!std::isalnum(static_cast<unsigned char>(letter))) letter = '_';
  }
  return name;
}

class UsbFailure : public UsbSensorRun, public ::testing::WithParamInterface<Failure> {
 protected:
  Summary run_until_shown(const ExpectedDashboard& scene) {
    DesktopRun run(stage_, start_on_usb({"--frames", "100000"}));
    EXPECT_EQ(run.wait_for(scene), "");
    EXPECT_TRUE(run.quit());
    return summary_values(run.program().output());
  }

  void expect_no_sensor(const std::string& word) {
    set_sensor("FAIL_OPEN", word);
    ExpectedDashboard scene = empty_room_scene("combo", {"No Kinect v2 device detected"});
    scene.status.kinect_message = "no Kinect v2 device detected";
    EXPECT_EQ(run_until_shown(scene)["kinect"], "unavailable");
  }

  void expect_delivery() {
    record_sets(1);
    DesktopRun run(stage_, start_on_usb({}));
    EXPECT_EQ(wait_for_streams(run, recorded_scene("combo")), "");
    EXPECT_TRUE(run.quit());
  }
};

using UsbBus = UsbFailure;

TEST_F(UsbBus, ThatCannotBeUsedHasNoSensor) {
  expect_no_sensor("init");
  EXPECT_EQ(lines_with(log(), "init refused"), 1);
}

class UsbUnseen : public UsbFailure {};

INSTANTIATE_TEST_SUITE_P(Failures, UsbUnseen,
                         ::testing::Values(Failure{"permission"}, Failure{"serial"}), failure_name);

TEST_P(UsbUnseen, IsNoSensor) {
  expect_no_sensor(GetParam().word);
  EXPECT_EQ(leftovers_of(log()), GetParam().left);
}

class UsbOpening : public UsbFailure {};

INSTANTIATE_TEST_SUITE_P(Failures, UsbOpening,
                         ::testing::Values(Failure{"open"},
                                           Failure{"reset", left_with("handles_open", 1)},
                                           Failure{"reset-gone"},
                                           Failure{"configuration", left_with("misuse", 4)},
                                           Failure{"claim", left_with("misuse", 4)},
                                           Failure{"control"}, Failure{"usb2"}),
                         failure_name);

TEST_P(UsbOpening, FailureIsSaidOnTheDashboard) {
  set_sensor("FAIL_OPEN", GetParam().word);
  ExpectedDashboard scene = empty_room_scene("combo", {"Kinect open failed"});
  scene.status.kinect_connected = true;
  scene.status.kinect_message = "failed to open Kinect device";
  Summary summary = run_until_shown(scene);
  EXPECT_EQ(summary["kinect"], "connected");
  EXPECT_EQ(summary["rgb"], "unavailable");
  EXPECT_EQ(leftovers_of(log()), GetParam().left);
}

class UsbSecondAttempt : public UsbFailure {};

INSTANTIATE_TEST_SUITE_P(Failures, UsbSecondAttempt,
                         ::testing::Values(Failure{"open-retry"}, Failure{"reset-again"}),
                         failure_name);

TEST_P(UsbSecondAttempt, Succeeds) {
  set_sensor("FAIL_OPEN", GetParam().word);
  expect_delivery();
  EXPECT_EQ(leftovers_of(log()), GetParam().left);
}

class UsbStart : public UsbFailure {};

INSTANTIATE_TEST_SUITE_P(Failures, UsbStart,
                         ::testing::Values(Failure{"function"}, Failure{"firmware"},
                                           Failure{"hardware"}, Failure{"serial"},
                                           Failure{"depth-params"}, Failure{"p0"},
                                           Failure{"color-params"}, Failure{"mode"},
                                           Failure{"status"}, Failure{"init"}, Failure{"alt"},
                                           Failure{"stream"}, Failure{"submit"},
                                           Failure{"submit-color"}, Failure{"submit-ir"}),
                         failure_name);

TEST_P(UsbStart, FailureIsSaidOnTheDashboard) {
  set_sensor("FAIL_START", GetParam().word);
  ExpectedDashboard scene = empty_room_scene("combo", {"RGB/IR/Depth stream start failed"});
  scene.status.kinect_connected = true;
  scene.status.kinect_message = "failed to start RGB/IR/Depth streams";
  scene.status.ir_message = "Kinect stream start failed";
  scene.status.depth_message = "Kinect stream start failed";
  Summary summary = run_until_shown(scene);
  EXPECT_EQ(summary["kinect"], "connected");
  for (const char* name : {"rgb", "ir", "depth"}) EXPECT_EQ(summary[name], "unavailable") << name;
  EXPECT_EQ(leftovers_of(log()), GetParam().left);
}

// A command that fails at once, whose answer is cut, or whose answer has no end.
class UsbAnswer : public UsbFailure {};

INSTANTIATE_TEST_SUITE_P(Failures, UsbAnswer,
                         ::testing::Values(Failure{"firmware:pipe"}, Failure{"firmware:short"},
                                           Failure{"firmware:missing"}, Failure{"serial:pipe"},
                                           Failure{"serial:missing"}, Failure{"p0:pipe"},
                                           Failure{"p0:short"}, Failure{"p0:missing"},
                                           Failure{"mode:pipe"}, Failure{"mode:missing"},
                                           Failure{"status:short"}, Failure{"init:pipe"},
                                           Failure{"stream:pipe"}, Failure{"stream:missing"}),
                         failure_name);

TEST_P(UsbAnswer, FaultKeepsTheStreamsFromStarting) {
  set_sensor("FAIL_START", GetParam().word);
  Summary summary = summary_of_usb_run({"--frames", "2"});
  EXPECT_EQ(summary["frames"], "2");
  EXPECT_EQ(summary["kinect"], "connected");
  for (const char* name : {"rgb", "ir", "depth"}) EXPECT_EQ(summary[name], "unavailable") << name;
  EXPECT_GE(lines_with(log(), "fails on purpose"), 1);
  EXPECT_EQ(leftovers_of(log()), GetParam().left);
}

class UsbStartInSpiteOfAFault : public UsbFailure {};

INSTANTIATE_TEST_SUITE_P(Failures, UsbStartInSpiteOfAFault,
                         ::testing::Values(Failure{"submit-some"}, Failure{"never-ready"}),
                         failure_name);

TEST_P(UsbStartInSpiteOfAFault, Delivers) {
  set_sensor("FAIL_START", GetParam().word);
  expect_delivery();
  EXPECT_EQ(leftovers_of(log()), GetParam().left);
}

}  // namespace
}  // namespace halcyra
