// Where the room's walls, floor and ceiling are, in millimetres from the camera (see Vec3).
#pragma once

namespace halcyra::virtual_kinect::room {

constexpr float kFloorHeight = 1350.0F;  // y of the floor: the camera stands so high
constexpr float kCeilingHeight = -1270.0F;
constexpr float kHalfWidth = 3150.0F;   // from the middle to either side wall
constexpr float kFrontDepth = 2000.0F;  // where side walls, floor and ceiling begin
constexpr float kBackWallDepth = 4000.0F;

}  // namespace halcyra::virtual_kinect::room
