// OpenCV's classifier and ours, side by side.
#pragma once

#include <algorithm>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/objdetect.hpp>

#include "face_pipeline/haar/fast_cascade_classifier.hpp"

namespace halcyra::haar {

inline std::ostream& operator<<(std::ostream& out, const DetectionSettings& settings) {
  return out << "factor " << settings.scale_factor << ", neighbours " << settings.min_neighbors
             << ", from " << settings.min_size << " to " << settings.max_size;
}

inline std::string stock_cascade(const std::string& name) {
  return "/usr/share/opencv4/haarcascades/haarcascade_" + name + ".xml";
}

// OpenCV uses this many threads while this lives.
class ThreadCount {
 public:
  explicit ThreadCount(int threads) : before_(cv::getNumThreads()) { cv::setNumThreads(threads); }
  ~ThreadCount() { cv::setNumThreads(before_); }
  ThreadCount(const ThreadCount&) = delete;
  ThreadCount& operator=(const ThreadCount&) = delete;

 private:
  int before_;
};

inline std::vector<cv::Rect> detected(cv::CascadeClassifier& classifier, const cv::Mat& picture,
                                      const DetectionSettings& settings) {
  std::vector<cv::Rect> boxes;
  classifier.detectMultiScale(picture, boxes, settings.scale_factor, settings.min_neighbors, 0,
                              settings.min_size, settings.max_size);
  return boxes;
}

inline std::vector<cv::Rect> detected_on_threads(int threads, cv::CascadeClassifier& classifier,
                                                 const cv::Mat& picture,
                                                 const DetectionSettings& settings) {
  const ThreadCount count(threads);
  return detected(classifier, picture, settings);
}

inline std::vector<cv::Rect> sorted(std::vector<cv::Rect> boxes) {
  std::sort(boxes.begin(), boxes.end(), [](const cv::Rect& a, const cv::Rect& b) {
    return std::tie(a.x, a.y, a.width, a.height) < std::tie(b.x, b.y, b.width, b.height);
  });
  return boxes;
}

// Settings with which a picture of this size is searched in reasonable time.
inline DetectionSettings random_settings(const cv::Size& picture, cv::RNG& random) {
  constexpr double kFactors[] = {1.01, 1.03, 1.05, 1.1, 1.1, 1.2, 1.3, 1.7, 2.0, 3.3};
  const int finest = picture.area() > 40000 ? 3 : 0;
  DetectionSettings settings;
  settings.scale_factor = kFactors[random.uniform(finest, 10)];
  settings.min_neighbors = random.uniform(0, 2) * random.uniform(0, 6);
  if (random.uniform(0, 3) > 0) {
    settings.min_size = {random.uniform(0, 60), random.uniform(0, 60)};
  }
  if (random.uniform(0, 3) == 0) {
    settings.max_size = {random.uniform(0, 200), random.uniform(0, 200)};
  }
  if (random.uniform(0, 10) == 0) settings.max_size = settings.min_size;
  return settings;
}

}  // namespace halcyra::haar
