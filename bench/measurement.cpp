#include "bench/measurement.hpp"

#include <utility>

#include <benchmark/benchmark.h>

#include "bench/ratio_table.hpp"

namespace halcyra {
namespace {

std::vector<std::string>& rows() {
  static std::vector<std::string> all;
  return all;
}

void repeat(benchmark::State& state, const std::function<void()>& call) {
  for (auto _ : state) call();
}

void add(const std::string& name, std::function<void()> call, Clock clock) {
  benchmark::internal::Benchmark* const added = benchmark::RegisterBenchmark(
      name.c_str(), [call = std::move(call)](benchmark::State& state) { repeat(state, call); });
  added->Unit(benchmark::kMicrosecond);
  if (clock == Clock::kWall) added->UseRealTime();
}

}  // namespace

void add_row(const std::string& stage, const std::string& scene, std::function<void()> work,
             std::function<void()> floor, Clock clock) {
  const std::string row = row_name(stage, scene);
  rows().push_back(row);
  add(row, std::move(work), clock);
  add(floor_name(row), std::move(floor), clock);
}

const std::vector<std::string>& added_rows() { return rows(); }

}  // namespace halcyra
