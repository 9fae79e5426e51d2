#include "enroll/sample_report.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <system_error>

#include <opencv2/core/base.hpp>

#include "enroll/pose.hpp"
#include "enroll/report_findings.hpp"
#include "face_pipeline/lbph_model.hpp"
#include "face_pipeline/sample_loader.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// The error of a walk does not say which folder it was.
std::string unreadable_folder(const fs::path& top) {
  std::error_code ignored;
  const auto options = fs::directory_options::skip_permission_denied;
  for (auto entry = fs::recursive_directory_iterator(top, options, ignored);
       entry != fs::recursive_directory_iterator(); entry.increment(ignored)) {
    std::error_code error;
    if (!entry->is_directory(ignored) || entry->is_symlink(ignored)) continue;
    fs::directory_iterator(entry->path(), error);
    if (error) return entry->path().string();
  }
  return top.string();
}

std::string complaint_about(const fs::path& folder, const std::error_code& error) {
  if (error == std::errc::no_such_file_or_directory) {
    return "There is no folder " + folder.string() + ".";
  }
  if (error == std::errc::not_a_directory) return folder.string() + " is not a folder.";
  return unreadable_folder(folder) + " cannot be read: " + error.message() + ".";
}

// Empty, with a sentence in `complaint`, if there are none or the folder cannot be read.
std::vector<fs::path> files_of(const fs::path& folder, std::string& complaint) {
  std::vector<fs::path> files;
  try {
    files = sample_files(folder);
  } catch (const fs::filesystem_error& error) {
    complaint = complaint_about(folder, error.code());
    return {};
  }
  if (files.empty()) complaint = "There are no samples in " + folder.string() + ".";
  return files;
}

std::string result_for(double distance, const SampleReport& report) {
  if (distance <= report.confirmed_threshold) return "confirmed vote";
  return distance <= report.candidate_threshold ? "candidate" : "unknown";
}

// What each sample is compared as; empty where the file cannot be decoded.
using Probes = std::vector<cv::Mat>;

void judge_picture(const cv::Mat& picture, ReportedSample& sample, Probes& probes) {
  sample.size = picture.size();
  sample.measures = measure_face(picture);
  sample.quality = quality_verdict(picture.size(), sample.measures);
  probes.back() = make_probe(picture);
  sample.image = make_sample(picture, sample.path).image;
}

void read_picture(ReportedSample& sample, Probes& probes) {
  probes.emplace_back();
  try {
    const cv::Mat picture = read_sample(sample.file);
    if (!picture.empty()) judge_picture(picture, sample, probes);
  } catch (const cv::Exception&) {
    // It has too many pixels for OpenCV or for the memory.
    sample.too_large = true;
  }
}

ReportedSample make_entry(const fs::path& file, const fs::path& folder, Probes& probes) {
  ReportedSample sample;
  sample.file = file;
  sample.path = file.lexically_relative(folder).generic_string();
  // The dashboard takes a link's stage from where the link leads to.
  std::error_code ignored;
  sample.stage = stage_of(fs::relative(file, folder, ignored));
  read_picture(sample, probes);
  return sample;
}

DistanceTable measure_distances(const SampleReport& report, const Probes& probes) {
  const std::size_t count = report.samples.size();
  SampleDistances samples;
  std::vector<std::size_t> places;  // of the samples that can be decoded, in the report
  for (std::size_t index = 0; index < count; ++index) {
    if (report.samples[index].image.empty()) continue;
    samples.add(report.samples[index].image);
    places.push_back(index);
  }
  DistanceTable table(count, std::vector<double>(count, std::numeric_limits<double>::infinity()));
  for (const std::size_t probe : places) {
    const std::vector<double> distances = samples.distances(probes[probe]);
    for (std::size_t i = 0; i < places.size(); ++i) table[probe][places[i]] = distances[i];
  }
  return table;
}

void judge_by_distance(SampleReport& report, const DistanceTable& table) {
  for (std::size_t index = 0; index < report.samples.size(); ++index) {
    ReportedSample& sample = report.samples[index];
    for (std::size_t other = 0; other < report.samples.size(); ++other) {
      const double distance = table[index][other];
      if (other == index || std::isinf(distance)) continue;
      if (sample.nearest && sample.nearest->distance <= distance) continue;
      sample.nearest = NearestSample{other, distance};
    }
    if (sample.nearest) sample.result = result_for(sample.nearest->distance, report);
  }
}

std::optional<double> median(std::vector<double> values) {
  if (values.empty()) return std::nullopt;
  std::sort(values.begin(), values.end());
  const std::size_t half = values.size() / 2;
  return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

StageSummary summary_of(const std::string& stage, const SampleReport& report) {
  StageSummary summary;
  summary.stage = stage;
  std::vector<double> distances;
  for (const ReportedSample& sample : report.samples) {
    if (sample.stage != stage) continue;
    if (sample.image.empty()) {
      ++summary.undecodable;
      continue;
    }
    ++summary.samples;
    if (sample.quality == "accepted") ++summary.accepted;
    if (sample.result == "confirmed vote") ++summary.confirmed_votes;
    if (sample.result == "candidate") ++summary.candidates;
    if (sample.result == "unknown") ++summary.unknown;
    if (sample.nearest) distances.push_back(sample.nearest->distance);
  }
  summary.median_distance = median(distances);
  return summary;
}

void sum_up_stages(SampleReport& report) {
  std::set<std::string> others;
  for (const ReportedSample& sample : report.samples) others.insert(sample.stage);
  for (const Pose pose : kPoses) {
    report.stages.push_back(summary_of(stage_name(pose), report));
    others.erase(stage_name(pose));
  }
  for (const std::string& stage : others) report.stages.push_back(summary_of(stage, report));
}

}  // namespace

SampleReport report_on_samples(const Options& pipeline, int per_pose) {
  SampleReport report;
  report.folder = pipeline.samples_dir;
  report.per_pose = per_pose;
  report.confirmed_threshold = pipeline.confirmed_threshold;
  report.candidate_threshold = pipeline.candidate_threshold;
  Probes probes;
  for (const fs::path& file : files_of(report.folder, report.complaint)) {
    report.samples.push_back(make_entry(file, report.folder, probes));
  }
  if (!report.complaint.empty()) return report;
  const DistanceTable table = measure_distances(report, probes);
  judge_by_distance(report, table);
  sum_up_stages(report);
  report.findings = find_faults(report, table);
  return report;
}

bool is_good(const SampleReport& report) {
  return report.complaint.empty() && report.findings.empty();
}

}  // namespace halcyra
