#include "virtual_kinect/room/renderer.hpp"

#include <algorithm>
#include <cmath>
#include <future>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room/contact_shadow.hpp"
#include "virtual_kinect/room/depth_sensor.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kSkinWrap = 0.25F;
constexpr float kClothWrap = 0.35F;

std::map<Person, PersonModel> make_people() {
  std::map<Person, PersonModel> people;
  for (const Person person : kAllPeople) people.emplace(person, make_person(look_of(person)));
  return people;
}

// Smooths the stepped outlines of the people, who were drawn in front of the room.
void soften(const ColorCanvas& canvas, const cv::Mat& room_nearness, const cv::Rect& area) {
  cv::Mat drawn;
  cv::compare(canvas.nearness(area), room_nearness(area), drawn, cv::CMP_NE);
  cv::dilate(drawn, drawn, cv::Mat::ones(3, 3, CV_8U));
  cv::Mat smooth;
  cv::GaussianBlur(canvas.color(area), smooth, {3, 3}, 0.6);
  smooth.copyTo(canvas.color(area), drawn);
}

void defocus(cv::Mat& picture, float radius) {
  cv::Mat half;
  cv::resize(picture, half, {}, 0.5, 0.5, cv::INTER_AREA);
  cv::GaussianBlur(half, half, {0, 0}, 0.5 * static_cast<double>(radius));
  cv::resize(half, picture, picture.size(), 0, 0, cv::INTER_LINEAR);
}

}  // namespace

Renderer::Renderer(std::uint32_t seed) : noise_(seed) {
  std::future<std::map<Person, PersonModel>> people = std::async(std::launch::async, make_people);
  backdrop_ = draw_backdrop();
  people_ = people.get();
}

const cv::Mat& Renderer::lit_room(const LightLevels& light) const {
  const bool same = light.daylight == lit_by_.daylight && light.lamp == lit_by_.lamp;
  if (lit_room_.empty() || !same) {
    lit_room_ = lit_backdrop(backdrop_, light);
    lit_by_ = light;
  }
  return lit_room_;
}

void Renderer::draw_person(const ColorCanvas& canvas, const Presence& presence,
                           const LightLevels& light) const {
  cv::Rect area;
  for (const PlacedPart& part : placed_parts(people_.at(presence.person), presence.posture)) {
    const cv::Rect covered = extent(canvas.camera, *part.surface, part.pose);
    if (!covered.empty()) {
      draw(canvas, *part.surface, part.pose, light, part.is_skin ? kSkinWrap : kClothWrap);
      area |= covered;
    }
  }
  if (!area.empty()) soften(canvas, backdrop_.color_nearness, area);
}

cv::Mat Renderer::render_color(const Moment& moment, std::uint64_t set) const {
  cv::Mat picture = lit_room(moment.light).clone();
  for (const Presence& presence : moment.people) {
    add_contact_shadow(picture, backdrop_.color_nearness, presence.posture);
  }
  if (!moment.people.empty()) {
    const ColorCanvas canvas{kColorCamera, picture, backdrop_.color_nearness.clone()};
    for (const Presence& presence : moment.people) draw_person(canvas, presence, moment.light);
  }
  if (moment.defocus > 0.3F) defocus(picture, moment.defocus);
  noise_.add_to_color(picture, set);
  return picture;
}

InfraredAndDepth Renderer::render_infrared_and_depth(const Moment& moment,
                                                     std::uint64_t set) const {
  const DepthCanvas canvas{kDepthCamera, backdrop_.depth_nearness.clone(),
                           backdrop_.depth_echo.clone()};
  for (const Presence& presence : moment.people) {
    for (const PlacedPart& part : placed_parts(people_.at(presence.person), presence.posture)) {
      draw(canvas, *part.surface, part.pose);
    }
  }
  return {measure_infrared(canvas, noise_, set), measure_depth(canvas, noise_, set)};
}

}  // namespace halcyra::virtual_kinect::room
