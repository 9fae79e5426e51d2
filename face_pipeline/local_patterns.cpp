#include "face_pipeline/local_patterns.hpp"

#include <array>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstring>

#include <opencv2/core.hpp>
#include <opencv2/face.hpp>
#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

constexpr int kNeighbours = 8;
constexpr int kPatterns = 256;
constexpr int kCellsAcross = 8;
static_assert(kPatternBins == kCellsAcross * kCellsAcross * kPatterns);
// The outermost pixels have no pattern, and six rows and columns are left over.
constexpr int kCellSide = (kPatternPictureSide - 2) / kCellsAcross;
constexpr int kCellPixels = kCellSide * kCellSide;
constexpr int kRow = kCellSide * kCellsAcross;
constexpr int kBitsOfWord = 64;

using Patterns = std::array<int, kRow>;
using Counts = std::array<std::uint16_t, kPatternBins>;

// A point on the circle around a pixel. Its grey level is interpolated between the four pixels at
// (left, upper), (right, upper), (left, lower) and (right, lower), with these weights.
struct Neighbour {
  int left, right, upper, lower;
  std::array<float, 4> weights;
};

// From the highest bit of a pattern to the lowest. In float wherever OpenCV computes in float:
// another rounding changes patterns in even areas.
std::array<Neighbour, kNeighbours> neighbours() {
  std::array<Neighbour, kNeighbours> all{};
  for (int n = 0; n < kNeighbours; ++n) {
    const double angle = 2.0 * CV_PI * (kNeighbours - 1 - n) / kNeighbours;
    const auto x = static_cast<float>(std::cos(angle));
    const auto y = static_cast<float>(-std::sin(angle));
    const float right = x - std::floor(x);
    const float lower = y - std::floor(y);
    all[static_cast<std::size_t>(n)] = {
        static_cast<int>(std::floor(x)),
        static_cast<int>(std::ceil(x)),
        static_cast<int>(std::floor(y)),
        static_cast<int>(std::ceil(y)),
        {(1 - right) * (1 - lower), right * (1 - lower), (1 - right) * lower, right * lower}};
  }
  return all;
}

// Appends a bit to each pattern: whether the neighbour is at least as bright as the pixel. The
// compiler turns the loop into vector instructions as long as it has no branch, and as long as
// GCC 12 does not join it with the next neighbour's, which it does where it inlines the function.
[[gnu::noinline]] void append_bits(const cv::Mat& grey, int row, const Neighbour& at,
                                   Patterns& patterns) {
  const float* upper_left = grey.ptr<float>(row + at.upper) + 1 + at.left;
  const float* upper_right = grey.ptr<float>(row + at.upper) + 1 + at.right;
  const float* lower_left = grey.ptr<float>(row + at.lower) + 1 + at.left;
  const float* lower_right = grey.ptr<float>(row + at.lower) + 1 + at.right;
  const float* center = grey.ptr<float>(row) + 1;
  const auto [w1, w2, w3, w4] = at.weights;
  int* pattern = patterns.data();
  for (int i = 0; i < kRow; ++i) {
    const float level =
        w1 * upper_left[i] + w2 * upper_right[i] + w3 * lower_left[i] + w4 * lower_right[i];
    const bool brighter = level > center[i];
    const bool equal = std::abs(level - center[i]) < FLT_EPSILON;
    pattern[i] = 2 * pattern[i] + static_cast<int>(brighter | equal);
  }
}

Counts count_patterns(const cv::Mat& picture) {
  static const std::array<Neighbour, kNeighbours> kAll = neighbours();
  cv::Mat grey;
  picture.convertTo(grey, CV_32F);
  Counts counts{};
  for (int row = 0; row < kRow; ++row) {
    Patterns patterns{};
    for (const Neighbour& neighbour : kAll) append_bits(grey, row + 1, neighbour, patterns);
    std::uint16_t* cell = counts.data() + row / kCellSide * kCellsAcross * kPatterns;
    for (int i = 0; i < kRow; ++i) {
      ++cell[i / kCellSide * kPatterns + patterns[static_cast<std::size_t>(i)]];
    }
  }
  return counts;
}

