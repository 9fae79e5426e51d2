// Cascade files: our loader loads what OpenCV's classifier loads, refuses what that refuses, throws
// what that throws, and then finds the same.
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include "face_pipeline/haar/fast_cascade_classifier.hpp"
#include "tests/fuzz/made_cascade_text.hpp"
#include "tests/fuzz/memory_file.hpp"
#include "tests/fuzz/requirement.hpp"

namespace halcyra {
namespace {

// The outcome of loading a file, and the text of the exception.
struct Verdict {
  enum { kLoaded, kRefused, kThrown } outcome;
  std::string exception;
};

template <typename Load>
Verdict verdict_on(Load load) {
  try {
    return {load() ? Verdict::kLoaded : Verdict::kRefused, ""};
  } catch (const std::exception& exception) {
    return {Verdict::kThrown, exception.what()};
  }
}

// Shapes of several sizes on noise; the same in every run.
cv::Mat picture() {
  cv::RNG random(7);
  cv::Mat coarse(7, 9, CV_8UC1);
  random.fill(coarse, cv::RNG::UNIFORM, 0, 256);
  cv::Mat pixels;
  cv::resize(coarse, pixels, {52, 41}, 0, 0, cv::INTER_CUBIC);
  cv::rectangle(pixels, {12, 9, 17, 14}, cv::Scalar(240), cv::FILLED);
  cv::circle(pixels, {36, 25}, 8, cv::Scalar(15), cv::FILLED);
  return pixels;
}

// All hits, in the order they were found.
std::vector<cv::Rect> boxes(cv::CascadeClassifier& classifier) {
  static const cv::Mat kPicture = picture();
  std::vector<cv::Rect> found;
  classifier.detectMultiScale(kPicture, found, 1.3, 0);
  return found;
}

void check(const std::string& path) {
  cv::CascadeClassifier original;
  const Verdict expected = verdict_on([&] { return original.load(path); });
  std::vector<cv::Rect> expected_boxes;
  for (const haar::InstructionSet instructions : haar::available_instruction_sets()) {
    cv::CascadeClassifier ours;
    const Verdict verdict =
        verdict_on([&] { return haar::load_fast_cascade(ours, path, instructions); });
    require(verdict.outcome == expected.outcome, "both load, both refuse or both throw");
    require(verdict.exception == expected.exception, "both throw the same");
    // A cascade that ours does not cover is searched by OpenCV's classifier. There is nothing to
    // compare, and that search trusts every index in the file.
    if (verdict.outcome != Verdict::kLoaded || haar::fast_cascade(ours) == nullptr) return;
    if (instructions == haar::available_instruction_sets().front())
      expected_boxes = boxes(original);
    require(boxes(ours) == expected_boxes, "both find the same");
  }
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const std::string text = halcyra::MadeCascadeText(input).document();
  const halcyra::MemoryFile file(text);
  halcyra::check(file.path());
  return 0;
}
