// OpenCV's own classifier of a cascade file, loaded when it is first needed.
#pragma once

#include <string>
#include <vector>

#include <opencv2/objdetect.hpp>

namespace halcyra::haar {

// Behaves like the implementation that cv::CascadeClassifier::load puts behind a classifier.
// Loading takes OpenCV tens of milliseconds, and most programs never make a call that needs it. The
// file has to be one that OpenCV loads and must stay where it is; a call that needs a file that is
// gone throws a cv::Exception.
class DeferredCascade final : public cv::BaseCascadeClassifier {
 public:
  // `window` is the size of the file's search window.
  DeferredCascade(std::string path, const cv::Size& window);

  bool empty() const override { return false; }
  bool load(const cv::String& filename) override;
  void detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects, double scale_factor,
                        int min_neighbors, int flags, cv::Size min_size,
                        cv::Size max_size) override;
  void detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                        std::vector<int>& num_detections, double scale_factor, int min_neighbors,
                        int flags, cv::Size min_size, cv::Size max_size) override;
  void detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                        std::vector<int>& reject_levels, std::vector<double>& level_weights,
                        double scale_factor, int min_neighbors, int flags, cv::Size min_size,
                        cv::Size max_size, bool output_reject_levels) override;
  bool isOldFormatCascade() const override { return false; }
  cv::Size getOriginalWindowSize() const override { return window_; }
  int getFeatureType() const override { return loaded().getFeatureType(); }
  void* getOldCascade() override { return loaded().getOldCascade(); }
  void setMaskGenerator(const cv::Ptr<MaskGenerator>& generator) override;
  cv::Ptr<MaskGenerator> getMaskGenerator() override { return generator_; }

 private:
  cv::BaseCascadeClassifier& loaded() const;

  std::string path_;
  cv::Size window_;
  cv::Ptr<MaskGenerator> generator_;
  mutable cv::Ptr<cv::BaseCascadeClassifier> loaded_;
};

}  // namespace halcyra::haar
