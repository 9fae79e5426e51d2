#include "tests/dashboard/expected_drawing.hpp"

#include <opencv2/imgproc.hpp>

#include "dashboard/font_scale.hpp"

namespace halcyra::expected {

cv::Mat canvas(int width, int height) {
  // Several times faster than filling every row; most tests spend their time here.
  const cv::Mat row(1, width, CV_8UC3, cv::Scalar(77, 88, 99));
  return cv::repeat(row, height, 1);
}

cv::Mat picture(int width, int height) {
  cv::Mat picture(height, width, CV_8UC3);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      picture.at<cv::Vec3b>(y, x) =
          cv::Vec3b(static_cast<uchar>(x * 37 + y * 11), static_cast<uchar>(x * 5 + y * 71),
                    static_cast<uchar>(x * 13 + y * 29));
    }
  }
  return picture;
}

void text(cv::Mat& canvas, const std::string& text, cv::Point origin, double scale,
          const cv::Scalar& color, int stroke) {
  cv::putText(canvas, text, origin, cv::FONT_HERSHEY_SIMPLEX, scale * g_font_scale, color, stroke,
              cv::LINE_AA);
}

void fill(cv::Mat& canvas, const cv::Rect& rect, const cv::Scalar& color, int line_type) {
  cv::rectangle(canvas, rect, color, cv::FILLED, line_type);
}

void smooth_box(cv::Mat& canvas, const cv::Rect& rect, const cv::Scalar& fill,
                const cv::Scalar& outline) {
  cv::rectangle(canvas, rect, fill, cv::FILLED, cv::LINE_AA);
  cv::rectangle(canvas, rect, outline, 1, cv::LINE_AA);
}

void scaled_picture(cv::Mat& canvas, const cv::Rect& rect, const cv::Mat& picture) {
  cv::Mat scaled;
  cv::resize(picture, scaled, rect.size(), 0, 0, cv::INTER_AREA);
  scaled.copyTo(canvas(rect));
}

}  // namespace halcyra::expected
