// Text whose size follows from the room that there is for it. Lengths are pixels, colours BGR.
#pragma once

#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Lines of text at one size.
struct FittedText {
  std::vector<std::string> lines;
  double scale = 1.0;   // as OpenCV's text functions take it
  int line_height = 0;  // from one baseline to the next
};

// The text in the largest letters with which all of it fits into `room`, in lines broken at blanks.
// Capital letters get at most `cap_height` high. A word that is too long even in small letters is
// broken anywhere. Only where the smallest legible letters do not fit, they get smaller still.
FittedText fit_text(const std::string& text, cv::Size room, int cap_height);

// Draws the text in the middle of `room`, as large as fit_text makes it.
void drawFittedText(cv::Mat& canvas, const std::string& text, const cv::Rect& room, int cap_height,
                    const cv::Scalar& color);

// Draws one line that starts at the left of `room` and stands in the middle of its height. Its
// capital letters are `cap_height` high, or smaller where the line would be wider than `room`.
void drawLineOfText(cv::Mat& canvas, const std::string& text, const cv::Rect& room, int cap_height,
                    const cv::Scalar& color);

}  // namespace halcyra
