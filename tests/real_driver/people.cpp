#include "tests/real_driver/people.hpp"

#include <algorithm>

#include "tests/e2e/sensor_run.hpp"
#include "tests/support/photograph.hpp"

namespace halcyra {
namespace {

// The head and shoulders.
cv::Mat portrait() { return color_photograph()(cv::Rect(20, 0, 427, 240)).clone(); }

}  // namespace

cv::Mat people(int count) {
  if (count == 0) return empty_room_picture();
  const cv::Mat person = portrait();
  const int places = std::max(count, 2);
  const cv::Size size(person.cols * places, person.cols * places * 9 / 16);
  cv::Mat result(size, person.type(), cv::Scalar::all(90));
  for (int i = 0; i < count; ++i) {
    const cv::Point corner(i * person.cols, (size.height - person.rows) / 2);
    person.copyTo(result(cv::Rect(corner, person.size())));
  }
  return result;
}

}  // namespace halcyra
