#include "enroll/contact_sheet.hpp"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "dashboard/palette.hpp"
#include "enroll/private_file.hpp"
#include "enroll/report_text.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// Pixels.
constexpr int kMargin = 24;
constexpr int kPictureSide = 160;
constexpr int kCellWidth = 208;
constexpr int kCellHeight = 236;
constexpr int kTextWidth = kCellWidth - 12;
constexpr int kLineHeight = 18;
constexpr int kHeadingHeight = 44;
constexpr int kFrameWidth = 4;

constexpr double kTextScale = 0.36;
constexpr double kHeadingScale = 0.62;

// A sheet grows to both sides, but not for few samples.
constexpr int kLeastColumns = 6;

struct Cell {
  std::size_t sample;  // by its index in the report
  cv::Point corner;    // the upper left
};

struct Heading {
  std::string text;
  cv::Point start;  // of the baseline
};

struct SheetPlan {
  cv::Size size;
  std::vector<Heading> headings;
  std::vector<Cell> cells;
};

std::string count_text(const StageSummary& stage) {
  const int files = stage.samples + stage.undecodable;
  return stage.stage + ": " + (files == 0 ? "no" : std::to_string(files)) +
         (files == 1 ? " sample" : " samples");
}

// The samples of one stage from `top` on; returns where the next stage begins.
int plan_stage(const SampleReport& report, const StageSummary& stage, int columns, int top,
               SheetPlan& plan) {
  plan.headings.push_back({count_text(stage), {kMargin, top + kHeadingHeight - 16}});
  top += kHeadingHeight;
  int count = 0;
  for (std::size_t index = 0; index < report.samples.size(); ++index) {
    if (report.samples[index].stage != stage.stage) continue;
    plan.cells.push_back(
        {index, {kMargin + count % columns * kCellWidth, top + count / columns * kCellHeight}});
    ++count;
  }
  return top + (count + columns - 1) / columns * kCellHeight;
}

SheetPlan plan_sheet(const SampleReport& report) {
  const int columns = std::max(
      kLeastColumns, static_cast<int>(std::sqrt(static_cast<double>(report.samples.size()))));
  SheetPlan plan;
  plan.headings.push_back({"Samples in " + report.folder, {kMargin, kHeadingHeight - 10}});
  int top = kHeadingHeight;
  for (const StageSummary& stage : report.stages) {
    top = plan_stage(report, stage, columns, top, plan);
  }
  plan.size = {2 * kMargin + columns * kCellWidth, top + kMargin};
  return plan;
}

// The font has no other characters.
std::string in_ascii(const std::string& text) {
  std::string result = printable(text);
  std::replace_if(
      result.begin(), result.end(), [](char c) { return static_cast<unsigned char>(c) > 126; },
      '?');
  return result;
}

int text_width(const std::string& text, double scale) {
  int below = 0;
  return cv::getTextSize(text, cv::FONT_HERSHEY_SIMPLEX, scale, 1, &below).width;
}

// Without its middle if it is too wide, since names differ in their ends.
std::string fitted(const std::string& text, int width) {
  std::string shown = text;
  for (std::size_t kept = text.size(); text_width(shown, kTextScale) > width && kept > 0; --kept) {
    const std::size_t front = kept / 2;
    shown = text.substr(0, front) + ".." + text.substr(text.size() - (kept - front));
  }
  return shown;
}

// One or two words for the picture itself; the report has the sentence.
std::string mark_words(const Finding& finding, const ReportedSample& sample) {
  switch (finding.kind) {
    case FindingKind::kOutlier:
    case FindingKind::kDivided:
      return "is this the owner?";
    case FindingKind::kUndecodable:
      return "cannot be decoded";
    case FindingKind::kTooLarge:
      return "cannot be read";
    case FindingKind::kRefused:
      return sample.quality;
    case FindingKind::kNearCopy:
      return "near-copy";
    case FindingKind::kTooFew:
      break;
  }
  return "";
}

// What the findings say of the sample, each once; "" if none is about it.
std::string marks_of(const SampleReport& report, std::size_t index) {
  std::string marks;
  for (const Finding& finding : report.findings) {
    const bool concerned =
        std::find(finding.samples.begin(), finding.samples.end(), index) != finding.samples.end();
    const std::string words = mark_words(finding, report.samples[index]);
    if (!concerned || marks.find(words) != std::string::npos) continue;
    marks += (marks.empty() ? "" : ", ") + words;
  }
  return marks;
}

void drawSheetText(cv::Mat& sheet, const std::string& text, cv::Point start, double scale,
                   const cv::Scalar& color) {
  cv::putText(sheet, text, start, cv::FONT_HERSHEY_SIMPLEX, scale, color, 1, cv::LINE_AA);
}

