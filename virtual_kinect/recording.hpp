// Plays the images in a recording's folders color, ir and depth.
#pragma once

#include <filesystem>
#include <vector>

#include <libfreenect2/frame_listener.hpp>

#include "virtual_kinect/device_settings.hpp"
#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

// The stream's images in the order of play: ascending file name, compared byte by byte. Nothing
// where the folder is missing.
std::vector<std::filesystem::path> stream_files(const std::filesystem::path& recording,
                                                libfreenect2::Frame::Type stream);

// Lists the files now and decodes each when its set is asked for. The shortest stream that has any
// files decides where the recording ends.
FrameSource open_recording(const std::filesystem::path& recording, const DeviceSettings& settings);

}  // namespace halcyra::virtual_kinect
