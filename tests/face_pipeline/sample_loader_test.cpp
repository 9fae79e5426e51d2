#include "face_pipeline/sample_loader.hpp"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/support/same_pixels.hpp"
#include "tests/support/temporary_folder.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

cv::Mat noise(int width, int height, int type = CV_8UC1) {
  cv::Mat picture(height, width, type);
  cv::randu(picture, 0, 256);
  return picture;
}

class LoadSamples : public ::testing::Test {
 protected:
  fs::path place(const std::string& name) {
    const fs::path file = root() / name;
    fs::create_directories(file.parent_path());
    return file;
  }
  void add_picture(const std::string& name, const cv::Mat& picture) {
    ASSERT_TRUE(cv::imwrite(place(name).string(), picture));
  }
  void add_picture(const std::string& name) { add_picture(name, noise(8, 8)); }
  void add_text(const std::string& name, const std::string& text) {
    std::ofstream(place(name), std::ios::binary) << text;
  }
  // A picture despite its name: OpenCV looks at the content.
  void add_disguised_picture(const std::string& name) {
    add_picture("disguise.png");
    fs::rename(root() / "disguise.png", place(name));
  }

  bool load() { return load_samples(root().string(), samples_); }
  Texts paths() const {
    Texts texts;
    for (const TrainingSample& sample : samples_) texts.push_back(sample.path);
    return texts;
  }
  Texts stages() const {
    Texts texts;
    for (const TrainingSample& sample : samples_) texts.push_back(sample.stage);
    return texts;
  }

  fs::path root() const { return folder_.path() / "samples"; }

  TemporaryFolder folder_;
  std::vector<TrainingSample> samples_;
};

// ---- Which files.

TEST_F(LoadSamples, FindsNothingInAMissingFolder) {
  EXPECT_FALSE(load());
  EXPECT_FALSE(load_samples("", samples_));
  EXPECT_TRUE(samples_.empty());
}

TEST_F(LoadSamples, FindsNothingUnderANameTheSystemRefuses) {
  EXPECT_FALSE(load_samples(std::string(5000, 'x'), samples_));
  fs::create_symlink("samples", root());
  EXPECT_FALSE(load());
}

TEST_F(LoadSamples, FindsNothingInAnEmptyFolder) {
  fs::create_directories(root() / "front");
  EXPECT_FALSE(load());
}

TEST_F(LoadSamples, TakesTheFourExtensionsInAnyCase) {
  const Texts names = {"1.png", "2.jpg", "3.jpeg", "4.pgm", "5.PNG", "6.Jpg", "7.JPEG", "8.pGm"};
  for (const std::string& name : names) add_disguised_picture(name);
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), names);
}

TEST_F(LoadSamples, LeavesOtherExtensionsOut) {
  for (const char* name : {"1.bmp", "2.tiff", "3.png.txt", "4", "5png", "6.pn", "7.pngx", "8.ppm",
                           "9.png~", ".png", "manifest.json", "front/manifest.json", "notes.txt"}) {
    add_disguised_picture(name);
  }
  EXPECT_FALSE(load());
  EXPECT_EQ(paths(), Texts{});
}

TEST_F(LoadSamples, ReadsTheExtensionFromTheLastDot) {
  for (const char* name : {"a.tar.png", "b..png", ".hidden.png"}) add_disguised_picture(name);
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), (Texts{".hidden.png", "a.tar.png", "b..png"}));
}

TEST_F(LoadSamples, DoesNotTakeAFolderForAPicture) {
  fs::create_directories(root() / "x.png");
  EXPECT_FALSE(load());
  add_picture("x.png/inside.png");
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), Texts{"x.png/inside.png"});
  EXPECT_EQ(stages(), Texts{"x.png"});
}

TEST_F(LoadSamples, SkipsWhatCannotBeDecoded) {
  add_text("1.png", "");
  add_text("2.jpg", "no picture");
  EXPECT_FALSE(load());
  add_picture("3.png");
  add_text("4.pgm", "P5 9");
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), Texts{"3.png"});
}

// ---- Links.

TEST_F(LoadSamples, TakesALinkToAFileByItsOwnNameForWhatItPointsTo) {
  add_picture("front/real.png");
  fs::create_symlink("../front/real.png", place("side/link.jpg"));
  fs::create_symlink("../front/real.png", place("side/link.txt"));
  EXPECT_TRUE(load());
  // The relative path is that of the link's target.
  EXPECT_EQ(paths(), (Texts{"front/real.png", "front/real.png"}));
  EXPECT_EQ(stages(), (Texts{"front", "front"}));
}

TEST_F(LoadSamples, TakesALinkToAFileOutside) {
  add_picture("../elsewhere/real.png");
  add_picture("../above.png");
  fs::create_symlink("../elsewhere/real.png", place("1.png"));
  fs::create_symlink("../above.png", place("2.png"));
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), (Texts{"../elsewhere/real.png", "../above.png"}));
  EXPECT_EQ(stages(), (Texts{"elsewhere", ".."}));
}

TEST_F(LoadSamples, DoesNotFollowALinkToAFolder) {
  add_picture("front/real.png");
  add_picture("../elsewhere/other.png");
  fs::create_directory_symlink("front", place("again"));
  fs::create_directory_symlink("../elsewhere", place("elsewhere.png"));
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), Texts{"front/real.png"});
}

TEST_F(LoadSamples, DoesNotWalkInCircles) {
  add_picture("front/real.png");
  fs::create_directory_symlink("..", place("front/round"));
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), Texts{"front/real.png"});
}

