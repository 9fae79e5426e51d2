#include "virtual_kinect/room/room_shell.hpp"

#include <cmath>

#include "virtual_kinect/room/dimensions.hpp"
#include "virtual_kinect/room/shapes.hpp"
#include "virtual_kinect/room/value_noise.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kRoomHeight = kFloorHeight - kCeilingHeight;
constexpr float kGrid = 70.0F;

constexpr Vec3 kWindowCorner{-2650.0F, -900.0F, kBackWallDepth - 12.0F};
constexpr Vec3 kWindowSize{1250.0F, 1150.0F, 0.0F};
constexpr Vec3 kPaintingCorner{-1130.0F, -620.0F, kBackWallDepth - 26.0F};
constexpr Vec3 kPaintingSize{600.0F, 440.0F, 0.0F};

Reflectance wall_paint(float, float, const Vec3& p) {
  if (p.y > kFloorHeight - 95.0F) {
    const bool edge = p.y < kFloorHeight - 88.0F;
    return {Vec3{0.90F, 0.89F, 0.86F} * (edge ? 0.8F : 1.0F), 0.7F};
  }
  const auto [coarse, fine] = layered_and_single_noise(p * 0.012F, 61, p * 0.1F, 62);
  const float roller = 0.012F * coarse + 0.008F * fine;
  return {Vec3{0.79F, 0.765F, 0.70F} * (1.0F + roller), 0.68F};
}

Reflectance floor_boards(float, float, const Vec3& p) {
  const float board = std::floor(p.z / 130.0F);
  const auto row = static_cast<std::uint32_t>(board);
  const float shift = 1900.0F * hash_unit(row);
  const float plank = std::floor((p.x + shift + 9000.0F) / 1900.0F);
  const auto number = static_cast<std::uint32_t>(plank) * 31U + row;
  const float tone = 0.97F + 0.06F * hash_unit(number);
  const auto [grain, fine] =
      layered_and_single_noise({p.x * 0.004F, 0.0F, p.z * 0.06F}, number + 63U, p * 0.09F, 71);
  const float gap = std::fmod(p.z, 130.0F) < 5.0F ? 0.93F : 1.0F;
  return {Vec3{0.60F, 0.44F, 0.30F} * (tone * gap * (1.0F + 0.10F * grain + 0.05F * fine)), 0.45F};
}

Reflectance rug(float u, float v, const Vec3& p) {
  const float edge = std::fmin(std::fmin(u, 1.0F - u) * 2.6F, std::fmin(v, 1.0F - v));
  const float weave = 0.05F * value_noise(p * 0.12F, 64);
  const Vec3 color = edge < 0.06F   ? Vec3{0.63F, 0.50F, 0.42F}
                     : edge < 0.09F ? Vec3{0.55F, 0.36F, 0.31F}
                                    : Vec3{0.62F, 0.42F, 0.36F};
  return {color * (1.0F + weave), 0.55F};
}

// A hazy garden: sky, hills, tree crowns.
Reflectance view_outside(float u, float v, const Vec3&) {
  const float hill = 0.66F + 0.05F * std::sin(u * 5.0F) + 0.02F * value_noise({u * 9.0F, 0, 0}, 65);
  const float crown = 0.60F + 0.16F * layered_noise({u * 4.0F, 1.0F, 0.0F}, 66);
  Vec3 color = mix(Vec3{0.80F, 0.89F, 0.98F}, Vec3{0.96F, 0.97F, 0.96F}, smoothstep(0.0F, 0.6F, v));
  const float cloud = smoothstep(0.1F, 0.6F, layered_noise({u * 3.0F, v * 6.0F, 0.0F}, 67));
  color = mix(color, {1.0F, 1.0F, 1.0F}, 0.6F * cloud);
  color = mix(color, {0.70F, 0.78F, 0.70F}, smoothstep(hill - 0.01F, hill + 0.01F, v));
  const float leaves = 0.10F * layered_noise({u * 16.0F, v * 16.0F, 0.0F}, 68);
  color = mix(color, Vec3{0.50F, 0.62F, 0.42F} * (1.0F + leaves),
              smoothstep(crown + 0.10F, crown + 0.14F, v));
  return {color, 0.0F};  // glass reflects the sensor's light elsewhere
}

