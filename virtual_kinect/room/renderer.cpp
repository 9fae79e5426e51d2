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

// What softening needs around what was drawn.
constexpr int kRim = 2;

cv::Rect widened(const cv::Rect& area, const cv::Size& picture) {
  return (area + cv::Size(2 * kRim, 2 * kRim) - cv::Point(kRim, kRim)) & cv::Rect({}, picture);
}

// The rest of a picture. No area is empty.
std::vector<cv::Rect> areas_around(const cv::Rect& area, const cv::Size& picture) {
  const int right = area.br().x;
  const int bottom = area.br().y;
  std::vector<cv::Rect> around = {{0, 0, picture.width, area.y},
                                  {0, area.y, area.x, area.height},
                                  {right, area.y, picture.width - right, area.height},
                                  {0, bottom, picture.width, picture.height - bottom}};
  around.erase(std::remove_if(around.begin(), around.end(),
                              [](const cv::Rect& each) { return each.empty(); }),
               around.end());
  return around;
}

// Of all parts that are in view.
cv::Rect extent_of(const std::vector<PlacedPart>& parts) {
  cv::Rect area;
  for (const PlacedPart& part : parts) area |= extent(kColorCamera, *part.surface, part.pose);
  return area;
}

void draw_part(const ColorCanvas& canvas, const PlacedPart& part, const LightLevels& light) {
  draw(canvas, *part.surface, part.pose, light, part.is_skin ? kSkinWrap : kClothWrap);
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

Renderer::Renderer(std::uint32_t seed) : vignette_(make_vignette(kDepthCamera)), noise_(seed) {
  // The owner appears first. The others are made when they come.
  std::future<PersonModel> owner =
      std::async(std::launch::async, [] { return make_person(look_of(Person::kOwner)); });
  backdrop_ = draw_backdrop();
  people_.emplace(Person::kOwner, owner.get());
}

const PersonModel& Renderer::model_of(Person person) const {
  const auto known = people_.find(person);
  if (known != people_.end()) return known->second;
  return people_.emplace(person, make_person(look_of(person))).first->second;
}

std::vector<PlacedPart> Renderer::parts_of(const Presence& presence) const {
  return placed_parts(model_of(presence.person), presence.posture);
}

const cv::Mat& Renderer::lit_room(const LightLevels& light) const {
  const bool same = light.daylight == lit_by_.daylight && light.lamp == lit_by_.lamp;
  if (lit_room_.empty() || !same) {
    lit_backdrop(backdrop_, light, lit_room_);
    lit_by_ = light;
  }
  return lit_room_;
}

// Draws the people and their shadows in front of the room. Returns the area of the picture that
// holds all that differs from the room; nothing else of it is written.
cv::Rect Renderer::draw_people(const Moment& moment, const cv::Mat& room, cv::Mat& picture) const {
  cv::Rect covered;
  cv::Rect changed;
  std::vector<std::vector<PlacedPart>> people;
  std::vector<cv::Rect> extents;
  for (const Presence& presence : moment.people) {
    people.push_back(parts_of(presence));
    extents.push_back(extent_of(people.back()));
    covered |= extents.back();
    changed |= widened(extents.back(), room.size()) | shadow_area(presence.posture);
  }
  if (changed.empty()) return changed;
  room(changed).copyTo(picture(changed));
  for (const Presence& presence : moment.people) {
    add_contact_shadow(picture, backdrop_.color_nearness, presence.posture);
  }
  if (covered.empty()) return changed;
  nearness_.create(room.size(), backdrop_.color_nearness.type());
  backdrop_.color_nearness(covered).copyTo(nearness_(covered));
  const ColorCanvas canvas{kColorCamera, picture, nearness_};
  for (std::size_t i = 0; i < people.size(); ++i) {
    if (extents[i].empty()) continue;
    for (const PlacedPart& part : people[i]) draw_part(canvas, part, moment.light);
    soften(canvas, backdrop_.color_nearness, extents[i]);
  }
  return changed;
}

cv::Mat Renderer::render_color(const Moment& moment, std::uint64_t set) const {
  const cv::Mat& room = lit_room(moment.light);
  cv::Mat picture(room.size(), room.type());
  const cv::Rect changed = draw_people(moment, room, picture);
  const std::vector<cv::Rect> unchanged = areas_around(changed, room.size());
  if (moment.defocus > 0.3F) {
    for (const cv::Rect& area : unchanged) room(area).copyTo(picture(area));
    defocus(picture, moment.defocus);
    noise_.add_to_color(picture, cv::Rect({}, picture.size()), set, picture);
  } else {
    for (const cv::Rect& area : unchanged) noise_.add_to_color(room, area, set, picture);
    noise_.add_to_color(picture, changed, set, picture);
  }
  return picture;
}

InfraredAndDepth Renderer::render_infrared_and_depth(const Moment& moment,
                                                     std::uint64_t set) const {
  const DepthCanvas canvas{kDepthCamera, backdrop_.depth_nearness.clone(),
                           backdrop_.depth_echo.clone()};
  for (const Presence& presence : moment.people) {
    for (const PlacedPart& part : parts_of(presence)) draw(canvas, *part.surface, part.pose);
  }
  return {measure_infrared(canvas, vignette_, noise_, set), measure_depth(canvas, noise_, set)};
}

}  // namespace halcyra::virtual_kinect::room
