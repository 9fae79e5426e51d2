#include "virtual_kinect/delivered_frame.hpp"

#include <cstdint>
#include <cstring>
#include <utility>

namespace halcyra::virtual_kinect {

namespace {

using libfreenect2::Frame;

constexpr std::uintptr_t kPixelAlignment = 64;

bool is_aligned(const cv::Mat& pixels) {
  return reinterpret_cast<std::uintptr_t>(pixels.data) % kPixelAlignment == 0;
}

// The data of a frame are its `pixels` where it has some, else memory that it allocates.
class DeliveredFrame final : public Frame {
 public:
  DeliveredFrame(const StreamImage& image, cv::Mat pixels, std::shared_ptr<const void> hold)
      : Frame(static_cast<std::size_t>(image.size.width),
              static_cast<std::size_t>(image.size.height), image.pixel_size, pixels.data),
        pixels_(std::move(pixels)),
        hold_(std::move(hold)) {
    format = image.format;
  }

 private:
  cv::Mat pixels_;
  std::shared_ptr<const void> hold_;
};

}  // namespace

std::unique_ptr<Frame> make_frame(const StreamImage& image, std::shared_ptr<const void> hold) {
  if (image.is_given_away && !image.pixels.empty() && is_aligned(image.pixels)) {
    return std::make_unique<DeliveredFrame>(image, image.pixels, std::move(hold));
  }
  auto frame = std::make_unique<DeliveredFrame>(image, cv::Mat(), std::move(hold));
  if (image.pixels.empty()) {
    frame->data = nullptr;
  } else {
    std::memcpy(frame->data, image.pixels.data, image.pixels.total() * image.pixels.elemSize());
  }
  return frame;
}

}  // namespace halcyra::virtual_kinect
