#include "tests/usb_kinect/scene.hpp"

#include <turbojpeg.h>

#include <cstdio>
#include <memory>

#include "tests/usb_kinect/color_pattern.hpp"
#include "tests/usb_kinect/depth_codes.hpp"
#include "tests/usb_kinect/log.hpp"
#include "tests/usb_kinect/picture_files.hpp"
#include "tests/usb_kinect/settings.hpp"

namespace usb_kinect {
namespace {

// As the sensor compresses: two columns share their colour.
Bytes jpeg_of(const Bytes& rgb) {
  constexpr int kQuality = 90;
  const std::unique_ptr<void, int (*)(tjhandle)> encoder(tjInitCompress(), tjDestroy);
  unsigned char* data = nullptr;
  unsigned long size = 0;
  tjCompress2(encoder.get(), rgb.data(), kColorWidth, 0, kColorHeight, TJPF_RGB, &data, &size,
              TJSAMP_422, kQuality, 0);
  const Bytes result(data, data + size);
  tjFree(data);
  return result;
}

void add_color(Scene& scene) {
  const Settings& wanted = settings();
  scene.color_hold = wanted.color_hold;
  if (!wanted.color.empty()) {
    scene.jpegs = read_jpegs(wanted.color);
    if (!scene.jpegs.empty()) return;
    std::fprintf(stderr, "usb_kinect: USB_KINECT_COLOR gives no picture; the pattern is used\n");
  }
  constexpr int kPhases = 4;
  constexpr long kPatternHold = 15;
  for (int phase = 0; phase < kPhases; ++phase) {
    scene.jpegs.push_back(jpeg_of(color_pattern(phase)));
  }
  if (!wanted.color_hold_set) scene.color_hold = kPatternHold;
}

void replace_by_file(std::vector<float>& values, const std::string& file, const char* variable) {
  if (file.empty()) return;
  std::vector<float> read = read_pgm(file, variable);
  if (!read.empty()) values = std::move(read);
}

Bytes noise_of(std::size_t size) {
  Bytes result(size);
  std::uint32_t state = 2463534242U;
  for (std::uint8_t& value : result) {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    value = byte(state >> 11);
  }
  return result;
}

}  // namespace

Scene make_scene() {
  const Settings& wanted = settings();
  Scene scene;
  add_color(scene);
  DepthPicture picture = plane(wanted.depth_mm, wanted.depth_slope, wanted.ir_level);
  replace_by_file(picture.depth, wanted.depth_file, "USB_KINECT_DEPTH");
  replace_by_file(picture.infrared, wanted.ir_file, "USB_KINECT_IR");
  scene.depth = encode_depth(picture, Lens());
  scene.noise = noise_of(scene.depth.size());
  note("pictures ready: %zu colour, first %zu bytes", scene.jpegs.size(), scene.jpegs[0].size());
  return scene;
}

}  // namespace usb_kinect
