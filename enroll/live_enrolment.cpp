#include "enroll/live_enrolment.hpp"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "app/picture_window.hpp"
#include "app/run_state/runtime_status.hpp"
#include "app/stop_signal.hpp"
#include "app/window_geometry.hpp"
#include "capture/frame_set.hpp"
#include "capture/kinect_device.hpp"
#include "enroll/draw_enrolment.hpp"
#include "enroll/enrolment_keys.hpp"
#include "enroll/enrolment_progress.hpp"
#include "enroll/enrolment_window.hpp"
#include "enroll/face_search.hpp"
#include "enroll/present_samples.hpp"
#include "enroll/report_task.hpp"
#include "enroll/sample_distances.hpp"
#include "enroll/sample_folder.hpp"
#include "enroll/sample_taker.hpp"
#include "enroll/written_file.hpp"
#include "probes/display_detection.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

constexpr int kFailure = 1;

// A sample of this run.
struct TakenSample {
  Pose pose;
  WrittenFile file;
};

// Members are destroyed in reverse order, so the sensor goes first.
struct LiveEnrolment {
  Options pipeline;
  fs::path folder;
  FaceDetectors detectors;
  SampleDistances distances;       // to the samples of the folder, those of this run last
  std::vector<TakenSample> taken;  // oldest first
  EnrolmentProgress progress;
  Observation observation;
  DisplayInfo display;
  RuntimeStatus status;
  cv::Mat color;
  cv::Mat canvas;
  KinectSession kinect;
};

EnrolmentTime now() { return std::chrono::steady_clock::now(); }

bool start_sensor(LiveEnrolment& run, std::string& complaint) {
  open_kinect(run.kinect, run.pipeline, run.status);
  if (run.kinect.streams_started) return true;
  close_kinect(run.kinect);
  complaint = "The sensor cannot be used: " + run.status.kinect_message + ".";
  return false;
}

bool start_up(LiveEnrolment& run, std::string& complaint) {
  if (!display_is_named()) {
    complaint = no_display_message();
    return false;
  }
  std::vector<std::string> names;
  if (!load_face_search(run.detectors, run.pipeline, complaint) ||
      !prepare_sample_folder(run.folder, complaint) ||
      !load_present_samples(run.folder, run.distances, names, complaint)) {
    return false;
  }
  ask_for_whole_key_codes();
  run.display = detect_display();
  fit_to_screen(run.pipeline, run.display);
  if (!start_sensor(run, complaint)) return false;
  open_enrolment_window(run.pipeline);
  return true;
}

void say(const LiveEnrolment& run, const char* what, const TakenSample& sample) {
  std::cout << what << " " << sample.file.path.lexically_relative(run.folder).string() << " ("
            << progress_of(run.progress, sample.pose).taken << " of " << run.progress.per_pose
            << ")" << std::endl;
}

void take_sample(LiveEnrolment& run, const FaceInfo& face, const cv::Mat& crop) {
  const Pose pose = *pose_found_by(face.detector_type);
  std::string complaint;
  const std::optional<fs::path> file =
      write_sample(run.folder, pose, crop, std::time(nullptr), complaint);
  if (!file) {
    run.progress.write_failure = complaint;
    std::cerr << complaint << std::endl;
    return;
  }
  run.taken.push_back({pose, written_file(*file)});
  run.distances.add(crop);
  run.progress.last_taken = now();
  ++progress_of(run.progress, pose).taken;
  say(run, "taken", run.taken.back());
}

void take_back_last(LiveEnrolment& run) {
  if (run.taken.empty()) return;
  const TakenSample sample = run.taken.back();
  run.taken.pop_back();
  run.distances.remove_last();
  --progress_of(run.progress, sample.pose).taken;
  if (delete_if_unchanged(sample.file)) {
    say(run, "taken back", sample);
  } else {
    std::cerr << sample.file.path.string() << " is no longer the file that was written; it is left."
              << std::endl;
  }
}

