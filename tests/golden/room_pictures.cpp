#include "tests/golden/room_pictures.hpp"

#include <algorithm>

#include <opencv2/imgproc.hpp>

#include "tests/support/photograph.hpp"

namespace halcyra {
namespace {

constexpr int kPhotographSide = 512;
constexpr int kPhotographTop = 230;
const cv::Size kColorSize(1920, 1080);
const cv::Size kDepthSize(512, 424);

int photograph_left(int person, int people) {
  if (people == 1) return (kColorSize.width - kPhotographSide) / 2;
  return person == 1 ? 330 : 1080;
}

// A wall that darkens towards the ceiling, and a floor.
cv::Mat empty_room() {
  constexpr int kFloor = 820;
  cv::Mat room(kColorSize, CV_8UC3);
  for (int y = 0; y < room.rows; ++y) {
    const int light = y < kFloor ? y / 12 : (y - kFloor) / 8 - 40;
    room.row(y).setTo(cv::Scalar(104 + light, 96 + light, 84 + light));
  }
  return room;
}

cv::Mat color_picture(int people) {
  cv::Mat room = empty_room();
  cv::Mat person = color_photograph();
  for (int i = 1; i <= people; ++i) {
    const cv::Rect place(photograph_left(i, people), kPhotographTop, person.cols, person.rows);
    person.copyTo(room(place));
    cv::rectangle(room, place, {48, 44, 40}, 6);
    cv::flip(person, person, 1);
  }
  return room;
}

bool in_ellipse(cv::Point point, cv::Point centre, cv::Size axes) {
  const double x = static_cast<double>(point.x - centre.x) / axes.width;
  const double y = static_cast<double>(point.y - centre.y) / axes.height;
  return x * x + y * y <= 1.0;
}

// The distance that the sensor measures at a point of the depth picture.
int millimetres_at(cv::Point point, int people) {
  for (int i = 1; i <= people; ++i) {
    const int x = people == 1 ? 256 : (i == 1 ? 150 : 362);
    const int farther = 350 * (i - 1);
    if (in_ellipse(point, {x, 160}, {42, 54})) return 1500 + farther + std::abs(point.x - x) * 3;
    if (in_ellipse(point, {x, 345}, {112, 137})) return 1620 + farther + std::abs(point.x - x) * 2;
  }
  const int wall = 3600 + std::abs(point.x - 256);
  const int floor = 3900 - (point.y - 300) * 14;
  return std::min(wall, floor);
}

// Distances from 0.5 m to 4.5 m as grey levels; near is bright.
cv::Mat nearness_picture(int people) {
  cv::Mat picture(kDepthSize, CV_8UC1);
  for (int y = 0; y < picture.rows; ++y) {
    for (int x = 0; x < picture.cols; ++x) {
      const int millimetres = std::clamp(millimetres_at({x, y}, people), 500, 4500);
      picture.at<uchar>(y, x) = static_cast<uchar>(255 - (millimetres - 500) * 255 / 4000);
    }
  }
  return picture;
}

}  // namespace

RoomPictures room_pictures(int people) {
  RoomPictures pictures;
  pictures.color = color_picture(people);
  const cv::Mat nearness = nearness_picture(people);
  cv::cvtColor(nearness, pictures.infrared, cv::COLOR_GRAY2BGR);
  cv::applyColorMap(nearness, pictures.depth, cv::COLORMAP_JET);
  return pictures;
}

cv::Rect face_in_room(int person, int people) {
  const cv::Rect face(170, 62, 108, 108);  // in the photograph
  const int x = person == 1 ? face.x : kPhotographSide - face.x - face.width;
  return {photograph_left(person, people) + x, kPhotographTop + face.y, face.width, face.height};
}

}  // namespace halcyra
