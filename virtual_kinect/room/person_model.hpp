// A whole person: makes one from a look, and puts the parts where a posture has them.
#pragma once

#include <vector>

#include "virtual_kinect/room/body_model.hpp"
#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/pose.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

struct PersonModel {
  PersonLook look;
  Surface head;
  BodyModel body;
};

PersonModel make_person(const PersonLook& look);

// How a person stands in the room, in millimetres and degrees.
struct Posture {
  float x = 0.0F;
  float z = 2000.0F;
  float body_yaw = 0.0F;      // 0: faces -z, as to the camera; 90: the picture's right
  float head_yaw = 0.0F;      // likewise; not added to the body's
  float head_pitch = 0.0F;    // positive: looks down
  float head_roll = 0.0F;     // positive: leans to the picture's right
  float stride = 0.0F;        // steps walked so far, each of kStepLength
  float stride_width = 0.0F;  // 0: stands, 1: walks with whole steps
};

// `pose` leads from the surface's coordinates to the camera's.
struct PlacedPart {
  const Surface* surface;
  Pose pose;
  bool is_skin;
};

constexpr float kStepLength = 620.0F;  // millimetres

// Where the middle of the head is in the room: between the ears, at the height of the eyes.
Vec3 head_position(const BodyLook& look, const Posture& posture);

// The parts point into `model`.
std::vector<PlacedPart> placed_parts(const PersonModel& model, const Posture& posture);

}  // namespace halcyra::virtual_kinect::room
