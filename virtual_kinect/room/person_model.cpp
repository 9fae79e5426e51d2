#include "virtual_kinect/room/person_model.hpp"

#include <cmath>

#include "virtual_kinect/room/head_model.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float arm_swing = 22.0F;
constexpr float thigh_swing = 26.0F;
constexpr float knee_bend = 38.0F;

Vec3 on_side(const Vec3& joint, float side, float widths) {
  return {joint.x * side * widths, joint.y, joint.z};
}

void add_arm(std::vector<PlacedPart>& parts, const PersonModel& model, const Pose& person,
             float side, float swing) {
  const Pose arm = person * shifted(on_side(shoulder_joint, side, model.look.body.shoulders)) *
                   turned_about_z(-side * 3.5F) * turned_about_x(-swing);
  parts.push_back({&model.body.arm, arm, false});
  parts.push_back({&model.body.hand, arm, true});
}

void add_leg(std::vector<PlacedPart>& parts, const PersonModel& model, const Pose& person,
             float side, float swing, float bend) {
  const Pose thigh =
      person * shifted(on_side(hip_joint, side, model.look.body.girth)) * turned_about_x(-swing);
  const Pose shin = thigh * shifted({0.0F, thigh_length, 0.0F}) * turned_about_x(bend);
  parts.push_back({&model.body.thigh, thigh, false});
  parts.push_back({&model.body.shin, shin, false});
  parts.push_back({&model.body.shoe, shin, false});
}

}  // namespace

PersonModel make_person(const PersonLook& look) {
  return {look, make_head(look.head), make_body(look.body, look.head)};
}

std::vector<PlacedPart> placed_parts(const PersonModel& model, const Posture& posture) {
  const float swing = std::sin(pi * posture.stride) * posture.stride_width;
  const float lift = std::cos(pi * posture.stride) * posture.stride_width;
  const float bob = 14.0F * swing * swing;
  const float height = model.look.body.height;
  Pose person =
      shifted({posture.x, floor_height + bob, posture.z}) * turned_about_y(posture.body_yaw);
  Pose upright = person;
  upright.x_axis = person.x_axis * height;
  upright.y_axis = person.y_axis * height;
  upright.z_axis = person.z_axis * height;

  std::vector<PlacedPart> parts;
  // Heads differ less than bodies do, so they are not scaled with them.
  const Vec3 neck = upright.place(head_joint);
  const Pose head = shifted(neck) * turned_about_y(posture.head_yaw) *
                    turned_about_x(posture.head_pitch) * turned_about_z(posture.head_roll);
  for (const float side : {-1.0F, 1.0F}) {
    add_arm(parts, model, upright, side, -side * arm_swing * swing);
  }
  parts.push_back({&model.head, head, true});
  parts.push_back({&model.body.torso, upright, false});
  parts.push_back({&model.body.neck, upright, true});
  for (const float side : {-1.0F, 1.0F}) {
    add_leg(parts, model, upright, side, side * thigh_swing * swing,
            knee_bend * std::fmax(0.0F, side * lift));
  }
  return parts;
}

}  // namespace halcyra::virtual_kinect::room
