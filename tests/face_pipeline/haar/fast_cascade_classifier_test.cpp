#include "face_pipeline/haar/fast_cascade_classifier.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include "tests/face_pipeline/haar/classifier_comparison.hpp"
#include "tests/face_pipeline/haar/made_cascade.hpp"
#include "tests/face_pipeline/haar/sample_pictures.hpp"
#include "tests/support/photograph.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra::haar {
namespace {

using Boxes = std::vector<cv::Rect>;

// OpenCV's classifier of a stock cascade, and ours for each of the machine's instruction sets.
struct Classifiers {
  cv::CascadeClassifier original;
  std::vector<cv::CascadeClassifier> fast;
};

Classifiers& classifiers(const std::string& name) {
  static std::map<std::string, Classifiers> loaded;
  Classifiers& all = loaded[name];
  if (all.original.empty()) {
    all.original.load(stock_cascade(name));
    for (const InstructionSet instructions : available_instruction_sets()) {
      load_fast_cascade(all.fast.emplace_back(), stock_cascade(name), instructions);
    }
  }
  return all;
}

// In the same order, too, which is that of OpenCV on one thread. Returns the number of boxes.
std::size_t expect_same(const std::string& name, const cv::Mat& picture,
                        const DetectionSettings& settings) {
  Classifiers& all = classifiers(name);
  const Boxes expected = detected_on_threads(1, all.original, picture, settings);
  for (std::size_t i = 0; i < all.fast.size(); ++i) {
    for (const int threads : {1, 2}) {
      EXPECT_EQ(detected_on_threads(threads, all.fast[i], picture, settings), expected)
          << name << ", " << picture.size() << ", " << settings << ", instruction set " << i << ", "
          << threads << " threads";
    }
  }
  return expected.size();
}

const char* const kFaceCascades[] = {"frontalface_default", "profileface"};

TEST(FastCascade, FindsTheSameInThePhotograph) {
  for (const std::string name : kFaceCascades) {
    for (const int neighbors : {0, 1, 4}) {
      DetectionSettings settings;
      settings.min_neighbors = neighbors;
      settings.min_size = {15, 15};
      EXPECT_GT(expect_same(name, portrait(), settings), 0U) << name << " " << neighbors;
    }
  }
}

TEST(FastCascade, FindsTheSameInPicturesOfAllKindsAndSizes) {
  cv::RNG random(20);
  std::size_t hits = 0;
  for (int round = 0; round < 120; ++round) {
    const cv::Size size(random.uniform(1, 170), random.uniform(1, 170));
    cv::Mat picture = of_random_kind(size, random);
    if (round % 3 == 0) picture = as_part_of_larger(picture, random);
    hits += expect_same(kFaceCascades[round % 2], picture, random_settings(size, random));
  }
  EXPECT_GT(hits, 20U);
}

// Corner cases are sizes around that of the window and widths around a whole number of vectors.
TEST(FastCascade, FindsTheSameInPicturesJustLargerThanTheWindow) {
  cv::RNG random(21);
  const cv::Mat face = photograph()(photographed_face());
  for (const std::string name : kFaceCascades) {
    for (int more = -1; more < 40; ++more) {
      const cv::Size size(24 + more, 24 + random.uniform(-5, 12));
      cv::Mat picture;
      cv::resize(face, picture, size, 0, 0, cv::INTER_AREA);
      DetectionSettings settings;
      settings.scale_factor = 1.03;
      settings.min_neighbors = 0;
      expect_same(name, picture, settings);
    }
  }
}

TEST(FastCascade, FindsTheSameWithEveryStockCascadeItCovers) {
  cv::RNG random(22);
  for (const std::string name :
       {"eye", "frontalcatface", "frontalface_alt", "frontalface_alt_tree"}) {
    ASSERT_NE(fast_cascade(classifiers(name).fast[0]), nullptr) << name;
    for (int round = 0; round < 2; ++round) {
      DetectionSettings settings;
      settings.min_neighbors = 0;
      expect_same(name, face_before_clouds({160, 120}, random), settings);
    }
  }
}

// A row has more windows than a word has bits, and OpenCV's skipping of windows crosses the words.
TEST(FastCascade, FindsTheSameInWidePictures) {
  cv::RNG random(24);
  for (int round = 0; round < 6; ++round) {
    DetectionSettings settings;
    settings.scale_factor = 1.2;
    settings.min_neighbors = 0;
    cv::Mat faces;
    for (int i = 0; i < 6; ++i) {
      const cv::Mat next = face_before_clouds({90, 70}, random);
      if (faces.empty()) {
        faces = next;
      } else {
        cv::hconcat(faces, next, faces);
      }
    }
    expect_same(kFaceCascades[round % 2], faces, settings);
  }
}

// Plans for several widths are cached, and thrown away when there are too many.
TEST(FastCascade, FindsTheSameAfterPicturesOfManyWidths) {
  cv::RNG random(26);
  DetectionSettings settings;
  settings.scale_factor = 2.0;
  settings.min_neighbors = 0;
  for (int round = 0; round < 60; ++round) {
    const cv::Size size(64 * random.uniform(1, 20), random.uniform(0, 2) == 0 ? 30 : 60);
    expect_same("profileface", clouds(size, random), settings);
  }
}

// Searches with a cascade for the picture, of whose windows some lie exactly at a threshold.
// Returns the number of boxes.
std::size_t expect_same_with(const StumpCascade& cascade, const cv::Mat& picture) {
  const TemporaryFolder folder;
  const std::string file = (folder.path() / "cascade.xml").string();
  write_cascade(file, cascade);
  cv::CascadeClassifier original(file);
  DetectionSettings settings;
  settings.scale_factor = 2.5;
  settings.min_neighbors = 0;
  const Boxes expected = detected_on_threads(1, original, picture, settings);
  for (const InstructionSet instructions : available_instruction_sets()) {
    cv::CascadeClassifier classifier;
    EXPECT_TRUE(load_fast_cascade(classifier, file, instructions));
    EXPECT_NE(fast_cascade(classifier), nullptr);
    EXPECT_EQ(detected_on_threads(1, classifier, picture, settings), expected)
        << picture.size() << ", " << cascade.window;
  }
  return expected.size();
}

// Where values and sums equal their thresholds, the last bit of each decides.
TEST(FastCascade, FindsTheSameAtThresholds) {
  cv::RNG random(25);
  std::size_t hits = 0;
  for (int round = 0; round < 60; ++round) {
    const cv::Mat picture =
        round % 2 == 0 ? clouds({300, 60}, random) : noise({60, 40}, 100, 101, random);
    const cv::Size window(random.uniform(12, 25), random.uniform(12, 25));
    const int most_stumps =
        round % 3 == 0 ? 100 : 6;  // more stumps make sums closer to the threshold
    hits += expect_same_with(cascade_for(picture, window, most_stumps, random), picture);
  }
  EXPECT_GT(hits, 500U);
}

// Large features over black and white give values that do not fit into 16 bits.
TEST(FastCascade, FindsTheSameWithLargeFeaturesInPicturesOfStrongContrast) {
  cv::RNG random(27);
  std::size_t hits = 0;
  for (int round = 0; round < 120; ++round) {
    const cv::Size size(random.uniform(40, 150), random.uniform(40, 80));
    const cv::Mat picture =
        round % 3 == 0 ? clouds(size, random) : checkerboard(size, random.uniform(6, 30));
    const cv::Size window(random.uniform(14, 29), random.uniform(14, 29));
    hits +=
        expect_same_with(cascade_for(picture, window, 8, random, random_large_feature), picture);
  }
  EXPECT_GT(hits, 500U);
}

// Their patches are too large to be packed.
TEST(FastCascade, FindsTheSameWithLargeWindows) {
  cv::RNG random(28);
  std::size_t hits = 0;
  for (int round = 0; round < 10; ++round) {
    const cv::Mat picture = clouds({200, 120}, random);
    hits += expect_same_with(cascade_for(picture, {60, 50}, 20, random), picture);
  }
  EXPECT_GT(hits, 50U);
}

// The order in which stages are tried is found anew from time to time.
TEST(FastCascade, FindsTheSameInManyPicturesOneAfterAnother) {
  cv::RNG random(29);
  Classifiers& all = classifiers("profileface");
  for (int round = 0; round < 600; ++round) {
    const cv::Mat picture =
        round % 2 == 0 ? face_before_clouds({48, 40}, random) : noise({40, 40}, 0, 255, random);
    DetectionSettings settings;
    settings.min_neighbors = 0;
    EXPECT_EQ(detected_on_threads(1, all.fast.back(), picture, settings),
              detected_on_threads(1, all.original, picture, settings))
        << round;
  }
}

TEST(FastCascade, CountsTheSameNumberOfHits) {
  for (const int neighbors : {0, 2}) {
    cv::CascadeClassifier& fast = classifiers("frontalface_default").fast.back();
    cv::CascadeClassifier& original = classifiers("frontalface_default").original;
    const ThreadCount one(1);
    Boxes expected;
    Boxes boxes = {cv::Rect(1, 2, 3, 4)};
    std::vector<int> expected_counts;
    std::vector<int> counts = {7};
    original.detectMultiScale(portrait(), expected, expected_counts, 1.1, neighbors);
    fast.detectMultiScale(portrait(), boxes, counts, 1.1, neighbors);
    EXPECT_EQ(boxes, expected);
    EXPECT_EQ(counts, expected_counts);
    EXPECT_FALSE(counts.empty());
  }
}

TEST(FastCascade, FindsInThePyramidWhatItFindsInThePicture) {
  for (const std::string name : kFaceCascades) {
    cv::CascadeClassifier& classifier = classifiers(name).fast.back();
    DetectionSettings settings;
    settings.min_neighbors = 0;
    ImagePyramid pyramid;
    pyramid.set_picture(portrait());
    const Boxes boxes = fast_cascade(classifier)->detect(pyramid, Facing::kAsIs, settings);
    EXPECT_EQ(boxes, detected(classifier, portrait(), settings));
    EXPECT_FALSE(boxes.empty());
  }
}

TEST(FastCascade, FindsMirroredWhatItFindsInTheMirrorImage) {
  cv::RNG random(23);
  int mirrored_at_once = 0;
  std::size_t hits = 0;
  for (int round = 0; round < 40; ++round) {
    const cv::Size size(random.uniform(20, 200), random.uniform(20, 160));
    const cv::Mat picture = face_before_clouds(size, random);
    Classifiers& all = classifiers(kFaceCascades[round % 2]);
    DetectionSettings settings = random_settings(size, random);
    settings.min_neighbors = round % 4;
    if (!fast_cascade(all.fast[0])->can_mirror(size, settings)) continue;
    ++mirrored_at_once;
    const Boxes expected = detected_on_threads(1, all.original, mirror_image(picture), settings);
    for (cv::CascadeClassifier& classifier : all.fast) {
      ImagePyramid pyramid;
      pyramid.set_picture(picture);
      EXPECT_EQ(fast_cascade(classifier)->detect(pyramid, Facing::kMirrored, settings), expected)
          << size << settings;
    }
    hits += expected.size();
  }
  EXPECT_GT(mirrored_at_once, 10);
  EXPECT_GT(hits, 20U);
}

// So many pictures that the profile cascade, which searches each twice, changes the order of its
// stages again on the way.
TEST(FastCascade, FindsInPassesTogetherWhatEachPassFindsAlone) {
  cv::RNG random(29);
  const ThreadCount two(2);
  Classifiers& frontal = classifiers("frontalface_default");
  Classifiers& profile = classifiers("profileface");
  std::array<std::size_t, 3> hits{};
  for (int round = 0; round < 200; ++round) {
    const cv::Size size(random.uniform(10, 90) * 2, random.uniform(10, 90) * 2);
    const cv::Mat picture = face_before_clouds(size, random);
    DetectionSettings settings;
    settings.min_neighbors = 0;
    if (!fast_cascade(profile.fast[0])->can_mirror(size, settings)) continue;
    const std::array<Boxes, 3> expected = {
        detected_on_threads(1, frontal.original, picture, settings),
        detected_on_threads(1, profile.original, picture, settings),
        detected_on_threads(1, profile.original, mirror_image(picture), settings)};
    FastCascadeClassifier* const faces = fast_cascade(frontal.fast.back());
    FastCascadeClassifier* const sides = fast_cascade(profile.fast.back());
    faces->pyramid().set_picture(picture);
    const std::vector<Boxes> boxes = detect_together(
        faces->pyramid(),
        {{faces, Facing::kAsIs}, {sides, Facing::kAsIs}, {sides, Facing::kMirrored}}, settings);
    ASSERT_EQ(boxes.size(), expected.size());
    for (std::size_t pass = 0; pass < expected.size(); ++pass) {
      EXPECT_EQ(boxes[pass], expected[pass]) << "pass " << pass << ' ' << size << settings;
      hits[pass] += expected[pass].size();
    }
  }
  for (const std::size_t found : hits) EXPECT_GT(found, 10U);
}

// The picture has room for the profile cascade's window alone.
TEST(FastCascade, FindsNothingTogetherWhereAPassHasNoRoom) {
  cv::Mat picture;
  cv::resize(portrait(), picture, {22, 22});
  FastCascadeClassifier* const faces = fast_cascade(classifiers("frontalface_default").fast[0]);
  FastCascadeClassifier* const sides = fast_cascade(classifiers("profileface").fast[0]);
  ImagePyramid pyramid;
  pyramid.set_picture(picture);
  const std::vector<Boxes> boxes =
      detect_together(pyramid, {{faces, Facing::kAsIs}, {sides, Facing::kAsIs}}, {});
  ASSERT_EQ(boxes.size(), 2U);
  EXPECT_TRUE(boxes[0].empty());
  EXPECT_EQ(boxes[1], detected(classifiers("profileface").original, picture, {}));
  EXPECT_TRUE(detect_together(pyramid, {}, {}).empty());
}

// The picture changes between two calls, but not its place in memory.
TEST(FastCascade, LooksAtThePixelsOfEachCall) {
  cv::CascadeClassifier& fast = classifiers("frontalface_default").fast.back();
  cv::Mat picture = portrait().clone();
  const DetectionSettings settings;
  EXPECT_FALSE(detected(fast, picture, settings).empty());
  picture.setTo(cv::Scalar(90));
  EXPECT_TRUE(detected(fast, picture, settings).empty());
}

TEST(FastCascade, LeavesOtherCallsToOpenCv) {
  cv::CascadeClassifier& fast = classifiers("frontalface_default").fast.back();
  cv::CascadeClassifier& original = classifiers("frontalface_default").original;
  const ThreadCount one(1);
  const DetectionSettings settings;
  cv::Mat colour;
  cv::cvtColor(portrait(), colour, cv::COLOR_GRAY2BGR);
  EXPECT_EQ(detected(fast, colour, settings), detected(original, colour, settings));
  EXPECT_FALSE(detected(fast, colour, settings).empty());

  DetectionSettings standing_still;
  standing_still.scale_factor = 1.0;
  EXPECT_THROW(detected(fast, portrait(), standing_still), cv::Exception);
  cv::Mat deep;
  portrait().convertTo(deep, CV_16U);
  EXPECT_THROW(detected(fast, deep, settings), cv::Exception);
}

// Hides nothing, and counts the pictures that it was asked about.
struct CountingMask : cv::BaseCascadeClassifier::MaskGenerator {
  cv::Mat generateMask(const cv::Mat& picture) override {
    ++pictures;
    return {picture.size(), CV_8UC1, cv::Scalar(255)};
  }
  int pictures = 0;
};

TEST(FastCascade, LeavesMasksToOpenCv) {
  cv::CascadeClassifier fast;
  ASSERT_TRUE(load_fast_cascade(fast, stock_cascade("frontalface_default")));
  for (int round = 0; round < 2; ++round) {
    const auto mask = cv::makePtr<CountingMask>();
    fast.setMaskGenerator(mask);
    EXPECT_EQ(fast.getMaskGenerator(), mask);
    EXPECT_FALSE(detected(fast, portrait(), {}).empty());
    EXPECT_GT(mask->pictures, 0);
  }
}

// OpenCV's own classifier is loaded when a call first needs it.
TEST(FastCascade, ThrowsWhereACallNeedsAFileThatIsGone) {
  const TemporaryFolder folder;
  const std::string file = (folder.path() / "cascade.xml").string();
  std::filesystem::copy_file(stock_cascade("frontalface_default"), file);
  cv::CascadeClassifier fast;
  ASSERT_TRUE(load_fast_cascade(fast, file));
  std::filesystem::remove(file);
  const DetectionSettings settings;
  EXPECT_FALSE(detected(fast, portrait(), settings).empty());
  EXPECT_TRUE(detected(fast, cv::Mat::zeros(23, 40, CV_8UC1), settings).empty());
  cv::Mat colour;
  cv::cvtColor(portrait(), colour, cv::COLOR_GRAY2BGR);
  EXPECT_THROW(detected(fast, colour, settings), cv::Exception);
}

// OpenCV's classifier returns early and leaves the caller's old boxes in the list.
TEST(FastCascade, KeepsOldBoxesForPicturesSmallerThanTheWindowAsOpenCvDoes) {
  cv::CascadeClassifier& fast = classifiers("frontalface_default").fast.back();
  cv::CascadeClassifier& original = classifiers("frontalface_default").original;
  for (const cv::Size size : {cv::Size(40, 23), cv::Size(23, 40), cv::Size(1, 1)}) {
    const cv::Mat picture = noise(size, 0, 255, cv::theRNG());
    for (const int min_neighbors : {0, 1}) {
      Boxes expected = {cv::Rect(1, 2, 3, 4), cv::Rect(1, 2, 3, 4), cv::Rect(0, 0, 9, 9)};
      Boxes boxes = expected;
      std::vector<int> expected_counts;
      std::vector<int> counts;
      original.detectMultiScale(picture, expected, 1.1, min_neighbors);
      fast.detectMultiScale(picture, boxes, 1.1, min_neighbors);
      EXPECT_EQ(boxes, expected);
      original.detectMultiScale(picture, expected, expected_counts, 1.1, min_neighbors);
      fast.detectMultiScale(picture, boxes, counts, 1.1, min_neighbors);
      EXPECT_EQ(boxes, expected);
      EXPECT_EQ(counts, expected_counts);
    }
  }
}

TEST(FastCascade, GivesRejectLevelsAsOpenCvDoes) {
  cv::CascadeClassifier& fast = classifiers("frontalface_default").fast.back();
  cv::CascadeClassifier& original = classifiers("frontalface_default").original;
  const ThreadCount one(1);
  Boxes expected;
  Boxes boxes;
  std::vector<int> expected_levels;
  std::vector<int> levels;
  std::vector<double> expected_weights;
  std::vector<double> weights;
  original.detectMultiScale(portrait(), expected, expected_levels, expected_weights, 1.1, 3, 0, {},
                            {}, true);
  fast.detectMultiScale(portrait(), boxes, levels, weights, 1.1, 3, 0, {}, {}, true);
  EXPECT_EQ(boxes, expected);
  EXPECT_EQ(levels, expected_levels);
  EXPECT_EQ(weights, expected_weights);
  EXPECT_FALSE(levels.empty());
}

// ---- Loading.

std::vector<std::string> stock_cascade_files() {
  std::vector<std::string> files;
  for (const auto& file : std::filesystem::directory_iterator(
           std::filesystem::path(stock_cascade("eye")).parent_path())) {
    files.push_back(file.path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

TEST(LoadFastCascade, CoversExactlyTheUprightStumpCascadesAmongTheStockOnes) {
  std::vector<std::string> covered;
  for (const std::string& file : stock_cascade_files()) {
    cv::CascadeClassifier classifier;
    EXPECT_TRUE(load_fast_cascade(classifier, file)) << file;
    cv::CascadeClassifier original(file);
    EXPECT_EQ(classifier.getOriginalWindowSize(), original.getOriginalWindowSize());
    if (fast_cascade(classifier) != nullptr) {
      covered.push_back(std::filesystem::path(file).stem().string());
    }
  }
  EXPECT_EQ(covered, (std::vector<std::string>{
                         "haarcascade_eye", "haarcascade_frontalcatface",
                         "haarcascade_frontalface_alt", "haarcascade_frontalface_alt_tree",
                         "haarcascade_frontalface_default", "haarcascade_profileface"}));
}

// With every stock cascade that is not covered. Not all versions of OpenCV have the same ones under
// the same names.
TEST(LoadFastCascade, FindsWithOtherCascadesWhatOpenCvFinds) {
  DetectionSettings settings;
  settings.min_neighbors = 0;
  int others = 0;
  std::size_t hits = 0;
  for (const std::string& file : stock_cascade_files()) {
    cv::CascadeClassifier classifier;
    ASSERT_TRUE(load_fast_cascade(classifier, file)) << file;
    if (fast_cascade(classifier) != nullptr) continue;
    ++others;
    cv::CascadeClassifier original(file);
    const Boxes expected = detected_on_threads(1, original, portrait(), settings);
    EXPECT_EQ(detected_on_threads(1, classifier, portrait(), settings), expected) << file;
    hits += expected.size();
  }
  EXPECT_GT(others, 5);
  EXPECT_GT(hits, 10U);
}

TEST(LoadFastCascade, SaysNoToFilesThatCannotBeOpened) {
  cv::CascadeClassifier classifier(stock_cascade("eye"));
  EXPECT_FALSE(load_fast_cascade(classifier, "/nonexistent/cascade.xml"));
  EXPECT_TRUE(classifier.empty());
}

// What comes of loading a file, in words.
std::string answer(bool (*load)(cv::CascadeClassifier&, const std::string&),
                   const std::string& file) {
  cv::CascadeClassifier classifier;
  try {
    const bool loaded = load(classifier, file);
    return std::string(loaded ? "loads" : "does not load") + (classifier.empty() ? ", empty" : "");
  } catch (const cv::Exception& exception) {
    return "throws " + exception.err;
  }
}

bool load_with_opencv(cv::CascadeClassifier& classifier, const std::string& file) {
  return classifier.load(file);
}

std::string replaced(std::string text, const std::string& old, const std::string& with) {
  const std::size_t place = text.find(old);
  EXPECT_NE(place, std::string::npos) << old;
  return place == std::string::npos ? text : text.replace(place, old.size(), with);
}

std::string renamed(const std::string& text, const std::string& element, const std::string& name) {
  return replaced(replaced(text, "<" + element + ">", "<" + name + ">"), "</" + element + ">",
                  "</" + name + ">");
}

TEST(LoadFastCascade, AnswersToBrokenFilesAsOpenCvDoes) {
  const std::string whole = read_text(stock_cascade("eye"));
  const TemporaryFolder folder;
  const std::string file = (folder.path() / "cascade.xml").string();
  std::map<std::string, int> answers;
  for (const std::string& content :
       {std::string(), whole.substr(0, whole.size() / 2), std::string("no cascade"),
        std::string("<?xml version=\"1.0\"?><opencv_storage></opencv_storage>"),
        std::string("<?xml version=\"1.0\"?><opencv_storage><a>1</a></opencv_storage>"),
        replaced(whole, "<stageType>BOOST", "<stageType>OTHER"),
        replaced(whole, "<featureType>HAAR", "<featureType>HOG"),
        replaced(whole, "<height>20", "<height>0"), replaced(whole, "<height>20", "<height>12"),
        replaced(whole, "<stages>", "<other>"), renamed(whole, "featureParams", "other"),
        std::string("%YAML:1.0\n---\n- 1\n- 2\n"), whole}) {
    write_text(file, content);
    const std::string expected = answer(load_with_opencv, file);
    EXPECT_EQ(answer(load_fast_cascade, file), expected) << content.substr(0, 300);
    ++answers[expected];
  }
  EXPECT_GT(answers.size(), 3U);
  EXPECT_EQ(answers["loads"], 1);
  EXPECT_EQ(answer(load_fast_cascade, folder.path().string()),
            answer(load_with_opencv, folder.path().string()));
}

}  // namespace
}  // namespace halcyra::haar
