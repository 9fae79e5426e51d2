#include "face_pipeline/haar/cascade_search.hpp"

#include <algorithm>
#include <cstddef>
#include <tuple>
#include <utility>

#include <opencv2/core.hpp>
#include <opencv2/core/utility.hpp>

#include "face_pipeline/haar/cascade_plan.hpp"
#include "face_pipeline/haar/mirrored_cascade.hpp"
#include "face_pipeline/haar/stage_order.hpp"
#include "face_pipeline/haar/window_scan.hpp"

namespace halcyra::haar {
namespace {

// A task scans about this many windows: enough to fill the batches of the later stages, few enough
// for their sums to stay in the cache, and for all threads to end at about the same time.
constexpr int kFewestWindows = 8192;
constexpr int kMostWindows = 16384;
constexpr int kTasksOfAThread = 16;

// Plans depend on the picture's width. When more than this many are cached, all are made anew.
constexpr std::size_t kMostPlans = 48;

// The order of the stages is found anew after this many searches, as pictures change.
constexpr int kSearchesInOrder = 256;

WindowScan* scan_for(InstructionSet instructions) {
#ifdef HALCYRA_X86_KERNELS
  if (instructions == InstructionSet::kAvx512) return scan_windows_avx512;
  if (instructions == InstructionSet::kAvx2) return scan_windows_avx2;
#endif
#ifdef HALCYRA_NEON_KERNEL
  if (instructions == InstructionSet::kNeon) return scan_windows_neon;
#endif
  static_cast<void>(instructions);
  return scan_windows_baseline;
}

// Measured on an AMD EPYC (Zen 4).
PackingCost packing_cost(InstructionSet instructions) {
  switch (instructions) {
    case InstructionSet::kAvx512:
      return {32, 0.18};
    case InstructionSet::kAvx2:
    case InstructionSet::kNeon:
      return {16, 0.26};
    default:
      return {8, 0.42};
  }
}

// The number of places that a window has along a side of the picture.
int places_for(int window, int side) { return std::max(side + 1 - window, 0); }

// The number of rows, from the top, in which OpenCV looks for windows. It cuts every layer into the
// same number of stripes for its threads, and stripes of a layer that is searched in every other
// row may end before the last row that has room for a window.
int searched_height(const PyramidLayer& first, const PyramidLayer& layer, const cv::Size& window) {
  const int stripes = cvCeil(places_for(window.width, first.size.width) / 32.0);
  const int height = places_for(window.height, layer.size.height);
  const int stripe = std::max((height / layer.step + stripes - 1) / stripes, 1) * layer.step;
  return std::min(stripes * stripe, height);
}

int ceiling_of_quotient(int dividend, int divisor) { return (dividend + divisor - 1) / divisor; }

int windows_of_a_task(double windows_of_all) {
  const double share = windows_of_all / (kTasksOfAThread * std::max(cv::getNumThreads(), 1));
  return static_cast<int>(std::clamp<double>(share, kFewestWindows, kMostWindows));
}

LayerView view_of(const PyramidLayer& layer) {
  return {layer.sums.data(), layer.square_sums.data(), layer.low_sums.data(), layer.layout.pitch};
}

using Place = std::pair<int, int>;  // row, column

// Pixels of the layer or, if windows are visited from the right, of its mirror image.
std::vector<Place> sorted_places(const PassedWindows& passed, const WindowRows& rows,
                                 const PyramidLayer& layer) {
  std::vector<Place> places;
  for (int i = 0; i < passed.count; ++i) {
    const int window = passed.places[i] % layer.layout.pitch;
    places.emplace_back(passed.places[i] / layer.layout.pitch,
                        layer.step * (rows.from_right ? rows.windows - 1 - window : window));
  }
  std::sort(places.begin(), places.end());
  return places;
}

std::vector<CascadeStage> in_order(const std::vector<CascadeStage>& stages,
                                   const std::vector<int>& order) {
  std::vector<CascadeStage> ordered;
  ordered.reserve(order.size());
  for (const int stage : order) ordered.push_back(stages[static_cast<std::size_t>(stage)]);
  return ordered;
}

bool operator==(const PlaneLayout& a, const PlaneLayout& b) {
  return a.pitch == b.pitch && a.odd_start == b.odd_start;
}

bool operator==(const WindowColumns& a, const WindowColumns& b) {
  return a.step == b.step && a.first == b.first;
}

}  // namespace

CascadeSearch::CascadeSearch(StumpCascade cascade, InstructionSet instructions)
    : cascade_(std::move(cascade)), instructions_(instructions) {}

const ScanPlan& CascadeSearch::plan_by_corner(Facing facing) {
  const bool as_is = facing == Facing::kAsIs;
  std::optional<ScanPlan>& plan = as_is ? as_is_ : mirrored_;
  if (!plan) plan = plan_cascade(as_is ? cascade_ : mirrored(cascade_));
  return *plan;
}

const ScanPlan& CascadeSearch::plan_for(const PlaneLayout& layout, Facing facing,
                                        const WindowColumns& columns) {
  for (const std::unique_ptr<CachedPlan>& cached : plans_) {
    if (cached->layout == layout && cached->facing == facing && cached->columns == columns) {
      return cached->plan;
    }
  }
  plans_.push_back(std::make_unique<CachedPlan>(CachedPlan{
      layout, facing, columns,
      place_plan(plan_by_corner(facing), layout, columns, packing_cost(instructions_))}));
  return plans_.back()->plan;
}

std::vector<SearchTask> CascadeSearch::tasks(const std::vector<const PyramidLayer*>& layers,
                                             Facing facing) {
  double windows_of_all = 0.0;
  for (const PyramidLayer* layer : layers) {
    windows_of_all += static_cast<double>(places_for(cascade_.window.width, layer->size.width)) *
                      places_for(cascade_.window.height, layer->size.height) /
                      (layer->step * layer->step);
  }
  std::vector<SearchTask> all;
  for (const PyramidLayer* layer : layers) {
    const int columns = places_for(cascade_.window.width, layer->size.width);
    if (columns == 0) continue;
    const bool from_right = facing == Facing::kMirrored;
    const int first_column = from_right ? (columns - 1) % layer->step : 0;
    const ScanPlan& its_plan = plan_for(layer->layout, facing, {layer->step, first_column});
    const int windows = ceiling_of_quotient(columns, layer->step);
    const int height = searched_height(*layers.front(), *layer, cascade_.window);
    const int rows = ceiling_of_quotient(height, layer->step);
    const int rows_per_task = std::max(windows_of_a_task(windows_of_all) / windows, 1);
    for (int row = 0; row < rows; row += rows_per_task) {
      all.push_back({layer,
                     &its_plan,
                     {row * layer->step, layer->step, std::min(rows_per_task, rows - row), windows,
                      from_right},
                     {}});
    }
  }
  return all;
}

bool CascadeSearch::order_is_due() {
  if (searches_in_order_ < 0 || searches_in_order_ >= kSearchesInOrder) return true;
  ++searches_in_order_;
  return false;
}

void CascadeSearch::prepare(const std::vector<const PyramidLayer*>& layers, Facing facing) {
  if (plans_.size() > kMostPlans) plans_.clear();
  if (!order_is_due()) return;
  std::vector<SampledRows> rows;
  for (const SearchTask& task : tasks(layers, facing)) {
    rows.push_back({task.plan->view(), view_of(*task.layer), task.rows});
  }
  const std::vector<int> order = quickest_stage_order(rows);
  if (order.empty()) return;
  searches_in_order_ = 0;
  if (std::is_sorted(order.begin(), order.end())) return;
  cascade_.stages = in_order(cascade_.stages, order);
  as_is_.reset();
  mirrored_.reset();
  plans_.clear();
}

void CascadeSearch::run(SearchTask& task) {
  std::unique_ptr<ScanMemory> memory = scratch_.take();
  const PlanView view = task.plan->view();
  const ScanScratch scratch =
      memory->reserve(task.rows.row_count, task.rows.windows, view.stage_count, view.block_count);
  scan_for(instructions_)(view, view_of(*task.layer), task.rows, scratch);
  const std::vector<Place> found = sorted_places(*scratch.passed, task.rows, *task.layer);
  const float scale = task.layer->scale;
  for (const auto& [row, column] : found) {
    task.found.emplace_back(cvRound(static_cast<float>(column) * scale),
                            cvRound(static_cast<float>(row) * scale),
                            cvRound(static_cast<float>(cascade_.window.width) * scale),
                            cvRound(static_cast<float>(cascade_.window.height) * scale));
  }
  scratch_.give_back(std::move(memory));
}

}  // namespace halcyra::haar
