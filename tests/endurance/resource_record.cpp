#include "tests/endurance/resource_record.hpp"

#include <algorithm>
#include <cstdio>

namespace halcyra {
namespace {

constexpr double kMemoryTolerance = 1.02;

using Samples = std::vector<ProcessResources>;

long least(const Samples& samples, long ProcessResources::*value) {
  const auto less = [value](const ProcessResources& a, const ProcessResources& b) {
    return a.*value < b.*value;
  };
  return (*std::min_element(samples.begin(), samples.end(), less)).*value;
}

long median(const Samples& samples, long ProcessResources::*value) {
  std::vector<long> values;
  for (const ProcessResources& sample : samples) values.push_back(sample.*value);
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

ResourcePeriod period_of(const Samples& samples) {
  return {median(samples, &ProcessResources::resident_kib),
          least(samples, &ProcessResources::descriptors),
          least(samples, &ProcessResources::threads), least(samples, &ProcessResources::children)};
}

std::string compared(const char* what, long first, long last) {
  return std::string(what) + " grew from " + std::to_string(first) + " to " + std::to_string(last) +
         "\n";
}

}  // namespace

std::vector<ResourcePeriod> periods_of(const std::vector<ProcessResources>& samples, int count) {
  std::vector<ResourcePeriod> periods;
  for (int period = 0; period < count; ++period) {
    const auto share = static_cast<std::ptrdiff_t>(samples.size());
    const Samples part(samples.begin() + share * period / count,
                       samples.begin() + share * (period + 1) / count);
    if (!part.empty()) periods.push_back(period_of(part));
  }
  return periods;
}

std::string growth(const std::vector<ResourcePeriod>& periods, Memory memory) {
  if (periods.empty()) return "nothing was measured\n";
  const ResourcePeriod& first = periods.front();
  const ResourcePeriod& last = periods.back();
  std::string found;
  const double most_kib = static_cast<double>(first.resident_kib) * kMemoryTolerance;
  if (memory == Memory::kCompared && static_cast<double>(last.resident_kib) > most_kib) {
    found += compared("resident memory (KiB)", first.resident_kib, last.resident_kib);
  }
  if (last.descriptors > first.descriptors) {
    found += compared("open descriptors", first.descriptors, last.descriptors);
  }
  if (last.threads > first.threads) found += compared("threads", first.threads, last.threads);
  if (last.children > first.children) found += compared("children", first.children, last.children);
  return found;
}

std::string table_of(const std::vector<ResourcePeriod>& periods) {
  std::string table = "period  resident MiB  descriptors  threads  children\n";
  for (std::size_t index = 0; index < periods.size(); ++index) {
    const ResourcePeriod& period = periods[index];
    char line[80];
    std::snprintf(line, sizeof line, "%6zu  %12.1f  %11ld  %7ld  %8ld\n", index + 1,
                  static_cast<double>(period.resident_kib) / 1024, period.descriptors,
                  period.threads, period.children);
    table += line;
  }
  return table;
}

}  // namespace halcyra
