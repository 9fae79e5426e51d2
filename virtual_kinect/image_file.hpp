// Decodes one file of a recording into what the sensor would have delivered.
#pragma once

#include <filesystem>

#include <libfreenect2/frame_listener.hpp>

#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

// Colour comes in `color_format` (BGRX or RGBX), grey colour files as Gray; infrared and depth
// become floats of the same values. The size is the file's. A file that is missing, cannot be
// decoded or does not suit the stream gives an image without pixels, of the size of the sensor's
// pictures.
StreamImage read_image(const std::filesystem::path& file, libfreenect2::Frame::Type stream,
                       libfreenect2::Frame::Format color_format);

}  // namespace halcyra::virtual_kinect
