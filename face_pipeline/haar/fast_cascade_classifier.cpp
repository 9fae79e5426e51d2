#include "face_pipeline/haar/fast_cascade_classifier.hpp"

#include <algorithm>
#include <optional>
#include <utility>

#include "face_pipeline/haar/cascade_file.hpp"
#include "face_pipeline/haar/deferred_cascade.hpp"
#include "face_pipeline/haar/exact_resize.hpp"
#include "face_pipeline/haar/picture_search.hpp"
#include "face_pipeline/haar/search_scales.hpp"

namespace halcyra::haar {
namespace {

// How far hits of one object may lie apart, as a fraction of their size. OpenCV's own value.
constexpr double kGroupingTolerance = 0.2;

bool has_room(const cv::Size& picture, const cv::Size& window) {
  return picture.width >= window.width && picture.height >= window.height;
}

// None if the picture is smaller than the window.
std::vector<float> scales_for(const cv::Size& picture, const cv::Size& window,
                              const DetectionSettings& settings) {
  if (!has_room(picture, window)) return {};
  return search_scales(picture, window, settings.scale_factor,
                       {settings.min_size, settings.max_size});
}

// cv::CascadeClassifier does this with what the implementation behind it returns.
void clip_and_drop_empty(std::vector<cv::Rect>& boxes, const cv::Size& picture) {
  const cv::Rect whole(cv::Point(), picture);
  for (cv::Rect& box : boxes) box &= whole;
  boxes.erase(
      std::remove_if(boxes.begin(), boxes.end(), [](const cv::Rect& box) { return box.empty(); }),
      boxes.end());
}

}  // namespace

FastCascadeClassifier::FastCascadeClassifier(cv::Ptr<cv::BaseCascadeClassifier> original,
                                             StumpCascade cascade, InstructionSet instructions)
    : original_(std::move(original)), search_(std::move(cascade), instructions) {}

std::vector<cv::Rect> FastCascadeClassifier::detect(ImagePyramid& pyramid, Facing facing,
                                                    const DetectionSettings& settings) {
  return detect_together(pyramid, {{this, facing}}, settings)[0];
}

bool FastCascadeClassifier::can_mirror(const cv::Size& picture,
                                       const DetectionSettings& settings) const {
  const std::vector<float> scales = scales_for(picture, window(), settings);
  return std::all_of(scales.begin(), scales.end(), [&picture](float scale) {
    return resize_mirrors_exactly(picture.width,
                                  cvRound(static_cast<float>(picture.width) / scale));
  });
}

bool FastCascadeClassifier::covers(cv::InputArray image, double scale_factor) const {
  return image.isMat() && image.dims() == 2 && image.type() == CV_8UC1 && scale_factor > 1.0 &&
         original_->getMaskGenerator().empty();
}

// OpenCV too leaves the caller's old boxes in the list if the picture is smaller than the window.
void FastCascadeClassifier::find_candidates(const cv::Mat& picture,
                                            const DetectionSettings& settings,
                                            std::vector<cv::Rect>& objects) {
  if (!has_room(picture.size(), window())) return;
  pyramid_.set_picture(picture);
  const SearchPass pass{&search_, Facing::kAsIs, scales_for(picture.size(), window(), settings)};
  objects = search_picture(pyramid_, {pass})[0];
  pyramid_.forget_picture();
}

bool FastCascadeClassifier::empty() const { return original_->empty(); }

// Another file could hold a cascade that is not covered, and this cannot make way for OpenCV's own
// classifier; load_fast_cascade can.
bool FastCascadeClassifier::load(const cv::String& /*filename*/) {
  CV_Error(cv::Error::StsNotImplemented, "load another cascade with load_fast_cascade");
}

void FastCascadeClassifier::detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                                             double scale_factor, int min_neighbors, int flags,
                                             cv::Size min_size, cv::Size max_size) {
  if (!covers(image, scale_factor)) {
    original_->detectMultiScale(image, objects, scale_factor, min_neighbors, flags, min_size,
                                max_size);
    return;
  }
  find_candidates(image.getMat(), {scale_factor, min_neighbors, min_size, max_size}, objects);
  cv::groupRectangles(objects, min_neighbors, kGroupingTolerance);
}

