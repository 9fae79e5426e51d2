// Whether the three pictures of a set show the same room.
#include "virtual_kinect/room/renderer.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room/pinhole.hpp"
#include "virtual_kinect/room/story.hpp"

namespace halcyra::virtual_kinect::room {
namespace {

constexpr std::uint64_t kEmptyRoom = 0;
constexpr std::uint64_t kOwnerAlone = 7 * kSetsPerSecond;
constexpr std::uint64_t kThreePeople = 53 * kSetsPerSecond;
constexpr std::uint64_t kGuestNear = 24 * kSetsPerSecond;
constexpr std::uint64_t kGuestFar = 30 * kSetsPerSecond;
constexpr std::uint64_t kPeople[] = {kOwnerAlone, 18 * kSetsPerSecond, kGuestNear,
                                     kGuestFar,   36 * kSetsPerSecond, kThreePeople};

constexpr float kHeadRadius = 125.0F;  // from between the ears to the tip of the nose
constexpr float kNoise = 20.0F;        // three deviations at 2.5 m
constexpr float kPersonStep = 120.0F;  // a person is at least this much nearer than the room behind
constexpr int kColorStep = 10;         // grey levels; noise alone stays below it

class RendererTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { renderer_ = new Renderer(kUsualSeed); }
  static void TearDownTestSuite() { delete renderer_; }

  static cv::Mat color(std::uint64_t set) { return renderer_->render_color(moment_at(set), set); }
  static cv::Mat depth(std::uint64_t set) {
    return renderer_->render_infrared_and_depth(moment_at(set), set).depth;
  }
  static cv::Mat infrared(std::uint64_t set) {
    return renderer_->render_infrared_and_depth(moment_at(set), set).infrared;
  }

  // Where a set's depth is nearer than the empty room's.
  static cv::Mat people_in_depth(std::uint64_t set) {
    const cv::Mat measured = depth(set);
    return (measured > 0) & (measured + kPersonStep < depth(kEmptyRoom));
  }

  // Where a set's colours differ from the empty room's. Shadows fall only on the floor, which is
  // left out.
  static cv::Mat people_in_color(std::uint64_t set) {
    cv::Mat difference;
    cv::absdiff(color(set), color(kEmptyRoom), difference);
    std::vector<cv::Mat> channels;
    cv::split(difference, channels);
    const cv::Mat greatest = cv::max(cv::max(channels[0], channels[1]), channels[2]);
    cv::Mat people = greatest > kColorStep;
    people.rowRange(kFirstFloorRow, people.rows).setTo(0);
    return people;
  }

  // The first row of the colour picture that shows the floor.
  static constexpr int kFirstFloorRow = 880;

