// How the colour frame is laid onto the preview: which part of it is shown, and where a face of
// the frame comes to stand. Pure geometry, nothing is drawn.
#pragma once

#include <string>
#include <vector>

#include <opencv2/core/types.hpp>

#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct PreviewMapping {
  cv::Rect crop;  // the part of the colour frame that is shown
  cv::Rect area;  // where on the canvas it is shown
};

// The whole frame, or, in the view "follow" with exactly one face, a part of it around that face.
PreviewMapping preview_mapping(cv::Size frame, const cv::Rect& area, const std::string& view,
                               const std::vector<FaceInfo>& faces);

// A box of the frame as it stands on the canvas, clipped to the area; without area when nothing of
// it is shown.
cv::Rect on_canvas(const PreviewMapping& mapping, const cv::Rect& box);

}  // namespace halcyra
