#include "enroll/sample_folder.hpp"

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "tests/support/same_pixels.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// The 22nd of November 2026, 10:33:08 UTC.
constexpr std::time_t kTime = 1795343588;

unsigned int mode_of(const fs::path& path) {
  struct stat file {};
  return ::stat(path.c_str(), &file) == 0 ? file.st_mode & 07777U : 0U;
}

cv::Mat noise(cv::Size size = {90, 110}) {
  cv::Mat picture(size, CV_8UC1);
  cv::theRNG().state = 3;
  cv::randu(picture, 0, 256);
  return picture;
}

std::vector<std::string> names_in(const fs::path& folder) {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// Lets no file grow beyond that many bytes while it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    rlimit lower = before_;
    lower.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &lower);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  void (*handler_)(int);
  rlimit before_{};
};

class SampleFolder : public ::testing::Test {
 protected:
  SampleFolder() : folder_(own_.path() / "faces/dorran") {}

  void prepare() { ASSERT_TRUE(prepare_sample_folder(folder_, complaint_)) << complaint_; }

  std::optional<fs::path> write(const cv::Mat& crop, Pose pose = Pose::kFront) {
    return write_sample(folder_, pose, crop, kTime, complaint_);
  }

  TemporaryFolder own_;
  fs::path folder_;
  std::string complaint_;
};

TEST_F(SampleFolder, IsPrivateWhateverTheUmask) {
  for (const mode_t mask : {0000U, 0022U, 0077U}) {
    fs::remove_all(own_.path() / "faces");
    const mode_t before = ::umask(mask);
    prepare();
    const std::optional<fs::path> file = write(noise());
    ::umask(before);
    ASSERT_TRUE(file);
    EXPECT_EQ(mode_of(*file), 0600U) << mask;
    for (const char* made : {"", "front", "left", "right"}) {
      EXPECT_EQ(mode_of(folder_ / made), 0700U) << made << " with " << mask;
    }
    EXPECT_FALSE(others_can_read(folder_));
  }
}

TEST_F(SampleFolder, KeepsTheModesOfFoldersThatAreThere) {
  fs::create_directories(folder_ / "left");
  ASSERT_EQ(::chmod(folder_.c_str(), 0755), 0);
  ASSERT_EQ(::chmod((folder_ / "left").c_str(), 0750), 0);
  prepare();
  EXPECT_EQ(mode_of(folder_), 0755U);
  EXPECT_EQ(mode_of(folder_ / "left"), 0750U);
  EXPECT_EQ(mode_of(folder_ / "right"), 0700U);
}

TEST_F(SampleFolder, IsEmptyAfterItWasTried) {
  prepare();
  EXPECT_EQ(names_in(folder_), (std::vector<std::string>{"front", "left", "right"}));
  for (const char* stage : {"front", "left", "right"}) {
    EXPECT_TRUE(names_in(folder_ / stage).empty()) << stage;
  }
}

TEST_F(SampleFolder, HoldsEachSampleUnderItsTimeAndPose) {
  prepare();
  EXPECT_EQ(write(noise(), Pose::kFront), folder_ / "front/20261122T103308Z-1.png");
  EXPECT_EQ(write(noise(), Pose::kLeft), folder_ / "left/20261122T103308Z-1.png");
  EXPECT_EQ(write(noise(), Pose::kRight), folder_ / "right/20261122T103308Z-1.png");
}

TEST_F(SampleFolder, GivesThePixelsBack) {
  prepare();
  const std::optional<fs::path> file = write(noise());
  ASSERT_TRUE(file);
  EXPECT_TRUE(same_pixels(cv::imread(*file, cv::IMREAD_UNCHANGED), noise()));
}

TEST_F(SampleFolder, NeverReplacesAFile) {
  prepare();
  const fs::path first = folder_ / "front/20261122T103308Z-1.png";
  const fs::path third = folder_ / "front/20261122T103308Z-3.png";
  write_text(first, "somebody's");
  fs::create_symlink("nowhere", third);
  EXPECT_EQ(write(noise()), folder_ / "front/20261122T103308Z-2.png");
  EXPECT_EQ(write(noise()), folder_ / "front/20261122T103308Z-4.png");
  EXPECT_EQ(read_text(first), "somebody's");
  EXPECT_TRUE(fs::is_symlink(third));
}

TEST_F(SampleFolder, HoldsASampleWholeOrNotAtAll) {
  prepare();
  {
    const FileSizeLimit limit(4096);
    EXPECT_EQ(write(noise({300, 300})), std::nullopt);
  }
  EXPECT_EQ(complaint_,
            "No samples can be written to " + (folder_ / "front").string() + ": File too large.");
  EXPECT_TRUE(names_in(folder_ / "front").empty());
  EXPECT_TRUE(write(noise({300, 300})));
}

TEST_F(SampleFolder, SaysWhenItHasGone) {
  prepare();
  fs::remove_all(folder_);
  EXPECT_EQ(write(noise()), std::nullopt);
  EXPECT_EQ(complaint_, "No samples can be written to " + (folder_ / "front").string() +
                            ": No such file or directory.");
}

TEST_F(SampleFolder, SaysWhenAFileIsInItsPlace) {
  write_text(own_.path() / "faces", "not a folder");
  EXPECT_FALSE(prepare_sample_folder(folder_, complaint_));
  EXPECT_EQ(complaint_,
            "No samples can be written to " + (folder_ / "front").string() + ": Not a directory.");
}

TEST_F(SampleFolder, SaysWhenAFileIsInThePlaceOfAPose) {
  fs::create_directories(folder_);
  write_text(folder_ / "left", "not a folder");
  EXPECT_FALSE(prepare_sample_folder(folder_, complaint_));
  EXPECT_EQ(complaint_,
            "No samples can be written to " + (folder_ / "left").string() + ": Not a directory.");
}

TEST_F(SampleFolder, TellsWhetherOthersCanRead) {
  EXPECT_FALSE(others_can_read(folder_));
  fs::create_directories(folder_);
  for (const mode_t mode : {0700U, 0600U}) {
    ASSERT_EQ(::chmod(folder_.c_str(), mode), 0);
    EXPECT_FALSE(others_can_read(folder_)) << mode;
  }
  for (const mode_t mode : {0740U, 0704U, 0755U, 0701U}) {
    ASSERT_EQ(::chmod(folder_.c_str(), mode), 0);
    EXPECT_TRUE(others_can_read(folder_)) << mode;
  }
}

}  // namespace
}  // namespace halcyra
