// What the owner's samples are worth: each of them, each stage, and what should be done.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "enroll/sample_distances.hpp"
#include "face_pipeline/quality_gate.hpp"

namespace halcyra {

struct ReportedSample {
  std::filesystem::path file;
  std::string path;        // from the samples folder, with '/' between components; any bytes
  std::string stage;       // the dashboard's
  bool too_large = false;  // the picture has too many pixels to be decoded
  // The picture as the recogniser has it, 8-bit grey, 160 x 160. Empty if the file cannot be
  // decoded; then what follows has no meaning.
  cv::Mat image;
  cv::Size size;             // of the picture in the file
  FaceMeasures measures{};   // likewise
  std::string quality = "";  // what the quality gate would say of such a face
  // The nearest other sample, by its index in the report; nothing if it is the only one.
  std::optional<NearestSample> nearest;
  // What the recogniser would say of the face if the sample were not there: "confirmed vote",
  // "candidate" or "unknown"; "" if it is the only one.
  std::string result = "";
};

// Only of samples that can be decoded, but for their number below.
struct StageSummary {
  std::string stage;
  int samples = 0;
  int undecodable = 0;
  int accepted = 0;  // by the quality gate
  int confirmed_votes = 0;
  int candidates = 0;
  int unknown = 0;
  std::optional<double> median_distance;  // to the nearest other sample
};

enum class FindingKind {
  kOutlier,      // samples that are probably of somebody else
  kDivided,      // a stage of several equally large groups that are unlike each other
  kUndecodable,  // a file that the dashboard leaves out
  kTooLarge,     // a file at which the dashboard may end
  kRefused,      // a sample that the quality gate would not let through
  kNearCopy,     // two samples of almost the same moment
  kTooFew,       // a pose that lacks samples
};

struct Finding {
  FindingKind kind;
  std::string sentence;              // what is wrong and what to do; names a stage but no file
  std::vector<std::size_t> samples;  // the files it is about; none for kTooFew
};

struct SampleReport {
  std::string folder;
  std::string complaint;  // a sentence if there is nothing to report on; then all lists are empty
  int per_pose = 0;       // samples wanted of each pose
  double confirmed_threshold = 0.0;
  double candidate_threshold = 0.0;
  std::vector<ReportedSample> samples;  // in path order
  // front, left and right, whether they have samples or not, then others by name.
  std::vector<StageSummary> stages;
  std::vector<Finding> findings;  // the most urgent first
};

// Reports on the samples in `pipeline.samples_dir`. Never throws for what is in the folder. The
// time it takes grows with the square of the number of samples: about ten seconds for 400.
SampleReport report_on_samples(const Options& pipeline, int per_pose);

// Whether there are samples and nothing should be done about them.
bool is_good(const SampleReport& report);

}  // namespace halcyra
