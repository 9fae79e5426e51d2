// The report on pictures of the rendered room's people.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "enroll/sample_report.hpp"
#include "tests/enroll/sample_set.hpp"
#include "virtual_kinect/room/pinhole.hpp"
#include "virtual_kinect/room/renderer.hpp"

namespace halcyra {
namespace {

namespace room = virtual_kinect::room;
using Texts = std::vector<std::string>;

// What a person does at each picture: small differences, as between pictures of one evening.
room::Posture posture_at(int number, float head_yaw) {
  room::Posture posture;
  posture.x = -60.0F + 12.0F * static_cast<float>(number);
  posture.z = 1500.0F + 10.0F * static_cast<float>(number);
  posture.body_yaw = 0.3F * head_yaw;
  posture.head_yaw = head_yaw + static_cast<float>(number % 3) - 1.0F;
  posture.head_pitch = static_cast<float>(number % 2);
  return posture;
}

// The square around the head, so that no cascade decides what the picture shows.
cv::Rect head_in_picture(room::Person person, const room::Posture& posture) {
  const float scale = room::kColorCamera.focal / posture.z;
  const room::Vec3 head = room::head_position(room::look_of(person).body, posture);
  const auto side = static_cast<int>(195.0F * scale);
  const auto column = static_cast<int>(room::kColorCamera.column({posture.x, 0.0F, posture.z}));
  const auto row = static_cast<int>(room::kColorCamera.row({0.0F, head.y, posture.z}));
  return {column - side / 2, row - side / 2, side, side};
}

// `noise` is that of the picture and changes nothing else.
cv::Mat face_of(room::Person person, int number, float head_yaw, std::uint64_t noise) {
  static const room::Renderer renderer(room::kUsualSeed);
  const room::Posture posture = posture_at(number, head_yaw);
  room::Moment moment;
  moment.people = {{person, posture}};
  moment.light = {1.0F, 0.55F};
  cv::Mat grey;
  cv::cvtColor(renderer.render_color(moment, noise), grey, cv::COLOR_BGRA2GRAY);
  return grey(head_in_picture(person, posture)).clone();
}

class RenderedSamples : public ::testing::Test {
 protected:
  void add(const std::string& stage, room::Person person, int count, float head_yaw) {
    for (int number = 0; number < count; ++number) {
      const std::string name = person == room::Person::kOwner ? "owner" : "guest";
      set_.add(stage + "/" + name + std::to_string(number) + ".png",
               face_of(person, number, head_yaw, static_cast<std::uint64_t>(number)));
    }
  }
  // The files of all findings that doubt the owner.
  Texts doubtful() const {
    const SampleReport report = set_.report();
    Texts names;
    for (const Finding& finding : report.findings) {
      if (finding.kind != FindingKind::kOutlier && finding.kind != FindingKind::kDivided) continue;
      for (const std::size_t index : finding.samples) names.push_back(report.samples[index].path);
    }
    return names;
  }

  SampleSet set_;
};

TEST_F(RenderedSamples, OfTheOwnerAloneRaiseNoDoubt) {
  add("front", room::Person::kOwner, 6, 0.0F);
  add("left", room::Person::kOwner, 5, -56.0F);
  EXPECT_EQ(doubtful(), Texts{});
}

TEST_F(RenderedSamples, OfAGuestAreNamedAndNoneOfTheOwner) {
  add("front", room::Person::kOwner, 6, 0.0F);
  add("front", room::Person::kGuest, 3, 0.0F);
  add("left", room::Person::kOwner, 5, -56.0F);
  add("left", room::Person::kGuest, 1, -56.0F);
  EXPECT_EQ(doubtful(),
            (Texts{"front/guest0.png", "front/guest1.png", "front/guest2.png", "left/guest0.png"}));
}

TEST_F(RenderedSamples, OfAsManyPicturesOfAGuestAreDivided) {
  add("front", room::Person::kOwner, 3, 0.0F);
  add("front", room::Person::kGuest, 3, 0.0F);
  EXPECT_EQ(doubtful(), (Texts{"front/guest0.png", "front/guest1.png", "front/guest2.png",
                               "front/owner0.png", "front/owner1.png", "front/owner2.png"}));
}

// Only the noise differs, as between two frames of a person who holds still.
TEST_F(RenderedSamples, OfOneMomentAreNearCopies) {
  set_.add("front/1.png", face_of(room::Person::kOwner, 0, 0.0F, 1));
  set_.add("front/2.png", face_of(room::Person::kOwner, 0, 0.0F, 2));
  const SampleReport report = set_.report();
  ASSERT_EQ(report.findings.front().kind, FindingKind::kNearCopy);
  EXPECT_EQ(report.findings.front().samples, (std::vector<std::size_t>{0, 1}));
  EXPECT_GT(report.samples.front().nearest->distance, 0.0) << "the noise is the same";
}

}  // namespace
}  // namespace halcyra
