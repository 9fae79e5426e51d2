// Keeps decoded images of a repeating recording, because decoding a set takes longer than the time
// between two sets.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>

#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

// Keeps the first images for good, until their pixels fill the budget; the others are loaded on
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
