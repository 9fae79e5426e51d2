// Value noise at many places, written once for vectors of any length. Everything here is a template
// over the vectors' type, and each source file that includes this has such a type of its own. So
// the linker cannot mix the code of two instruction sets.
#pragma once

#include <cstddef>
#include <cstring>

#include "virtual_kinect/room/noise_kernels.hpp"

namespace halcyra::virtual_kinect::room {

// Does in each lane what value_noise does, to the bit. Lanes has the vectors Floats, Ints and Bits
// of 32-bit numbers, all with equally many lanes.
template <class Lanes>
class ValueNoiseLoop {
 public:
  static void run(const NoiseTask& task, float* noises) {
    std::size_t first = 0;
    for (; first + kLanes <= task.count; first += kLanes) {
      store(noises_at(task, first, kLanes), noises + first, kLanes);
    }
    const std::size_t rest = task.count - first;
    if (rest > 0) store(noises_at(task, first, rest), noises + first, rest);
  }

 private:
  using Floats = typename Lanes::Floats;
  using Ints = typename Lanes::Ints;
  using Bits = typename Lanes::Bits;

  static constexpr std::size_t kLanes = sizeof(Floats) / sizeof(float);

  struct Cells {
    Bits index;
    Floats blend;
  };

  // 0 in the lanes after `count`.
  template <class Vector, class Number>
  static Vector loaded(const Number* from, std::size_t count) {
    Vector vector{};
    std::memcpy(&vector, from, count * sizeof(Number));
    return vector;
  }

  static void store(const Floats& vector, float* to, std::size_t count) {
    std::memcpy(to, &vector, count * sizeof(float));
  }

  static Cells cells_of(const Floats& t) {
    const Ints towards_zero = __builtin_convertvector(t, Ints);
    const Ints floor = towards_zero + (__builtin_convertvector(towards_zero, Floats) > t);
    const Floats rest = t - __builtin_convertvector(floor, Floats);
    return {__builtin_convertvector(floor, Bits), rest * rest * (3.0F - 2.0F * rest)};
  }

  static Floats hash_units(Bits n) {
    n = (n ^ (n >> 16U)) * 0x7FEB352DU;
    n = (n ^ (n >> 15U)) * 0x846CA68BU;
    n = n ^ (n >> 16U);
    return __builtin_convertvector(__builtin_convertvector(n >> 8U, Ints), Floats) *
           (1.0F / 16777216.0F);
  }

  static Floats mix(const Floats& a, const Floats& b, const Floats& t) { return a + (b - a) * t; }

  static Floats plane(const Bits& corner, const Floats& blend_x, const Floats& blend_y) {
    const Floats upper = mix(hash_units(corner), hash_units(corner + kAlongX), blend_x);
    const Floats lower =
        mix(hash_units(corner + kAlongY), hash_units(corner + kAlongX + kAlongY), blend_x);
    return mix(upper, lower, blend_y);
  }

  static Floats noises_at(const NoiseTask& task, std::size_t first, std::size_t count) {
    const Cells x = cells_of(loaded<Floats>(task.x + first, count));
    const Cells y = cells_of(loaded<Floats>(task.y + first, count));
    const Cells z = cells_of(loaded<Floats>(task.z + first, count));
    const Bits corner = x.index * kAlongX + y.index * kAlongY + z.index * kAlongZ +
                        loaded<Bits>(task.seeds + first, count) * kAlongSeeds;
    return 2.0F * mix(plane(corner, x.blend, y.blend), plane(corner + kAlongZ, x.blend, y.blend),
                      z.blend) -
           1.0F;
  }
};

}  // namespace halcyra::virtual_kinect::room
