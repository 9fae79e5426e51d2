// Drawing straight with OpenCV, for the pictures that the tests expect. Colours are BGR, lengths
// are pixels.
#pragma once

#include <string>

#include <opencv2/core.hpp>

namespace halcyra::expected {

// A canvas in a grey that the dashboard does not use, so that everything drawn on it is visible.
cv::Mat canvas(int width, int height);

// A picture in which no two neighbouring pixels are alike.
cv::Mat picture(int width, int height);

// Text at `scale` times the font scale, its lines `stroke` pixels thick.
void text(cv::Mat& canvas, const std::string& text, cv::Point origin, double scale,
          const cv::Scalar& color, int stroke = 1);

// A filled rectangle without an outline.
void fill(cv::Mat& canvas, const cv::Rect& rect, const cv::Scalar& color, int line_type);

// A filled rectangle with an outline of one pixel, both anti-aliased.
void smooth_box(cv::Mat& canvas, const cv::Rect& rect, const cv::Scalar& fill,
                const cv::Scalar& outline);

// The whole picture scaled to fill the rectangle, with area interpolation.
void scaled_picture(cv::Mat& canvas, const cv::Rect& rect, const cv::Mat& picture);

}  // namespace halcyra::expected
