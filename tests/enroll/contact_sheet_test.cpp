#include "enroll/contact_sheet.hpp"

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "dashboard/palette.hpp"
#include "tests/enroll/report_samples.hpp"
#include "tests/enroll/sample_set.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// The frames around pictures, from top to bottom and then from left to right.
std::vector<cv::Rect> red_frames(const cv::Mat& sheet) {
  cv::Mat red;
  const cv::Scalar color = palette::kUnavailable;
  cv::inRange(sheet, color, color, red);
  cv::Mat labels;
  cv::Mat stats;
  cv::Mat centroids;
  const int count = cv::connectedComponentsWithStats(red, labels, stats, centroids, 4);
  std::vector<cv::Rect> frames;
  for (int i = 1; i < count; ++i) {
    const cv::Rect box(stats.at<int>(i, cv::CC_STAT_LEFT), stats.at<int>(i, cv::CC_STAT_TOP),
                       stats.at<int>(i, cv::CC_STAT_WIDTH), stats.at<int>(i, cv::CC_STAT_HEIGHT));
    if (box.width >= 160 && box.height >= 160) frames.push_back(box);
  }
  return frames;
}

cv::Mat inside(const cv::Mat& sheet, const cv::Rect& frame) {
  return sheet(cv::Rect(frame.x + 4, frame.y + 4, 160, 160));
}

// Where the picture with that one grey level is; empty if it is nowhere.
cv::Rect place_of(const cv::Mat& sheet, int level) {
  cv::Mat same;
  cv::inRange(sheet, cv::Scalar::all(level), cv::Scalar::all(level), same);
  std::vector<cv::Point> pixels;
  cv::findNonZero(same, pixels);
  return pixels.size() < 160U * 160U ? cv::Rect() : cv::boundingRect(pixels);
}

// Samples that are grey areas of different levels.
SampleReport report_of(const std::vector<std::string>& stages) {
  SampleReport report;
  int level = 50;
  for (const std::string& stage : stages) {
    report.samples.push_back(made_sample(stage + "/x.png", stage));
    report.samples.back().image = cv::Scalar(level += 2);
  }
  for (const char* stage : {"front", "left", "right"}) {
    StageSummary summary;
    summary.stage = stage;
    report.stages.push_back(summary);
  }
  return report;
}

TEST(DrawContactSheet, FramesWhatAFindingIsAbout) {
  SampleReport report = report_of({"front", "front", "left"});
  EXPECT_TRUE(red_frames(draw_contact_sheet(report)).empty());
  report.findings = {{FindingKind::kOutlier, "", {1}}, {FindingKind::kTooFew, "", {}}};
  const cv::Mat sheet = draw_contact_sheet(report);
  const std::vector<cv::Rect> frames = red_frames(sheet);
  ASSERT_EQ(frames.size(), 1U);
  EXPECT_EQ(frames.front().size(), cv::Size(168, 168));
  cv::Mat picture;
  cv::cvtColor(report.samples[1].image, picture, cv::COLOR_GRAY2BGR);
  EXPECT_TRUE(same_pixels(inside(sheet, frames.front()), picture));
}

TEST(DrawContactSheet, SaysUnderTheFrameWhatIsTheMatter) {
  SampleReport report = report_of({"front"});
  report.findings = {{FindingKind::kOutlier, "", {0}}};
  const cv::Mat stranger = draw_contact_sheet(report);
  report.findings = {{FindingKind::kNearCopy, "", {0}}};
  const cv::Mat copy = draw_contact_sheet(report);
  const cv::Rect frame = red_frames(copy).front();
  std::vector<cv::Point> differences;
  cv::findNonZero(differing_pixels(stranger, copy), differences);
  ASSERT_FALSE(differences.empty());
  EXPECT_GT(cv::boundingRect(differences).y, frame.br().y);
  EXPECT_LT(cv::boundingRect(differences).br().x, frame.x + 208);
}

TEST(DrawContactSheet, FramesFilesWithoutAPicture) {
  SampleReport report = report_of({"front"});
  report.samples.front().image.release();
  report.findings = {{FindingKind::kUndecodable, "", {0}}};
  const cv::Mat sheet = draw_contact_sheet(report);
  const cv::Mat ground(160, 160, CV_8UC3, palette::kPictureGround);
  EXPECT_TRUE(same_pixels(inside(sheet, red_frames(sheet).front()), ground));
}

TEST(DrawContactSheet, PutsTheStagesBelowEachOther) {
  const cv::Mat sheet = draw_contact_sheet(report_of({"right", "front", "left", "front"}));
  const cv::Rect right = place_of(sheet, 52);
  const cv::Rect front = place_of(sheet, 54);
  const cv::Rect left = place_of(sheet, 56);
  const cv::Rect second_front = place_of(sheet, 58);
  for (const cv::Rect& place : {front, left, right, second_front}) {
    EXPECT_EQ(place.size(), cv::Size(160, 160));
  }
  EXPECT_LT(front.br().y, left.y);
  EXPECT_LT(left.br().y, right.y);
  EXPECT_EQ(second_front.y, front.y);
  EXPECT_LT(front.br().x, second_front.x);
}

