#include "tests/app/allocated_pictures.hpp"

namespace halcyra {

AllocatedPictures::AllocatedPictures() : usual_(cv::Mat::getDefaultAllocator()) {
  cv::Mat::setDefaultAllocator(this);
}

AllocatedPictures::~AllocatedPictures() { cv::Mat::setDefaultAllocator(usual_); }

cv::UMatData* AllocatedPictures::allocate(int dimensions, const int* lengths, int type, void* data,
                                          std::size_t* steps, cv::AccessFlag access,
                                          cv::UMatUsageFlags usage) const {
  if (dimensions == 2 && type == CV_8UC3) sizes_.emplace_back(lengths[1], lengths[0]);
  return usual_->allocate(dimensions, lengths, type, data, steps, access, usage);
}

bool AllocatedPictures::allocate(cv::UMatData* data, cv::AccessFlag access,
                                 cv::UMatUsageFlags usage) const {
  return usual_->allocate(data, access, usage);
}

void AllocatedPictures::deallocate(cv::UMatData* data) const { usual_->deallocate(data); }

}  // namespace halcyra
