#include "enroll/picture_enrolment.hpp"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "enroll/face_search.hpp"
#include "enroll/report_table.hpp"
#include "face_pipeline/sample_loader.hpp"
#include "tests/enroll/sample_set.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class EnrollFromPictures : public ::testing::Test {
 protected:
  EnrollFromPictures() {
    options_.per_pose = 1;
    fs::create_directories(pictures());
  }

  fs::path pictures() const { return set_.outside() / "pictures"; }
  std::string at(const std::string& name) const { return (pictures() / name).string(); }
  void add(const std::string& name, const cv::Mat& picture) const {
    if (!cv::imwrite(at(name), picture)) throw std::runtime_error("cannot write " + name);
  }
  int run(const std::vector<std::string>& names) {
    options_.pipeline = set_.options;
    options_.pictures = names;
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const int status = enroll_from_pictures(options_);
    output_ = ::testing::internal::GetCapturedStdout();
    errors_ = ::testing::internal::GetCapturedStderr();
    return status;
  }
  // What happened to a file, with the time of a sample's name replaced by TIME.
  std::string outcome(const std::string& name) const {
    std::istringstream lines(output_);
    const std::string beginning = at(name) + ": ";
    for (std::string line; std::getline(lines, line);) {
      if (line.compare(0, beginning.size(), beginning) != 0) continue;
      return std::regex_replace(line.substr(beginning.size()), std::regex("[0-9]{8}T[0-9]{6}Z"),
                                "TIME");
    }
    return "not listed in\n" + output_;
  }
  std::vector<fs::path> samples() const {
    return fs::exists(set_.options.samples_dir) ? sample_files(set_.options.samples_dir)
                                                : std::vector<fs::path>();
  }

  SampleSet set_;
  EnrollOptions options_;
  std::string output_;
  std::string errors_;
};

TEST_F(EnrollFromPictures, TakesTheOneFaceAsTheDashboardWouldCutIt) {
  add("a.png", color_photograph());
  run({at("a.png")});
  EXPECT_EQ(outcome("a.png"), "taken as front/TIME-1.png");
  ASSERT_EQ(samples().size(), 1U);
  FaceDetectors detectors;
  std::string complaint;
  ASSERT_TRUE(load_face_search(detectors, set_.options, complaint)) << complaint;
  const std::vector<FaceInfo> faces = search_faces(detectors, photograph(), set_.options);
  ASSERT_EQ(faces.size(), 1U);
  EXPECT_TRUE(same_pixels(read_sample(samples().front()), face_crop(photograph(), faces.front())));
}

TEST_F(EnrollFromPictures, SortsFacesByTheirPose) {
  cv::Mat left = cv::imread(HALCYRA_TEST_DATA "/profile_left.png", cv::IMREAD_GRAYSCALE);
  cv::Mat right;
  cv::flip(left, right, 1);
  add("left.png", left);
  add("right.png", right);
  run({pictures().string()});
  EXPECT_EQ(outcome("left.png"), "taken as left/TIME-1.png");
  EXPECT_EQ(outcome("right.png"), "taken as right/TIME-1.png");
}

TEST_F(EnrollFromPictures, SaysWhyAPictureIsLeftOut) {
  cv::Mat small;
  cv::resize(photograph(), small, cv::Size(), 0.7, 0.7, cv::INTER_AREA);
  cv::Mat blurred;
  cv::GaussianBlur(photograph(), blurred, cv::Size(), 4);
  cv::Mat twins;
  cv::hconcat(photograph(), photograph(), twins);
  add("small.png", small);
  add("blurred.png", blurred);
  add("twins.png", twins);
  add("grey.png", cv::Mat(300, 300, CV_8UC1, cv::Scalar(99)));
  add("dot.png", cv::Mat(1, 1, CV_8UC1, cv::Scalar(99)));
  write_text(at("letter.txt"), "Dear friend");
  write_text(at("huge.pgm"), huge_header());
  EXPECT_EQ(run({pictures().string()}), 1);
  EXPECT_EQ(outcome("small.png").substr(0, 20), "left out: too_small ");
  EXPECT_EQ(outcome("blurred.png").substr(0, 31), "left out: too_blurry (sharpness");
  EXPECT_EQ(outcome("twins.png"), "left out: 2 faces");
  EXPECT_EQ(outcome("grey.png"), "left out: no face");
  EXPECT_EQ(outcome("dot.png"), "left out: no face");
  EXPECT_EQ(outcome("letter.txt"), "left out: not a picture");
  EXPECT_EQ(outcome("huge.pgm"), "left out: too large");
  EXPECT_TRUE(samples().empty());
}

