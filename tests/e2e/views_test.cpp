// The whole window, pixel by pixel, in every view of a run without a sensor.
#include <gtest/gtest.h>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/scenes.hpp"

namespace halcyra {
namespace {

class CameraLessView : public ::testing::TestWithParam<const char*> {};

TEST_P(CameraLessView, ShowsItsDashboard) {
  Stage stage;
  DesktopRun run(stage, {in_readable_window({"--no-camera", "--view", GetParam()})});
  EXPECT_EQ(run.wait_for(camera_less_scene(GetParam())), "");
}

std::string view_name(const ::testing::TestParamInfo<const char*>& info) { return info.param; }

INSTANTIATE_TEST_SUITE_P(All, CameraLessView,
                         ::testing::Values("rgb", "ir", "depth", "skeletal", "combo",
                                           "room_overview", "follow"),
                         view_name);

}  // namespace
}  // namespace halcyra
