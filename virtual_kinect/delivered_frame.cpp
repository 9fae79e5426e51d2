#include "virtual_kinect/delivered_frame.hpp"

#include <cstring>
#include <utility>

namespace halcyra::virtual_kinect {

namespace {

class DeliveredFrame final : public libfreenect2::Frame {
 public:
  DeliveredFrame(const cv::Size& size, std::size_t pixel_size, std::shared_ptr<const void> hold)
      : Frame(static_cast<std::size_t>(size.width), static_cast<std::size_t>(size.height),
              pixel_size),
        hold_(std::move(hold)) {}

 private:
  std::shared_ptr<const void> hold_;
};

}  // namespace

std::unique_ptr<libfreenect2::Frame> make_frame(const StreamImage& image,
                                                std::shared_ptr<const void> hold) {
  auto frame = std::make_unique<DeliveredFrame>(image.size, image.pixel_size, std::move(hold));
  frame->format = image.format;
  if (image.pixels.empty()) {
    frame->data = nullptr;
  } else {
    std::memcpy(frame->data, image.pixels.data, image.pixels.total() * image.pixels.elemSize());
  }
  return frame;
}

}  // namespace halcyra::virtual_kinect
