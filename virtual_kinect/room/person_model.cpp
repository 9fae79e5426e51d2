#include "virtual_kinect/room/person_model.hpp"

#include <cmath>

#include "virtual_kinect/room/dimensions.hpp"
#include "virtual_kinect/room/head_model.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kArmSwing = 22.0F;
constexpr float kElbowBend = 14.0F;  // of a hanging arm
constexpr float kKneeBend = 52.0F;
constexpr float kLegLength = kThighLength + kShinLength;

// The angles of one leg in degrees.
struct LegAngles {
  float swing = 0.0F;     // of the thigh, forwards
  float bend = 0.0F;      // of the knee, backwards
  float toe_drop = 0.0F;  // of the foot
};

// For one step a foot stays where it is on the floor while the body passes over it; for the next
// step it comes forward through the air. `phase` counts steps from the moment when it touches down.
LegAngles leg_angles(float phase, float step_share) {
  const float in_cycle = phase - 2.0F * std::floor(0.5F * phase);
  const float in_air = std::fmax(0.0F, in_cycle - 1.0F);
  const float ahead = in_air > 0.0F ? smoothstep(0.0F, 1.0F, in_air) - 0.5F : 0.5F - in_cycle;
  const float reach = step_share * ahead * kStepLength / kLegLength;
  const float bend = step_share * kKneeBend * std::sin(kPi * in_air);
  return {degrees(std::asin(reach)) + 0.5F * bend, bend, 0.4F * bend};
}

Vec3 on_side(const Vec3& joint, float side, float widths) {
  return {joint.x * side * widths, joint.y, joint.z};
}

void add_arm(std::vector<PlacedPart>& parts, const PersonModel& model, const Pose& person,
             float side, float swing) {
  const Pose arm = person * shifted(on_side(kShoulderJoint, side, model.look.body.shoulders)) *
                   turned_about_z(-side * 3.5F) * turned_about_x(-swing);
  // The model's inner side is on the left; half a turn puts it on the right for the other arm.
  parts.push_back({&model.body.upper_arm, side > 0.0F ? arm : arm * turned_about_y(180.0F), false});
  const float bend = kElbowBend + 0.5F * std::fmax(0.0F, swing);
  const Pose forearm = arm * shifted({0.0F, kUpperArmLength, 0.0F}) * turned_about_x(-bend);
  parts.push_back({&model.body.forearm, forearm, false});
  const Pose hand = forearm * shifted({0.0F, kForearmLength, 0.0F});
  parts.push_back({&model.body.hand, hand, true});
  parts.push_back({&model.body.thumb, hand, true});
}

void add_leg(std::vector<PlacedPart>& parts, const PersonModel& model, const Pose& person,
             float side, const LegAngles& angles) {
  const Pose thigh = person * shifted(on_side(kHipJoint, side, model.look.body.girth)) *
                     turned_about_x(-angles.swing);
  const Pose shin = thigh * shifted({0.0F, kThighLength, 0.0F}) * turned_about_x(angles.bend);
  const Pose shoe = shin * shifted({0.0F, kShinLength, 0.0F}) *
                    turned_about_x(angles.swing - angles.bend + angles.toe_drop);
  parts.push_back({&model.body.thigh, thigh, false});
  parts.push_back({&model.body.shin, shin, false});
  parts.push_back({&model.body.shoe, shoe, false});
}

Pose scaled(const Pose& pose, float factor) {
  return {pose.x_axis * factor, pose.y_axis * factor, pose.z_axis * factor, pose.origin};
}

struct Stance {
  Pose person;  // from coordinates of an average body
  LegAngles left;
  LegAngles right;
};

Stance stance(const BodyLook& look, const Posture& posture) {
  const float step_share = posture.stride_width / look.height;
  Stance result;
  result.left = leg_angles(posture.stride, step_share);
  result.right = leg_angles(posture.stride + 1.0F, step_share);
  // The straight leg of the two carries the body.
  const float lean = radians(result.left.bend == 0.0F ? result.left.swing : result.right.swing);
  const float sink = look.height * kLegLength * (1.0F - std::cos(lean));
  const Pose place = shifted({posture.x, kFloorHeight + sink, posture.z});
  result.person = scaled(place * turned_about_y(posture.body_yaw), look.height);
  return result;
}

}  // namespace

PersonModel make_person(const PersonLook& look) {
  return {look, make_head(look.head), make_body(look.body, look.head)};
}

Vec3 head_position(const BodyLook& look, const Posture& posture) {
  return stance(look, posture).person.place(kHeadJoint);
}

std::vector<PlacedPart> placed_parts(const PersonModel& model, const Posture& posture) {
  const auto [person, left, right] = stance(model.look.body, posture);
  std::vector<PlacedPart> parts;
  const float arm_swing = kArmSwing * posture.stride_width * std::cos(kPi * posture.stride);
  add_arm(parts, model, person, -1.0F, -arm_swing);
  add_arm(parts, model, person, 1.0F, arm_swing);
  // Heads differ less in size than bodies do, so they are not scaled with them.
  const Pose head = shifted(person.place(kHeadJoint)) * turned_about_y(posture.head_yaw) *
                    turned_about_x(posture.head_pitch) * turned_about_z(posture.head_roll);
  parts.push_back({&model.head, head, true});
  parts.push_back({&model.body.torso, person, false});
  parts.push_back({&model.body.neck, person, true});
  add_leg(parts, model, person, -1.0F, left);
  add_leg(parts, model, person, 1.0F, right);
  return parts;
}

}  // namespace halcyra::virtual_kinect::room