Reflectance painted_landscape(float u, float v, const Vec3& p) {
  const float far = 0.45F + 0.06F * std::sin(u * 7.0F + 1.0F);
  const float near = 0.66F + 0.07F * std::sin(u * 4.0F + 4.0F);
  Vec3 color = mix(Vec3{0.86F, 0.72F, 0.55F}, Vec3{0.90F, 0.84F, 0.70F}, v * 2.0F);
  color = mix(color, {0.55F, 0.60F, 0.62F}, smoothstep(far, far + 0.02F, v));
  color = mix(color, {0.42F, 0.48F, 0.40F}, smoothstep(near, near + 0.02F, v));
  color = mix(color, {0.62F, 0.56F, 0.40F}, smoothstep(near + 0.16F, near + 0.2F, v));
  return {color * (1.0F + 0.07F * layered_noise(p * 0.03F, 69)), 0.5F};
}

Reflectance white_wood(float, float, const Vec3&) { return {{0.92F, 0.91F, 0.88F}, 0.7F}; }

Reflectance oak_frame(float, float, const Vec3&) { return {{0.52F, 0.42F, 0.32F}, 0.35F}; }

void add_frame(std::vector<ShellPart>& shell, const Vec3& corner, const Vec3& size, float width,
               Reflectance (*reflectance)(float, float, const Vec3&)) {
  const Vec3 rim{width, width, 18.0F};
  const Vec3 least = corner - rim;
  const Vec3 most = corner + size + Vec3{width, width, 0.0F};
  const auto add = [&](const Vec3& from, const Vec3& to) {
    for (Surface& face : make_box(from, to, 120.0F)) {
      shell.push_back({std::move(face), {16, 16}, reflectance});
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
  add_frame(shell, kWindowCorner, kWindowSize, 55.0F, white_wood);
  const Vec3 middle = kWindowCorner + kWindowSize * 0.5F;
  for (Surface& bar :
       make_box({middle.x - 22, kWindowCorner.y, kBackWallDepth - 34},
                {middle.x + 22, kWindowCorner.y + kWindowSize.y, kBackWallDepth - 12}, 120)) {
    shell.push_back({std::move(bar), {16, 16}, white_wood});
  }
  const float sill = kWindowCorner.y + kWindowSize.y + 50.0F;
  for (Surface& face :
       make_box({kWindowCorner.x - 90, sill, kBackWallDepth - 150},
                {kWindowCorner.x + kWindowSize.x + 90, sill + 34, kBackWallDepth}, 120)) {
    shell.push_back({std::move(face), {16, 16}, white_wood});
  }
}

void add_curtain(std::vector<ShellPart>& shell, float left, float right) {
  Surface curtain = make_surface(90, 20, [=](float u, float v) {
    const float wave = 24.0F * std::sin(u * 40.0F + 1.5F * std::sin(u * 9.0F)) * (0.6F + 0.4F * v);
    return Vec3{mix(left, right, u), mix(-1090.0F, 1180.0F, v), kBackWallDepth - 90.0F + wave};
  });
  curtain.daylight_glow = 0.08F;
  shell.push_back({std::move(curtain), {256, 64}, [](float, float, const Vec3& p) {
                     const float weave = 0.03F * value_noise(p * 0.08F, 70);
                     return Reflectance{Vec3{0.86F, 0.80F, 0.70F} * (1.0F + weave), 0.6F};
                   }});
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
                   white_wood});
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
  add_frame(shell, kPaintingCorner, kPaintingSize, 26.0F, oak_frame);
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
