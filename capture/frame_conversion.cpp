#include "capture/frame_conversion.hpp"

#include <opencv2/imgproc.hpp>

namespace halcyra {

void color_images(const cv::Mat& pixels, ChannelOrder order, ColorImages& images) {
  const bool rgbx = order == ChannelOrder::kRgbx;
  cv::cvtColor(pixels, images.bgr, rgbx ? cv::COLOR_RGBA2BGR : cv::COLOR_BGRA2BGR);
  cv::cvtColor(pixels, images.grey, rgbx ? cv::COLOR_RGBA2GRAY : cv::COLOR_BGRA2GRAY);
}

}  // namespace halcyra
