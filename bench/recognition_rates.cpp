// How often the dashboard recognises the owner of the rendered room, and takes others for him, by
// the number of samples. Prints a table; takes some minutes.
//
// The samples are taken from the room by the rules of halcyra-enroll: one face in view, accepted,
// not a near-copy, 0.4 seconds after the one before. Pictures in which the only face is not the
// owner's are passed over, as he would pause meanwhile. Then a minute of the room with other noise
// goes through the recognition of the dashboard, ten pictures a second.
#include <array>
#include <ctime>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "app/run_state/runtime_status.hpp"
#include "bench/room_faces.hpp"
#include "enroll/face_search.hpp"
#include "enroll/pose.hpp"
#include "enroll/sample_distances.hpp"
#include "enroll/sample_folder.hpp"
#include "enroll/sample_limits.hpp"
#include "face_pipeline/face_analysis.hpp"
#include "face_pipeline/owner_recognition.hpp"
#include "face_pipeline/quality_gate.hpp"
#include "tests/support/temporary_folder.hpp"

namespace halcyra {
namespace {

namespace room = virtual_kinect::room;

constexpr std::uint32_t kEnrolmentSeed = room::kUsualSeed;
constexpr std::uint32_t kViewedSeed = room::kUsualSeed + 13;
constexpr std::uint64_t kSetsBetweenSamples = 12;  // 0.4 seconds
constexpr std::uint64_t kSetsBetweenTurns = 3;
constexpr std::uint64_t kMostSets = 4 * room::kStorySets;
constexpr std::array<int, 4> kSamplesPerPose = {2, 5, 10, 20};

struct OwnerSample {
  Pose pose;
  cv::Mat crop;
};

struct Tally {
  int confirmed = 0;
  int candidates = 0;
  int unknown = 0;

  int faces() const { return confirmed + candidates + unknown; }
};

// The owner's accepted face, if it is the only one in view.
std::optional<OwnerSample> sample_in(const RoomPicture& picture) {
  if (picture.detections.size() != 1 || picture.people[0] != room::Person::kOwner) return {};
  const cv::Rect box = picture.detections[0].box & cv::Rect({}, picture.grey.size());
  const cv::Mat crop = picture.grey(box).clone();
  const std::optional<Pose> pose = pose_found_by(picture.detections[0].detector_type);
  if (!pose || quality_verdict(crop.size(), measure_face(crop)) != "accepted") return {};
  return OwnerSample{*pose, crop};
}

bool is_near_copy(const SampleDistances& samples, const cv::Mat& crop) {
  const std::optional<NearestSample> nearest = samples.nearest(crop);
  return nearest && nearest->distance < kNearCopyDistance;
}

// As many of each pose as asked for, in the order in which they are taken.
std::vector<OwnerSample> enrol(FaceDetectors& detectors, int per_pose) {
  const room::Renderer renderer(kEnrolmentSeed);
  std::vector<OwnerSample> taken;
  SampleDistances distances;
  std::map<Pose, int> counts;
  for (std::uint64_t set = room::kOpeningSet; set < kMostSets; set += kSetsBetweenSamples) {
    const std::optional<OwnerSample> sample = sample_in(look_at_room(renderer, detectors, set));
    if (!sample || counts[sample->pose] >= per_pose) continue;
    if (is_near_copy(distances, sample->crop)) continue;
    distances.add(sample->crop);
    ++counts[sample->pose];
    taken.push_back(*sample);
  }
  for (const Pose pose : kPoses) {
    std::cout << stage_name(pose) << ": " << counts[pose] << " samples\n";
  }
  return taken;
}

// The first `per_pose` of each pose, as a recogniser knows them.
RecognitionState recogniser_of(const std::vector<OwnerSample>& samples, int per_pose) {
  const TemporaryFolder folder;
  std::string complaint;
  prepare_sample_folder(folder.path(), complaint);
  std::map<Pose, int> counts;
  for (const OwnerSample& sample : samples) {
    if (counts[sample.pose]++ < per_pose) {
      write_sample(folder.path(), sample.pose, sample.crop, std::time(nullptr), complaint);
    }
  }
  Options options;
  options.samples_dir = folder.path().string();
  RecognitionState state;
  RuntimeStatus status;
  train_recognizer(state, options, status);
  return state;
}

std::string row_of(const std::optional<room::Person>& person, const std::string& detector_type) {
  if (!person) return "no face";
  const std::string pose = stage_name(pose_found_by(detector_type).value());
  switch (*person) {
    case room::Person::kOwner:
      return "owner, " + pose;
    case room::Person::kVisitor:
      return "visitor";
    case room::Person::kGuest:
      return "guest";
  }
  return "";
}

std::map<std::string, Tally> watch(const std::vector<RoomPicture>& minute, RecognitionState state) {
  std::map<std::string, Tally> tallies;
  RuntimeStatus status;
  for (const RoomPicture& picture : minute) {
    const std::vector<FaceInfo> faces =
        analyze_faces(picture.detections, picture.grey, state, status, {});
    for (std::size_t i = 0; i < faces.size(); ++i) {
      if (faces[i].quality != "accepted") continue;
      Tally& tally = tallies[row_of(picture.people[i], faces[i].detector_type)];
      if (faces[i].label == "ConfirmedDorran") {
        ++tally.confirmed;
      } else if (faces[i].label == "CandidateDorran") {
        ++tally.candidates;
      } else {
        ++tally.unknown;
      }
    }
  }
  return tallies;
}

std::vector<RoomPicture> viewed_minute(FaceDetectors& detectors) {
  const room::Renderer renderer(kViewedSeed);
  std::vector<RoomPicture> minute;
  for (std::uint64_t set = 0; set < room::kStorySets; set += kSetsBetweenTurns) {
    RoomPicture picture = look_at_room(renderer, detectors, set);
    if (!picture.detections.empty()) minute.push_back(picture);
  }
  return minute;
}

void print_row(const std::string& name, int per_pose, const Tally& tally) {
  const auto percent = [&](int count) { return 100.0 * count / tally.faces(); };
  std::cout << "| " << per_pose << " | " << name << " | " << tally.faces() << std::fixed
            << std::setprecision(1) << " | " << percent(tally.confirmed) << " % | "
            << percent(tally.candidates) << " % | " << percent(tally.unknown) << " % |\n";
}

int print_rates() {
  FaceDetectors detectors;
  std::string complaint;
  if (!load_face_search(detectors, {}, complaint)) {
    std::cerr << complaint << "\n";
    return 1;
  }
  const std::vector<OwnerSample> samples = enrol(detectors, kSamplesPerPose.back());
  const std::vector<RoomPicture> minute = viewed_minute(detectors);
  std::cout << "\n| samples per pose | face | accepted | confirmed | candidate | unknown |\n"
               "|---:|---|---:|---:|---:|---:|\n";
  for (const int per_pose : kSamplesPerPose) {
    for (const auto& [name, tally] : watch(minute, recogniser_of(samples, per_pose))) {
      print_row(name, per_pose, tally);
    }
  }
  return 0;
}

}  // namespace
}  // namespace halcyra

int main() { return halcyra::print_rates(); }
