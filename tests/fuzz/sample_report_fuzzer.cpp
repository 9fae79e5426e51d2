// The report on samples with names from outside, in all its forms. The first two bits of the input
// say which samples have a picture; the byte 7 says that the contact sheet is drawn, too, which
// takes longer than all else. The rest are texts, as texts_of divides them.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "enroll/contact_sheet.hpp"
#include "enroll/report_json.hpp"
#include "enroll/report_table.hpp"
#include "enroll/report_text.hpp"
#include "enroll/sample_report.hpp"
#include "tests/fuzz/requirement.hpp"
#include "tests/fuzz/text_input.hpp"

#include <nlohmann/json.hpp>

namespace halcyra {
namespace {

// No file system has longer names of files, and cutting them to the width of a picture takes time
// that grows with the square of their length.
constexpr std::size_t kLongestName = 255;

ReportedSample made_sample(const std::string& path, const std::string& stage, bool readable) {
  ReportedSample sample;
  sample.path = path;
  sample.stage = stage;
  if (!readable) return sample;
  sample.image = cv::Mat(160, 160, CV_8UC1, cv::Scalar(128));
  sample.size = sample.image.size();
  sample.quality = "accepted";
  sample.nearest = NearestSample{0, 41.0};
  sample.result = "confirmed vote";
  return sample;
}

SampleReport made_report(unsigned flags, const std::vector<std::string>& texts) {
  SampleReport report;
  report.folder = texts[0];
  report.samples = {made_sample(texts[2], texts[1], (flags & 1U) != 0),
                    made_sample(texts[3], "front", (flags & 2U) != 0)};
  for (const std::string& stage : {texts[1], std::string("front")}) {
    StageSummary summary;
    summary.stage = stage;
    report.stages.push_back(summary);
  }
  report.findings = {{FindingKind::kOutlier, texts[4], {0, 1}}};
  return report;
}

void check_printable(const std::string& text) {
  const std::string shown = printable(text);
  require(printable(shown) == shown, "a printable text stays as it is");
  require(shown_width(shown) <= shown.size(), "no character has less than a byte");
  for (const char c : shown) {
    require(static_cast<unsigned char>(c) >= ' ' && c != '\x7F', "no control character is left");
  }
}

void check_table(const SampleReport& report) {
  std::ostringstream out;
  write_report_table(out, report);
  std::size_t lines = 0;
  std::istringstream table(out.str());
  for (std::string line; std::getline(table, line); ++lines) {
    require(printable(line) == line, "every line of the table can be shown");
  }
  require(lines == 14, "no name begins a line of its own");
}

void check_json(const SampleReport& report) {
  std::ostringstream out;
  write_report_json(out, report);
  const nlohmann::json json = nlohmann::json::parse(out.str(), nullptr, false);
  require(!json.is_discarded(), "it is JSON");
  for (std::size_t i = 0; i < report.samples.size(); ++i) {
    const std::string& path = report.samples[i].path;
    const std::string read = json["samples"][i]["path"];
    const bool replaced = read.find("\xEF\xBF\xBD") != std::string::npos;
    require(read == path || replaced, "names that are UTF-8 are kept");
  }
}

void check_sheet(const SampleReport& report) {
  const cv::Mat sheet = draw_contact_sheet(report);
  require(sheet.type() == CV_8UC3 && sheet.cols == 1296, "a sheet of few samples has one width");
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra;
  if (size == 0) return 0;
  const std::vector<std::string> texts = texts_of(data + 1, size - 1, 5);
  const SampleReport report = made_report(data[0], texts);
  for (const std::string& text : texts) check_printable(text);
  check_table(report);
  check_json(report);
  const bool long_name = texts[2].size() > kLongestName || texts[3].size() > kLongestName;
  if (data[0] == 7 && !long_name) check_sheet(report);
  return 0;
}
