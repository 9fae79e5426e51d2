#include "virtual_kinect/image_cache.hpp"

namespace halcyra::virtual_kinect {

ImageCache::ImageCache(std::size_t budget_bytes) : budget_left_(budget_bytes) {}

StreamImage ImageCache::get(const std::string& key, const std::function<StreamImage()>& load) {
  const auto kept = images_.find(key);
  if (kept != images_.end()) return kept->second;
  StreamImage image = load();
  const std::size_t bytes = image.pixels.total() * image.pixels.elemSize();
  if (bytes <= budget_left_) {
    budget_left_ -= bytes;
    images_.emplace(key, image);
  }
  return image;
}

}  // namespace halcyra::virtual_kinect
