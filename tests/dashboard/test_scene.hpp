// The inputs of one dashboard picture, for a test to change before it draws.
#pragma once

#include <string>
#include <vector>

#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "app/run_state/views.hpp"
#include "dashboard/dashboard_scene.hpp"
#include "dashboard/draw_dashboard.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct TestScene {
  cv::Mat color;
  cv::Mat infrared;
  cv::Mat depth;
  RuntimeStatus status;
  Options options;
  std::vector<FaceInfo> faces;

  // What the parts of the dashboard get. Refers to this record.
  DashboardScene shown() const {
    return {color, infrared, depth, status, options, faces, options.view, view_label(options.view)};
  }
};

// Draws on `canvas` as the program does, with the current font scale.
inline void draw_scene(cv::Mat& canvas, const TestScene& scene) {
  draw_dashboard(canvas, scene.color, scene.infrared, scene.depth, scene.status, scene.options,
                 scene.faces);
}

inline cv::Mat dashboard_showing(const TestScene& scene) {
  cv::Mat canvas;
  draw_scene(canvas, scene);
  return canvas;
}

// A face with an accepted picture of an unknown person.
inline FaceInfo test_face(int person_id, const cv::Rect& box, const cv::Scalar& color) {
  FaceInfo face;
  face.person_id = person_id;
  face.box = box;
  face.color = color;
  face.detector_type = "frontal";
  face.quality = "accepted";
  return face;
}

}  // namespace halcyra
