// Pictures that a person gives the sensor to see.
#pragma once

#include <string>
#include <vector>

#include "tests/usb_kinect/bytes.hpp"

namespace usb_kinect {

// The JPEG files at a path, a file or a folder of them, in ascending order of name. Whatever
// follows a picture's end marker is cut off. What cannot be used is said on standard error and left
// out; what is not 1920x1080 or too large for a reader is said and kept.
std::vector<Bytes> read_jpegs(const std::string& path);

// The values of a binary PGM (P5, 8 or 16 bits, 512x424). Empty on failure, which is said on
// standard error as a fault of `variable`.
std::vector<float> read_pgm(const std::string& path, const char* variable);

}  // namespace usb_kinect
