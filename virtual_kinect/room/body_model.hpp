// A clothed body: painted surfaces that meet at joints, so that it can walk.
#pragma once

#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// Each part is upright, in coordinates whose origin is given below; the person faces -z. Left and
// right limbs share one model.
struct BodyModel {
  Surface neck;       // from the floor under the middle of the person
  Surface torso;      // likewise
  Surface upper_arm;  // from the shoulder, hanging down; the inner side is on the left
  Surface forearm;    // from the elbow
  Surface hand;       // from the wrist
  Surface thumb;      // likewise
  Surface thigh;      // from the hip
  Surface shin;       // from the knee
  Surface shoe;       // from the ankle
};

// Joints of an average body, in millimetres from the floor under the middle of the person. The
// other shoulder and hip are at -x.
constexpr Vec3 kHeadJoint{0.0F, -1622.0F, -12.0F};
constexpr Vec3 kShoulderJoint{184.0F, -1386.0F, 8.0F};
constexpr Vec3 kHipJoint{80.0F, -900.0F, 0.0F};
constexpr float kUpperArmLength = 296.0F;
constexpr float kForearmLength = 232.0F;
constexpr float kThighLength = 430.0F;
constexpr float kShinLength = 430.0F;

BodyModel make_body(const BodyLook& look, const HeadLook& head);

}  // namespace halcyra::virtual_kinect::room
