#include "face_pipeline/haar/stage_order.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <random>
#include <utility>

#include "face_pipeline/haar/single_window.hpp"

namespace halcyra::haar {
namespace {

constexpr std::size_t kSamples = 512;

// Most windows of most pictures have contrast, and a quarter or more pass the first stage.
constexpr int kMostTries = 8192;

// Fewer windows say little about a stage.
constexpr std::size_t kFewestSamples = 16;

struct NoLanes;

// A window that passes the first stage. Whether it passes another stage is found out when that is
// first asked, as this takes long for stages with many stumps.
class Sample {
 public:
  Sample(const SingleWindow<NoLanes>& window, float norm, const PlanView& plan)
      : window_(window),
        norm_(norm),
        stages_(plan.stages),
        passed_(static_cast<std::size_t>(plan.stage_count)) {}

  bool passes(std::size_t stage) {
    if (!passed_[stage]) passed_[stage] = window_.passes_exactly(stages_[stage], norm_);
    return *passed_[stage];
  }

 private:
  SingleWindow<NoLanes> window_;
  float norm_;
  const PlannedStage* stages_;
  std::vector<std::optional<bool>> passed_;  // by stage
};

// Nothing if the window has too little contrast or misses the first stage.
std::optional<Sample> sample_at(const SampledRows& rows, std::int32_t place) {
  const SingleWindow<NoLanes> window(rows.plan, rows.layer, place);
  const float norm = window.norm();
  if (!(norm <= rows.plan.largest_norm)) return std::nullopt;
  if (!window.passes_exactly(rows.plan.stages[0], norm)) return std::nullopt;
  return Sample(window, norm, rows.plan);
}

std::vector<Sample> sample(const std::vector<SampledRows>& all) {
  std::mt19937 random;
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  std::vector<Sample> samples;
  for (int i = 0; i < kMostTries && samples.size() < kSamples; ++i) {
    const SampledRows& rows = all[below(all.size())];
    const auto row =
        static_cast<std::int32_t>(below(static_cast<std::size_t>(rows.rows.row_count)));
    const auto window =
        static_cast<std::int32_t>(below(static_cast<std::size_t>(rows.rows.windows)));
    const std::int32_t place =
        (rows.rows.first_row + row * rows.rows.row_step) * rows.layer.pitch + window;
    std::optional<Sample> found = sample_at(rows, place);
    if (found) samples.push_back(*std::move(found));
  }
  return samples;
}

// The one of the stages left that rejects the most samples for each of its stumps; the earliest of
// several. `left` is in rising order of stumps: where even the rejection of all samples would not
// make a stage the best, it need not be tried, nor any after it.
int best_stage(std::vector<Sample>& samples, const std::vector<int>& left,
               const PlannedStage* stages) {
  int best = left.front();
  double most = -1.0;
  for (const int stage : left) {
    const double stumps = stages[stage].exact_count;
    if (static_cast<double>(samples.size()) / stumps < most) break;
    const auto rejected = std::count_if(samples.begin(), samples.end(), [stage](Sample& one) {
      return !one.passes(static_cast<std::size_t>(stage));
    });
    const double worth = static_cast<double>(rejected) / stumps;
    if (worth > most || (worth == most && stage < best)) best = stage;
    most = std::max(most, worth);
  }
  return best;
}

}  // namespace

std::vector<int> quickest_stage_order(const std::vector<SampledRows>& rows) {
  if (rows.empty()) return {};
  std::vector<Sample> samples = sample(rows);
  if (samples.size() < kSamples) return {};
  const PlannedStage* const stages = rows.front().plan.stages;
  std::vector<int> order{0};
  std::vector<int> left(static_cast<std::size_t>(rows.front().plan.stage_count - 1));
  std::iota(left.begin(), left.end(), 1);
  std::stable_sort(left.begin(), left.end(), [stages](int a, int b) {
    return stages[a].exact_count < stages[b].exact_count;
  });
  while (samples.size() >= kFewestSamples && !left.empty()) {
    const int best = best_stage(samples, left, stages);
    order.push_back(best);
    left.erase(std::find(left.begin(), left.end(), best));
    const auto misses = [best](Sample& one) { return !one.passes(static_cast<std::size_t>(best)); };
    samples.erase(std::remove_if(samples.begin(), samples.end(), misses), samples.end());
  }
  std::sort(left.begin(), left.end());
  order.insert(order.end(), left.begin(), left.end());
  return order;
}

}  // namespace halcyra::haar
