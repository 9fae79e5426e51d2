// Measures every stage of a cycle and prints a table. Takes Google Benchmark's arguments, for
// example --benchmark_filter=dashboard.

#include <algorithm>
#include <iterator>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/measurement.hpp"
#include "bench/ratio_table.hpp"

int main(int argc, char** argv) {
  // Interleaved, so that a slow moment of the machine affects work and floor alike. Arguments of
  // the command line come after these and override them.
  char repetitions[] = "--benchmark_repetitions=7";
  char interleaving[] = "--benchmark_enable_random_interleaving=true";
  char least_time[] = "--benchmark_min_time=0.05";
  std::vector<char*> arguments = {argv[0], repetitions, interleaving, least_time};
  std::copy(argv + 1, argv + argc, std::back_inserter(arguments));
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  halcyra::add_frame_conversion_rows();
  halcyra::add_face_detection_rows();
  halcyra::add_face_analysis_rows();
  halcyra::add_owner_samples_rows();
  halcyra::add_room_awareness_rows();
  halcyra::add_dashboard_rows();
  halcyra::add_cycle_rows();
  halcyra::add_start_up_rows();
  halcyra::RatioTable table(halcyra::added_rows());
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
