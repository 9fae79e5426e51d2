// Decodes one file of a recording into what the sensor would have delivered.
#pragma once

#include <filesystem>

#include <libfreenect2/frame_listener.hpp>

#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

// Colour is brought into `color_format`, unless it is grey; infrared and depth become floats of the
// same values. A file that is missing, cannot be decoded or does not suit the stream gives an image
// of the sensor's own size without pixels.
StreamImage read_image(const std::filesystem::path& file, libfreenect2::Frame::Type stream,
                       libfreenect2::Frame::Format color_format);

}  // namespace halcyra::virtual_kinect
