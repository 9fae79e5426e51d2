// Takes the place of OpenCV's cv::resize where that rounds otherwise than on the machines that the
// golden pictures come from. So the pictures show what the dashboard draws, to the pixel, on every
// machine.
#include <opencv2/imgproc.hpp>

#include "tests/golden/shrinking.hpp"
#include "tests/support/next_definition.hpp"

void cv::resize(InputArray src, OutputArray dst, Size size, double fx, double fy,
                int interpolation) {
  using Resize = void(InputArray, OutputArray, Size, double, double, int);
  if (interpolation == INTER_AREA && src.depth() == CV_8U && !size.empty() &&
      halcyra::shrinks_with_fractions(src.size(), size)) {
    halcyra::shrunk(src.getMat(), size).copyTo(dst);
    return;
  }
  static Resize* const library_resize = halcyra::next_definition<Resize>(cv::resize);
  library_resize(src, dst, size, fx, fy, interpolation);
}
