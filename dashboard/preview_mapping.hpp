// Which part of the colour frame the preview shows, and where a face of the frame is on the canvas.
// Computes only; draws nothing.
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

// Shows the whole frame or, in the view "follow" with exactly one face, the part around that face.
// `frame` is not empty; the crop always lies inside it and has at least one pixel.
PreviewMapping preview_mapping(cv::Size frame, const cv::Rect& area, const std::string& view,
                               const std::vector<FaceInfo>& faces);

// Converts a box in pixels of the frame to pixels of the canvas, clipped to the area. Empty when no
// part of the box is shown or when it shrinks to less than a pixel.
cv::Rect on_canvas(const PreviewMapping& mapping, const cv::Rect& box);

}  // namespace halcyra
