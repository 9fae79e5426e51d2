// Turns raw pixels of the sensor into pictures. Independent of the driver.
#pragma once

#include <opencv2/core/mat.hpp>

namespace halcyra {

struct ColorImages {
  cv::Mat bgr;   // 8-bit, 3 channels, the frame's size
  cv::Mat grey;  // 8-bit, 1 channel, the frame's size
};

enum class ChannelOrder { kBgrx, kRgbx };

// `pixels` is 8-bit with 4 channels, the fourth unused. Writes into the memory of images of the
// same size.
void color_images(const cv::Mat& pixels, ChannelOrder order, ColorImages& images);

// Stretches the positive finite intensities (32-bit float, 1 channel) to an equalised 8-bit BGR
// picture; very bright outliers saturate. False, with `picture` untouched, if no two intensities
// differ.
bool infrared_picture(const cv::Mat& intensities, cv::Mat& picture);

// Depth in millimetres (32-bit float, 1 channel) as a JET picture, nearest red at 500 mm, farthest
// blue at 4500 mm. False, with `picture` untouched, if nothing lies between 250 and 8000 mm.
bool depth_picture(const cv::Mat& millimetres, cv::Mat& picture);

}  // namespace halcyra
