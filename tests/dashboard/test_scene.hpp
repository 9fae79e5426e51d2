// The inputs of one dashboard picture, to be changed by a test before it draws.
#pragma once

#include <string>
#include <vector>

#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "app/run_state/views.hpp"
#include "dashboard/dashboard_scene.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct TestScene {
  cv::Mat color;
  cv::Mat infrared;
  cv::Mat depth;
  RuntimeStatus status;
  Options options;
  std::vector<FaceInfo> faces;

  // What the dashboard's parts get to see; refers to this record.
  DashboardScene shown() const {
    return {color, infrared, depth, status, options, faces, options.view, view_label(options.view)};
  }
};

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
