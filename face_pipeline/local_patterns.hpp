// Histograms of local binary patterns and their distance: OpenCV's arithmetic, sooner.
#pragma once

#include <cstdint>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Pictures have this width and height.
constexpr int kPatternPictureSide = 160;

constexpr int kPatternBins = 8 * 8 * 256;

// How often each of the 256 patterns of radius 1 with 8 neighbours appears in each of 8 x 8 cells,
// in shares of the cell's pixels.
struct PatternHistogram {
  cv::Mat shares;                      // 1 x 16384 floats, cell by cell
  std::vector<std::uint64_t> present;  // bit b % 64 of word b / 64: whether share b is not 0
};

// The histogram that OpenCV's recogniser makes of an 8-bit grey picture of 160 x 160.
PatternHistogram pattern_histogram(const cv::Mat& picture);

// The same for shares that OpenCV computed, 1 x 16384 floats. Keeps them without a copy.
PatternHistogram known_pattern_histogram(const cv::Mat& shares);

// cv::compareHist by HISTCMP_CHISQR_ALT. Most shares are 0 in both and are skipped at once.
double pattern_distance(const PatternHistogram& a, const PatternHistogram& b);

// Whether the OpenCV at hand gives the same histograms and distances to the last bit. One whose
// compiler fused multiplications with additions rounds otherwise.
bool patterns_match_opencv();

}  // namespace halcyra
