// Where windows find the entries of their corners.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/feature_shape.hpp"
#include "face_pipeline/haar/pyramid_layer.hpp"
#include "face_pipeline/haar/scan_plan.hpp"

namespace halcyra::haar {

// Which entry of a plane the first window of a row reads for a corner.
class EntryOffsets {
 public:
  EntryOffsets(const PlaneLayout& layout, const WindowColumns& columns)
      : layout_(layout), columns_(columns) {}

  std::int32_t operator()(const Corner& corner) const {
    const int row = corner.second * layout_.pitch;
    if (columns_.step == 1) return row + corner.first;
    const int column = columns_.first + corner.first;
    return row + column % 2 * layout_.odd_start + column / 2;
  }

 private:
  PlaneLayout layout_;
  WindowColumns columns_;
};

}  // namespace halcyra::haar
