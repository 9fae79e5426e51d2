// Facts about OpenCV's resizing with INTER_LINEAR_EXACT.
#pragma once

#include <vector>

namespace halcyra::haar {

// For each of `scaled` pixels of a line, where in a line of `source` pixels its value is read, in
// 1/256 of a pixel: between two pixels, their values are weighted with the remaining fractions.
std::vector<int> resize_positions(int source, int scaled);

// Whether resizing a mirrored picture of `source` columns to `scaled` columns gives the mirror
// image of the resized picture. It does unless a fraction is rounded differently from its
// complement.
bool resize_mirrors_exactly(int source, int scaled);

}  // namespace halcyra::haar
