#include "enroll/sample_taker.hpp"

#include <algorithm>

namespace halcyra {
namespace {

using std::chrono::milliseconds;

// Time to look up from the keyboard.
constexpr milliseconds kTimeToGetReady(3000);
// A stream of 30 pictures a second has stopped if none has come for that long.
constexpr milliseconds kPatienceWithSensor(1000);
// Long enough for the head to have moved a little.
constexpr milliseconds kTimeBetweenSamples(400);

bool passed(const std::optional<EnrolmentTime>& since, milliseconds time, EnrolmentTime now) {
  return !since || now - *since >= time;
}

std::int32_t seconds_to_wait(const EnrolmentProgress& progress, EnrolmentTime now) {
  if (passed(progress.first_picture, kTimeToGetReady, now)) return 0;
  const auto left = *progress.first_picture + kTimeToGetReady - now;
  return static_cast<std::int32_t>(std::chrono::ceil<std::chrono::seconds>(left).count());
}

Obstacle obstacle_of_run(const EnrolmentProgress& progress, EnrolmentTime now) {
  if (!progress.write_failure.empty()) return Obstacle::kWriteFailed;
  if (!asked_pose(progress)) return Obstacle::kDone;
  if (passed(progress.last_picture, kPatienceWithSensor, now)) return Obstacle::kNoPicture;
  if (progress.paused) return Obstacle::kPaused;
  if (seconds_to_wait(progress, now) > 0) return Obstacle::kGettingReady;
  return Obstacle::kNone;
}

Obstacle obstacle_of_face(const EnrolmentProgress& progress, const Observation& observation) {
  if (observation.faces.empty()) return Obstacle::kNobody;
  if (observation.faces.size() > 1) return Obstacle::kSeveralPeople;
  const FaceInfo& face = observation.faces.front();
  if (face.quality != "accepted") return Obstacle::kPoorQuality;
  const std::optional<Pose> pose = pose_found_by(face.detector_type);
  if (!pose || !is_wanted(progress, *pose)) return Obstacle::kPoseNotWanted;
  if (observation.near_copy) return Obstacle::kNearCopy;
  return Obstacle::kNone;
}

}  // namespace

std::optional<std::size_t> chosen_face(const std::vector<FaceInfo>& faces) {
  const auto largest = std::max_element(
      faces.begin(), faces.end(),
      [](const FaceInfo& one, const FaceInfo& other) { return one.box.area() < other.box.area(); });
  if (largest == faces.end()) return std::nullopt;
  return static_cast<std::size_t>(largest - faces.begin());
}

Judgement judge(const EnrolmentProgress& progress, const Observation& observation,
                EnrolmentTime now) {
  Judgement judgement;
  judgement.seconds_to_wait = seconds_to_wait(progress, now);
  judgement.obstacle = obstacle_of_run(progress, now);
  if (judgement.obstacle == Obstacle::kNone) {
    judgement.obstacle = obstacle_of_face(progress, observation);
  }
  if (judgement.obstacle == Obstacle::kNone &&
      !passed(progress.last_taken, kTimeBetweenSamples, now)) {
    judgement.obstacle = Obstacle::kJustTaken;
  }
  return judgement;
}

bool face_is_good(const Judgement& judgement) {
  return judgement.obstacle == Obstacle::kNone || judgement.obstacle == Obstacle::kJustTaken;
}

}  // namespace halcyra
