// Collects the times of a run and prints them as one table: work, floor and their ratio.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

namespace halcyra {

// The names under which a row's work and its floor are measured.
std::string row_name(const std::string& stage, const std::string& scene);
std::string floor_name(const std::string& row);

// Keeps the shortest time of all repetitions, as whatever else the machine does only adds to it.
class RatioTable : public benchmark::BenchmarkReporter {
 public:
  // Rows that were not measured are left out.
  explicit RatioTable(std::vector<std::string> rows) : rows_(std::move(rows)) {}

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

  // Prints the table in Markdown.
  void Finalize() override;

 private:
  std::vector<std::string> rows_;
  std::map<std::string, double> shortest_;  // microseconds, by row and floor
};

}  // namespace halcyra
