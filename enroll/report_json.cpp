#include "enroll/report_json.hpp"

#include <optional>
#include <string>

#include "enroll/sample_limits.hpp"

#include <nlohmann/json.hpp>

namespace halcyra {
namespace {

// Keeps the order in which the members are written here.
using Json = nlohmann::ordered_json;

Json text_or_null(const std::string& text) { return text.empty() ? Json() : Json(text); }

std::string kind_word(FindingKind kind) {
  switch (kind) {
    case FindingKind::kOutlier:
      return "outlier";
    case FindingKind::kDivided:
      return "divided";
    case FindingKind::kUndecodable:
      return "undecodable";
    case FindingKind::kTooLarge:
      return "too_large";
    case FindingKind::kRefused:
      return "refused";
    case FindingKind::kNearCopy:
      return "near_copy";
    case FindingKind::kTooFew:
      return "too_few";
  }
  return "";
}

Json nearest_json(const SampleReport& report, const std::optional<NearestSample>& nearest) {
  if (!nearest) return {};
  return {{"path", report.samples[nearest->index].path}, {"distance", nearest->distance}};
}

Json sample_json(const SampleReport& report, const ReportedSample& sample) {
  Json json = {{"path", sample.path}, {"stage", sample.stage}, {"readable", !sample.image.empty()}};
  if (sample.image.empty()) return json;
  json["width"] = sample.size.width;
  json["height"] = sample.size.height;
  json["brightness"] = sample.measures.brightness;
  json["contrast"] = sample.measures.contrast;
  json["sharpness"] = sample.measures.sharpness;
  json["quality"] = sample.quality;
  json["nearest"] = nearest_json(report, sample.nearest);
  json["result"] = text_or_null(sample.result);
  return json;
}

Json stage_json(const StageSummary& stage) {
  const std::optional<double>& median = stage.median_distance;
  return {{"stage", stage.stage},
          {"samples", stage.samples},
          {"unreadable", stage.undecodable},
          {"accepted", stage.accepted},
          {"confirmed_votes", stage.confirmed_votes},
          {"candidates", stage.candidates},
          {"unknown", stage.unknown},
          {"median_distance", median ? Json(*median) : Json()}};
}

Json finding_json(const SampleReport& report, const Finding& finding) {
  Json samples = Json::array();
  for (const std::size_t index : finding.samples) samples.push_back(report.samples[index].path);
  return {{"kind", kind_word(finding.kind)}, {"sentence", finding.sentence}, {"samples", samples}};
}

}  // namespace

void write_report_json(std::ostream& out, const SampleReport& report) {
  Json json = {{"folder", report.folder},
               {"good", is_good(report)},
               {"complaint", text_or_null(report.complaint)},
               {"per_pose", report.per_pose},
               {"thresholds",
                {{"near_copy", kNearCopyDistance},
                 {"confirmed", report.confirmed_threshold},
                 {"candidate", report.candidate_threshold}}},
               {"samples", Json::array()},
               {"stages", Json::array()},
               {"findings", Json::array()}};
  for (const ReportedSample& sample : report.samples) {
    json["samples"].push_back(sample_json(report, sample));
  }
  for (const StageSummary& stage : report.stages) json["stages"].push_back(stage_json(stage));
  for (const Finding& finding : report.findings) {
    json["findings"].push_back(finding_json(report, finding));
  }
  out << json.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace halcyra