void drawPicture(cv::Mat& sheet, const ReportedSample& sample, const cv::Rect& place, bool marked) {
  if (marked) {
    const cv::Size both_sides(2 * kFrameWidth, 2 * kFrameWidth);
    const cv::Rect frame(place.tl() - cv::Point(both_sides / 2), place.size() + both_sides);
    cv::rectangle(sheet, frame, palette::kUnavailable, cv::FILLED);
  }
  if (sample.image.empty()) {
    cv::rectangle(sheet, place, palette::kPictureGround, cv::FILLED);
  } else {
    cv::Mat colored;
    cv::cvtColor(sample.image, colored, cv::COLOR_GRAY2BGR);
    colored.copyTo(sheet(place));
  }
}

void drawCell(cv::Mat& sheet, const SampleReport& report, const Cell& cell) {
  const ReportedSample& sample = report.samples[cell.sample];
  const std::string marks = marks_of(report, cell.sample);
  drawPicture(sheet, sample, {cell.corner, cv::Size(kPictureSide, kPictureSide)}, !marks.empty());
  const std::string name =
      std::to_string(cell.sample + 1) + "  " + fs::path(sample.path).filename().string();
  cv::Point line = cell.corner + cv::Point(0, kPictureSide + kFrameWidth + 13);
  drawSheetText(sheet, fitted(in_ascii(name), kTextWidth), line, kTextScale, palette::kRowValue);
  line.y += kLineHeight;
  if (sample.nearest) {
    const std::string result = decimal_text(sample.nearest->distance, 1) + "  " + sample.result;
    drawSheetText(sheet, result, line, kTextScale, palette::kPanelText);
  }
  line.y += kLineHeight;
  drawSheetText(sheet, fitted(in_ascii(marks), kTextWidth), line, kTextScale,
                palette::kUnavailable);
}

bool lies_in(const fs::path& file, const fs::path& folder) {
  std::error_code error;
  const fs::path place = fs::weakly_canonical(fs::absolute(file, error).parent_path(), error);
  const fs::path top = fs::canonical(folder, error);
  return !error &&
         std::mismatch(top.begin(), top.end(), place.begin(), place.end()).first == top.end();
}

// A sentence if the sheet must not be put there, otherwise "".
std::string refusal_of(const SampleReport& report, const fs::path& file) {
  std::error_code error;
  for (const ReportedSample& sample : report.samples) {
    if (fs::equivalent(sample.file, file, error)) {
      return file.string() + " is a sample. The contact sheet must not replace it.";
    }
  }
  if (lies_in(file, report.folder)) {
    return file.string() + " would be taken for a sample. Put the contact sheet elsewhere.";
  }
  const fs::file_status status = fs::status(file, error);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    return file.string() + " is not a file that a contact sheet can replace.";
  }
  return "";
}

std::error_code replace_file(const fs::path& file, const std::vector<unsigned char>& bytes) {
  const fs::path folder = file.has_parent_path() ? file.parent_path() : ".";
  const std::optional<fs::path> unfinished = write_unfinished(folder, bytes);
  if (!unfinished) return std::error_code(errno, std::generic_category());
  std::error_code error;
  fs::rename(*unfinished, file, error);
  std::error_code ignored;
  if (error) fs::remove(*unfinished, ignored);
  return error;
}

}  // namespace

cv::Mat draw_contact_sheet(const SampleReport& report) {
  const SheetPlan plan = plan_sheet(report);
  cv::Mat sheet(plan.size, CV_8UC3, palette::kBackground);
  for (const Heading& heading : plan.headings) {
    drawSheetText(sheet, in_ascii(heading.text), heading.start, kHeadingScale,
                  palette::kPanelTitle);
  }
  for (const Cell& cell : plan.cells) drawCell(sheet, report, cell);
  return sheet;
}

bool write_contact_sheet(const SampleReport& report, const std::string& file,
                         std::string& complaint) {
  complaint = report.complaint.empty() ? refusal_of(report, file) : report.complaint;
  if (!complaint.empty()) return false;
  std::vector<unsigned char> bytes;
  try {
    cv::imencode(".png", draw_contact_sheet(report), bytes);
  } catch (const cv::Exception&) {
    complaint = "There is not enough memory for a contact sheet of " +
                std::to_string(report.samples.size()) + " samples.";
    return false;
  }
  const std::error_code error = replace_file(file, bytes);
  if (!error) return true;
  complaint = "The contact sheet cannot be written to " + file + ": " + error.message() + ".";
  return false;
}

}  // namespace halcyra
