#include "virtual_kinect/room/furniture_coats.hpp"

#include <cmath>
#include <cstddef>
#include <vector>

#include "virtual_kinect/room/value_noise.hpp"

namespace halcyra::virtual_kinect::room {

Coat plain(const Vec3& color, float infrared) {
  return [color, infrared](const Texels& texels) {
    const std::vector<float> wear = layered_noise(texels.points * 0.02F, 91);
    return reflectances(texels, [&](std::size_t i) {
      return Reflectance{color * (1.0F + 0.03F * wear[i]), infrared};
    });
  };
}

Coat wood(const Vec3& color) {
  return [color](const Texels& texels) {
    const std::vector<float> grain =
        layered_noise(multiply(texels.points, {0.006F, 0.05F, 0.05F}), 92);
    return reflectances(texels, [&](std::size_t i) {
      return Reflectance{color * (1.0F + 0.14F * grain[i]), 0.5F};
    });
  };
}

Coat fabric(const Vec3& color) {
  return [color](const Texels& texels) {
    const std::vector<float> coarse = layered_noise(texels.points * 0.01F, 94);
    const std::vector<float> fine = value_noise(texels.points * 0.14F, 93);
    return reflectances(texels, [&](std::size_t i) {
      const float weave = fine[i] * 0.05F + coarse[i] * 0.06F;
      return Reflectance{color * (1.0F + weave), 0.55F};
    });
  };
}

Coat book_spine(const Vec3& color, float band, std::uint32_t seed) {
  return [color, band, seed](const Texels& texels) {
    const std::vector<float> wear = layered_noise(texels.points * 0.03F, seed);
    return reflectances(texels, [&](std::size_t i) {
      const float v = texels.v[i];
      const bool printed = std::fabs(v - band) < 0.035F || std::fabs(v - 0.86F) < 0.02F;
      return Reflectance{
          printed ? mix(color, {0.80F, 0.70F, 0.52F}, 0.5F) : color * (1.0F + 0.06F * wear[i]),
          0.4F};
    });
  };
}

std::vector<Reflectance> lamp_shade(const Texels& texels) {
  const std::vector<float> weave = value_noise(texels.points * 0.2F, 95);
  return reflectances(texels, [&](std::size_t i) {
    const float warm = 0.82F + 0.25F * std::sin(kPi * texels.v[i]) + 0.02F * weave[i];
    return Reflectance{Vec3{0.98F, 0.87F, 0.68F} * std::fmin(warm, 1.0F), 0.7F};
  });
}

Coat leaf_green(float azimuth) {
  return [azimuth](const Texels& texels) {
    const std::vector<float> spots = layered_noise(texels.points * 0.02F, 96);
    return reflectances(texels, [&](std::size_t i) {
      const bool rib = std::fabs(texels.u[i] - 0.5F) < 0.04F;
      const float tone =
          0.85F + 0.1F * std::sin(azimuth * 5.0F) + 0.15F * (1.0F - texels.v[i]) + 0.06F * spots[i];
      return Reflectance{Vec3{0.36F, 0.50F, 0.30F} * (rib ? tone * 1.12F : tone), 0.75F};
    });
  };
}

}  // namespace halcyra::virtual_kinect::room
