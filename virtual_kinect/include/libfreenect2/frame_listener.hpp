// What the sensor delivers, and who receives it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace libfreenect2 {

class Frame {
 public:
  enum Type { Color = 1, Ir = 2, Depth = 4 };
  enum Format { Invalid = 0, Raw = 1, Float = 2, BGRX = 4, RGBX = 5, Gray = 6 };

  std::size_t width = 0;
  std::size_t height = 0;
  std::size_t bytes_per_pixel = 0;
  unsigned char* data = nullptr;  // null where the frame could not be decoded
  std::uint32_t timestamp = 0;    // units of 0.125 ms
  std::uint32_t sequence = 0;
  float exposure = 0.0F;
  float gain = 0.0F;
  float gamma = 0.0F;
  std::uint32_t status = 0;
  Format format = Invalid;

  // Without `data` the frame allocates its pixels, 64-byte aligned, and owns them; a given `data`
  // stays the caller's.
  Frame(std::size_t width, std::size_t height, std::size_t bytes_per_pixel,
        unsigned char* data = nullptr);
  virtual ~Frame();
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;

 private:
  unsigned char* allocated_ = nullptr;
};

class FrameListener {
 public:
  FrameListener() = default;
  virtual ~FrameListener() = default;
  FrameListener(const FrameListener&) = delete;
  FrameListener& operator=(const FrameListener&) = delete;

  // Called on the driver's thread. True: the listener took ownership of `frame`. False: the driver
  // deletes it.
  virtual bool onNewFrame(Frame::Type type, Frame* frame) = 0;
};

}  // namespace libfreenect2
