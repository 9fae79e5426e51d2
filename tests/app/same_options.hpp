// Comparison of two sets of options, field by field.
#pragma once

#include <gtest/gtest.h>

#include "app/run_state/options.hpp"

namespace halcyra {

inline void expect_same_detection(const Options& actual, const Options& expected) {
  EXPECT_EQ(actual.samples_dir, expected.samples_dir);
  EXPECT_EQ(actual.cascade_path, expected.cascade_path);
  EXPECT_EQ(actual.profile_cascade_path, expected.profile_cascade_path);
  EXPECT_EQ(actual.detector_type, expected.detector_type);
  EXPECT_EQ(actual.detect_scale, expected.detect_scale);
  EXPECT_EQ(actual.scale_factor, expected.scale_factor);
  EXPECT_EQ(actual.min_neighbors, expected.min_neighbors);
  EXPECT_EQ(actual.min_face_size, expected.min_face_size);
  EXPECT_EQ(actual.candidate_threshold, expected.candidate_threshold);
  EXPECT_EQ(actual.confirmed_threshold, expected.confirmed_threshold);
  EXPECT_EQ(actual.confirm_window, expected.confirm_window);
  EXPECT_EQ(actual.confirm_required, expected.confirm_required);
}

inline void expect_same_window(const Options& actual, const Options& expected) {
  EXPECT_EQ(actual.width, expected.width);
  EXPECT_EQ(actual.height, expected.height);
  EXPECT_EQ(actual.screen_percent, expected.screen_percent);
  EXPECT_EQ(actual.font_scale, expected.font_scale);
  EXPECT_EQ(actual.fullscreen, expected.fullscreen);
  EXPECT_EQ(actual.preset, expected.preset);
}

inline void expect_same_view(const Options& actual, const Options& expected) {
  EXPECT_EQ(actual.overlay_mode, expected.overlay_mode);
  EXPECT_EQ(actual.view, expected.view);
  EXPECT_EQ(actual.spare_toggle, expected.spare_toggle);
  EXPECT_EQ(actual.face_boxes, expected.face_boxes);
  EXPECT_EQ(actual.debug, expected.debug);
  EXPECT_EQ(actual.mic_hud, expected.mic_hud);
}

inline void expect_same_options(const Options& actual, const Options& expected) {
  EXPECT_EQ(actual.frames, expected.frames);
  EXPECT_EQ(actual.no_camera, expected.no_camera);
  EXPECT_EQ(actual.smoke, expected.smoke);
  EXPECT_EQ(actual.status_refresh_frames, expected.status_refresh_frames);
  EXPECT_EQ(actual.layout_test, expected.layout_test);
  expect_same_detection(actual, expected);
  expect_same_window(actual, expected);
  expect_same_view(actual, expected);
}

}  // namespace halcyra
