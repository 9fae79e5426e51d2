// A whole person: builds one from a look, and puts the parts where a posture wants them.
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

// How a person stands in the room. Angles in degrees; 0 faces the camera, 90 the picture's right.
struct Posture {
  float x = 0.0F;  // millimetres; z as Vec3
  float z = 2000.0F;
  float body_yaw = 0.0F;
  float head_yaw = 0.0F;
  float head_pitch = 0.0F;    // down
  float head_roll = 0.0F;     // to the picture's right
  float stride = 0.0F;        // steps walked, each of kStepLength
  float stride_width = 0.0F;  // 0 stands, 1 walks
};

struct PlacedPart {
  const Surface* surface;
  Pose pose;
  bool is_skin;
};

constexpr float kStepLength = 620.0F;

// The camera's height above the floor, and of the room's ceiling above the camera.
constexpr float kFloorHeight = 1350.0F;

// Where the middle of the head is: between the ears, at the height of the eyes.
Vec3 head_position(const BodyLook& look, const Posture& posture);

std::vector<PlacedPart> placed_parts(const PersonModel& model, const Posture& posture);

}  // namespace halcyra::virtual_kinect::room
