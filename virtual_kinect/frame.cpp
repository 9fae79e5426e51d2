#include <new>

#include <libfreenect2/frame_listener.hpp>

namespace libfreenect2 {

namespace {

constexpr std::align_val_t kPixelAlignment{64};

}  // namespace

Frame::Frame(std::size_t frame_width, std::size_t frame_height, std::size_t frame_bytes_per_pixel,
             unsigned char* frame_data)
    : width(frame_width),
      height(frame_height),
      bytes_per_pixel(frame_bytes_per_pixel),
      data(frame_data) {
  if (data == nullptr) {
    const std::size_t bytes = width * height * bytes_per_pixel;
    allocated_ = static_cast<unsigned char*>(::operator new(bytes, kPixelAlignment));
    data = allocated_;
  }
}

Frame::~Frame() { ::operator delete(allocated_, kPixelAlignment); }

}  // namespace libfreenect2
