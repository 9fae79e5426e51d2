// Shrinking of our own and texts copied from the last picture save time and nothing else: the same
// dashboards are drawn without them.
#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "dashboard/draw_dashboard.hpp"
#include "tests/dashboard/test_scene.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

cv::Mat plain_dashboard(const TestScene& scene) {
  cv::setUseOptimized(false);
  const cv::Mat canvas = dashboard_showing(scene);
  cv::setUseOptimized(true);
  return canvas;
}

class PlainDrawing : public ::testing::Test {
 protected:
  cv::Scalar grey() { return cv::Scalar::all(85.0 * random_.uniform(0, 4)); }

  // Two flat halves: an edge somewhere, which may be beside a text.
  cv::Mat halves(int width, int height) {
    cv::Mat picture(height, width, CV_8UC3, grey());
    const cv::Scalar other = grey();
    if (random_.uniform(0, 2) == 0) {
      picture.colRange(0, random_.uniform(1, width)).setTo(other);
    } else {
      picture.rowRange(0, random_.uniform(1, height)).setTo(other);
    }
    return picture;
  }

  cv::Mat grain(int width, int height) {
    cv::Mat picture(height, width, CV_8UC3);
    random_.fill(picture, cv::RNG::UNIFORM, 0, 256);
    return picture;
  }

  cv::Mat picture() {
    const int width = random_.uniform(1, 1300);
    const int height = random_.uniform(1, 800);
    switch (random_.uniform(0, 5)) {
      case 0:
        return {};
      case 1:
        return grain(width, height);
      default:
        return halves(width, height);
    }
  }

  TestScene scene() {
    TestScene scene;
    scene.color = picture();
    scene.infrared = picture();
    scene.depth = picture();
    scene.options.width = random_.uniform(800, 1400);
    scene.options.height = random_.uniform(480, 820);
    const char* const views[] = {"rgb", "ir", "depth", "skeletal", "combo", "room_overview"};
    scene.options.view = views[random_.uniform(0, 6)];
    scene.options.debug = random_.uniform(0, 2) == 0;
    scene.status.room.people = random_.uniform(0, 3);
    scene.status.events.assign(static_cast<std::size_t>(random_.uniform(0, 5)),
                               "12:00:01  " + std::to_string(random_.uniform(0, 4)));
    if (!scene.color.empty()) {
      scene.faces = {test_face(1, {scene.color.cols / 3, scene.color.rows / 3, 40, 50}, grey())};
    }
    return scene;
  }

  cv::RNG random_{8};
};

TEST_F(PlainDrawing, GivesTheSameDashboards) {
  for (int i = 0; i < 80; ++i) {
    const FontScaleSetting setting(random_.uniform(0.7, 1.2));
    const TestScene shown = scene();
    const cv::Mat plain = plain_dashboard(shown);
    for (int time = 0; time < 3; ++time) {
      ASSERT_TRUE(same_pixels(dashboard_showing(shown), plain))
          << i << ", time " << time << ": " << shown.options.view << " at " << plain.size();
    }
  }
}

}  // namespace
}  // namespace halcyra
