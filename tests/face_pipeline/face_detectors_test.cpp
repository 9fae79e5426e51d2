#include "face_pipeline/face_detectors.hpp"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/haar/fast_cascade_classifier.hpp"
#include "tests/support/event_messages.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

using Messages = std::vector<std::string>;

const char kNoFrontal[] = "Frontal cascade unavailable";
const char kNoProfile[] = "Profile cascade unavailable; profile detection fallback";
const char kMissing[] = "/nonexistent/cascade.xml";

TEST(LoadDetectors, LoadsBothStockCascades) {
  FaceDetectors detectors;
  RuntimeStatus status;
  load_detectors(detectors, Options(), status);
  EXPECT_TRUE(status.frontal_cascade_loaded);
  EXPECT_TRUE(status.profile_cascade_loaded);
  EXPECT_EQ(detectors.frontal.getOriginalWindowSize(), cv::Size(24, 24));
  EXPECT_EQ(detectors.profile.getOriginalWindowSize(), cv::Size(20, 20));
  EXPECT_TRUE(status.events.empty());
}

TEST(LoadDetectors, SearchesAsTheBuildWasConfigured) {
  const bool fast = HALCYRA_FAST_FACE_SEARCH != 0;
  FaceDetectors detectors;
  RuntimeStatus status;
  load_detectors(detectors, Options(), status);
  EXPECT_EQ(haar::fast_cascade(detectors.frontal) != nullptr, fast);
  EXPECT_EQ(haar::fast_cascade(detectors.profile) != nullptr, fast);
}

TEST(LoadDetectors, GoesOnWithoutTheFrontalCascade) {
  FaceDetectors detectors;
  RuntimeStatus status;
  Options options;
  options.cascade_path = kMissing;
  load_detectors(detectors, options, status);
  EXPECT_FALSE(status.frontal_cascade_loaded);
  EXPECT_TRUE(status.profile_cascade_loaded);
  EXPECT_FALSE(detectors.profile.empty());
  EXPECT_EQ(event_messages(status), Messages{kNoFrontal});
}

TEST(LoadDetectors, GoesOnWithoutTheProfileCascade) {
  FaceDetectors detectors;
  RuntimeStatus status;
  Options options;
  options.profile_cascade_path = kMissing;
  load_detectors(detectors, options, status);
  EXPECT_TRUE(status.frontal_cascade_loaded);
  EXPECT_FALSE(status.profile_cascade_loaded);
  EXPECT_FALSE(detectors.frontal.empty());
  EXPECT_EQ(event_messages(status), Messages{kNoProfile});
}

TEST(LoadDetectors, SaysOfBothThatTheyAreMissing) {
  FaceDetectors detectors;
  RuntimeStatus status;
  Options options;
  options.cascade_path = kMissing;
  options.profile_cascade_path = kMissing;
  load_detectors(detectors, options, status);
  EXPECT_FALSE(status.frontal_cascade_loaded);
  EXPECT_FALSE(status.profile_cascade_loaded);
  EXPECT_EQ(event_messages(status), (Messages{kNoFrontal, kNoProfile}));
}

// Nothing in the program catches the exception, so a file that is not a cascade ends the run.
class NoCascade : public ::testing::Test {
 protected:
  void expect_throws(const std::string& file) {
    FaceDetectors detectors;
    RuntimeStatus status;
    Options options;
    options.cascade_path = file;
    EXPECT_THROW(load_detectors(detectors, options, status), cv::Exception);
    EXPECT_TRUE(status.events.empty());
  }
  void expect_throws_with(const std::string& content) {
    const std::filesystem::path file = folder_.path() / "cascade.xml";
    write_text(file, content);
    expect_throws(file.string());
  }

  TemporaryFolder folder_;
};

TEST_F(NoCascade, ThrowsForAnEmptyFile) { expect_throws_with(""); }

TEST_F(NoCascade, ThrowsForAFileCutOff) {
  const std::string whole = read_text(Options().cascade_path);
  expect_throws_with(whole.substr(0, whole.size() / 2));
}

TEST_F(NoCascade, ThrowsForOtherXml) {
  expect_throws_with("<?xml version=\"1.0\"?><opencv_storage><a>1</a></opencv_storage>");
}

TEST_F(NoCascade, ThrowsForAFolder) { expect_throws(folder_.path().string()); }

}  // namespace
}  // namespace halcyra
