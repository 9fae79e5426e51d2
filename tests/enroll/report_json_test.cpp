#include "enroll/report_json.hpp"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/enroll/report_samples.hpp"

#include <nlohmann/json.hpp>

namespace halcyra {
namespace {

using Json = nlohmann::json;

Json json_of(const SampleReport& report) {
  std::ostringstream out;
  write_report_json(out, report);
  EXPECT_EQ(out.str().back(), '\n');
  return Json::parse(out.str());
}

TEST(WriteReportJson, HoldsTheWholeReport) {
  const Json expected = Json::parse(R"({
    "folder": "faces/dorran", "good": false, "complaint": null, "per_pose": 2,
    "thresholds": {"near_copy": 30.0, "confirmed": 55.0, "candidate": 60.0},
    "samples": [
      {"path": "front/20261122T101010Z-1.png", "stage": "front", "readable": true,
       "width": 180, "height": 176, "brightness": 120.4, "contrast": 40.6, "sharpness": 312.2,
       "quality": "accepted",
       "nearest": {"path": "front/20261122T101010Z-2.png", "distance": 29.04},
       "result": "confirmed vote"},
      {"path": "front/20261122T101010Z-2.png", "stage": "front", "readable": true,
       "width": 180, "height": 176, "brightness": 120.4, "contrast": 40.6, "sharpness": 312.2,
       "quality": "too_blurry",
       "nearest": {"path": "front/20261122T101010Z-1.png", "distance": 61.5},
       "result": "unknown"},
      {"path": "left/20261122T101012Z-1.png", "stage": "left", "readable": false}],
    "stages": [
      {"stage": "front", "samples": 2, "unreadable": 0, "accepted": 1, "confirmed_votes": 1,
       "candidates": 0, "unknown": 1, "median_distance": 45.27},
      {"stage": "left", "samples": 0, "unreadable": 1, "accepted": 0, "confirmed_votes": 0,
       "candidates": 0, "unknown": 0, "median_distance": null},
      {"stage": "right", "samples": 0, "unreadable": 0, "accepted": 0, "confirmed_votes": 0,
       "candidates": 0, "unknown": 0, "median_distance": null}],
    "findings": [
      {"kind": "undecodable", "sentence": "Remove it.",
       "samples": ["left/20261122T101012Z-1.png"]},
      {"kind": "near_copy", "sentence": "Keep one of them.",
       "samples": ["front/20261122T101010Z-1.png", "front/20261122T101010Z-2.png"]},
      {"kind": "too_few", "sentence": "Take 2 more.", "samples": []}]})");
  EXPECT_EQ(json_of(made_report()), expected) << json_of(made_report()).dump(1);
}

TEST(WriteReportJson, HasNothingForTheDistanceOfASingleSample) {
  SampleReport report = made_report();
  report.findings.clear();
  report.samples.erase(report.samples.begin() + 1, report.samples.end());
  report.samples.front().nearest.reset();
  report.samples.front().result = "";
  const Json json = json_of(report);
  EXPECT_EQ(json["good"], true);
  EXPECT_TRUE(json["samples"][0]["nearest"].is_null());
  EXPECT_TRUE(json["samples"][0]["result"].is_null());
}

TEST(WriteReportJson, NamesEachKindOfFinding) {
  SampleReport report = made_report();
  report.findings = {{FindingKind::kOutlier, "", {}},     {FindingKind::kDivided, "", {}},
                     {FindingKind::kUndecodable, "", {}}, {FindingKind::kTooLarge, "", {}},
                     {FindingKind::kRefused, "", {}},     {FindingKind::kNearCopy, "", {}},
                     {FindingKind::kTooFew, "", {}}};
  Json kinds = Json::array();
  const Json json = json_of(report);
  for (const Json& finding : json["findings"]) kinds.push_back(finding["kind"]);
  EXPECT_EQ(kinds, Json::parse(R"(["outlier", "divided", "undecodable", "too_large", "refused",
                                   "near_copy", "too_few"])"));
}

TEST(WriteReportJson, KeepsNamesFromOutsideAndReplacesWhatIsNotUtf8) {
  SampleReport report = made_report();
  report.samples[0].path = "front/\x1B\"\n\xC3\xAB.png";
  report.samples[1].path = "front/\xFF.png";
  report.folder = "\xC3";
  const Json json = json_of(report);
  EXPECT_EQ(json["samples"][0]["path"], "front/\x1B\"\n\xC3\xAB.png");
  EXPECT_EQ(json["samples"][1]["path"], "front/\xEF\xBF\xBD.png");
  EXPECT_EQ(json["folder"], "\xEF\xBF\xBD");
}

TEST(WriteReportJson, HoldsTheComplaintWhereThereIsNothingToReportOn) {
  SampleReport report;
  report.complaint = "There is no folder x.";
  const Json json = json_of(report);
  EXPECT_EQ(json["complaint"], "There is no folder x.");
  EXPECT_EQ(json["good"], false);
  EXPECT_EQ(json["samples"], Json::array());
}

}  // namespace
}  // namespace halcyra
