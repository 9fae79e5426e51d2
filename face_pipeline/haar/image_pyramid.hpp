// The shrunken copies of a picture that cascades search.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "face_pipeline/haar/pyramid_layer.hpp"

namespace halcyra::haar {

// The layout of a layer of this width, which is at most the picture's. Layers of similar widths
// share a layout, as each one takes a plan of its own.
PlaneLayout plane_layout(int picture_width, int layer_width);

// Makes each copy once, when it is first asked for, however many cascades search it. Memory is
// reused from picture to picture.
class ImagePyramid {
 public:
  // Takes an 8-bit one-channel picture and forgets all copies of the one before. The picture itself
  // is not copied: its pixels must not change until the next call or forget_picture.
  void set_picture(const cv::Mat& picture);
  void forget_picture() { set_picture(cv::Mat()); }

  const cv::Mat& picture() const { return picture_; }

  // The layers of these scales (each at least 1), in this order. Missing ones are made first, on
  // OpenCV's threads. Valid until the next set_picture.
  std::vector<const PyramidLayer*> layers(const std::vector<float>& scales);

 private:
  PyramidLayer* find(float scale) const;

  cv::Mat picture_;
  std::vector<std::unique_ptr<PyramidLayer>> layers_;
  std::size_t made_ = 0;  // the number of layers, from the first, that are of this picture
};

}  // namespace halcyra::haar
