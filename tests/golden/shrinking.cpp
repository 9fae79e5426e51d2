#include "tests/golden/shrinking.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace halcyra {
namespace {

// What a pixel of the picture adds to one of the shrunken picture, along one axis.
struct Share {
  int from;
  int to;
  float weight;
};

double factor(int from, int to) { return 1.0 / (static_cast<double>(to) / from); }

bool is_whole(double factor) {
  return std::abs(factor - std::nearbyint(factor)) < std::numeric_limits<double>::epsilon();
}

std::vector<Share> shares(int from, int to) {
  constexpr double kLeastShare = 1e-3;
  const double scale = factor(from, to);
  std::vector<Share> shares;
  for (int target = 0; target < to; ++target) {
    const double start = target * scale;
    const double end = start + scale;
    const double length = std::min(scale, from - start);
    const int last_whole = std::min(static_cast<int>(std::floor(end)), from - 1);
    const int first_whole = std::min(static_cast<int>(std::ceil(start)), last_whole);
    if (first_whole - start > kLeastShare) {
      const double weight = (first_whole - start) / length;
      shares.push_back({first_whole - 1, target, static_cast<float>(weight)});
    }
    for (int source = first_whole; source < last_whole; ++source) {
      shares.push_back({source, target, static_cast<float>(1.0 / length)});
    }
    if (end - last_whole > kLeastShare) {
      const double weight = std::min(std::min(end - last_whole, 1.0), length) / length;
      shares.push_back({last_whole, target, static_cast<float>(weight)});
    }
  }
  return shares;
}

using Sums = std::vector<float>;

// Shrinks one row along its length.
void sum_up_row(const cv::Mat& picture, int row, const std::vector<Share>& across, Sums& sums) {
  const int channels = picture.channels();
  const uchar* const pixels = picture.ptr<uchar>(row);
  std::fill(sums.begin(), sums.end(), 0.0F);
  for (const Share& share : across) {
    const uchar* const pixel = pixels + share.from * channels;
    float* const sum = sums.data() + share.to * channels;
    for (int channel = 0; channel < channels; ++channel) {
      sum[channel] += static_cast<float>(pixel[channel]) * share.weight;
    }
  }
}

void store(const Sums& sums, uchar* row) {
  std::transform(sums.begin(), sums.end(), row,
                 [](float sum) { return cv::saturate_cast<uchar>(sum); });
}

}  // namespace

bool shrinks_with_fractions(cv::Size from, cv::Size to) {
  const double across = factor(from.width, to.width);
  const double down = factor(from.height, to.height);
  return across >= 1.0 && down >= 1.0 && !(is_whole(across) && is_whole(down));
}

cv::Mat shrunk(const cv::Mat& picture, cv::Size size) {
  const std::vector<Share> across = shares(picture.cols, size.width);
  cv::Mat result(size, picture.type());
  Sums row_sums(static_cast<std::size_t>(size.width * picture.channels()));
  Sums sums(row_sums.size());
  int target = 0;
  for (const Share& share : shares(picture.rows, size.height)) {
    if (share.to != target) {
      store(sums, result.ptr<uchar>(target));
      std::fill(sums.begin(), sums.end(), 0.0F);
      target = share.to;
    }
    sum_up_row(picture, share.from, across, row_sums);
    for (std::size_t i = 0; i < sums.size(); ++i) sums[i] += share.weight * row_sums[i];
  }
  store(sums, result.ptr<uchar>(target));
  return result;
}

}  // namespace halcyra
