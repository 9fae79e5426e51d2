#include "app/run_state/options.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

TEST(Options, StartAsAnUnlimitedRunWithACamera) {
  const Options options;
  EXPECT_EQ(options.frames, 0);
  EXPECT_FALSE(options.no_camera);
  EXPECT_FALSE(options.smoke);
  EXPECT_FALSE(options.layout_test);
  EXPECT_EQ(options.status_refresh_frames, 30);
}

TEST(Options, StartWithTheInstalledCascadesAndTheOwnersSamples) {
  const Options options;
  EXPECT_EQ(options.samples_dir, "faces/dorran");
  EXPECT_EQ(options.cascade_path,
            "/usr/share/opencv4/haarcascades/haarcascade_frontalface_default.xml");
  EXPECT_EQ(options.profile_cascade_path,
            "/usr/share/opencv4/haarcascades/haarcascade_profileface.xml");
  EXPECT_EQ(options.detector_type, "frontal_or_profile");
}

TEST(Options, StartWithTheTunedDetectionAndRecognition) {
  const Options options;
  EXPECT_EQ(options.detect_scale, 0.5);
  EXPECT_EQ(options.scale_factor, 1.1);
  EXPECT_EQ(options.min_neighbors, 4);
  EXPECT_EQ(options.min_face_size, 30);
  EXPECT_EQ(options.candidate_threshold, 60.0);
  EXPECT_EQ(options.confirmed_threshold, 55.0);
  EXPECT_EQ(options.confirm_window, 10);
  EXPECT_EQ(options.confirm_required, 5);
}

TEST(Options, LeaveTheWindowToTheScreen) {
  const Options options;
  EXPECT_EQ(options.width, 0);
  EXPECT_EQ(options.height, 0);
  EXPECT_EQ(options.screen_percent, 0.75);
  EXPECT_EQ(options.font_scale, 0.0);
  EXPECT_FALSE(options.fullscreen);
  EXPECT_EQ(options.preset, "normal");
}

TEST(Options, StartInTheComboViewWithBoxesAndMicrophone) {
  const Options options;
  EXPECT_EQ(options.overlay_mode, "auto");
  EXPECT_EQ(options.view, "combo");
  EXPECT_TRUE(options.spare_toggle);
  EXPECT_TRUE(options.face_boxes);
  EXPECT_FALSE(options.debug);
  EXPECT_TRUE(options.mic_hud);
}

}  // namespace
}  // namespace halcyra
