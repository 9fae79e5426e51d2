// What a scan reads and writes, without any code: the scan is compiled for several instruction
// sets, and code of one must not serve another.
#pragma once

#include <cstdint>

namespace halcyra::haar {

// How the corners of a feature's rectangles add up. Rectangles of a feature share corners, and
// their weights are few, so that most features need fewer entries than their rectangles have
// corners. `o` are a stump's offsets:
enum FeatureShape : std::uint8_t {
  kHalves,         // o0 + o1 - o2 - o3 + 2 (o4 - o5)
  kThirds,         // o0 + o1 - o2 - o3 + 3 (o4 + o5 - o6 - o7)
  kChecks,         // o0 + o1 + o2 + o3 - 2 (o4 + o5 + o6 + o7) + 4 o8
  kInverseChecks,  // the negative of that
  kAnyShape,       // o0 is an index into PlanView::any
  kShapeCount
};

// The first four shapes are only for features whose value fits into 16 bits with its sign: modulo
// 2^16, it follows from sums modulo 2^16.
struct PlannedStump {
  std::int32_t offsets[9];  // from the window's first entry, in entries
  float threshold;
  std::int32_t gain;  // what a value below the threshold adds to the sum, see PlannedStage
};

struct AnyFeature {
  std::int32_t corners[3][4];  // + - - +
  std::int32_t weights[3];
};

// A stump as the cascade has it, for sums too close to the threshold to be told otherwise.
struct ExactStump {
  std::int32_t planned;  // index into PlanView::stumps
  FeatureShape shape;
  float threshold;
  float below;
  float not_below;
};

// Votes are added up as whole numbers, each rounded from a vote times a power of two, in any order.
// The original adds up doubles in a given order. What both differ by has a bound. Sums further from
// the threshold than that are decided, the few others are added up again in the original's way.
struct PlannedStage {
  std::int32_t ends[kShapeCount];  // of the stumps of each shape, in PlanView::stumps
  std::int32_t first;
  std::int32_t first_exact;
  std::int32_t exact_count;
  std::int32_t start;         // the sum when no value is below its threshold
  std::int32_t surely_below;  // smaller sums miss the threshold
  std::int32_t surely_above;  // larger sums reach it
  float threshold;
};

struct PlanView {
  const PlannedStage* stages;
  std::int32_t stage_count;
  const PlannedStump* stumps;
  const AnyFeature* any;
  const ExactStump* exact;
  std::int32_t norm_corners[4];  // of the part of the window whose contrast counts: + - - +
  double norm_area;              // its pixels
  float largest_norm;            // windows with a larger one have too little contrast
};

// The planes of a layer, see PyramidLayer.
struct LayerView {
  const std::int32_t* sums;
  const std::int32_t* square_sums;
  const std::uint16_t* low_sums;
  std::int32_t pitch;
};

// Some rows of windows. A window's place is the entry of its upper left corner.
struct WindowRows {
  std::int32_t first_row;  // in rows of the planes
  std::int32_t row_step;
  std::int32_t row_count;
  std::int32_t windows;  // in each row, at adjacent places from the row's first on
  bool from_right;       // the order in which the original visits them
};

// Eights of adjacent windows of which some passed some stages and wait for the next one.
struct WaitingWindows {
  std::int32_t* places;       // of the first window of each eight
  std::int32_t* norm_places;  // where its norms begin in ScanScratch::norms
  std::uint8_t* alive;        // which of the eight still count, the first in the lowest bit
  std::int32_t count;
};

// Memory for one scan at a time; the contents do not matter.
struct ScanScratch {
  // For each window, the norm of its contrast divided by 2^16. Rows are padded to whole groups, and
  // a group's even windows stand before its odd ones.
  float* norms;
  std::uint64_t* alive;     // a bit for each window, rows padded to whole words
  std::uint64_t* rejected;  // likewise
  WaitingWindows* waiting;  // one for each stage and one more, with room for all
};

constexpr std::int32_t kEight = 8;

// No group of windows is larger, and no scan reads further beyond the last window.
constexpr std::int32_t kLargestGroup = 32;

}  // namespace halcyra::haar