// The share that each count of pixels is of a cell, divided as OpenCV divides.
cv::Mat shares_by_count() {
  cv::Mat shares(1, kCellPixels + 1, CV_32F);
  for (int count = 0; count <= kCellPixels; ++count) {
    shares.at<float>(count) = static_cast<float>(count);
  }
  shares /= kCellPixels;
  return shares;
}

// Noise of `levels` grey levels on steps from black to white. With few levels most pixels equal
// their neighbours, and then the patterns depend on rounding.
cv::Mat test_picture(cv::RNG& random, int levels) {
  constexpr int kStepRows = 10;
  cv::Mat picture(kPatternPictureSide, kPatternPictureSide, CV_8UC1);
  random.fill(picture, cv::RNG::UNIFORM, 0, levels);
  for (int row = 0; row < picture.rows; row += kStepRows) {
    picture.rowRange(row, row + kStepRows) += cv::Scalar(1.5 * row);
  }
  return picture;
}

bool equal_bits(const cv::Mat& a, const cv::Mat& b) {
  return a.type() == b.type() && a.size() == b.size() &&
         std::memcmp(a.ptr(), b.ptr(), a.total() * a.elemSize()) == 0;
}

}  // namespace

PatternHistogram known_pattern_histogram(const cv::Mat& shares) {
  PatternHistogram histogram;
  histogram.shares = shares;
  const float* share = shares.ptr<float>();
  for (int first = 0; first < kPatternBins; first += kBitsOfWord) {
    std::uint64_t word = 0;
    for (int bit = 0; bit < kBitsOfWord; ++bit) {
      word |= static_cast<std::uint64_t>(share[first + bit] != 0.0F) << bit;
    }
    histogram.present.push_back(word);
  }
  return histogram;
}

PatternHistogram pattern_histogram(const cv::Mat& picture) {
  static const cv::Mat kShares = shares_by_count();
  const Counts counts = count_patterns(picture);
  cv::Mat shares(1, kPatternBins, CV_32F);
  const float* share = kShares.ptr<float>();
  float* written = shares.ptr<float>();
  for (const std::uint16_t count : counts) *written++ = share[count];
  return known_pattern_histogram(shares);
}

double pattern_distance(const PatternHistogram& a, const PatternHistogram& b) {
  const float* shares_a = a.shares.ptr<float>();
  const float* shares_b = b.shares.ptr<float>();
  double sum = 0.0;
  for (std::size_t word = 0; word < a.present.size(); ++word) {
    for (std::uint64_t bits = a.present[word] | b.present[word]; bits != 0; bits &= bits - 1) {
      const std::size_t bin = word * kBitsOfWord + static_cast<std::size_t>(__builtin_ctzll(bits));
      const double difference = shares_a[bin] - shares_b[bin];
      const double total = shares_a[bin] + shares_b[bin];
      sum += difference * difference / total;
    }
  }
  return 2.0 * sum;
}

bool patterns_match_opencv() {
  cv::RNG random(1);
  const std::vector<cv::Mat> pictures = {test_picture(random, 3), test_picture(random, 256)};
  const auto model =
      cv::face::LBPHFaceRecognizer::create(1, kNeighbours, kCellsAcross, kCellsAcross, DBL_MAX);
  model->train(pictures, std::vector<int>{1, 1});
  const std::vector<cv::Mat> theirs = model->getHistograms();
  const PatternHistogram even = pattern_histogram(pictures[0]);
  const PatternHistogram noisy = pattern_histogram(pictures[1]);
  return equal_bits(even.shares, theirs[0]) && equal_bits(noisy.shares, theirs[1]) &&
         pattern_distance(even, noisy) ==
             cv::compareHist(theirs[0], theirs[1], cv::HISTCMP_CHISQR_ALT);
}

}  // namespace halcyra
