#include "face_pipeline/haar/exact_resize.hpp"

#include <cmath>
#include <cstddef>

namespace halcyra::haar {

// Step by step what OpenCV computes, as each step rounds: hence a scale that is the inverse of
// an inverse.
std::vector<int> resize_positions(int source, int scaled) {
  constexpr int kOne = 256;
  const double scale = 1.0 / (static_cast<double>(scaled) / static_cast<double>(source));
  std::vector<int> positions;
  positions.reserve(static_cast<std::size_t>(scaled));
  for (int i = 0; i < scaled; ++i) {
    const double place = scale * (i + 0.5) - 0.5;
    const double pixel = std::floor(place);
    if (pixel < 0.0 || source == 1) {
      positions.push_back(0);
    } else if (pixel >= source - 1) {
      positions.push_back((source - 1) * kOne);
    } else {
      const double fraction = std::nearbyint((place - pixel) * kOne);
      positions.push_back(static_cast<int>(pixel) * kOne + static_cast<int>(fraction));
    }
  }
  return positions;
}

bool resize_mirrors_exactly(int source, int scaled) {
  if (source == scaled) return true;
  const std::vector<int> positions = resize_positions(source, scaled);
  const int last = (source - 1) * 256;
  for (std::size_t i = 0; i < positions.size(); ++i) {
    if (positions[i] + positions[positions.size() - 1 - i] != last) return false;
  }
  return true;
}

}  // namespace halcyra::haar
