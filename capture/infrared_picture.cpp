#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <mutex>

#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>

#include "capture/frame_conversion.hpp"

namespace halcyra {
namespace {

// Intensities above the cap saturate, so that a few hot pixels do not darken the picture; the floor
// keeps a dim scene from being stretched into noise.
constexpr double kCapShare = 0.85;
constexpr double kCapFloor = 1200.0;

constexpr float kMostIntensity = std::numeric_limits<float>::max();

struct Range {
  double low;
  double high;
};

// The code for a single pixel selects between values and does not branch, so that the compiler can
// vectorise the loops.

bool is_intensity(float pixel) { return bool((pixel > 0) & (pixel <= kMostIntensity)); }

std::int32_t bits_of(float pixel) {
  std::int32_t bits = 0;
  std::memcpy(&bits, &pixel, sizeof bits);
  return bits;
}

float float_of(std::int32_t bits) {
  float pixel = 0;
  std::memcpy(&pixel, &bits, sizeof pixel);
  return pixel;
}

// The least and the greatest of many intensities; other pixels are passed over. Positive floats are
// in the same order as the integers with the same bits, whose minimum and maximum are sooner found.
class Extremes {
 public:
  void add(const float* pixels, int count) {
    for (int i = 0; i < count; ++i) {
      const std::int32_t bits = bits_of(pixels[i]);
      least_ = std::min(least_, rank(bits));
      greatest_ = std::max(greatest_, bits <= kMostBits ? bits : 0);
    }
  }

  void add(const Extremes& other) {
    least_ = std::min(least_, other.least_);
    greatest_ = std::max(greatest_, other.greatest_);
  }

  // `high` is not above `low` if no two intensities differ.
  Range range() const { return {float_of(bits_of_rank(least_)), float_of(greatest_)}; }

 private:
  static constexpr std::int32_t kMostBits = 0x7F7FFFFF;  // of the largest finite float
  static constexpr std::uint32_t kSign = 0x80000000;

  // Intensities rank in their order, and below all other pixels.
  static std::int32_t rank(std::int32_t bits) {
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(bits) - 1) ^ kSign);
  }

  static std::int32_t bits_of_rank(std::int32_t rank) {
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(rank) ^ kSign) + 1);
  }

  std::int32_t least_ = rank(kMostBits);
  std::int32_t greatest_ = 0;
};

Range intensity_range(const cv::Mat& intensities) {
  Extremes extremes;
  std::mutex mutex;
  cv::parallel_for_(cv::Range(0, intensities.rows), [&](const cv::Range& rows) {
    Extremes some;
    for (int y = rows.start; y < rows.end; ++y)
      some.add(intensities.ptr<float>(y), intensities.cols);
    const std::lock_guard<std::mutex> lock(mutex);
    extremes.add(some);
  });
  return extremes.range();
}

Range capped(Range range) {
  const double share = kCapShare * (range.high - range.low);
  const double cap = range.low + std::max(share, kCapFloor);
  return {range.low, std::min(range.high, cap)};
}

// Turns intensities into levels from 0 to 255.
class LevelScale {
 public:
  static constexpr int kBlock = 16;

  explicit LevelScale(Range range)
      : range_(range),
        scale_(255 / std::max(range.high - range.low, 1.0)),
        low_(static_cast<float>(range.low)),
        high_(not_below(range.high)),
        float_scale_(static_cast<float>(scale_)),
        top_(exact_level(high_)) {}

  // Levels of the kBlock pixels from `from` on. Estimated with floats, of which a vector holds
  // twice as many as of doubles. They round at most 0.00005 away, which matters only close to a
  // whole number; a block with such an estimate is done again with doubles.
  void levels_of_block(const float* from, std::uint8_t* to) const {
    std::int32_t levels[kBlock];
    std::int32_t doubtful = 0;
    for (int i = 0; i < kBlock; ++i) {
      const float pixel = is_intensity(from[i]) ? from[i] : low_;
      const float estimate = (std::min(pixel, high_) - low_) * float_scale_;
      const auto level = static_cast<std::int32_t>(estimate);
      const float fraction = estimate - static_cast<float>(level);
      const bool saturated = pixel >= high_;
      const bool is_near = bool((fraction < kDoubt) | (fraction > 1 - kDoubt));
      doubtful |= bool(is_near & !saturated & (estimate > 0)) ? 1 : 0;
      levels[i] = saturated ? top_ : level;
    }
    for (int i = 0; i < kBlock; ++i) to[i] = static_cast<std::uint8_t>(levels[i]);
    if (doubtful != 0) exact_levels(from, kBlock, to);
  }

