#include "virtual_kinect/room/furniture.hpp"

#include <cmath>
#include <utility>

#include <opencv2/core/utility.hpp>

#include "virtual_kinect/room/coat.hpp"
#include "virtual_kinect/room/dimensions.hpp"
#include "virtual_kinect/room/furniture_coats.hpp"
#include "virtual_kinect/room/light.hpp"
#include "virtual_kinect/room/obstacle.hpp"
#include "virtual_kinect/room/room_shell.hpp"
#include "virtual_kinect/room/shapes.hpp"
#include "virtual_kinect/room/value_noise.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

class Furnisher {
 public:
  // `coat` is called later, on any thread.
  void add(Surface surface, cv::Size texture, Coat coat) {
    surfaces_.push_back(std::move(surface));
    paintings_.push_back({texture, std::move(coat)});
  }

  void add_box(const Vec3& least, const Vec3& most, const Coat& coat, bool casts = true) {
    for (Surface& face : make_box(least, most, 90.0F)) {
      add(std::move(face), {64, 64}, coat);
    }
    if (casts) {
      obstacles_.push_back({(least + most) * 0.5F, (most - least) * 0.5F});
    }
  }

  void add_cushion(const Vec3& center, const Vec3& half_sizes, const Coat& coat) {
    add(make_cushion(center, half_sizes), {192, 96}, coat);
    obstacles_.push_back({center, half_sizes * 0.9F});
  }

  void add_shelf();
  void add_books(float left, float right, float board, std::uint32_t seed);
  void add_sofa();
  void add_table();
  void add_lamp();
  void add_plant();
  void add_leaf(const Vec3& root, float azimuth, float reach, float rise);

  std::vector<Surface> finish();

 private:
  struct Painting {
    cv::Size texture;  // pixels
    Coat coat;
  };

  std::vector<Surface> surfaces_;
  std::vector<Painting> paintings_;  // of the surfaces, in their order
  std::vector<Obstacle> obstacles_;
};

constexpr Vec3 kOak{0.62F, 0.48F, 0.34F};

void Furnisher::add_books(float left, float right, float board, std::uint32_t seed) {
  const Vec3 colors[] = {{0.55F, 0.25F, 0.21F}, {0.24F, 0.34F, 0.44F}, {0.80F, 0.74F, 0.62F},
                         {0.30F, 0.40F, 0.31F}, {0.66F, 0.52F, 0.30F}, {0.36F, 0.28F, 0.36F},
                         {0.52F, 0.56F, 0.58F}, {0.22F, 0.22F, 0.25F}};
  float x = left;
  for (std::uint32_t i = seed * 100; x < right - 30.0F; ++i) {
    const float width = 20.0F + 32.0F * hash_unit(i);
    const float height = 170.0F + 85.0F * hash_unit(i + 31);
    if (hash_unit(i + 57) > 0.985F) {
      x += 70.0F;
      continue;
    }
    const Vec3 color = mix(colors[hash_bits(i + 77) % 8], kOak * 0.85F, 0.3F);  // faded by the sun
    const float band = 0.12F + 0.2F * hash_unit(i + 13);
    const float back = 3735.0F + 25.0F * hash_unit(i + 91);
    if (x + width < right) {
      Surface spine = make_surface(9, 4, [&](float u, float v) {
        const float bulge = 9.0F * (1.0F - (2.0F * u - 1.0F) * (2.0F * u - 1.0F));
        return Vec3{x + width * u, board - height * (1.0F - v), back - bulge};
      });
      add(std::move(spine), {16, 64}, book_spine(color, band, i));
      add(make_sheet({x, board - height, 3900.0F}, {width, 0, 0}, {0, 0, back - 3900.0F}, 60.0F),
          {16, 16}, plain({0.60F, 0.52F, 0.42F}, 0.6F));
    }
    x += width + 1.5F;
  }
}

