#include "face_pipeline/haar/scan_scratch.hpp"

#include <algorithm>
#include <utility>

#include <opencv2/core/utility.hpp>

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

ScanScratch ScanMemory::reserve(std::int32_t rows, std::int32_t windows, std::int32_t stages,
                                std::int32_t blocks) {
  const std::size_t words = rounded_up(windows + kLargestGroup, 64) / 64;
  const auto queue_count = static_cast<std::size_t>(stages) + 1;
  std::int32_t* const places = grown_to(queued_places_, queue_count * kLargestGroup);
  std::int16_t* const deviations = grown_to(queued_deviations_, queue_count * kLargestGroup);
  WindowQueue* const queues = grown_to(queues_, queue_count);
  for (std::size_t i = 0; i < queue_count; ++i) {
    queues[i] = {places + i * kLargestGroup, deviations + i * kLargestGroup, 0};
  }
  passed_ = {
      grown_to(passed_places_, static_cast<std::size_t>(rows) * static_cast<std::size_t>(windows)),
      0};
  std::uint16_t* const patches =
      grown_to(patches_, static_cast<std::size_t>(blocks) * kEight * kLargestGroup + 32);
  return {grown_to(deviations_, rounded_up(windows, kLargestGroup)),
          grown_to(alive_, words),
          grown_to(rejected_, words),
          queues,
          cv::alignPtr(patches, 64),
          &passed_};
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
