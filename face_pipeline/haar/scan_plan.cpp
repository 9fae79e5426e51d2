#include "face_pipeline/haar/scan_plan.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "face_pipeline/haar/feature_shape.hpp"

namespace halcyra::haar {
namespace {

// Larger patches would not stay in the cache.
constexpr std::size_t kLargestPatch = 2048;

// A value for each corner of a window, by its index.
using CornerTable = std::vector<std::int32_t>;

// Which entry of a plane the first window of a row reads.
CornerTable plane_offsets(const cv::Size& window, const PlaneLayout& layout,
                          const WindowColumns& columns) {
  CornerTable offsets;
  for (int y = 0; y <= window.height; ++y) {
    for (int x = 0; x <= window.width; ++x) {
      const int column = columns.first + x;
      const int place = columns.step == 1 ? x : column % 2 * layout.odd_start + column / 2;
      offsets.push_back(y * layout.pitch + place);
    }
  }
  return offsets;
}

// Calls `visit` with each offset of the stages from `first` to before `end`. Stumps of kAnyShape
// have none.
template <class Stage, class Stump, class Visit>
void for_offsets(const std::vector<Stage>& stages, std::size_t first, std::size_t end,
                 std::vector<Stump>& stumps, Visit visit) {
  for (std::size_t stage = first; stage < end; ++stage) {
    std::int32_t stump = stages[stage].first;
    for (int shape = 0; shape < kAnyShape; ++shape) {
      const int corners = corner_count(static_cast<FeatureShape>(shape));
      for (; stump < stages[stage].ends[shape]; ++stump) {
        std::int32_t* offsets = stumps[static_cast<std::size_t>(stump)].offsets;
        for (int i = 0; i < corners; ++i) visit(offsets[i]);
      }
    }
  }
}

auto looked_up_in(const CornerTable& table) {
  return [&table](std::int32_t& offset) { offset = table[static_cast<std::size_t>(offset)]; };
}

// A stage costs a vector the same for any number of windows alive. Packing these first costs their
// patches, and their share of a full vector. Half of them fail the stage, or so, and would then not
// have needed a patch; the others need one soon in either case.
std::int32_t fewest_windows(int stumps, const PackingCost& packing, std::size_t blocks) {
  constexpr double kAnyStage = 4.0;  // what a stage costs besides its stumps
  const double patch = static_cast<double>(blocks) * packing.block;
  const double of_a_vector = static_cast<double>(stumps) / packing.group;
  return static_cast<std::int32_t>(std::ceil((stumps + kAnyStage) / (patch / 2.0 + of_a_vector)));
}

// Covers the entries that stumps after the first stage read with blocks. Returns the entries'
// offsets in a batch.
CornerTable cover_with_blocks(const CornerTable& offsets, int group, ScanPlan& plan) {
  std::vector<bool> read(offsets.size());
  const auto note = [&read](std::int32_t corner) { read[static_cast<std::size_t>(corner)] = true; };
  for_offsets(plan.quick_stages, 1, plan.quick_stages.size(), plan.quick_stumps, note);
  for_offsets(plan.stages, 1, plan.stages.size(), plan.stumps, note);
  std::vector<std::size_t> corners;
  for (std::size_t corner = 0; corner < read.size(); ++corner) {
    if (read[corner]) corners.push_back(corner);
  }
  std::sort(corners.begin(), corners.end(),
            [&offsets](std::size_t a, std::size_t b) { return offsets[a] < offsets[b]; });
  CornerTable packed(offsets.size());
  for (const std::size_t corner : corners) {
    if (plan.blocks.empty() || offsets[corner] >= plan.blocks.back().offset + kEight) {
      plan.blocks.push_back({offsets[corner]});
    }
    const auto block = static_cast<std::int32_t>(plan.blocks.size()) - 1;
    packed[corner] = (block * kEight + offsets[corner] - plan.blocks.back().offset) * group;
  }
  return packed;
}

void pack(const CornerTable& offsets, const PackingCost& packing, ScanPlan& plan) {
  const CornerTable packed = cover_with_blocks(offsets, packing.group, plan);
  plan.packed_quick_stumps = plan.quick_stumps;
  for_offsets(plan.quick_stages, 1, plan.quick_stages.size(), plan.packed_quick_stumps,
              looked_up_in(packed));
  for_offsets(plan.stages, 1, plan.stages.size(), plan.stumps, looked_up_in(packed));
  for (std::size_t i = 0; i < plan.stages.size(); ++i) {
    plan.quick_stages[i].fewest_windows =
        fewest_windows(plan.stages[i].exact_count, packing, plan.blocks.size());
  }
}

}  // namespace

PlanView ScanPlan::view() const {
  PlanView view{};
  view.stages = stages.data();
  view.stage_count = static_cast<std::int32_t>(stages.size());
  view.stumps = stumps.data();
  view.quick_stages = quick_stages.data();
  view.quick_stumps = quick_stumps.data();
  view.packed_quick_stumps = packed_quick_stumps.data();
  view.quick_any = quick_any.data();
  view.blocks = blocks.data();
  view.block_count = static_cast<std::int32_t>(blocks.size());
  view.features = features.data();
  view.exact = exact.data();
  std::copy(norm_corners.begin(), norm_corners.end(), std::begin(view.norm_corners));
  view.norm_area = norm_area;
  view.largest_norm = largest_norm;
  view.deviation_unit = deviation_unit;
  return view;
}

ScanPlan place_plan(const ScanPlan& by_corner, const PlaneLayout& layout,
                    const WindowColumns& columns, const PackingCost& packing) {
  ScanPlan plan = by_corner;
  const CornerTable offsets = plane_offsets(plan.window, layout, columns);
  if (offsets.size() <= kLargestPatch) pack(offsets, packing, plan);
  for_offsets(plan.stages, 0, 1, plan.stumps, looked_up_in(offsets));
  for_offsets(plan.quick_stages, 1, plan.quick_stages.size(), plan.quick_stumps,
              looked_up_in(offsets));
  for (AnyFeature& feature : plan.features) {
    for (auto& corners : feature.corners) {
      std::for_each(std::begin(corners), std::end(corners), looked_up_in(offsets));
    }
  }
  std::for_each(plan.norm_corners.begin(), plan.norm_corners.end(), looked_up_in(offsets));
  return plan;
}

}  // namespace halcyra::haar