void Furnisher::add_shelf() {
  constexpr float kLeft = 250.0F;
  constexpr float kRight = 1250.0F;
  constexpr float kTop = -560.0F;
  constexpr float kFront = 3690.0F;
  add_box({kLeft, kTop, 3980.0F}, {kRight, kFloorHeight, 4000.0F}, wood(kOak * 0.8F), false);
  std::uint32_t seed = 1;
  for (float board = kTop; board < kFloorHeight; board += 372.0F) {
    add_box({kLeft, board, kFront}, {kRight, board + 24.0F, 3990.0F}, wood(kOak), true);
    if (board > kTop) {
      add_books(seed == 3 ? kLeft + 560.0F : kLeft + 30.0F, kRight - 25.0F, board, seed);
    }
    ++seed;
  }
  add_box({kLeft - 24.0F, kTop, kFront}, {kLeft, kFloorHeight, 3990.0F}, wood(kOak));
  add_box({kRight, kTop, kFront}, {kRight + 24.0F, kFloorHeight, 3990.0F}, wood(kOak));
  add(make_sheet({kLeft, kTop, 3690.0F}, {0, 0, 290.0F}, {0, kFloorHeight - kTop, 0}, 90.0F),
      {64, 64}, wood(kOak * 0.85F));
  const float shelf = kTop + 2.0F * 372.0F;
  add(make_tube({{{430, shelf - 190, 3800}, 26, 26},
                 {{430, shelf - 150, 3800}, 30, 30},
                 {{430, shelf - 80, 3800}, 74, 74},
                 {{430, shelf - 20, 3800}, 60, 60},
                 {{430, shelf, 3800}, 40, 40}},
                33, 21),
      {64, 64}, plain({0.70F, 0.45F, 0.36F}, 0.5F));
  add_box({610, shelf - 30, 3740}, {790, shelf, 3900}, plain({0.34F, 0.38F, 0.44F}, 0.4F), false);
  add_box({620, shelf - 58, 3750}, {780, shelf - 30, 3900}, plain({0.75F, 0.68F, 0.55F}, 0.5F),
          false);
}

void Furnisher::add_sofa() {
  const Vec3 blue{0.42F, 0.50F, 0.57F};
  add_cushion({-800, 1080, 3620}, {800, 190, 330}, fabric(blue * 0.93F));
  add_cushion({-800, 860, 3850}, {790, 300, 130}, fabric(blue * 0.90F));
  add_cushion({-1190, 880, 3560}, {375, 95, 320}, fabric(blue));
  add_cushion({-410, 880, 3560}, {375, 95, 320}, fabric(blue));
  add_cushion({-1640, 950, 3590}, {110, 300, 340}, fabric(blue * 0.96F));
  add_cushion({40, 980, 3590}, {110, 270, 340}, fabric(blue * 1.02F));
  add_cushion({-1440, 700, 3640}, {150, 145, 75}, fabric({0.66F, 0.62F, 0.54F}));
}

void Furnisher::add_table() {
  add_cushion({-720, 1010, 2960}, {470, 22, 210}, wood(kOak * 1.05F));
  for (const float x : {-1040.0F, -400.0F}) {
    for (const float z : {2830.0F, 3090.0F}) {
      add(make_tube({{{x, 1025, z}, 20, 20}, {{x, kFloorHeight, z}, 14, 14}}, 13, 6), {16, 16},
          wood(kOak * 0.8F));
    }
  }
  add(make_tube(
          {{{-560, 905, 2930}, 40, 40}, {{-560, 960, 2930}, 42, 42}, {{-560, 988, 2930}, 34, 34}},
          25, 8),
      {32, 32}, plain({0.90F, 0.88F, 0.84F}, 0.6F));
  add_box({-900, 962, 2880}, {-700, 988, 3020}, plain({0.52F, 0.40F, 0.34F}, 0.4F), false);
}

