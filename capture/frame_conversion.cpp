#include "capture/frame_conversion.hpp"

#include <opencv2/imgproc.hpp>

namespace halcyra {

ColorImages color_images(const cv::Mat& pixels, ChannelOrder order) {
  const bool rgbx = order == ChannelOrder::kRgbx;
  ColorImages images;
  cv::cvtColor(pixels, images.bgr, rgbx ? cv::COLOR_RGBA2BGR : cv::COLOR_BGRA2BGR);
  cv::cvtColor(pixels, images.grey, rgbx ? cv::COLOR_RGBA2GRAY : cv::COLOR_BGRA2GRAY);
  return images;
}

}  // namespace halcyra