void FastCascadeClassifier::detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                                             std::vector<int>& num_detections, double scale_factor,
                                             int min_neighbors, int flags, cv::Size min_size,
                                             cv::Size max_size) {
  if (!covers(image, scale_factor)) {
    original_->detectMultiScale(image, objects, num_detections, scale_factor, min_neighbors, flags,
                                min_size, max_size);
    return;
  }
  find_candidates(image.getMat(), {scale_factor, min_neighbors, min_size, max_size}, objects);
  cv::groupRectangles(objects, num_detections, min_neighbors, kGroupingTolerance);
}

void FastCascadeClassifier::detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                                             std::vector<int>& reject_levels,
                                             std::vector<double>& level_weights,
                                             double scale_factor, int min_neighbors, int flags,
                                             cv::Size min_size, cv::Size max_size,
                                             bool output_reject_levels) {
  original_->detectMultiScale(image, objects, reject_levels, level_weights, scale_factor,
                              min_neighbors, flags, min_size, max_size, output_reject_levels);
}

bool FastCascadeClassifier::isOldFormatCascade() const { return original_->isOldFormatCascade(); }

cv::Size FastCascadeClassifier::getOriginalWindowSize() const {
  return original_->getOriginalWindowSize();
}

int FastCascadeClassifier::getFeatureType() const { return original_->getFeatureType(); }

void* FastCascadeClassifier::getOldCascade() { return original_->getOldCascade(); }

void FastCascadeClassifier::setMaskGenerator(const cv::Ptr<MaskGenerator>& generator) {
  original_->setMaskGenerator(generator);
}

cv::Ptr<cv::BaseCascadeClassifier::MaskGenerator> FastCascadeClassifier::getMaskGenerator() {
  return original_->getMaskGenerator();
}

std::vector<std::vector<cv::Rect>> detect_together(ImagePyramid& pyramid,
                                                   const std::vector<DetectionPass>& passes,
                                                   const DetectionSettings& settings) {
  const cv::Size picture = pyramid.picture().size();
  std::vector<SearchPass> searches;
  searches.reserve(passes.size());
  for (const DetectionPass& pass : passes) {
    CascadeSearch& search = pass.cascade->search();
    searches.push_back({&search, pass.facing, scales_for(picture, search.window(), settings)});
  }
  std::vector<std::vector<cv::Rect>> found = search_picture(pyramid, searches);
  for (std::vector<cv::Rect>& boxes : found) {
    cv::groupRectangles(boxes, settings.min_neighbors, kGroupingTolerance);
    clip_and_drop_empty(boxes, picture);
  }
  return found;
}

bool load_fast_cascade(cv::CascadeClassifier& classifier, const std::string& path) {
  return load_fast_cascade(classifier, path, available_instruction_sets().back());
}

bool load_fast_cascade(cv::CascadeClassifier& classifier, const std::string& path,
                       InstructionSet instructions) {
  classifier.cc.release();
  const cv::FileStorage file(path, cv::FileStorage::READ);
  if (!file.isOpened()) return false;
  std::optional<StumpCascade> cascade = read_stump_cascade(file);
  if (!cascade) return classifier.load(path);
  const auto original = cv::makePtr<DeferredCascade>(path, cascade->window);
  classifier.cc = cv::makePtr<FastCascadeClassifier>(original, *std::move(cascade), instructions);
  return true;
}

FastCascadeClassifier* fast_cascade(const cv::CascadeClassifier& classifier) {
  return dynamic_cast<FastCascadeClassifier*>(classifier.cc.get());
}

}  // namespace halcyra::haar
