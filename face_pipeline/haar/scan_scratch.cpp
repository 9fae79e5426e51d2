#include "face_pipeline/haar/scan_scratch.hpp"

#include <algorithm>
#include <utility>

namespace halcyra::haar {
namespace {

template <class Value>
Value* grown_to(std::vector<Value>& values, std::size_t count) {
  if (values.size() < count) values.resize(count);
  return values.data();
}

std::size_t rounded_up(std::int32_t value, std::int32_t unit) {
  const auto size = static_cast<std::size_t>(unit);
  return (static_cast<std::size_t>(value) + size - 1) / size * size;
}

}  // namespace

ScanScratch ScanMemory::reserve(std::int32_t rows, std::int32_t windows, std::int32_t stages) {
  const auto row_count = static_cast<std::size_t>(rows);
  const std::size_t padded = rounded_up(windows, kLargestGroup);
  const std::size_t words = rounded_up(windows + kLargestGroup, 64) / 64;
  const std::size_t all = row_count * padded + kLargestGroup;
  const std::size_t eights = all / kEight;
  const std::size_t lists = static_cast<std::size_t>(stages) + 1;
  std::int32_t* const places = grown_to(places_, eights * lists);
  std::int32_t* const norm_places = grown_to(norm_places_, eights * lists);
  std::uint8_t* const alive = grown_to(waiting_alive_, eights * lists);
  WaitingWindows* const waiting = grown_to(waiting_, lists);
  for (std::size_t i = 0; i < lists; ++i) {
    waiting[i] = {places + i * eights, norm_places + i * eights, alive + i * eights, 0};
  }
  return {grown_to(norms_, all), grown_to(alive_, row_count * words),
          grown_to(rejected_, row_count * words), waiting};
}

std::unique_ptr<ScanMemory> ScratchPool::take() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (idle_.empty()) return std::make_unique<ScanMemory>();
  std::unique_ptr<ScanMemory> memory = std::move(idle_.back());
  idle_.pop_back();
  return memory;
}

void ScratchPool::give_back(std::unique_ptr<ScanMemory> memory) {
  const std::lock_guard<std::mutex> lock(mutex_);
  idle_.push_back(std::move(memory));
}

}  // namespace halcyra::haar
