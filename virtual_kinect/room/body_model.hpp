// A clothed body as textured surfaces that can walk.
#pragma once

#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// Each part in coordinates of its own joint, upright; the person faces -z.
struct BodyModel {
  Surface neck;       // from the middle of the floor under the person
  Surface torso;      // likewise
  Surface upper_arm;  // from the shoulder; hangs down, its inner side to the left
  Surface forearm;    // from the elbow
  Surface hand;       // from the wrist
  Surface thumb;      // likewise
  Surface thigh;      // from the hip
  Surface shin;       // from the knee
  Surface shoe;       // from the ankle
};

// Joints of a body of average height, in coordinates of the person.
constexpr Vec3 kHeadJoint{0.0F, -1622.0F, -12.0F};
constexpr Vec3 kShoulderJoint{184.0F, -1386.0F, 8.0F};
constexpr Vec3 kHipJoint{80.0F, -900.0F, 0.0F};
constexpr float kUpperArmLength = 296.0F;
constexpr float kForearmLength = 232.0F;
constexpr float kThighLength = 430.0F;
constexpr float kShinLength = 430.0F;

BodyModel make_body(const BodyLook& look, const HeadLook& head);

}  // namespace halcyra::virtual_kinect::room
