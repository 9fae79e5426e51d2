// What the time-of-flight sensor measures of the light that comes back to it. Both pictures are
// float, of the canvas's size, and 0 in the outermost columns. The set number chooses the noise.
#pragma once

#include <cstdint>

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/canvas.hpp"
#include "virtual_kinect/room/sensor_noise.hpp"

namespace halcyra::virtual_kinect::room {

// Millimetres; 0 outside the sensor's range of 500 to 4500, at outlines and where too little light
// comes back.
cv::Mat measure_depth(const DepthCanvas& canvas, const SensorNoise& noise, std::uint64_t set);

// Brightness in the sensor's own units; at least 1.
cv::Mat measure_infrared(const DepthCanvas& canvas, const SensorNoise& noise, std::uint64_t set);

}  // namespace halcyra::virtual_kinect::room
