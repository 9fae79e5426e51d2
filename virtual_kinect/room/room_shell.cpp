#include "virtual_kinect/room/room_shell.hpp"

#include <cmath>

#include "virtual_kinect/room/dimensions.hpp"
#include "virtual_kinect/room/shapes.hpp"
#include "virtual_kinect/room/shell_coats.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kRoomHeight = kFloorHeight - kCeilingHeight;
constexpr float kGrid = 70.0F;

constexpr Vec3 kWindowCorner{-2650.0F, -900.0F, kBackWallDepth - 12.0F};
constexpr Vec3 kWindowSize{1250.0F, 1150.0F, 0.0F};
constexpr Vec3 kPaintingCorner{-1130.0F, -620.0F, kBackWallDepth - 26.0F};
constexpr Vec3 kPaintingSize{600.0F, 440.0F, 0.0F};

void add_frame(std::vector<ShellPart>& shell, const Vec3& corner, const Vec3& size, float width,
               const Coat& coat) {
  const Vec3 rim{width, width, 18.0F};
  const Vec3 least = corner - rim;
  const Vec3 most = corner + size + Vec3{width, width, 0.0F};
  const auto add = [&](const Vec3& from, const Vec3& to) {
    for (Surface& face : make_box(from, to, 120.0F)) {
      shell.push_back({std::move(face), {16, 16}, coat});
    }
  };
  add(least, {most.x, corner.y, most.z});
  add({least.x, most.y - width, least.z}, most);
  add({least.x, corner.y, least.z}, {corner.x, most.y - width, most.z});
  add({most.x - width, corner.y, least.z}, {most.x, most.y - width, most.z});
}

void add_window(std::vector<ShellPart>& shell) {
  Surface glass = make_sheet(kWindowCorner, {kWindowSize.x, 0, 0}, {0, kWindowSize.y, 0}, kGrid);
  glass.daylight_glow = 0.22F;
  shell.push_back({std::move(glass), {512, 448}, view_outside});
  add_frame(shell, kWindowCorner, kWindowSize, 55.0F, white_wood());
  const Vec3 middle = kWindowCorner + kWindowSize * 0.5F;
  for (Surface& bar :
       make_box({middle.x - 22, kWindowCorner.y, kBackWallDepth - 34},
                {middle.x + 22, kWindowCorner.y + kWindowSize.y, kBackWallDepth - 12}, 120)) {
    shell.push_back({std::move(bar), {16, 16}, white_wood()});
  }
  const float sill = kWindowCorner.y + kWindowSize.y + 50.0F;
  for (Surface& face :
       make_box({kWindowCorner.x - 90, sill, kBackWallDepth - 150},
                {kWindowCorner.x + kWindowSize.x + 90, sill + 34, kBackWallDepth}, 120)) {
    shell.push_back({std::move(face), {16, 16}, white_wood()});
  }
}

void add_curtain(std::vector<ShellPart>& shell, float left, float right) {
  Surface curtain = make_surface(90, 20, [=](float u, float v) {
    const float wave = 24.0F * std::sin(u * 40.0F + 1.5F * std::sin(u * 9.0F)) * (0.6F + 0.4F * v);
    return Vec3{mix(left, right, u), mix(-1090.0F, 1180.0F, v), kBackWallDepth - 90.0F + wave};
  });
  curtain.daylight_glow = 0.08F;
  shell.push_back({std::move(curtain), {256, 64}, curtain_cloth});
}

}  // namespace

std::vector<ShellPart> make_shell() {
  std::vector<ShellPart> shell;
  const float length = kBackWallDepth - kFrontDepth;
  shell.push_back({make_sheet({-kHalfWidth, kCeilingHeight, kBackWallDepth}, {2 * kHalfWidth, 0, 0},
                              {0, kRoomHeight, 0}, kGrid),
                   {640, 320},
                   wall_paint});
  shell.push_back({make_sheet({-kHalfWidth, kCeilingHeight, kFrontDepth}, {0, 0, length},
                              {0, kRoomHeight, 0}, kGrid),
                   {96, 192},
                   wall_paint});
  shell.push_back({make_sheet({kHalfWidth, kCeilingHeight, kBackWallDepth}, {0, 0, -length},
                              {0, kRoomHeight, 0}, kGrid),
                   {96, 192},
                   wall_paint});
  shell.push_back({make_sheet({-kHalfWidth, kFloorHeight, kBackWallDepth}, {2 * kHalfWidth, 0, 0},
                              {0, 0, -length}, kGrid),
                   {1280, 384},
                   floor_boards});
  shell.push_back({make_sheet({-kHalfWidth, kCeilingHeight, kFrontDepth}, {2 * kHalfWidth, 0, 0},
                              {0, 0, length}, kGrid),
                   {64, 64},
                   white_wood()});
  shell.push_back({make_sheet({-1420, kFloorHeight - 8, 3420}, {2220, 0, 0}, {0, 0, -800}, kGrid),
                   {512, 192},
                   rug});
  add_window(shell);
  add_curtain(shell, -2880.0F, -2560.0F);
  add_curtain(shell, -1500.0F, -1240.0F);
  shell.push_back(
      {make_sheet(kPaintingCorner, {kPaintingSize.x, 0, 0}, {0, kPaintingSize.y, 0}, kGrid),
       {256, 192},
       painted_landscape});
  add_frame(shell, kPaintingCorner, kPaintingSize, 26.0F, oak_frame());
  return shell;
}

std::vector<Obstacle> shell_obstacles() {
  const float middle = 0.5F * (kFloorHeight + kCeilingHeight);
  return {{{0, middle, kBackWallDepth + 100}, {kHalfWidth + 200, kRoomHeight, 99}},
          {{-kHalfWidth - 100, middle, kBackWallDepth}, {99, kRoomHeight, 4000}},
          {{kHalfWidth + 100, middle, kBackWallDepth}, {99, kRoomHeight, 4000}},
          {{0, kFloorHeight + 100, kBackWallDepth}, {kHalfWidth + 200, 99, 4000}},
          {{0, kCeilingHeight - 100, kBackWallDepth}, {kHalfWidth + 200, 99, 4000}}};
}

}  // namespace halcyra::virtual_kinect::room
