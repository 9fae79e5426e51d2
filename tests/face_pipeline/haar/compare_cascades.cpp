// Compares our classifiers with OpenCV's for as many rounds as one likes:
//
//   compare_cascades ROUNDS SEED [PICTURE...]
//
// Each round searches a random part of one of the pictures, or a generated picture, with a random
// cascade and random settings. Exits with 1 if anything differs.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include "face_pipeline/haar/fast_cascade_classifier.hpp"
#include "tests/face_pipeline/haar/classifier_comparison.hpp"
#include "tests/face_pipeline/haar/sample_pictures.hpp"

namespace halcyra::haar {
namespace {

using Boxes = std::vector<cv::Rect>;

struct Counts {
  std::size_t comparisons = 0;
  std::size_t differences = 0;
  std::size_t boxes = 0;
};

struct Contestants {
  std::string name;
  cv::CascadeClassifier original;
  std::vector<cv::CascadeClassifier> fast;
};

std::vector<Contestants> load_contestants() {
  std::vector<Contestants> all;
  for (const std::string name :
       {"frontalface_default", "profileface", "frontalface_default", "profileface", "eye",
        "frontalcatface", "frontalface_alt", "frontalface_alt_tree"}) {
    Contestants& contestants = all.emplace_back();
    contestants.name = name;
    contestants.original.load(stock_cascade(name));
    for (const InstructionSet instructions : available_instruction_sets()) {
      load_fast_cascade(contestants.fast.emplace_back(), stock_cascade(name), instructions);
    }
  }
  return all;
}

cv::Mat part_of(const std::string& file, cv::RNG& random) {
  const cv::Mat whole = cv::imread(file, cv::IMREAD_GRAYSCALE);
  if (whole.empty()) return gradient({50, 50});
  const cv::Size size(random.uniform(1, std::min(whole.cols, 600) + 1),
                      random.uniform(1, std::min(whole.rows, 600) + 1));
  const cv::Point corner(random.uniform(0, whole.cols - size.width + 1),
                         random.uniform(0, whole.rows - size.height + 1));
  cv::Mat part = whole(cv::Rect(corner, size));
  if (random.uniform(0, 3) == 0) cv::equalizeHist(part, part);
  if (random.uniform(0, 3) == 0) {
    cv::Mat whole_resized;
    const double scale = std::min(1.0, 400.0 / std::max(whole.cols, whole.rows));
    cv::resize(whole, whole_resized, cv::Size(), scale, scale, cv::INTER_AREA);
    return whole_resized;
  }
  return part;
}

void compare(const std::string& what, const Boxes& boxes, const Boxes& expected, Counts& counts) {
  ++counts.comparisons;
  if (boxes == expected) return;
  ++counts.differences;
  std::cout << "DIFFERENT: " << what << std::endl;
}

void compare_mirrored(Contestants& contestants, const cv::Mat& picture,
                      const DetectionSettings& settings, const std::string& what, Counts& counts) {
  const Boxes expected =
      detected_on_threads(1, contestants.original, mirror_image(picture), settings);
  for (cv::CascadeClassifier& classifier : contestants.fast) {
    FastCascadeClassifier& fast = *fast_cascade(classifier);
    if (!fast.can_mirror(picture.size(), settings)) continue;
    ImagePyramid pyramid;
    pyramid.set_picture(picture);
    compare(what + ", mirrored", fast.detect(pyramid, Facing::kMirrored, settings), expected,
            counts);
  }
}

void play(Contestants& contestants, const cv::Mat& picture, const DetectionSettings& settings,
          bool also_mirrored, Counts& counts) {
  std::ostringstream description;
  description << contestants.name << ", " << picture.size() << ", " << settings;
  const std::string what = description.str();
  const Boxes expected = detected_on_threads(1, contestants.original, picture, settings);
  counts.boxes += expected.size();
  for (std::size_t i = 0; i < contestants.fast.size(); ++i) {
    for (const int threads : {1, 2}) {
      compare(what + ", set " + std::to_string(i) + ", threads " + std::to_string(threads),
              detected_on_threads(threads, contestants.fast[i], picture, settings), expected,
              counts);
    }
  }
  compare(what + ", OpenCV on two threads",
          sorted(detected_on_threads(2, contestants.original, picture, settings)), sorted(expected),
          counts);
  if (also_mirrored) compare_mirrored(contestants, picture, settings, what, counts);
}

}  // namespace
}  // namespace halcyra::haar

int main(int argc, char** argv) {
  using namespace halcyra::haar;
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 2) {
    std::cerr << "usage: compare_cascades ROUNDS SEED [PICTURE...]\n";
    return 2;
  }
  cv::RNG random(std::stoull(arguments[1]));
  std::vector<Contestants> all = load_contestants();
  Counts counts;
  const int rounds = std::stoi(arguments[0]);
  const int files = static_cast<int>(arguments.size()) - 2;
  for (int round = 0; round < rounds; ++round) {
    const cv::Size size(random.uniform(1, 300), random.uniform(1, 300));
    cv::Mat picture =
        files > 0 && random.uniform(0, 3) > 0
            ? part_of(arguments[static_cast<std::size_t>(random.uniform(0, files)) + 2], random)
            : of_random_kind(size, random);
    if (round % 3 == 0) picture = as_part_of_larger(picture, random);
    play(all[static_cast<std::size_t>(random.uniform(0, static_cast<int>(all.size())))], picture,
         random_settings(picture.size(), random), round % 4 == 0, counts);
  }
  std::cout << rounds << " pictures, " << counts.comparisons << " comparisons, " << counts.boxes
            << " boxes, " << counts.differences << " differences\n";
  return counts.differences == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
