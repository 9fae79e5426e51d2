// Comparison of pictures pixel by pixel, without tolerance.
#pragma once

#include <ostream>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace halcyra {

// 255 where any channel of two pictures of one size and type differs, else 0. One channel.
inline cv::Mat differing_pixels(const cv::Mat& actual, const cv::Mat& expected) {
  cv::Mat difference;
  cv::absdiff(actual, expected, difference);
  cv::Mat channels = difference.reshape(1, static_cast<int>(difference.total()));
  cv::Mat largest;
  cv::reduce(channels, largest, 1, cv::REDUCE_MAX);
  return cv::Mat(largest.reshape(1, actual.rows) > 0);
}

// Says how many pixels differ and in which rectangle they lie.
inline ::testing::AssertionResult same_pixels(const cv::Mat& actual, const cv::Mat& expected) {
  if (actual.size() != expected.size() || actual.type() != expected.type()) {
    return ::testing::AssertionFailure()
           << "a picture of " << actual.size() << " and type " << actual.type() << " instead of "
           << expected.size() << " and type " << expected.type();
  }
  if (actual.empty() || cv::norm(actual, expected, cv::NORM_INF) == 0) {
    return ::testing::AssertionSuccess();
  }
  std::vector<cv::Point> places;
  cv::findNonZero(differing_pixels(actual, expected), places);
  cv::Rect around(places.front(), cv::Size(1, 1));
  for (const cv::Point& place : places) around |= cv::Rect(place, cv::Size(1, 1));
  return ::testing::AssertionFailure() << places.size() << " pixels differ, within " << around;
}

}  // namespace halcyra