  static Renderer* renderer_;
};

Renderer* RendererTest::renderer_ = nullptr;

cv::Point place(const Pinhole& camera, const Vec3& point) {
  return {static_cast<int>(camera.column(point)), static_cast<int>(camera.row(point))};
}

// The pixel of `to` that sees what the middle of a pixel of `from` sees.
cv::Point same_ray(const Pinhole& from, const cv::Point& pixel, const Pinhole& to) {
  return place(to,
               from.ray(static_cast<float>(pixel.x) + 0.5F, static_cast<float>(pixel.y) + 0.5F));
}

bool is_inside(const cv::Mat& picture, const cv::Point& pixel) {
  return cv::Rect({}, picture.size()).contains(pixel);
}

// Of the pixels of `mask` that the other camera sees, the share that is set in `other` too.
double share_seen(const cv::Mat& mask, const Pinhole& camera, const cv::Mat& other,
                  const Pinhole& other_camera, int first_row_of_color) {
  std::vector<cv::Point> pixels;
  cv::findNonZero(mask, pixels);
  int seen = 0;
  int compared = 0;
  for (const cv::Point& pixel : pixels) {
    const cv::Point there = same_ray(camera, pixel, other_camera);
    const cv::Point in_color = same_ray(camera, pixel, kColorCamera);
    if (is_inside(other, there) && in_color.y < first_row_of_color) {
      ++compared;
      seen += other.at<uchar>(there) != 0 ? 1 : 0;
    }
  }
  EXPECT_GT(compared, 1000);
  return static_cast<double>(seen) / compared;
}

// The infrared light in an area, without what the camera adds everywhere.
double light_in(const cv::Mat& infrared, const cv::Rect& area) {
  return cv::mean(infrared(area))[0] - 18.0;
}

cv::Rect around(const cv::Point& middle, int reach) {
  return {middle.x - reach, middle.y - reach, 2 * reach + 1, 2 * reach + 1};
}

TEST_F(RendererTest, MeasuresHeadsWhereTheStoryPutsThem) {
  for (const std::uint64_t set : kPeople) {
    const cv::Mat measured = depth(set);
    for (const Presence& presence : moment_at(set).people) {
      const Vec3 head = head_position(look_of(presence.person).body, presence.posture);
      const cv::Point pixel = place(kDepthCamera, head);
      if (!is_inside(measured, pixel)) continue;
      const float found = measured.at<float>(pixel);
      EXPECT_GT(found, head.z - kHeadRadius - kNoise) << "set " << set;
      EXPECT_LT(found, head.z) << "set " << set;
    }
  }
}

// People may wear the colour of what is behind them, so a few pixels may be missing.
TEST_F(RendererTest, ShowsInColorWhomDepthMeasures) {
  for (const std::uint64_t set : kPeople) {
    EXPECT_GT(share_seen(people_in_depth(set), kDepthCamera, people_in_color(set), kColorCamera,
                         kFirstFloorRow),
              0.95)
        << "set " << set;
  }
}

// Depth is not measured at outlines, which costs a pixel all around.
TEST_F(RendererTest, MeasuresInDepthWhomColorShows) {
  for (const std::uint64_t set : kPeople) {
    cv::Mat people;
    cv::dilate(people_in_depth(set), people, cv::Mat::ones(5, 5, CV_8U));
    EXPECT_GT(share_seen(people_in_color(set), kColorCamera, people, kDepthCamera, kFirstFloorRow),
              0.95)
        << "set " << set;
  }
}

TEST_F(RendererTest, GetsLessInfraredBackFromFartherAway) {
  const auto chest = [](std::uint64_t set) {
    const Presence guest = moment_at(set).people.front();
    const Vec3 head = head_position(look_of(guest.person).body, guest.posture);
    return head + Vec3{0.0F, 330.0F, 0.0F};
  };
  const Vec3 near = chest(kGuestNear);
  const Vec3 far = chest(kGuestFar);
  const double near_light = light_in(infrared(kGuestNear), around(place(kDepthCamera, near), 4));
  const double far_light = light_in(infrared(kGuestFar), around(place(kDepthCamera, far), 4));
  const double falloff = std::pow(static_cast<double>(far.z / near.z), 2.0);
  EXPECT_NEAR(near_light / far_light, falloff, 0.25 * falloff);
}

// Compares two places of the back wall, one above the bookshelf and one in the corner of the room.
TEST_F(RendererTest, GetsLessInfraredFromTheEdgeOfThePicture) {
  const cv::Mat empty = infrared(kEmptyRoom);
  const double middle = light_in(empty, around(place(kDepthCamera, {0, -900, 4000}), 6));
  const double edge = light_in(empty, around(place(kDepthCamera, {2500, -900, 4000}), 6));
  EXPECT_LT(edge, 0.7 * middle);
  EXPECT_GT(edge, 0.3 * middle);
}

TEST_F(RendererTest, MeasuresNothingAtOutlines) {
  const cv::Mat empty = depth(kEmptyRoom);
  for (const std::uint64_t set : kPeople) {
    const cv::Mat people = people_in_depth(set);
    cv::Mat wider;
    cv::dilate(people, wider, cv::Mat::ones(5, 5, CV_8U));
    const cv::Mat lost = wider & ~people & (depth(set) == 0) & (empty > 0);
    EXPECT_GT(cv::countNonZero(lost), 200) << "set " << set;
  }
}

TEST_F(RendererTest, MeasuresWithinTheSensorsRange) {
  for (const std::uint64_t set : kPeople) {
    const cv::Mat measured = depth(set);
    const cv::Mat wrong = (measured != 0) & ((measured < 500) | (measured > 4500));
    EXPECT_EQ(cv::countNonZero(wrong), 0) << "set " << set;
    EXPECT_EQ(cv::countNonZero(measured.col(0)), 0);
    EXPECT_EQ(cv::countNonZero(measured.col(measured.cols - 1)), 0);
  }
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
