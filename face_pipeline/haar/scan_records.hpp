// What a scan reads and writes: plain records without functions. The scan is compiled for several
// instruction sets, and a function here that the linker took from one of them might not run on
// another machine.
#pragma once

#include <cstdint>

namespace halcyra::haar {

// How a feature's value follows from the entries o0 to o8 at a stump's offsets. Rectangles share
// corners, so this takes fewer entries than the rectangles have corners. A pair of entries, such as
// d0 = o0 - o1, d1 = o2 - o3 and so on, bounds a rectangle on one side, and the difference of two
// pairs is the sum over the rectangle between them.
enum FeatureShape : std::uint8_t {
  kHalves,         // (d0 - d1) - (d1 - d2)
  kThirds,         // ((d2 - d1) - (d1 - d0)) + ((d2 - d1) - (d3 - d2))
  kChecks,         // (o0 - 2 o1 + o2) - 2 (o3 - 2 o4 + o5) + (o6 - 2 o7 + o8)
  kInverseChecks,  // the negative of that
  kAnyShape,       // anything else: sums over the rectangles, see AnyFeature
  kShapeCount
};

// The vectors compute the values of all shapes but kAnyShape in 16 bits, from entries modulo 2^16.
// Parts of a value fit into 16 bits whatever the picture; a value that does not is cut to the
// nearest one that does, which is on the same side of the threshold.
struct PlannedStump {
  // In entries, from the entry of the window's upper left corner: in the planes for the first
  // stage, in a batch of patches for the others. For kAnyShape, the first is an index into
  // PlanView::features.
  std::int32_t offsets[9];
  float threshold;
  std::int32_t gain;  // what a value below the threshold adds to the sum, see PlannedStage
};

// Any feature, with 32-bit sums.
struct AnyFeature {
  std::int32_t corners[3][4];  // of each rectangle, as offsets: + - - +
  std::int32_t weights[3];
};

// A stump as the cascade file has it, for sums that are too close to the stage's threshold.
struct ExactStump {
  std::int32_t feature;  // index into PlanView::features
  float threshold;
  float below;
  float not_below;
};

// Votes are added up as whole numbers, in any order; each is a vote of the cascade times a power of
// two, rounded. OpenCV adds up doubles in a given order. The difference of the two has a bound.
// Sums that are further than that from the threshold are decided; the few others are added up again
// in OpenCV's way.
//
// Stumps of kAnyShape cost several times as much as others, and there are few of them. They vote
// last, and only on windows that they can still decide.
struct PlannedStage {
  std::int32_t ends[kShapeCount];  // in PlanView::stumps, one past the stumps of each shape
  std::int32_t first;              // in PlanView::stumps; shapes follow in their order
  std::int32_t first_exact;        // in PlanView::exact, in the cascade's order
  std::int32_t exact_count;
  std::int32_t start;         // the sum if no value is below its threshold
  std::int32_t surely_below;  // smaller sums miss the threshold
  std::int32_t surely_above;  // larger sums reach it
  std::int32_t early_below;   // likewise for the sums without stumps of kAnyShape
  std::int32_t early_above;
  float threshold;
};

// Most windows miss a stage by far. So each stage after the first begins as a quick test in 16 bits
// that no window fails which passes the stage. Windows that pass all quick tests are few, and go
// through the stages as above.
//
// A value times the norm is compared with the threshold; here the value itself is compared with the
// threshold times the window's deviation, which is the inverse of the norm, scaled and rounded to
// 16 bits. What this can differ has a bound, and where it leaves in doubt on which side of the
// threshold the value is, the window gets the larger of the stump's votes. The values' signs are
// chosen so that this is the vote for small values.
struct QuickStump {
  std::int32_t offsets[9];  // as above, but in either kind of memory, see PlanView
  // Each is a number of 16 bits, twice. For the threshold see quick_plan.cpp.
  std::int32_t threshold;
  std::int32_t gain;  // what a value that is not above the limit adds to the sum; without a sign
};

// A stump of kAnyShape.
struct QuickAnyStump {
  std::int32_t feature;  // index into PlanView::features
  float threshold;       // for values divided by the deviation
  float margin;          // what a value's limit can differ from the true one
  std::int32_t gain;
  bool gains_below;  // gains below its limit; otherwise from there on
};

// Sums start at kQuickStart and only grow. They stay within 16 bits with a sign.
struct QuickStage {
  std::int32_t ends[kAnyShape];  // in the arrays of quick stumps, as for PlannedStage
  std::int32_t first;
  std::int32_t first_any;  // in PlanView::quick_any
  std::int32_t end_any;
  std::int32_t limit;           // sums of all stumps that are not above this miss the threshold
  std::int32_t open_limit;      // likewise for the sums without stumps of kAnyShape
  std::int32_t fewest_windows;  // a vector with fewer windows alive is left for a new batch
};

constexpr std::int32_t kQuickStart = -32767;

// Eight entries side by side, some of which a stump reads. The offset of the first is in entries,
// from the entry of the window's upper left corner.
struct PatchBlock {
  std::int32_t offset;
};

struct PlanView {
  const PlannedStage* stages;
  std::int32_t stage_count;
  const PlannedStump* stumps;
  const QuickStage* quick_stages;  // that of the first stage is empty
  const QuickStump* quick_stumps;
  const QuickStump* packed_quick_stumps;  // the same, with offsets in a batch of patches
  const QuickAnyStump* quick_any;
  const PatchBlock* blocks;  // of a patch; none if windows are too large for patches
  std::int32_t block_count;
  const AnyFeature* features;
  const ExactStump* exact;
  std::int32_t norm_corners[4];  // of the part of the window whose contrast is measured: + - - +
  double norm_area;              // of that part, in pixels
  float largest_norm;            // windows with a larger one have too little contrast
  float deviation_unit;          // a deviation is this divided by the norm
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

// Single windows that passed the quick tests of all stages before the one that they wait for.
struct WindowQueue {
  std::int32_t* places;
  std::int16_t* deviations;
  std::int32_t count;
};

// Windows that passed all stages.
struct PassedWindows {
  std::int32_t* places;
  std::int32_t count;
};

// Working memory of one scan; what it holds before does not matter.
struct ScanScratch {
  std::int16_t* deviations;  // of one row of windows, padded to whole groups
  std::uint64_t* alive;      // a bit for each window of a row, padded to whole words
  std::uint64_t* rejected;   // likewise
  WindowQueue* queues;       // one for each stage and one more, with room for a group
  std::uint16_t* patches;    // of one batch, see PackedScan
  PassedWindows* passed;
};

constexpr std::int32_t kEight = 8;

// The largest group of windows on any instruction set.
constexpr std::int32_t kLargestGroup = 32;

}  // namespace halcyra::haar