  void exact_levels(const float* from, int count, std::uint8_t* to) const {
    for (int i = 0; i < count; ++i) to[i] = static_cast<std::uint8_t>(exact_level(from[i]));
  }

 private:
  static constexpr float kDoubt = 0.0002F;

  static float not_below(double value) {
    const auto nearest = static_cast<float>(value);
    return nearest < value ? std::nextafter(nearest, kMostIntensity) : nearest;
  }

  // A pixel that is not an intensity counts as the least one and gets level 0.
  std::int32_t exact_level(float pixel) const {
    const double intensity = is_intensity(pixel) ? static_cast<double>(pixel) : range_.low;
    const double capped = intensity < range_.high ? intensity : range_.high;
    const int level = static_cast<int>((capped - range_.low) * scale_);
    return level < 255 ? level : 255;
  }

  Range range_;
  double scale_;
  float low_;
  float high_;  // the least float that saturates
  float float_scale_;
  std::int32_t top_;  // the level of what saturates
};

constexpr int kLevels = 256;

struct Histogram {
  std::int32_t counts[kLevels] = {};

  std::int32_t& operator[](int level) { return counts[level]; }
  std::int32_t operator[](int level) const { return counts[level]; }
};

// Counts in four histograms, as a count that follows one of the same level has to wait for it.
class Counter {
 public:
  void add(const std::uint8_t* levels, int count) {
    int i = 0;
    for (; i + 4 <= count; i += 4) {
      ++counts_[0][levels[i]];
      ++counts_[1][levels[i + 1]];
      ++counts_[2][levels[i + 2]];
      ++counts_[3][levels[i + 3]];
    }
    for (; i < count; ++i) ++counts_[0][levels[i]];
  }

  void add_to(Histogram& histogram) const {
    for (int level = 0; level < kLevels; ++level) {
      histogram[level] +=
          counts_[0][level] + counts_[1][level] + counts_[2][level] + counts_[3][level];
    }
  }

 private:
  Histogram counts_[4];
};

// The levels of the intensities, and how often each occurs.
Histogram find_levels(const cv::Mat& intensities, const LevelScale& scale, cv::Mat& levels) {
  Histogram histogram{};
  std::mutex mutex;
  const int width = intensities.cols;
  cv::parallel_for_(cv::Range(0, intensities.rows), [&](const cv::Range& rows) {
    const LevelScale own_scale = scale;  // a copy, which no write to the levels can alias
    Counter counter;
    for (int y = rows.start; y < rows.end; ++y) {
      const float* from = intensities.ptr<float>(y);
      std::uint8_t* to = levels.ptr<std::uint8_t>(y);
      int x = 0;
      for (; x + LevelScale::kBlock <= width; x += LevelScale::kBlock) {
        own_scale.levels_of_block(from + x, to + x);
      }
      own_scale.exact_levels(from + x, width - x, to + x);
      counter.add(to, width);
    }
    const std::lock_guard<std::mutex> lock(mutex);
    counter.add_to(histogram);
  });
  return histogram;
}

// The level that each level becomes, with the arithmetic of cv::equalizeHist: the lowest one that
// occurs gets 0 and the highest one 255. A single level stays.
cv::Mat equalizing_table(const Histogram& histogram, int pixels) {
  cv::Mat table(1, kLevels, CV_8UC1, cv::Scalar(0));
  int level = 0;
  while (histogram[level] == 0) ++level;
  const int above = pixels - histogram[level];
  if (above == 0) {
    table.at<std::uint8_t>(level) = static_cast<std::uint8_t>(level);
    return table;
  }
  const float scale = 255.0F / static_cast<float>(above);
  int sum = 0;
  for (++level; level < kLevels; ++level) {
    sum += histogram[level];
    table.at<std::uint8_t>(level) =
        cv::saturate_cast<std::uint8_t>(static_cast<float>(sum) * scale);
  }
  return table;
}

}  // namespace

bool infrared_picture(const cv::Mat& intensities, cv::Mat& picture) {
  const Range full = intensity_range(intensities);
  if (full.high <= full.low) return false;
  cv::Mat levels(intensities.size(), CV_8UC1);
  const Histogram histogram = find_levels(intensities, LevelScale(capped(full)), levels);
  cv::LUT(levels, equalizing_table(histogram, static_cast<int>(intensities.total())), levels);
  cv::cvtColor(levels, picture, cv::COLOR_GRAY2BGR);
  return true;
}

}  // namespace halcyra
