#include "dashboard/shrinking.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include <opencv2/core/utility.hpp>

#include "dashboard/shrinking_records.hpp"

namespace halcyra {
namespace {

constexpr double kMostFactor = kMostRows - 2;  // a row of the target touches up to two rows more
constexpr double kLeastShare = 1e-3;           // of a pixel; OpenCV leaves out what is less
constexpr double kPixelsOfAStripe = 1 << 17;

// OpenCV inverts the inverse; a plain quotient may differ in its last bit.
double factor(int from, int to) { return 1.0 / (static_cast<double>(to) / from); }

bool is_whole(double factor) {
  return std::abs(factor - std::nearbyint(factor)) < std::numeric_limits<double>::epsilon();
}

// The owner of what an AxisView shows.
class Axis {
 public:
  Axis(int from, int to) : from_(from), scale_(factor(from, to)) {
    // A pixel of the target touches at most this many; the rest of its weights stay 0.
    most_ = static_cast<std::int32_t>(std::ceil(scale_)) + 1;
    const auto targets = static_cast<std::size_t>(to);
    first_.reserve(targets);
    count_.reserve(targets);
    weights_.assign(targets * static_cast<std::size_t>(most_), 0.0F);
    for (int target = 0; target < to; ++target) add(target);
  }

  AxisView view() const { return {first_.data(), count_.data(), weights_.data(), most_}; }

 private:
  void add(int target) {
    const double start = target * scale_;
    const double end = start + scale_;
    const double length = std::min(scale_, from_ - start);
    const int last_whole = std::min(static_cast<int>(std::floor(end)), from_ - 1);
    const int first_whole = std::min(static_cast<int>(std::ceil(start)), last_whole);
    const bool starts_within = first_whole - start > kLeastShare;
    float* const weights = weights_.data() + target * most_;
    float* weight = weights;
    if (starts_within) *weight++ = static_cast<float>((first_whole - start) / length);
    weight = std::fill_n(weight, last_whole - first_whole, static_cast<float>(1.0 / length));
    if (end - last_whole > kLeastShare) {
      *weight++ = static_cast<float>(std::min({end - last_whole, 1.0, length}) / length);
    }
    first_.push_back(starts_within ? first_whole - 1 : first_whole);
    count_.push_back(static_cast<std::int32_t>(weight - weights));
  }

  int from_;
  double scale_;
  std::int32_t most_ = 0;
  std::vector<std::int32_t> first_;
  std::vector<std::int32_t> count_;
  std::vector<float> weights_;
};

ShrinkRows* function_of(ShrinkingKernel kernel) {
#ifdef HALCYRA_X86_KERNELS
  if (kernel == ShrinkingKernel::kAvx2) return shrink_rows_avx2;
#endif
  static_cast<void>(kernel);
  return shrink_rows_baseline;
}

// What a thread needs to shrink rows of the task.
class ScratchMemory {
 public:
  explicit ScratchMemory(const ShrinkingTask& task)
      : wide_(product(most_pixels(task), kWidePixel)),
        sums_length_(task.target_columns * 3 + kBeyondRow),
        sums_(product(sums_length_, task.down.most + kMostRowsAtOnce)) {}

  ShrinkingScratch view() { return {wide_.data(), sums_.data(), sums_length_}; }

 private:
  // That a block needs: no pixel of the target begins more than across.most after the one before
  // it.
  static std::int32_t most_pixels(const ShrinkingTask& task) {
    return (kBlockColumns + 1) * task.across.most;
  }

  static std::size_t product(std::int32_t a, std::int32_t b) {
    return static_cast<std::size_t>(a) * static_cast<std::size_t>(b);
  }

  std::vector<float> wide_;
  std::int32_t sums_length_;
  std::vector<float> sums_;
};

}  // namespace

const std::vector<ShrinkingKernel>& shrinking_kernels() {
  static const std::vector<ShrinkingKernel> kKernels = [] {
    std::vector<ShrinkingKernel> kernels;
#ifdef HALCYRA_X86_KERNELS
    kernels.push_back(ShrinkingKernel::kBaseline);
    if (__builtin_cpu_supports("avx2") != 0) kernels.push_back(ShrinkingKernel::kAvx2);
#endif
    return kernels;
  }();
  return kKernels;
}

bool can_shrink(const cv::Mat& picture, cv::Size size) {
  if (shrinking_kernels().empty() || !cv::useOptimized()) return false;
  if (picture.empty() || picture.type() != CV_8UC3 || size.empty()) return false;
  const double across = factor(picture.cols, size.width);
  const double down = factor(picture.rows, size.height);
  const bool shrinks = across >= 1.0 && down >= 1.0;
  const bool few_rows = across <= kMostFactor && down <= kMostFactor;
  return shrinks && few_rows && !(is_whole(across) && is_whole(down));
}

void shrink(const cv::Mat& picture, cv::Mat& target, ShrinkingKernel kernel) {
  const Axis across(picture.cols, target.cols);
  const Axis down(picture.rows, target.rows);
  const ShrinkingTask task = {picture.data, picture.step, picture.cols,  picture.rows, target.data,
                              target.step,  target.cols,  across.view(), down.view()};
  ShrinkRows* const shrink_rows = function_of(kernel);
  const auto stripes = std::ceil(static_cast<double>(picture.total()) / kPixelsOfAStripe);
  cv::parallel_for_(
      cv::Range(0, target.rows),
      [&](const cv::Range& rows) {
        ScratchMemory scratch(task);
        shrink_rows(task, scratch.view(), rows.start, rows.end);
      },
      stripes);
}

}  // namespace halcyra
