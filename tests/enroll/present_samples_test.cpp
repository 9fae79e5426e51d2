#include "enroll/present_samples.hpp"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "tests/enroll/sample_set.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class PresentSamples : public ::testing::Test {
 protected:
  bool load() { return load_present_samples(folder_.path(), samples_, names_, complaint_); }

  void add(const std::string& name, int shift) const {
    fs::create_directories((folder_.path() / name).parent_path());
    ASSERT_TRUE(cv::imwrite(folder_.path() / name, shifted_face(shift)));
  }

  TemporaryFolder folder_;
  SampleDistances samples_;
  std::vector<std::string> names_;
  std::string complaint_;
};

TEST_F(PresentSamples, AreLoadedInPathOrder) {
  add("left/b.png", 0);
  add("front/a.png", 9);
  EXPECT_TRUE(load());
  EXPECT_EQ(names_, (std::vector<std::string>{"front/a.png", "left/b.png"}));
  EXPECT_EQ(samples_.size(), 2U);
  EXPECT_EQ(samples_.nearest(shifted_face(9))->index, 0U);
}

TEST_F(PresentSamples, LackThoseThatCannotBeDecoded) {
  add("front/a.png", 0);
  write_text(folder_.path() / "front/b.png", "no picture");
  // More pixels than OpenCV reads.
  write_text(folder_.path() / "front/c.pgm", "P5\n100000 100000\n255\n");
  EXPECT_TRUE(load());
  EXPECT_EQ(names_, std::vector<std::string>{"front/a.png"});
  EXPECT_EQ(samples_.size(), 1U);
}

TEST_F(PresentSamples, AreMissingWithTheirFolder) {
  EXPECT_FALSE(load_present_samples(folder_.path() / "none", samples_, names_, complaint_));
  EXPECT_EQ(complaint_, "The samples in " + (folder_.path() / "none").string() +
                            " cannot be read: No such file or directory.");
}

}  // namespace
}  // namespace halcyra
