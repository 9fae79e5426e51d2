// Counts what the driver has skipped, by the numbers of its frames.
#pragma once

#include <cstdint>
#include <optional>

namespace halcyra::record {

class SequenceGaps {
 public:
  // Takes the number of the next frame. Numbers wrap at 2^32. One that does not lie ahead, by less
  // than half of that, counts as a new start.
  void see(std::uint32_t number) {
    const std::uint32_t step = last_ ? number - *last_ : 1;
    constexpr std::uint32_t kHalf = std::uint32_t{1} << 31U;
    if (step > 0 && step < kHalf) skipped_ += step - 1;
    last_ = number;
  }

  std::uint64_t skipped() const { return skipped_; }

 private:
  std::optional<std::uint32_t> last_;
  std::uint64_t skipped_ = 0;
};

}  // namespace halcyra::record
