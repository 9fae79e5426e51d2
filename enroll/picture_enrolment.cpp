#include "enroll/picture_enrolment.hpp"

#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "enroll/face_search.hpp"
#include "enroll/picture_files.hpp"
#include "enroll/pose.hpp"
#include "enroll/present_samples.hpp"
#include "enroll/quality_text.hpp"
#include "enroll/report_task.hpp"
#include "enroll/report_text.hpp"
#include "enroll/sample_distances.hpp"
#include "enroll/sample_folder.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

struct Enrolment {
  const Options& pipeline;
  FaceDetectors detectors;
  SampleDistances samples;         // those that were there, then those taken
  std::vector<std::string> names;  // of the same, from the samples folder
  std::string complaint;           // why it cannot go on; "" if it can
};

// What happened to a file.
std::string left_out(const std::string& why) { return "left out: " + why; }

// Nothing, with the complaint set, if it cannot be written.
std::optional<std::string> keep(const cv::Mat& crop, Pose pose, Enrolment& enrolment) {
  const fs::path folder = enrolment.pipeline.samples_dir;
  const std::optional<fs::path> file =
      write_sample(folder, pose, crop, std::time(nullptr), enrolment.complaint);
  if (!file) return std::nullopt;
  enrolment.samples.add(crop);
  enrolment.names.push_back(file->lexically_relative(folder).generic_string());
  return enrolment.names.back();
}

std::vector<FaceInfo> faces_in(const cv::Mat& grey, Enrolment& enrolment) {
  // The search shrinks the picture, and of one that is too narrow nothing is left.
  if (std::min(grey.cols, grey.rows) < enrolment.pipeline.min_face_size) return {};
  return search_faces(enrolment.detectors, grey, enrolment.pipeline);
}

std::string judge_face(const cv::Mat& grey, const FaceInfo& face, Enrolment& enrolment) {
  if (face.quality != "accepted") {
    const FaceMeasures measures = {face.brightness, face.contrast, face.sharpness};
    return left_out(face.quality + " (" +
                    measure_at_fault(face.quality, face.box.size(), measures) + ")");
  }
  const std::optional<Pose> pose = pose_found_by(face.detector_type);
  if (!pose) return left_out("a pose that no sample is taken of");
  const cv::Mat crop = face_crop(grey, face);
  if (const auto copy = enrolment.samples.near_copy(crop)) {
    return left_out("almost the same as " + enrolment.names[copy->index]);
  }
  const std::optional<std::string> name = keep(crop, *pose, enrolment);
  return name ? "taken as " + *name : left_out("cannot be kept");
}

std::string enroll_picture(const PictureFile& file, Enrolment& enrolment) {
  if (!file.obstacle.empty()) return left_out(file.obstacle);
  std::string obstacle;
  const cv::Mat grey = read_photograph(file.path, obstacle);
  if (!obstacle.empty()) return left_out(obstacle);
  const std::vector<FaceInfo> faces = faces_in(grey, enrolment);
  if (faces.empty()) return left_out("no face");
  if (faces.size() > 1) return left_out(std::to_string(faces.size()) + " faces");
  return judge_face(grey, faces.front(), enrolment);
}

void enroll_all(const std::vector<PictureFile>& files, Enrolment& enrolment) {
  // On one terminal the lines themselves are the progress.
  const bool progress = isatty(STDERR_FILENO) == 1 && isatty(STDOUT_FILENO) == 0;
  for (std::size_t i = 0; i < files.size() && enrolment.complaint.empty(); ++i) {
    const std::string outcome = enroll_picture(files[i], enrolment);
    std::cout << printable(files[i].path.string() + ": " + outcome) << std::endl;
    if (progress) std::cerr << "\r" << i + 1 << " of " << files.size() << std::flush;
  }
  if (progress) std::cerr << "\n";
}

// False, with a sentence in the complaint, if nothing can be taken.
bool prepare(Enrolment& enrolment) {
  return load_face_search(enrolment.detectors, enrolment.pipeline, enrolment.complaint) &&
         prepare_sample_folder(enrolment.pipeline.samples_dir, enrolment.complaint) &&
         load_present_samples(enrolment.pipeline.samples_dir, enrolment.samples, enrolment.names,
                              enrolment.complaint);
}

int fail(const std::string& complaint) {
  std::cerr << printable(complaint) << "\n";
  return 1;
}

}  // namespace

int enroll_from_pictures(const EnrollOptions& options) {
  const std::vector<PictureFile> files = list_pictures(options.pictures);
  const bool any = std::any_of(files.begin(), files.end(),
                               [](const PictureFile& file) { return file.obstacle.empty(); });
  Enrolment enrolment{options.pipeline, {}, {}, {}, {}};
  if (any && !prepare(enrolment)) return fail(enrolment.complaint);
  enroll_all(files, enrolment);
  if (!any) return fail("There is no picture to read.");
  std::cout << std::endl;
  const int status = report_on_folder(options);
  if (!enrolment.complaint.empty()) return fail(enrolment.complaint);
  const bool all_opened = std::none_of(files.begin(), files.end(), [](const PictureFile& file) {
    return file.asked_for && !file.obstacle.empty();
  });
  return all_opened ? status : 1;
}

}  // namespace halcyra
