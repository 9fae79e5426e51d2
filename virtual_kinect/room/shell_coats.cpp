#include "virtual_kinect/room/shell_coats.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "virtual_kinect/room/dimensions.hpp"
#include "virtual_kinect/room/value_noise.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

// The boards lie along x, in rows that are shifted against each other.
std::uint32_t board_number(const Vec3& p) {
  const auto row = static_cast<std::uint32_t>(std::floor(p.z / 130.0F));
  const float shift = 1900.0F * hash_unit(row);
  const float plank = std::floor((p.x + shift + 9000.0F) / 1900.0F);
  return static_cast<std::uint32_t>(plank) * 31U + row;
}

// The places (u, v, 0), with u and v times their factors.
Places picture_places(const Texels& texels, float u_factor, float v_factor) {
  return {scaled(texels.u, u_factor), scaled(texels.v, v_factor),
          std::vector<float>(texels.size(), 0.0F)};
}

}  // namespace

std::vector<Reflectance> wall_paint(const Texels& texels) {
  const std::vector<float> coarse = layered_noise(texels.points * 0.012F, 61);
  const std::vector<float> fine = value_noise(texels.points * 0.1F, 62);
  return reflectances(texels, [&](std::size_t i) -> Reflectance {
    const float y = texels.points.y[i];
    if (y > kFloorHeight - 95.0F) {
      const bool edge = y < kFloorHeight - 88.0F;
      return {Vec3{0.90F, 0.89F, 0.86F} * (edge ? 0.8F : 1.0F), 0.7F};
    }
    const float roller = 0.012F * coarse[i] + 0.008F * fine[i];
    return {Vec3{0.79F, 0.765F, 0.70F} * (1.0F + roller), 0.68F};
  });
}

std::vector<Reflectance> floor_boards(const Texels& texels) {
  std::vector<std::uint32_t> numbers(texels.size());
  std::vector<std::uint32_t> seeds(texels.size());
  for (std::size_t i = 0; i < texels.size(); ++i) {
    numbers[i] = board_number(texels.points[i]);
    seeds[i] = numbers[i] + 63U;
  }
  const std::vector<float> grain =
      layered_noise(multiply(texels.points, {0.004F, 0.0F, 0.06F}), seeds);
  const std::vector<float> fine = value_noise(texels.points * 0.09F, 71);
  return reflectances(texels, [&](std::size_t i) -> Reflectance {
    const float tone = 0.97F + 0.06F * hash_unit(numbers[i]);
    const float gap = std::fmod(texels.points.z[i], 130.0F) < 5.0F ? 0.93F : 1.0F;
    return {Vec3{0.60F, 0.44F, 0.30F} * (tone * gap * (1.0F + 0.10F * grain[i] + 0.05F * fine[i])),
            0.45F};
  });
}

std::vector<Reflectance> rug(const Texels& texels) {
  const std::vector<float> weave = value_noise(texels.points * 0.12F, 64);
  return reflectances(texels, [&](std::size_t i) -> Reflectance {
    const float u = texels.u[i];
    const float v = texels.v[i];
    const float edge = std::fmin(std::fmin(u, 1.0F - u) * 2.6F, std::fmin(v, 1.0F - v));
    const Vec3 color = edge < 0.06F   ? Vec3{0.63F, 0.50F, 0.42F}
                       : edge < 0.09F ? Vec3{0.55F, 0.36F, 0.31F}
                                      : Vec3{0.62F, 0.42F, 0.36F};
    return {color * (1.0F + 0.05F * weave[i]), 0.55F};
  });
}

std::vector<Reflectance> view_outside(const Texels& texels) {
  const std::vector<float> hills = value_noise(picture_places(texels, 9.0F, 0.0F), 65);
  Places tree_line = picture_places(texels, 4.0F, 0.0F);
  tree_line.y.assign(texels.size(), 1.0F);
  const std::vector<float> trees = layered_noise(tree_line, 66);
  const std::vector<float> clouds = layered_noise(picture_places(texels, 3.0F, 6.0F), 67);
  const std::vector<float> leaves = layered_noise(picture_places(texels, 16.0F, 16.0F), 68);
  return reflectances(texels, [&](std::size_t i) -> Reflectance {
    const float v = texels.v[i];
    const float hill = 0.66F + 0.05F * std::sin(texels.u[i] * 5.0F) + 0.02F * hills[i];
    const float crown = 0.60F + 0.16F * trees[i];
    Vec3 color =
        mix(Vec3{0.80F, 0.89F, 0.98F}, Vec3{0.96F, 0.97F, 0.96F}, smoothstep(0.0F, 0.6F, v));
    color = mix(color, {1.0F, 1.0F, 1.0F}, 0.6F * smoothstep(0.1F, 0.6F, clouds[i]));
    color = mix(color, {0.70F, 0.78F, 0.70F}, smoothstep(hill - 0.01F, hill + 0.01F, v));
    color = mix(color, Vec3{0.50F, 0.62F, 0.42F} * (1.0F + 0.10F * leaves[i]),
                smoothstep(crown + 0.10F, crown + 0.14F, v));
    return {color, 0.0F};  // glass reflects the sensor's light elsewhere
  });
}

std::vector<Reflectance> painted_landscape(const Texels& texels) {
  const std::vector<float> strokes = layered_noise(texels.points * 0.03F, 69);
  return reflectances(texels, [&](std::size_t i) -> Reflectance {
    const float u = texels.u[i];
    const float v = texels.v[i];
    const float far = 0.45F + 0.06F * std::sin(u * 7.0F + 1.0F);
    const float near = 0.66F + 0.07F * std::sin(u * 4.0F + 4.0F);
    Vec3 color = mix(Vec3{0.86F, 0.72F, 0.55F}, Vec3{0.90F, 0.84F, 0.70F}, v * 2.0F);
    color = mix(color, {0.55F, 0.60F, 0.62F}, smoothstep(far, far + 0.02F, v));
    color = mix(color, {0.42F, 0.48F, 0.40F}, smoothstep(near, near + 0.02F, v));
    color = mix(color, {0.62F, 0.56F, 0.40F}, smoothstep(near + 0.16F, near + 0.2F, v));
    return {color * (1.0F + 0.07F * strokes[i]), 0.5F};
  });
}

std::vector<Reflectance> curtain_cloth(const Texels& texels) {
  const std::vector<float> weave = value_noise(texels.points * 0.08F, 70);
  return reflectances(texels, [&](std::size_t i) -> Reflectance {
    return {Vec3{0.86F, 0.80F, 0.70F} * (1.0F + 0.03F * weave[i]), 0.6F};
  });
}

Coat white_wood() { return even_coat({{0.92F, 0.91F, 0.88F}, 0.7F}); }

Coat oak_frame() { return even_coat({{0.52F, 0.42F, 0.32F}, 0.35F}); }

}  // namespace halcyra::virtual_kinect::room
