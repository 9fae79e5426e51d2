#include <map>
#include <utility>

#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include "bench/measurement.hpp"
#include "bench/recorded_frames.hpp"
#include "face_pipeline/face_detection.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "face_pipeline/haar/fast_cascade_classifier.hpp"

namespace halcyra {
namespace {

const std::map<haar::InstructionSet, std::string> kInstructionNames = {
    {haar::InstructionSet::kBaseline, "baseline"},
    {haar::InstructionSet::kAvx2, "AVX2"},
    {haar::InstructionSet::kAvx512, "AVX-512"},
    {haar::InstructionSet::kNeon, "NEON"}};

// Both cascades, loaded once for each instruction set and kept until the program ends.
FaceDetectors& detectors_on(haar::InstructionSet instructions) {
  static std::map<haar::InstructionSet, FaceDetectors> loaded;
  FaceDetectors& detectors = loaded[instructions];
  if (detectors.frontal.empty()) {
    haar::load_fast_cascade(detectors.frontal, Options{}.cascade_path, instructions);
    haar::load_fast_cascade(detectors.profile, Options{}.profile_cascade_path, instructions);
  }
  return detectors;
}

std::function<void()> detection_on(haar::InstructionSet instructions, const cv::Mat& grey,
                                   const Options& options) {
  FaceDetectors& detectors = detectors_on(instructions);
  return [&detectors, grey, options] {
    detect_multi(detectors.frontal, &detectors.profile, grey, options);
  };
}

void pass(cv::CascadeClassifier& cascade, const cv::Mat& working) {
  std::vector<cv::Rect> boxes;
  cascade.detectMultiScale(working, boxes, 1.1, 4, 0, {15, 15}, {0, 0});
}

// OpenCV's own passes over the shrunken picture.
void library_passes(const cv::Mat& grey, const std::string& style) {
  static cv::CascadeClassifier frontal(Options{}.cascade_path);
  static cv::CascadeClassifier profile(Options{}.profile_cascade_path);
  cv::Mat working;
  cv::resize(grey, working, {}, 0.5, 0.5, cv::INTER_AREA);
  cv::equalizeHist(working, working);
  const bool all = style == "frontal_or_profile";
  if (all || style == "frontal") pass(frontal, working);
  if (all || style == "profile_left") pass(profile, working);
  if (all || style == "profile_right") {
    cv::flip(working, working, 1);
    pass(profile, working);
  }
}

// Runs `work` on the calling thread alone, so that this thread's processor time is all it takes.
std::function<void()> on_one_thread(std::function<void()> work) {
  return [work = std::move(work)] {
    const int threads = cv::getNumThreads();
    cv::setNumThreads(1);
    work();
    cv::setNumThreads(threads);
  };
}

// What each instruction set adds to the one before it.
void add_instruction_set_rows(const cv::Mat& grey, const std::string& scene) {
  const std::vector<haar::InstructionSet> sets = haar::available_instruction_sets();
  for (std::size_t i = 1; i < sets.size(); ++i) {
    std::string stage = "detect_multi, ";
    stage += kInstructionNames.at(sets[i]);
    stage += " instead of ";
    stage += kInstructionNames.at(sets[i - 1]);
    add_row(stage, scene, on_one_thread(detection_on(sets[i], grey, Options{})),
            on_one_thread(detection_on(sets[i - 1], grey, Options{})), Clock::kProcessor);
  }
}

}  // namespace

void add_face_detection_rows() {
  const haar::InstructionSet best = haar::available_instruction_sets().back();
  for (const NamedFrames& named : measured_frames()) {
    cv::Mat grey;
    cv::cvtColor(named.frames.color, grey, cv::COLOR_BGRA2GRAY);
    for (const char* style : {"frontal", "profile_left", "profile_right", "frontal_or_profile"}) {
      Options options;
      options.detector_type = style;
      add_row(std::string("detect_multi, ") + style, named.name, detection_on(best, grey, options),
              [grey, options] { library_passes(grey, options.detector_type); });
    }
    add_instruction_set_rows(grey, named.name);
  }
}

}  // namespace halcyra
