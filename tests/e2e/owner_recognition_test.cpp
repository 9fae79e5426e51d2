// A photograph of a real face in front of the sensor, from the picture to the summary.
#include <cstdio>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/sensor_run.hpp"

namespace halcyra {
namespace {

using Summary = std::map<std::string, std::string>;

// The face in it is about 100 pixels wide and centred at about (225, 115).
const cv::Mat& photograph() {
  static const cv::Mat picture = cv::imread(HALCYRA_TEST_DATA "/astronaut.png");
  return picture;
}

// The head and shoulders; the face is centred at about (165, 105).
cv::Mat portrait() { return photograph()(cv::Rect(60, 10, 320, 240)).clone(); }

cv::Mat twice(const cv::Mat& picture) {
  cv::Mat both;
  cv::hconcat(picture, picture, both);
  return both;
}

cv::Rect face_box(const Summary& summary) {
  cv::Rect box;
  if (std::sscanf(summary.at("cc_last_face_box").c_str(), "%d,%d,%dx%d", &box.x, &box.y, &box.width,
                  &box.height) != 4) {
    return {};
  }
  return box;
}

// The whole panel, filled by two messages that every turn logs.
std::vector<std::string> repeated(const std::string& newest, const std::string& older) {
  std::vector<std::string> messages;
  for (int line = 0; line < 11; ++line) messages.push_back(line % 2 == 0 ? newest : older);
  return messages;
}

class RealFace : public SensorRun {
 protected:
  void add_set(const cv::Mat& color) {
    recording_.add_color(color);
    recording_.add_infrared(infrared_halves());
    recording_.add_depth(depth_halves());
  }

  // Where the program finds the face in the portrait.
  cv::Rect found_face() { return face_box(summary_of_run({"--smoke", "--frames", "1"})); }

  void enroll(const std::string& file, const cv::Mat& sample) {
    const std::filesystem::path path = stage_.samples_folder() / file;
    std::filesystem::create_directories(path.parent_path());
    ASSERT_TRUE(cv::imwrite(path.string(), sample));
  }

  // The owner from two sides: as the camera sees the face, and a little beside it.
  void enroll_owner(const cv::Rect& face) {
    enroll("front/one.png", portrait()(face));
    enroll("left/one.png", portrait()(face - cv::Point(8, 0)));
  }

  // One person in the combo view, once the picture and the modes have settled.
  static ExpectedDashboard one_person_scene(const FaceInfo& face) {
    ExpectedDashboard scene = running_scene("combo");
    scene.color = portrait();
    scene.faces = {face};
    RoomAwareness& room = scene.status.room;
    room.people = 1;
    room.faces = 1;
    room.fallback = "face";
    room.view_mode = "follow";
    room.reason = "following face center because skeleton is unavailable";
    return scene;
  }