TEST_F(LoadSamples, SkipsLinksThatLeadNowhere) {
  add_picture("a.png");
  fs::create_symlink("missing.png", place("nowhere.png"));
  fs::create_symlink("circle.png", place("circle.png"));
  fs::create_symlink("pong.png", place("ping.png"));
  fs::create_symlink("ping.png", place("pong.png"));
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), Texts{"a.png"});
}

TEST_F(LoadSamples, FollowsTheSamplesFolderItself) {
  add_picture("front/real.png");
  fs::create_directory_symlink(root(), folder_.path() / "link");
  EXPECT_TRUE(load_samples((folder_.path() / "link").string(), samples_));
  EXPECT_EQ(paths(), Texts{"front/real.png"});
  EXPECT_EQ(stages(), Texts{"front"});
}

// ---- Order, path and stage.

TEST_F(LoadSamples, SortsByPathComponents) {
  for (const char* name :
       {"a-b.png", "a/b.png", "b.png", "a/a/z.png", "B.png", "a/10.png", "a/2.png", "a.png"}) {
    add_picture(name);
  }
  EXPECT_TRUE(load());
  const Texts sorted = {"B.png",   "a/10.png", "a/2.png", "a/a/z.png",
                        "a/b.png", "a-b.png",  "a.png",   "b.png"};
  EXPECT_EQ(paths(), sorted);
  std::vector<TrainingSample> again;
  EXPECT_TRUE(load_samples(root().string(), again));
  ASSERT_EQ(again.size(), samples_.size());
  for (std::size_t i = 0; i < again.size(); ++i) EXPECT_EQ(again[i].path, samples_[i].path);
}

TEST_F(LoadSamples, NamesTheStageAfterTheFolderThatHoldsTheFile) {
  for (const char* name : {"IMG1.PNG", "front/a.jpg", "side/left/b.pgm"}) add_picture(name);
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), (Texts{"IMG1.PNG", "front/a.jpg", "side/left/b.pgm"}));
  EXPECT_EQ(stages(), (Texts{"flat", "front", "left"}));
  for (const TrainingSample& sample : samples_) EXPECT_EQ(sample.label, 1);
}

TEST_F(LoadSamples, TakesTheFolderInAnySpelling) {
  add_picture("front/a.png");
  add_picture("b.png");
  const Texts spellings = {root().string() + "/", root().string() + "/./front/..",
                           fs::relative(root()).string()};
  for (const std::string& spelling : spellings) {
    samples_.clear();
    EXPECT_TRUE(load_samples(spelling, samples_)) << spelling;
    EXPECT_EQ(paths(), (Texts{"b.png", "front/a.png"})) << spelling;
    EXPECT_EQ(stages(), (Texts{"flat", "front"})) << spelling;
  }
}

TEST_F(LoadSamples, AppendsToWhatIsThere) {
  samples_.resize(1);
  samples_[0].path = "earlier";
  EXPECT_FALSE(load());  // the folder is missing
  fs::create_directories(root());
  EXPECT_TRUE(load());  // no file to load, but a sample from before
  add_picture("new.png");
  EXPECT_TRUE(load());
  EXPECT_EQ(paths(), (Texts{"earlier", "new.png"}));
}

// ---- Pixels.

TEST_F(LoadSamples, KeepsPicturesOf160By160AsTheyAre) {
  const cv::Mat picture = noise(160, 160);
  add_picture("a.png", picture);
  add_picture("b.pgm", picture);
  ASSERT_TRUE(load());
  EXPECT_TRUE(same_pixels(samples_[0].image, picture));
  EXPECT_TRUE(same_pixels(samples_[1].image, picture));
}

TEST_F(LoadSamples, ResizesEveryOtherSizeByArea) {
  for (const cv::Size& size : {cv::Size(200, 250), cv::Size(160, 159), cv::Size(161, 160),
                               cv::Size(320, 320), cv::Size(20, 10), cv::Size(1, 1)}) {
    const cv::Mat picture = noise(size.width, size.height);
    add_picture("a.png", picture);
    samples_.clear();
    ASSERT_TRUE(load());
    cv::Mat expected;
    cv::resize(picture, expected, cv::Size(160, 160), 0, 0, cv::INTER_AREA);
    EXPECT_TRUE(same_pixels(samples_[0].image, expected)) << size;
  }
}

TEST_F(LoadSamples, DecodesEveryPictureAsGrey) {
  add_picture("1.png", noise(160, 160, CV_8UC3));
  add_picture("2.png", noise(160, 160, CV_8UC4));
  add_picture("3.jpg", noise(160, 160, CV_8UC3));
  cv::Mat deep(160, 160, CV_16UC1);
  cv::randu(deep, 0, 65536);
  add_picture("4.png", deep);
  ASSERT_TRUE(load());
  ASSERT_EQ(samples_.size(), 4U);
  for (const TrainingSample& sample : samples_) {
    EXPECT_TRUE(same_pixels(sample.image,
                            cv::imread((root() / sample.path).string(), cv::IMREAD_GRAYSCALE)))
        << sample.path;
    EXPECT_EQ(sample.image.type(), CV_8UC1);
  }
}

// ---- What ends the run.

TEST_F(LoadSamples, ThrowsWhenTheFolderIsAFile) {
  add_picture("a.png");
  EXPECT_THROW(load_samples((root() / "a.png").string(), samples_), fs::filesystem_error);
}

TEST_F(LoadSamples, ThrowsWhenASubfolderCannotBeRead) {
  if (geteuid() == 0) GTEST_SKIP() << "every folder can be read by root";
  add_picture("front/a.png");
  fs::permissions(root() / "front", fs::perms::none);
  EXPECT_THROW(load(), fs::filesystem_error);
  fs::permissions(root() / "front", fs::perms::owner_all);
}

}  // namespace
}  // namespace halcyra
