// What the sensors see, in the form in which they send it.
#pragma once

#include <vector>

#include "tests/usb_kinect/bytes.hpp"

namespace usb_kinect {

struct Scene {
  std::vector<Bytes> jpegs;  // at least one
  long color_hold = 1;       // frames for which each is shown
  Bytes depth;               // the sub-images of a frame, one after another
  Bytes noise;               // as many random bytes
};

// Makes the scene that the settings ask for; takes a few tenths of a second.
Scene make_scene();

}  // namespace usb_kinect
