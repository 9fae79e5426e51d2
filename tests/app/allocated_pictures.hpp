// Which pictures are made, and in which order.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// While one lives, records every 8-bit BGR picture that gets memory. Replaces OpenCV's default
// allocator meanwhile. For one thread at a time.
class AllocatedPictures : public cv::MatAllocator {
 public:
  AllocatedPictures();
  ~AllocatedPictures() override;
  AllocatedPictures(const AllocatedPictures&) = delete;
  AllocatedPictures& operator=(const AllocatedPictures&) = delete;

  // In the order in which the pictures were made.
  const std::vector<cv::Size>& sizes() const { return sizes_; }

  cv::UMatData* allocate(int dimensions, const int* lengths, int type, void* data,
                         std::size_t* steps, cv::AccessFlag access,
                         cv::UMatUsageFlags usage) const override;
  bool allocate(cv::UMatData* data, cv::AccessFlag access, cv::UMatUsageFlags usage) const override;
  void deallocate(cv::UMatData* data) const override;

 private:
  cv::MatAllocator* usual_;
  mutable std::vector<cv::Size> sizes_;
};

}  // namespace halcyra
