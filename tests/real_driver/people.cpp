#include "tests/real_driver/people.hpp"

#include "tests/e2e/sensor_run.hpp"
#include "tests/support/photograph.hpp"

namespace halcyra {
namespace {

// The head and shoulders.
cv::Mat portrait() { return color_photograph()(cv::Rect(20, 0, 427, 240)).clone(); }

}  // namespace

cv::Mat people(int count) {
  if (count == 0) return empty_room_picture();
  cv::Mat result;
  cv::repeat(portrait(), 1, count, result);
  const int border = (result.cols * 9 / 16 - result.rows) / 2;
  cv::copyMakeBorder(result, result, border, border, 0, 0, cv::BORDER_CONSTANT,
                     cv::Scalar::all(90));
  return result;
}

}  // namespace halcyra
