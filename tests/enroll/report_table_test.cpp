#include "enroll/report_table.hpp"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/enroll/report_samples.hpp"

namespace halcyra {
namespace {

std::string table_of(const SampleReport& report) {
  std::ostringstream out;
  write_report_table(out, report);
  return out.str();
}

TEST(WriteReportTable, HasARowForEachSampleAndEachStageAndEndsWithWhatToDo) {
  EXPECT_EQ(
      table_of(made_report()),
      "Samples in faces/dorran\n"
      "\n"
      "no file                             size light contrast sharp verdict     dist to result\n"
      " 1 front/20261122T101010Z-1.png  180x176   120       41   312 accepted    29.0  2 confirmed "
      "vote\n"
      " 2 front/20261122T101010Z-2.png  180x176   120       41   312 too_blurry  61.5  1 unknown\n"
      " 3 left/20261122T101012Z-1.png         -     -        -     - unreadable     -  - -\n"
      "\n"
      "stage  samples unreadable accepted confirmed votes candidates unknown median dist\n"
      "front        2          0        1               1          0       1        45.3\n"
      "left         0          1        0               0          0       0           -\n"
      "right        0          0        0               0          0       0           -\n"
      "\n"
      "To do:\n"
      "- Remove it.\n"
      "    3  left/20261122T101012Z-1.png\n"
      "- Keep one of them.\n"
      "    1  front/20261122T101010Z-1.png\n"
      "    2  front/20261122T101010Z-2.png\n"
      "- Take 2 more.\n");
}

TEST(WriteReportTable, SaysThatNothingNeedsToBeDone) {
  SampleReport report = made_report();
  report.findings.clear();
  const std::string table = table_of(report);
  EXPECT_NE(table.find("\n\nNothing needs to be done.\n"), std::string::npos) << table;
}

TEST(WriteReportTable, HasNoDistanceForASingleSample) {
  SampleReport report = made_report();
  report.samples.erase(report.samples.begin() + 1, report.samples.end());
  report.samples.front().nearest.reset();
  report.findings.clear();
  const std::string table = table_of(report);
  EXPECT_NE(table.find("accepted     -  - -\n"), std::string::npos) << table;
}

TEST(WriteReportTable, FitsIntoHundredColumnsWithUsualNames) {
  SampleReport report = made_report();
  report.samples[1].quality = "too_bright";
  for (int i = 0; i < 90; ++i) report.samples.push_back(report.samples.front());
  std::istringstream lines(table_of(report));
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100U) << line;
}

// The name takes more bytes than any other, but not more characters.
TEST(WriteReportTable, AlignsNamesOfSeveralBytesPerCharacter) {
  SampleReport report = made_report();
  const std::string usual = table_of(report);
  std::string name = "front/";
  for (int i = 0; i < 20; ++i) name += "\xC3\xAB";
  report.samples[0].path = name;
  const std::string table = table_of(report);
  EXPECT_EQ(table.substr(0, table.find(name)),
            usual.substr(0, usual.find("front/20261122T101010Z-1.png")));
  EXPECT_NE(table.find(name + "    180x176"), std::string::npos) << table;
}

TEST(WriteReportTable, ShowsNamesFromOutsideSafely) {
  SampleReport report = made_report();
  report.folder = "fa\x1B[2Jces";
  report.samples[0].path = "front/\nx\x1B[31m.png";
  report.stages[0].stage = "fr\tont";
  report.findings[0].sentence = "Are these of fr\ront?";
  const std::string table = table_of(report);
  for (const char* name : {"fa?[2Jces", "front/?x?[31m.png", "fr?ont ", "fr?ont?"}) {
    EXPECT_NE(table.find(name), std::string::npos) << name;
  }
  for (const char c : table) EXPECT_TRUE(c == '\n' || c >= ' ') << static_cast<int>(c);
}

TEST(WriteReportTable, OnlyComplainsWhereThereIsNothingToReportOn) {
  SampleReport report;
  report.complaint = "There is no folder a\x1B.";
  EXPECT_EQ(table_of(report), "There is no folder a?.\n");
}

}  // namespace
}  // namespace halcyra
