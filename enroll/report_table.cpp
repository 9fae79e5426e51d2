#include "enroll/report_table.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "enroll/report_text.hpp"

namespace halcyra {
namespace {

using Row = std::vector<std::string>;

enum class Side { kLeft, kRight };

struct Column {
  std::string title;
  Side side;
};

std::string padded(const std::string& text, std::size_t width, Side side) {
  const std::string blanks(width - std::min(width, shown_width(text)), ' ');
  return side == Side::kLeft ? text + blanks : blanks + text;
}

void write_row(std::ostream& out, const Row& row, const std::vector<Column>& columns,
               const std::vector<std::size_t>& widths) {
  std::string line;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    // Texts need more of a gap than numbers, which seldom fill their columns.
    if (i > 0) line += columns[i - 1].side == Side::kLeft ? "  " : " ";
    line += padded(row[i], widths[i], columns[i].side);
  }
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << "\n";
}

void write_table(std::ostream& out, const std::vector<Column>& columns,
                 const std::vector<Row>& rows) {
  Row titles;
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    titles.push_back(columns[i].title);
    widths.push_back(shown_width(columns[i].title));
    for (const Row& row : rows) widths[i] = std::max(widths[i], shown_width(row[i]));
  }
  write_row(out, titles, columns, widths);
  for (const Row& row : rows) write_row(out, row, columns, widths);
}

// People count from 1.
std::string number_of(std::size_t index) { return std::to_string(index + 1); }

Row sample_row(const SampleReport& report, std::size_t index) {
  const ReportedSample& sample = report.samples[index];
  Row row = {number_of(index), printable(sample.path)};
  if (sample.image.empty()) {
    row.insert(row.end(), {"-", "-", "-", "-", "unreadable", "-", "-", "-"});
    return row;
  }
  row.push_back(std::to_string(sample.size.width) + "x" + std::to_string(sample.size.height));
  row.push_back(decimal_text(sample.measures.brightness, 0));
  row.push_back(decimal_text(sample.measures.contrast, 0));
  row.push_back(decimal_text(sample.measures.sharpness, 0));
  row.push_back(sample.quality);
  row.push_back(sample.nearest ? decimal_text(sample.nearest->distance, 1) : "-");
  row.push_back(sample.nearest ? number_of(sample.nearest->index) : "-");
  row.push_back(sample.nearest ? sample.result : "-");
  return row;
}

void write_samples(std::ostream& out, const SampleReport& report) {
  static const std::vector<Column> kColumns = {{"no", Side::kRight},       {"file", Side::kLeft},
                                               {"size", Side::kRight},     {"light", Side::kRight},
                                               {"contrast", Side::kRight}, {"sharp", Side::kRight},
                                               {"verdict", Side::kLeft},   {"dist", Side::kRight},
                                               {"to", Side::kRight},       {"result", Side::kLeft}};
  std::vector<Row> rows;
  for (std::size_t index = 0; index < report.samples.size(); ++index) {
    rows.push_back(sample_row(report, index));
  }
  write_table(out, kColumns, rows);
}

Row stage_row(const StageSummary& stage) {
  const std::optional<double>& median = stage.median_distance;
  return {printable(stage.stage),
          std::to_string(stage.samples),
          std::to_string(stage.undecodable),
          std::to_string(stage.accepted),
          std::to_string(stage.confirmed_votes),
          std::to_string(stage.candidates),
          std::to_string(stage.unknown),
          median ? decimal_text(*median, 1) : "-"};
}

void write_stages(std::ostream& out, const SampleReport& report) {
  static const std::vector<Column> kColumns = {
      {"stage", Side::kLeft},     {"samples", Side::kRight},         {"unreadable", Side::kRight},
      {"accepted", Side::kRight}, {"confirmed votes", Side::kRight}, {"candidates", Side::kRight},
      {"unknown", Side::kRight},  {"median dist", Side::kRight}};
  std::vector<Row> rows;
  for (const StageSummary& stage : report.stages) rows.push_back(stage_row(stage));
  write_table(out, kColumns, rows);
}

void write_findings(std::ostream& out, const SampleReport& report) {
  if (report.findings.empty()) {
    out << "Nothing needs to be done.\n";
    return;
  }
  out << "To do:\n";
  for (const Finding& finding : report.findings) {
    out << "- " << printable(finding.sentence) << "\n";
    for (const std::size_t index : finding.samples) {
      out << "    " << number_of(index) << "  " << printable(report.samples[index].path) << "\n";
    }
  }
}

}  // namespace

void write_report_table(std::ostream& out, const SampleReport& report) {
  if (!report.complaint.empty()) {
    out << printable(report.complaint) << "\n";
    return;
  }
  out << "Samples in " << printable(report.folder) << "\n\n";
  write_samples(out, report);
  out << "\n";
  write_stages(out, report);
  out << "\n";
  write_findings(out, report);
}

}  // namespace halcyra
