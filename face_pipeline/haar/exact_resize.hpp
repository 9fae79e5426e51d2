// Facts about OpenCV's resizing with INTER_LINEAR_EXACT.
#pragma once

#include <vector>

namespace halcyra::haar {

// For each of the `scaled` pixels (1 to `source`) that a line of `source` pixels is resized to, the
// place in the source line that its value is read from, in 1/256 of a pixel. Between two pixels,
// their values are interpolated.
std::vector<int> resize_positions(int source, int scaled);

// Whether resizing a mirrored picture from `source` columns to `scaled` columns (1 to `source`)
// gives the mirror image of the resized picture. It does unless the fraction of some pixel is
// rounded otherwise than that of its mirror image.
bool resize_mirrors_exactly(int source, int scaled);

}  // namespace halcyra::haar
