// Reads from the environment which sensor there is.
#pragma once

#include <functional>
#include <optional>

#include "virtual_kinect/device_settings.hpp"
#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

struct Scene {
  DeviceSettings settings;
  std::function<FrameSource()> open_source;
};

// What the environment variable VIRTUAL_KINECT names; nothing where it is unset or empty. A value
// that cannot be used gives nothing either, and one line on standard error says why.
std::optional<Scene> find_scene();

}  // namespace halcyra::virtual_kinect
