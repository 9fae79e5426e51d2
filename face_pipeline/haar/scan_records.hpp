// What a scan reads and writes: plain records without functions. The scan is compiled for several
// instruction sets, and a function here that the linker took from one of them might not run on
// another machine.
#pragma once

#include <cstdint>

namespace halcyra::haar {

// How a feature's value follows from the entries at its corners. The rectangles of a feature share
// corners and have few different weights, so many features need fewer entries than their rectangles
// have corners. o0 to o8 are the entries at a stump's offsets:
enum FeatureShape : std::uint8_t {
  kHalves,         // o0 + o1 - o2 - o3 + 2 (o4 - o5)
  kThirds,         // o0 + o1 - o2 - o3 + 3 (o4 + o5 - o6 - o7)
  kChecks,         // o0 + o1 + o2 + o3 - 2 (o4 + o5 + o6 + o7) + 4 o8
  kInverseChecks,  // the negative of that
  kAnyShape,       // anything else; the first offset is an index into PlanView::any
  kShapeCount
};

// Shapes other than kAnyShape are only for features whose value fits into 16 bits with its sign, so
// that it can be computed from sums modulo 2^16.
struct PlannedStump {
  std::int32_t offsets[9];  // in entries, from the entry of the window's upper left corner
  float threshold;
  std::int32_t gain;  // what a value below the threshold adds to the sum, see PlannedStage
};

struct AnyFeature {
  std::int32_t corners[3][4];  // + - - +
  std::int32_t weights[3];
};

// A stump as the cascade file has it, for sums that are too close to the stage's threshold.
struct ExactStump {
  std::int32_t planned;  // index into PlanView::stumps
  FeatureShape shape;
  float threshold;
  float below;
  float not_below;
};

// Votes are added up as whole numbers, in any order; each is a vote of the cascade times a power of
// two, rounded. OpenCV adds up doubles in a given order. The difference of the two has a bound.
// Sums that are further than that from the threshold are decided; the few others are added up again
// in OpenCV's way.
struct PlannedStage {
  std::int32_t ends[kShapeCount];  // in PlanView::stumps, one past the stumps of each shape
  std::int32_t first;              // in PlanView::stumps; shapes follow in their order
  std::int32_t first_exact;        // in PlanView::exact, in the cascade's order
  std::int32_t exact_count;
  std::int32_t start;         // the sum if no value is below its threshold
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
  std::int32_t norm_corners[4];  // of the part of the window whose contrast is measured: + - - +
  double norm_area;              // of that part, in pixels
  float largest_norm;            // windows with a larger one have too little contrast
};

// The planes of a layer, see PyramidLayer.
struct LayerView {
  const std::int32_t* sums;
  const std::int32_t* square_sums;
  const std::uint16_t* low_sums;
  std::int32_t pitch;
};

// Rows of windows of one layer. A window's place is the index of the entry at its upper left
// corner.
struct WindowRows {
  std::int32_t first_row;  // in rows of the planes
  std::int32_t row_step;
  std::int32_t row_count;
  std::int32_t windows;  // in each row, at adjacent places from the start of the row
  bool from_right;       // OpenCV, in the mirror image, visits the last of these first
};

// Eights of adjacent windows, of which some passed all stages before the one that they wait for.
struct WaitingWindows {
  std::int32_t* places;       // of the first window of each eight
  std::int32_t* norm_places;  // where its norms begin in ScanScratch::norms
  std::uint8_t* alive;        // which of the eight passed, the first in the lowest bit
  std::int32_t count;
};

// Working memory of one scan; what it holds before does not matter.
struct ScanScratch {
  // For each window, the factor that normalises its values, divided by 2^16. Rows are padded to
  // whole groups, and the even windows of a group stand before the odd ones.
  float* norms;
  std::uint64_t* alive;     // a bit for each window, rows padded to whole words
  std::uint64_t* rejected;  // likewise
  WaitingWindows* waiting;  // one for each stage and one for what passes all of them
};

constexpr std::int32_t kEight = 8;

// The largest group of windows on any instruction set.
constexpr std::int32_t kLargestGroup = 32;

}  // namespace halcyra::haar
