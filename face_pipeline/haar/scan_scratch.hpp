// Working memory of scans, kept from one to the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// What one scan at a time writes to.
class ScanMemory {
 public:
  // Room for so many rows of so many windows and a cascade of so many stages.
  ScanScratch reserve(std::int32_t rows, std::int32_t windows, std::int32_t stages);

 private:
  std::vector<float> norms_;
  std::vector<std::uint64_t> alive_;
  std::vector<std::uint64_t> rejected_;
  std::vector<std::int32_t> places_;
  std::vector<std::int32_t> norm_places_;
  std::vector<std::uint8_t> waiting_alive_;
  std::vector<WaitingWindows> waiting_;
};

// As many memories as there are scans at the same time. Safe to use from several threads.
class ScratchPool {
 public:
  std::unique_ptr<ScanMemory> take();
  void give_back(std::unique_ptr<ScanMemory> memory);

 private:
  std::mutex mutex_;
  std::vector<std::unique_ptr<ScanMemory>> idle_;
};

}  // namespace halcyra::haar
