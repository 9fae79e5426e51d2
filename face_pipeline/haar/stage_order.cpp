#include "face_pipeline/haar/stage_order.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
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

using PassedStages = std::vector<bool>;  // of one window, by stage

// Empty if the window has too little contrast or misses the first stage.
PassedStages passed_stages(const SampledRows& rows, std::int32_t place) {
  const SingleWindow<NoLanes> window(rows.plan, rows.layer, place);
  const float norm = window.norm();
  if (!(norm <= rows.plan.largest_norm)) return {};
  if (!window.passes_exactly(rows.plan.stages[0], norm)) return {};
  PassedStages passed;
  for (std::int32_t stage = 0; stage < rows.plan.stage_count; ++stage) {
    passed.push_back(window.passes_exactly(rows.plan.stages[stage], norm));
  }
  return passed;
}

std::vector<PassedStages> sample(const std::vector<SampledRows>& all) {
  std::mt19937 random;
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  std::vector<PassedStages> samples;
  for (int i = 0; i < kMostTries && samples.size() < kSamples; ++i) {
    const SampledRows& rows = all[below(all.size())];
    const auto row =
        static_cast<std::int32_t>(below(static_cast<std::size_t>(rows.rows.row_count)));
    const auto window =
        static_cast<std::int32_t>(below(static_cast<std::size_t>(rows.rows.windows)));
    const std::int32_t place =
        (rows.rows.first_row + row * rows.rows.row_step) * rows.layer.pitch + window;
    PassedStages passed = passed_stages(rows, place);
    if (!passed.empty()) samples.push_back(std::move(passed));
  }
  return samples;
}

double rejected_per_stump(const std::vector<PassedStages>& samples, const PlannedStage& stage,
                          std::size_t index) {
  const auto rejected = std::count_if(samples.begin(), samples.end(),
                                      [index](const auto& passed) { return !passed[index]; });
  return static_cast<double>(rejected) / stage.exact_count;
}

}  // namespace

std::vector<int> quickest_stage_order(const std::vector<SampledRows>& rows) {
  if (rows.empty()) return {};
  std::vector<PassedStages> samples = sample(rows);
  if (samples.size() < kSamples) return {};
  const PlannedStage* const stages = rows.front().plan.stages;
  std::vector<int> order{0};
  std::vector<int> left;
  for (int stage = 1; stage < rows.front().plan.stage_count; ++stage) left.push_back(stage);
  while (samples.size() >= kFewestSamples && !left.empty()) {
    const auto worth = [&](int stage) {
      return rejected_per_stump(samples, stages[stage], static_cast<std::size_t>(stage));
    };
    const auto best = std::max_element(left.begin(), left.end(),
                                       [&worth](int a, int b) { return worth(a) < worth(b); });
    const auto stage = static_cast<std::size_t>(*best);
    order.push_back(*best);
    left.erase(best);
    samples.erase(std::remove_if(samples.begin(), samples.end(),
                                 [stage](const auto& passed) { return !passed[stage]; }),
                  samples.end());
  }
  order.insert(order.end(), left.begin(), left.end());
  return order;
}

}  // namespace halcyra::haar
