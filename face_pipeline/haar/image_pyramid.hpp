// The shrunken copies of a picture that cascades search.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "face_pipeline/haar/pyramid_layer.hpp"

namespace halcyra::haar {

// How the planes of a picture's layers are laid out; the same for pictures of the same width.
PlaneLayout plane_layout(int picture_width);

// Makes each copy once, when it is first asked for, however many cascades search it. Memory is kept
// from picture to picture.
class ImagePyramid {
 public:
  // Forgets what was made of the picture before. The 8-bit one-channel picture is not copied: its
  // pixels must stay what they are until the next call or forget_picture.
  void set_picture(const cv::Mat& picture);
  void forget_picture() { set_picture(cv::Mat()); }

  const cv::Mat& picture() const { return picture_; }
  PlaneLayout layout() const { return plane_layout(picture_.cols); }

  // The layers of these scales, in this order, each scale at least 1. Valid until set_picture.
  // Works on OpenCV's threads.
  std::vector<const PyramidLayer*> layers(const std::vector<float>& scales);

 private:
  PyramidLayer* find(float scale) const;

  cv::Mat picture_;
  std::vector<std::unique_ptr<PyramidLayer>> layers_;
  std::size_t made_ = 0;  // so many of them are of this picture
};

}  // namespace halcyra::haar
