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

// How much of the light remains at each pixel, 0 to 1, as the sensor's lamp and lens leave the
// corners darker. Float, of the camera's size.
cv::Mat make_vignette(const Pinhole& camera);

// Brightness in the sensor's own units; at least 1. `vignette` is that of the canvas's camera.
cv::Mat measure_infrared(const DepthCanvas& canvas, const cv::Mat& vignette,
                         const SensorNoise& noise, std::uint64_t set);

}  // namespace halcyra::virtual_kinect::room