  static FaceInfo accepted_face(const cv::Rect& box) {
    FaceInfo face;
    face.box = box;
    face.person_id = 1;
    face.detector_type = "frontal";
    face.quality = "accepted";
    return face;
  }
};

TEST_F(RealFace, WithoutSamplesIsNobodyInParticular) {
  add_set(portrait());
  Summary summary = summary_of_run({"--smoke", "--frames", "5"});
  EXPECT_EQ(summary["frames"], "5");
  EXPECT_EQ(summary["samples_loaded"], "0");
  EXPECT_EQ(summary["cc_last_detector_type"], "frontal");
  EXPECT_EQ(summary["cc_last_quality"], "accepted");
  EXPECT_EQ(summary["cc_last_label"], "Unknown");
  EXPECT_EQ(summary["cc_last_stage"], "unknown");
  EXPECT_EQ(summary["cc_last_confidence"], "0");
  // An accepted face without a model is counted nowhere.
  EXPECT_EQ(summary["cc_unknown_predictions"], "0");
  EXPECT_EQ(summary["cc_candidate_dorran_predictions"], "0");
  EXPECT_EQ(summary["cc_confirmed_dorran_predictions"], "0");
  const cv::Rect box = face_box(summary);
  EXPECT_TRUE(box.contains(cv::Point(165, 105))) << box;
  EXPECT_LT(box.width, 160);
}

TEST_F(RealFace, OfTheOwnerIsConfirmedFromTheFifthFrame) {
  add_set(portrait());
  enroll_owner(found_face());
  Summary summary = summary_of_run({"--smoke", "--frames", "60"});
  EXPECT_EQ(summary["frames"], "60");
  EXPECT_EQ(summary["kinect"], "connected");
  EXPECT_EQ(summary["rgb"], "OK");
  EXPECT_EQ(summary["ir"], "OK");
  EXPECT_EQ(summary["depth"], "OK");
  EXPECT_EQ(summary["samples_loaded"], "2");
  EXPECT_EQ(summary["cc_unknown_predictions"], "0");
  EXPECT_EQ(summary["cc_candidate_dorran_predictions"], "4");
  EXPECT_EQ(summary["cc_confirmed_dorran_predictions"], "56");
  EXPECT_EQ(summary["cc_last_label"], "ConfirmedDorran");
  EXPECT_EQ(summary["cc_last_stage"], "front");
  EXPECT_LE(std::stod(summary["cc_last_confidence"]), 55.0);
}

TEST_F(RealFace, OfSomebodyElseIsUnknown) {
  add_set(portrait());
  cv::Mat noise(160, 160, CV_8UC1);
  cv::theRNG().state = 1;
  cv::randu(noise, 0, 256);
  enroll("noise.pgm", noise);
  Summary summary = summary_of_run({"--smoke", "--frames", "6"});
  EXPECT_EQ(summary["samples_loaded"], "1");
  EXPECT_EQ(summary["cc_unknown_predictions"], "6");
  EXPECT_EQ(summary["cc_last_label"], "Unknown");
  EXPECT_EQ(summary["cc_last_stage"], "flat");
  EXPECT_GT(std::stod(summary["cc_last_confidence"]), 60.0);
}

TEST_F(RealFace, IsFoundInALargeFrame) {
  cv::Mat frame(720, 1280, CV_8UC3, cv::Scalar::all(90));
  photograph().copyTo(frame(cv::Rect(400, 100, 512, 512)));
  add_set(frame);
  const cv::Rect box = found_face();
  EXPECT_TRUE(box.contains(cv::Point(625, 215))) << box;
  EXPECT_LT(box.width, 160);
}

TEST_F(RealFace, BadPicturesAreRejected) {
  cv::Mat small;
  cv::resize(portrait(), small, {}, 0.6, 0.6, cv::INTER_AREA);
  cv::Mat blurred;
  cv::GaussianBlur(portrait(), blurred, {}, 4.0);
  const std::vector<std::pair<std::string, cv::Mat>> pictures = {
      {"too_small", small},
      {"too_dark", portrait() * 0.15},
      {"too_bright", portrait() * 0.1 + cv::Scalar::all(225)},
      {"low_contrast", portrait() * 0.15 + cv::Scalar::all(100)},
      {"too_blurry", blurred}};
  for (const auto& [quality, picture] : pictures) {
    SCOPED_TRACE(quality);
    std::filesystem::remove_all(recording_.folder());
    recording_ = Recording(recording_.folder());
    recording_.set_device("pace: 0\n");
    add_set(picture);
    Summary summary = summary_of_run({"--smoke", "--frames", "3"});
    EXPECT_EQ(summary["cc_last_quality"], quality);
    EXPECT_EQ(summary["cc_unknown_predictions"], "3");
  }
}

TEST_F(RealFace, StylesLookForTheirPoseOnly) {
  add_set(portrait());
  for (const std::string style : {"profile_left", "profile_right"}) {
    SCOPED_TRACE(style);
    EXPECT_NE(summary_of_run({"--smoke", "--frames", "1", "--detector-type", style})
                  .at("cc_last_detector_type"),
              "frontal");
  }
  EXPECT_EQ(summary_of_run({"--smoke", "--frames", "1", "--detection-style", "frontal"})
                .at("cc_last_detector_type"),
            "frontal");
}

TEST_F(RealFace, IsNotLookedForWithoutTheFrontalCascade) {
  add_set(portrait());
  Summary summary = summary_of_run({"--smoke", "--frames", "3", "--cascade", "none.xml"});
  EXPECT_EQ(summary["frames"], "3");
  EXPECT_EQ(summary["cc_last_face_box"], "none");
}

TEST_F(RealFace, IsFoundWithoutTheProfileCascade) {
  add_set(portrait());
  EXPECT_EQ(summary_of_run({"--smoke", "--frames", "1", "--profile-cascade", "none.xml"})
                .at("cc_last_detector_type"),
            "frontal");
}

TEST_F(RealFace, MissingCascadesAndSamplesAreLogged) {
  DesktopRun run(stage_, {in_readable_window({"--no-camera", "--cascade", "none.xml",
                                              "--profile-cascade", "none.xml"})});
  ExpectedDashboard scene = camera_less_scene("combo");
  scene.messages = {"Wide room scan active",
                    "No person visible",
                    "No-camera mode active",
                    "Recognition samples unavailable",
                    "Profile cascade unavailable; profile detection fallback",
                    "Frontal cascade unavailable",
                    "Voice and Corvane status refreshed",
                    "Skeleton unavailable, face fallback active",
                    "Control Center launched"};
  EXPECT_EQ(run.wait_for(scene), "");
}

TEST_F(RealFace, OfTheOwnerWhoSpeaksIsShown) {
  add_set(portrait());
  const cv::Rect box = found_face();
  enroll_owner(box);
  // The face's centre is half a degree to two degrees right of the middle.
  stage_.write_event_file("{\"direction_angle_degrees\": 5.5, \"direction_confidence\": 0.9}\n");
  DesktopRun run(stage_, start({}));
  FaceInfo face = accepted_face(box);
  face.label = "ConfirmedDorran";
  face.color = cv::Scalar(80, 230, 120);
  ExpectedDashboard scene = one_person_scene(face);
  scene.status.voice.direction_angle = "5.5";
  scene.status.voice.direction_confidence = "0.9";
  scene.status.room.owner_visible = true;
  scene.status.room.target = "Dorran";
  scene.status.room.voice_match = "voice direction matched Dorran";
  scene.messages = repeated("Identity confirmed: Dorran via frontal", "Face detected: 1");
  EXPECT_EQ(run.wait_for(scene), "");
  run.desktop().press("b");
  scene.options.debug = true;
  EXPECT_EQ(run.wait_for(scene), "");
}

TEST_F(RealFace, OfAStrangerIsShown) {
  add_set(portrait());
  FaceInfo face = accepted_face(found_face());
  face.color = cv::Scalar(80, 160, 245);
  DesktopRun run(stage_, start({}));
  ExpectedDashboard scene = one_person_scene(face);
  scene.status.room.unknown_people = 1;
  scene.status.room.target = "Person 1";
  scene.messages = repeated("Unknown person visible", "Face detected: 1");
  EXPECT_EQ(run.wait_for(scene), "");
}

class RoomEvents : public RealFace {
 protected:
  // The dashboard once all sets have been seen and nobody is visible any more.
  std::string difference_after_stall(const std::string& view,
                                     const std::vector<std::string>& messages,
                                     const cv::Mat& last_picture) {
    recording_.set_device("pace: 0\nafter: stall\n");
    DesktopRun run(stage_, start({"--view", view}));
    ExpectedDashboard scene = running_scene(view);
    scene.status.kinect_message = "timeout waiting for Kinect frame";
    scene.color = last_picture;
    scene.messages = messages;
    return run.wait_for(scene);
  }
};

TEST_F(RoomEvents, OwnerComesAndGoes) {
  add_set(portrait());
  enroll_owner(found_face());
  EXPECT_EQ(
      difference_after_stall(
          "combo",
          {"No person visible", "Wide room scan active", "Dorran visible", "Person appeared: 1",
           "Face detected: 1", "RGB/IR/Depth streams started", "Kinect connected: 000000000000",
           "Dorran recognition samples loaded: 2", "Voice and Corvane status refreshed",
           "Skeleton unavailable, face fallback active", "Control Center launched"},
          portrait()),
      "");
}

TEST_F(RoomEvents, PersonEntersAnEmptyRoom) {
  add_set(empty_room_picture());
  add_set(portrait());
  EXPECT_EQ(
      difference_after_stall(
          "rgb",
          {"No person visible", "Unknown person visible", "Person appeared: 1", "Face detected: 1",
           "No person visible", "RGB/IR/Depth streams started", "Kinect connected: 000000000000",
           "Recognition samples unavailable", "Voice and Corvane status refreshed",
           "Skeleton unavailable, face fallback active", "Control Center launched"},
          portrait()),
      "");
}

TEST_F(RoomEvents, SecondPersonJoins) {
  add_set(portrait());
  add_set(twice(portrait()));
  EXPECT_EQ(difference_after_stall(
                "rgb",
                {"No person visible", "Room overview active", "Unknown person visible",
                 "Multiple people visible", "Face detected: 2", "Unknown person visible",
                 "Person appeared: 1", "Face detected: 1", "RGB/IR/Depth streams started",
                 "Kinect connected: 000000000000", "Recognition samples unavailable"},
                twice(portrait())),
            "");
}

TEST_F(RoomEvents, OneOfTwoLeaves) {
  add_set(twice(portrait()));
  add_set(portrait());
  EXPECT_EQ(difference_after_stall(
                "rgb",
                {"No person visible", "Unknown person visible", "Person disappeared",
                 "Face detected: 1", "Room overview active", "Unknown person visible",
                 "Person appeared: 2", "Face detected: 2", "RGB/IR/Depth streams started",
                 "Kinect connected: 000000000000", "Recognition samples unavailable"},
                portrait()),
            "");
}

}  // namespace
}  // namespace halcyra
