// Keeps decoded images of a looping recording, as decoding takes longer than a frame's time.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>

#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

// The first images are kept, and stay, until their pixels fill the budget; the rest is loaded on
// each call.
class ImageCache {
 public:
  explicit ImageCache(std::size_t budget_bytes);

  StreamImage get(const std::string& key, const std::function<StreamImage()>& load);

 private:
  std::size_t budget_left_;
  std::map<std::string, StreamImage> images_;
};

}  // namespace halcyra::virtual_kinect
