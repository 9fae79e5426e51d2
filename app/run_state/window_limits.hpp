// The smallest and the largest window, in pixels. The canvas is never smaller than the smallest.
#pragma once

#include <cstdint>

namespace halcyra {

constexpr std::int32_t kLeastWidth = 800;
constexpr std::int32_t kLeastHeight = 480;
constexpr std::int32_t kMostWidth = 7680;
constexpr std::int32_t kMostHeight = 4320;

}  // namespace halcyra