TEST_F(EnrollFromPictures, TakesTheSamePictureOnlyOnce) {
  add("a.png", color_photograph());
  add("b.png", color_photograph());
  run({pictures().string()});
  EXPECT_EQ(outcome("b.png"), "left out: almost the same as front/TIME-1.png");
  run({pictures().string()});
  EXPECT_EQ(outcome("a.png"), "left out: almost the same as front/TIME-1.png");
  EXPECT_EQ(samples().size(), 1U);
}

TEST_F(EnrollFromPictures, TakesMoreThanIsWantedOfAPose) {
  add("a.png", color_photograph());
  cv::Mat mirrored;
  cv::flip(color_photograph(), mirrored, 1);
  add("b.png", mirrored);
  run({pictures().string()});
  EXPECT_EQ(samples().size(), 2U) << output_;
}

TEST_F(EnrollFromPictures, EndsWithTheReport) {
  add("a.png", color_photograph());
  EXPECT_EQ(run({pictures().string()}), 1);  // two poses are missing
  std::ostringstream table;
  write_report_table(table, set_.report(1));
  const std::size_t begin = output_.find("\n\n") + 2;
  EXPECT_EQ(output_.substr(begin), table.str());
  EXPECT_EQ(errors_, "");
}

TEST_F(EnrollFromPictures, IsContentWithAGoodSet) {
  add("a.png", color_photograph());
  set_.add("left/1.png", shifted_face(15));
  set_.add("right/1.png", shifted_face(30));
  EXPECT_EQ(run({at("a.png")}), 0) << output_;
  EXPECT_EQ(run({at("a.png"), at("missing.png")}), 1);
  EXPECT_EQ(outcome("missing.png"), "left out: cannot be opened: No such file or directory");
}

TEST_F(EnrollFromPictures, PassesOverSamplesThatCannotBeDecoded) {
  set_.add_bytes("front/bad.png", "no picture");
  set_.add_bytes("front/huge.pgm", huge_header());
  add("a.png", color_photograph());
  run({at("a.png")});
  EXPECT_EQ(outcome("a.png"), "taken as front/TIME-1.png");
}

TEST_F(EnrollFromPictures, SaysThatThereIsNothingToRead) {
  EXPECT_EQ(run({pictures().string()}), 1);
  EXPECT_EQ(errors_, "There is no picture to read.\n");
  EXPECT_EQ(run({at("missing")}), 1);
  EXPECT_EQ(outcome("missing"), "left out: cannot be opened: No such file or directory");
  EXPECT_FALSE(fs::exists(set_.options.samples_dir));
}

TEST_F(EnrollFromPictures, ReadsNothingWhereSamplesCannotBeWritten) {
  add("a.png", color_photograph());
  write_text(set_.options.samples_dir, "a file");
  EXPECT_EQ(run({at("a.png")}), 1);
  EXPECT_EQ(output_, "");
  EXPECT_EQ(errors_, "No samples can be written to " + set_.options.samples_dir +
                         "/front: Not a directory.\n");
}

TEST_F(EnrollFromPictures, ReadsNothingWithoutTheCascades) {
  add("a.png", color_photograph());
  set_.options.cascade_path = at("a.png");
  EXPECT_EQ(run({at("a.png")}), 1);
  EXPECT_EQ(output_, "");
  EXPECT_NE(errors_.find("a.png cannot be used as a face cascade."), std::string::npos) << errors_;
  EXPECT_FALSE(fs::exists(set_.options.samples_dir));
}

TEST_F(EnrollFromPictures, ShowsNamesFromOutsideSafely) {
  write_text(at("a\x1B[31m.txt"), "x");
  run({pictures().string()});
  EXPECT_NE(output_.find("a?[31m.txt: left out: not a picture\n"), std::string::npos) << output_;
}

}  // namespace
}  // namespace halcyra