void Furnisher::add_lamp() {
  const float x = kLampPosition.x;
  const float z = kLampPosition.z;
  Surface shade = make_tube(
      {{{x, -560, z}, 130, 130}, {{x, -400, z}, 165, 165}, {{x, -250, z}, 200, 200}}, 41, 9);
  shade.lamp_glow = 0.95F;
  add(std::move(shade), {128, 64}, lamp_shade);
  add(make_tube({{{x, -250, z}, 11, 11}, {{x, 1330, z}, 11, 11}}, 13, 40), {16, 64},
      plain({0.30F, 0.27F, 0.24F}, 0.2F));
  add(make_tube({{{x, 1322, z}, 30, 30}, {{x, 1328, z}, 150, 150}, {{x, 1350, z}, 155, 155}}, 33,
                6),
      {32, 16}, plain({0.30F, 0.27F, 0.24F}, 0.2F));
  obstacles_.push_back({{x, 1340, z}, {150, 12, 150}});
}

void Furnisher::add_leaf(const Vec3& root, float azimuth, float reach, float rise) {
  const Vec3 out{std::sin(azimuth), 0.0F, -std::cos(azimuth)};
  const Vec3 side{std::cos(azimuth), 0.0F, std::sin(azimuth)};
  Surface leaf = make_surface(7, 17, [&](float u, float v) {
    const float along = 1.0F - v;
    const float width = 74.0F * std::sin(kPi * std::pow(along, 0.7F)) + 4.0F;
    const float fold = std::fabs(2.0F * u - 1.0F) * 16.0F;
    const float height = rise * std::sin(0.5F * kPi * along * 1.35F);
    return root + out * (reach * along) + side * (width * (2.0F * u - 1.0F) * 0.5F) +
           Vec3{0.0F, -height - fold, 0.0F};
  });
  const Coat green = leaf_green(azimuth);
  add(reversed(leaf), {16, 32}, green);
  add(std::move(leaf), {16, 32}, green);
}

void Furnisher::add_plant() {
  const Vec3 foot{-2270.0F, kFloorHeight, 3480.0F};
  add(make_tube({{foot - Vec3{0, 330, 0}, 165, 165},
                 {foot - Vec3{0, 290, 0}, 172, 172},
                 {foot - Vec3{0, 150, 0}, 150, 150},
                 {foot, 115, 115}},
                37, 17),
      {64, 64}, plain({0.74F, 0.70F, 0.64F}, 0.5F));
  obstacles_.push_back({foot - Vec3{0, 160, 0}, {130, 160, 130}});
  for (std::uint32_t i = 0; i < 19; ++i) {
    const float azimuth = 2.4F * static_cast<float>(i) + 0.5F * hash_unit(i);
    const float reach = 200.0F + 290.0F * hash_unit(i + 40);
    const float rise = 300.0F + 520.0F * hash_unit(i + 80);
    add_leaf(foot - Vec3{0, 330, 0}, azimuth, reach, rise);
  }
}

std::vector<Surface> Furnisher::finish() {
  std::vector<Obstacle> all = obstacles_;
  const std::vector<Obstacle> walls = shell_obstacles();
  all.insert(all.end(), walls.begin(), walls.end());
  cv::parallel_for_({0, static_cast<int>(surfaces_.size())}, [&](const cv::Range& range) {
    for (int number = range.start; number < range.end; ++number) {
      Surface& surface = surfaces_[static_cast<std::size_t>(number)];
      const Painting& painting = paintings_[static_cast<std::size_t>(number)];
      paint(surface, painting.texture, painting.coat);
      for (std::size_t i = 0; i < surface.points.size(); ++i) {
        surface.openness[i] = openness_among(all, surface.points[i], surface.normals[i]);
      }
    }
  });
  return std::move(surfaces_);
}

}  // namespace

std::vector<Surface> furnish_room() {
  Furnisher furnisher;
  for (ShellPart& part : make_shell()) {
    furnisher.add(std::move(part.surface), part.texture, std::move(part.coat));
  }
  furnisher.add_shelf();
  furnisher.add_sofa();
  furnisher.add_table();
  furnisher.add_lamp();
  furnisher.add_plant();
  return furnisher.finish();
}

}  // namespace halcyra::virtual_kinect::room
