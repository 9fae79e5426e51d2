// A report as a samples folder of many faults would give it, without any file.
#pragma once

#include <optional>
#include <string>

#include <opencv2/core.hpp>

#include "enroll/sample_report.hpp"

namespace halcyra {

inline ReportedSample made_sample(const std::string& path, const std::string& stage) {
  ReportedSample sample;
  sample.path = path;
  sample.stage = stage;
  sample.image = cv::Mat(160, 160, CV_8UC1, cv::Scalar(128));
  sample.size = {180, 176};
  sample.measures = {120.4, 40.6, 312.2};
  sample.quality = "accepted";
  return sample;
}

// Two samples in front/, which are near each other, and a file in left/ that cannot be decoded.
inline SampleReport made_report() {
  SampleReport report;
  report.folder = "faces/dorran";
  report.per_pose = 2;
  report.confirmed_threshold = 55.0;
  report.candidate_threshold = 60.0;
  report.samples = {made_sample("front/20261122T101010Z-1.png", "front"),
                    made_sample("front/20261122T101010Z-2.png", "front"),
                    made_sample("left/20261122T101012Z-1.png", "left")};
  report.samples[0].nearest = NearestSample{1, 29.04};
  report.samples[0].result = "confirmed vote";
  report.samples[1].nearest = NearestSample{0, 61.5};
  report.samples[1].result = "unknown";
  report.samples[1].quality = "too_blurry";
  report.samples[2].image.release();
  report.stages = {{"front", 2, 0, 1, 1, 0, 1, 45.27},
                   {"left", 0, 1, 0, 0, 0, 0, std::nullopt},
                   {"right", 0, 0, 0, 0, 0, 0, std::nullopt}};
  report.findings = {{FindingKind::kUndecodable, "Remove it.", {2}},
                     {FindingKind::kNearCopy, "Keep one of them.", {0, 1}},
                     {FindingKind::kTooFew, "Take 2 more.", {}}};
  return report;
}

}  // namespace halcyra
