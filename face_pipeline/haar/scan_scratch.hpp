// Working memory of scans, reused from one to the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// The memory of one scan at a time.
class ScanMemory {
 public:
  // Grows as needed for a scan of `rows` rows with `windows` windows each and a cascade of `stages`
  // stages and patches of `blocks` blocks. Valid until the next call.
  ScanScratch reserve(std::int32_t rows, std::int32_t windows, std::int32_t stages,
                      std::int32_t blocks);

 private:
  std::vector<std::int16_t> deviations_;
  std::vector<std::uint64_t> alive_;
  std::vector<std::uint64_t> rejected_;
  std::vector<std::int32_t> queued_places_;
  std::vector<std::int16_t> queued_deviations_;
  std::vector<WindowQueue> queues_;
  std::vector<std::uint16_t> patches_;
  std::vector<std::int32_t> passed_places_;
  PassedWindows passed_{};
};

// Lends each of several concurrent scans a memory of its own. Thread-safe.
class ScratchPool {
 public:
  std::unique_ptr<ScanMemory> take();  // never null
  void give_back(std::unique_ptr<ScanMemory> memory);

 private:
  std::mutex mutex_;
  std::vector<std::unique_ptr<ScanMemory>> idle_;
};

}  // namespace halcyra::haar