TEST(DrawContactSheet, KeepsManySamplesApart) {
  SampleReport report = report_of(std::vector<std::string>(60, "front"));
  const cv::Mat sheet = draw_contact_sheet(report);
  for (int i = 1; i <= 60; ++i) {
    EXPECT_EQ(place_of(sheet, 50 + 2 * i).size(), cv::Size(160, 160)) << i;
  }
}

TEST(DrawContactSheet, KeepsLongAndForeignNamesInTheirCell) {
  SampleReport report = report_of({"front", "front"});
  const cv::Mat usual = draw_contact_sheet(report);
  report.samples[0].path = "front/" + std::string(200, 'W') + "\x1B\xFF\xE2\x82\xAC.png";
  const cv::Mat sheet = draw_contact_sheet(report);
  ASSERT_EQ(sheet.size(), usual.size());
  std::vector<cv::Point> differences;
  cv::findNonZero(differing_pixels(sheet, usual), differences);
  ASSERT_FALSE(differences.empty());
  EXPECT_LT(cv::boundingRect(differences).br().x, place_of(sheet, 54).x);
}

// ---- The file.

class WriteContactSheet : public ::testing::Test {
 protected:
  WriteContactSheet() {
    set_.add("front/a.png", shifted_face(0));
    report_ = set_.report();
  }
  std::string refusal(const fs::path& file) {
    std::string complaint;
    EXPECT_FALSE(write_contact_sheet(report_, file.string(), complaint)) << file;
    return complaint;
  }

  SampleSet set_;
  SampleReport report_;
};

TEST_F(WriteContactSheet, WritesThePictureForItsOwnerAlone) {
  const fs::path file = set_.outside() / "sheet.png";
  std::string complaint;
  ASSERT_TRUE(write_contact_sheet(report_, file.string(), complaint)) << complaint;
  EXPECT_EQ(complaint, "");
  EXPECT_TRUE(
      same_pixels(cv::imread(file.string(), cv::IMREAD_UNCHANGED), draw_contact_sheet(report_)));
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(WriteContactSheet, ReplacesAnEarlierSheet) {
  const fs::path file = set_.outside() / "sheet.png";
  write_text(file, "earlier");
  std::string complaint;
  EXPECT_TRUE(write_contact_sheet(report_, file.string(), complaint)) << complaint;
  EXPECT_FALSE(cv::imread(file.string()).empty());
}

TEST_F(WriteContactSheet, NeverReplacesASample) {
  const fs::path sample = set_.place("front/a.png");
  const std::string before = read_text(sample);
  EXPECT_EQ(refusal(sample),
            sample.string() + " is a sample. The contact sheet must not replace it.");
  const fs::path elsewhere = set_.outside() / "linked.png";
  fs::rename(sample, elsewhere);
  fs::create_symlink(elsewhere, sample);
  EXPECT_EQ(refusal(elsewhere),
            elsewhere.string() + " is a sample. The contact sheet must not replace it.");
  EXPECT_EQ(read_text(elsewhere), before);
}

TEST_F(WriteContactSheet, NeverMakesASample) {
  fs::create_directory_symlink(set_.options.samples_dir, set_.outside() / "link");
  for (const fs::path& file : {set_.place("new.png"), set_.place("front/new.png"),
                               set_.outside() / "link" / "front" / "new.png",
                               set_.outside() / "samples" / ".." / "samples" / "new.png"}) {
    EXPECT_EQ(refusal(file),
              file.string() + " would be taken for a sample. Put the contact sheet elsewhere.");
    EXPECT_FALSE(fs::exists(file)) << file;
  }
}

TEST_F(WriteContactSheet, TakesAFolderBesideTheSamplesWithALongerName) {
  const fs::path file = set_.options.samples_dir + "-sheets/new.png";
  fs::create_directories(file.parent_path());
  std::string complaint;
  EXPECT_TRUE(write_contact_sheet(report_, file.string(), complaint)) << complaint;
}

TEST_F(WriteContactSheet, SaysWhyItCannotBeWritten) {
  const fs::path lost = set_.outside() / "missing" / "sheet.png";
  EXPECT_EQ(refusal(lost), "The contact sheet cannot be written to " + lost.string() +
                               ": No such file or directory.");
  EXPECT_EQ(refusal(set_.outside()),
            set_.outside().string() + " is not a file that a contact sheet can replace.");
  const fs::path pipe = set_.outside() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(refusal(pipe), pipe.string() + " is not a file that a contact sheet can replace.");
}

TEST_F(WriteContactSheet, HasNothingToShowWithoutSamples) {
  report_ = SampleReport();
  report_.complaint = "There are no samples in x.";
  EXPECT_EQ(refusal(set_.outside() / "sheet.png"), "There are no samples in x.");
}

}  // namespace
}  // namespace halcyra
