// What a run of halcyra-enroll takes, and what the dashboard makes of it.
#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "enroll/face_search.hpp"
#include "tests/e2e/enrolment/enrolment_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class TakenSamples : public EnrolmentRun {
 protected:
  TakenSamples() {
    std::string complaint;
    EXPECT_TRUE(load_face_search(detectors_, Options(), complaint)) << complaint;
  }

  // The faces that the program finds in the picture.
  std::vector<FaceInfo> faces_in(const cv::Mat& picture) {
    return search_faces(detectors_, grey(picture), Options());
  }

  // The crop of the only face.
  cv::Mat crop_of(const cv::Mat& picture) {
    return face_crop(grey(picture), faces_in(picture).at(0));
  }

  static cv::Mat grey(const cv::Mat& picture) {
    cv::Mat result;
    cv::cvtColor(picture, result, cv::COLOR_BGR2GRAY);
    return result;
  }

  // How many samples are exactly the crop of one of the pictures.
  int samples_cropped_from(const std::vector<cv::Mat>& pictures) {
    std::vector<cv::Mat> crops;
    for (const cv::Mat& picture : pictures) crops.push_back(crop_of(picture));
    int count = 0;
    for (const std::string& name : samples()) {
      const cv::Mat sample = cv::imread(stage_.samples_folder() / name, cv::IMREAD_UNCHANGED);
      count += static_cast<int>(std::any_of(crops.begin(), crops.end(), [&](const cv::Mat& crop) {
        return sample.type() == CV_8UC1 && sample.size() == crop.size() &&
               cv::norm(sample, crop, cv::NORM_INF) == 0.0;
      }));
    }
    return count;
  }

  FaceDetectors detectors_;
};

TEST_F(TakenSamples, ComeFromPicturesThatShowWhatTheirNamesSay) {
  const std::pair<std::string, std::string> detectors[] = {
      {"front", "frontal"}, {"left", "profile_left"}, {"right", "profile_right"}};
  for (const auto& [pose, detector] : detectors) {
    for (int number = 0; number < 4; ++number) {
      SCOPED_TRACE(pose + "-" + std::to_string(number));
      const auto faces = faces_in(enrolment_picture(pose + "-" + std::to_string(number)));
      ASSERT_EQ(faces.size(), 1U);
      EXPECT_EQ(faces[0].detector_type, detector);
      EXPECT_EQ(faces[0].quality, "accepted");
    }
  }
  ASSERT_EQ(faces_in(enrolment_picture("far-0")).size(), 1U);
  EXPECT_EQ(faces_in(enrolment_picture("far-0"))[0].quality, "too_small");
  EXPECT_EQ(faces_in(side_by_side("front-0", "front-2")).size(), 2U);
}

TEST_F(TakenSamples, AreOfAllPoses) {
  record_all_poses();
  start({"--per-pose", "2"});
  EXPECT_TRUE(shows("Done"));
  const std::vector<std::string> files = samples();
  ASSERT_EQ(files.size(), 6U);
  for (std::size_t i = 0; i < files.size(); ++i) {
    const std::string stage = i < 2 ? "front/" : i < 4 ? "left/" : "right/";
    EXPECT_EQ(files[i].rfind(stage, 0), 0U) << files[i];
  }
  EXPECT_EQ(samples_cropped_from(pictures_of_all_poses()), 6);
  EXPECT_EQ(lines_that_begin("taken "), 6);
  ASSERT_TRUE(quit());
  EXPECT_EQ(lines_that_begin("Taken: front 2, left 2, right 2"), 1);
  EXPECT_EQ(program_->errors(), "");
}

TEST_F(TakenSamples, AreJudgedAtTheEndAsInAReport) {
  record_all_poses();
  for (const std::string per_pose : {"1", "3"}) {
    SCOPED_TRACE(per_pose);
    start({"--per-pose", per_pose});
    EXPECT_TRUE(shows("Done"));
    const std::optional<ProcessEnd> end = quit();
    ASSERT_TRUE(end);
    const std::string output = program_->output();
    EXPECT_EQ(run_to_end(start_of({"--report", "--per-pose", per_pose})).exit_status,
              end->exit_status);
    const std::string report = program_->output();
    EXPECT_FALSE(report.empty());
    EXPECT_NE(output.find("\n" + report), std::string::npos) << output << report;
  }
}

TEST_F(TakenSamples, AreToBeMadePrivate) {
  const fs::path folder = stage_.working_folder() / "the owner's";
  fs::create_directories(folder);
  const std::string warning = "This makes them private: chmod -R go= 'the owner'\\''s'\n";
  record(enrolment_picture("far-0"));
  for (const bool open_to_others : {true, false}) {
    fs::permissions(folder, open_to_others ? fs::perms(0755) : fs::perms(0700));
    start({"--samples-dir", folder.filename()});
    ASSERT_TRUE(quit());
    EXPECT_EQ(program_->output().find(warning) != std::string::npos, open_to_others);
  }
}

TEST_F(TakenSamples, AreToldOneByOne) {
  record(enrolment_picture("front-0"));
  start({"--per-pose", "1"});
  EXPECT_TRUE(shows("Turn your head until the camera sees your left cheek"));
  ASSERT_EQ(samples().size(), 1U);
  EXPECT_EQ(lines_that_begin("taken " + samples()[0] + " (1 of 1)"), 1);
}

TEST_F(TakenSamples, AreRecognisedByTheDashboard) {
  record_all_poses();
  start({"--per-pose", "4"});
  EXPECT_TRUE(says("taken front/"));
  EXPECT_TRUE(says("taken left/"));
  EXPECT_TRUE(says("taken right/"));
  ASSERT_TRUE(quit());
  ProgramStart dashboard = start_of({"--smoke", "--frames", "48"});
  dashboard.executable = HALCYRA_PROGRAM;
  EXPECT_EQ(run_to_end(dashboard).exit_status, 0);
  const auto summary = summary_values(program_->output());
  EXPECT_EQ(summary.at("samples_loaded"), std::to_string(samples().size()));
  EXPECT_GT(std::stoi(summary.at("cc_confirmed_dorran_predictions")), 0);
}

TEST_F(TakenSamples, AreNoNearCopies) {
  record(enrolment_picture("front-0"));
  start({"--per-pose", "5"});
  EXPECT_TRUE(says("taken front/"));
  EXPECT_TRUE(shows("Move a little"));
  EXPECT_EQ(samples().size(), 1U);
  ASSERT_TRUE(quit());

  // Nor copies of those that an earlier run has taken.
  start({"--per-pose", "5"});
  EXPECT_TRUE(shows("Move a little"));
  EXPECT_EQ(samples().size(), 1U);
  EXPECT_EQ(lines_that_begin("taken "), 0);
}

TEST_F(TakenSamples, AreOfOnePersonOnly) {
  record(side_by_side("front-0", "front-2"));
  record(side_by_side("front-1", "front-3"));
  start({});
  EXPECT_TRUE(shows("Only one person, please"));
  EXPECT_TRUE(shows_new_pictures(10));
  EXPECT_TRUE(samples().empty());
}

TEST_F(TakenSamples, AreOfNobodyFarAway) {
  record(enrolment_picture("far-0"));
  start({});
  EXPECT_TRUE(shows("Come closer"));
  EXPECT_TRUE(samples().empty());
}

}  // namespace
}  // namespace halcyra