void observe(LiveEnrolment& run, const ColorImages& images) {
  run.color = images.bgr;
  run.observation = {};
  run.observation.faces = search_faces(run.detectors, images.grey, run.pipeline);
  // After the search: a slow one must not look like a sensor that has stopped.
  run.progress.last_picture = now();
  if (!run.progress.first_picture) run.progress.first_picture = run.progress.last_picture;
  const std::optional<std::size_t> chosen = chosen_face(run.observation.faces);
  if (!chosen) return;
  const FaceInfo& face = run.observation.faces[*chosen];
  if (face.quality != "accepted") return;
  const cv::Mat crop = face_crop(images.grey, face);
  if (const std::optional<NearestSample> nearest = run.distances.nearest(crop)) {
    run.observation.nearest = nearest->distance;
  }
  run.observation.near_copy = run.distances.near_copy(crop).has_value();
  if (judge(run.progress, run.observation, now()).obstacle == Obstacle::kNone) {
    take_sample(run, face, crop);
  }
}

// Does not wait for a picture, so that the window answers while the sensor delivers none.
void observe_if_delivered(LiveEnrolment& run) {
  if (!run.kinect.listener->hasNewFrame()) return;
  if (!take_frame_set(run.kinect, run.status)) return;
  ColorImages images;
  const bool is_usable = convert_color(run.kinect, images);
  release_frame_set(run.kinect);
  if (is_usable) observe(run, images);
}

void skip_asked_pose(EnrolmentProgress& progress) {
  if (const std::optional<Pose> pose = asked_pose(progress)) {
    progress_of(progress, *pose).skipped = true;
  }
}

// Returns false if the command ends the run.
bool obey(LiveEnrolment& run, EnrolmentCommand command) {
  switch (command) {
    case EnrolmentCommand::kPauseOrGoOn:
      run.progress.paused = !run.progress.paused;
      break;
    case EnrolmentCommand::kTakeBack:
      take_back_last(run);
      break;
    case EnrolmentCommand::kSkipPose:
      skip_asked_pose(run.progress);
      break;
    case EnrolmentCommand::kEnd:
      return false;
    case EnrolmentCommand::kNone:
      break;
  }
  return true;
}

// One turn of the loop; false when it was the last one.
bool run_turn(LiveEnrolment& run) {
  observe_if_delivered(run);
  const Judgement judgement = judge(run.progress, run.observation, now());
  draw_enrolment(run.canvas, enrolment_picture_size(run.pipeline),
                 {run.color, run.observation, run.progress, judgement});
  show_enrolment(run.canvas, run.pipeline, run.display);
  const int key = wait_for_enrolment_key();
  // Showing the next picture would open a closed window again.
  return enrolment_window_is_open() && !stop_requested() && obey(run, command_of_key(key));
}

void shut_down(LiveEnrolment& run) {
  close_kinect(run.kinect);
  close_enrolment_window();
  std::cout << "Taken: ";
  for (const Pose pose : kPoses) {
    std::cout << (pose == kPoses.front() ? "" : ", ") << stage_name(pose) << " "
              << progress_of(run.progress, pose).taken;
  }
  std::cout << "\n\n" << std::flush;
}

// In single quotes, for a shell.
std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char character : text) {
    result += character == '\'' ? "'\\''" : std::string(1, character);
  }
  return result + "'";
}

void warn_of_readers(const fs::path& folder) {
  if (!others_can_read(folder)) return;
  std::cout << "\nOther users of this computer can read the samples. This makes them private: "
            << "chmod -R go= " << quoted(folder.string()) << std::endl;
}

}  // namespace

int enroll_live(const EnrollOptions& options) {
  LiveEnrolment run;
  run.pipeline = options.pipeline;
  run.pipeline.fullscreen = options.fullscreen;
  run.folder = options.pipeline.samples_dir;
  run.progress.per_pose = options.per_pose;
  watch_stop_signals();
  std::string complaint;
  if (!start_up(run, complaint)) {
    std::cerr << complaint << std::endl;
    return kFailure;
  }
  while (run_turn(run)) {
  }
  shut_down(run);
  const int judgement = report_on_folder(options);
  warn_of_readers(run.folder);
  return run.progress.write_failure.empty() ? judgement : kFailure;
}

}  // namespace halcyra
