#include "enroll/report_task.hpp"

#include <filesystem>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "enroll/report_table.hpp"
#include "tests/enroll/sample_set.hpp"

#include <nlohmann/json.hpp>

namespace halcyra {
namespace {

struct Outcome {
  int status;
  std::string output;
  std::string errors;
};

class ReportOnFolder : public ::testing::Test {
 protected:
  Outcome run() {
    options_.pipeline = set_.options;
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    Outcome outcome{report_on_folder(options_), "", ""};
    outcome.output = ::testing::internal::GetCapturedStdout();
    outcome.errors = ::testing::internal::GetCapturedStderr();
    return outcome;
  }
  void add_good_samples() {
    set_.add("front/1.png", shifted_face(0));
    set_.add("left/1.png", shifted_face(15));
    set_.add("right/1.png", shifted_face(30));
    options_.per_pose = 1;
  }

  SampleSet set_;
  EnrollOptions options_;
};

TEST_F(ReportOnFolder, WritesTheTableOfGoodSamples) {
  add_good_samples();
  const Outcome outcome = run();
  std::ostringstream table;
  write_report_table(table, set_.report(1));
  EXPECT_EQ(outcome.output, table.str());
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(ReportOnFolder, EndsWithOneWhenSomethingShouldBeDone) {
  add_good_samples();
  options_.per_pose = 2;
  EXPECT_EQ(run().status, 1);
}

TEST_F(ReportOnFolder, WritesJson) {
  add_good_samples();
  options_.json = true;
  const Outcome outcome = run();
  EXPECT_EQ(nlohmann::json::parse(outcome.output)["samples"].size(), 3U);
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(ReportOnFolder, SaysOnStandardErrorThatThereIsNothingToReportOn) {
  const Outcome outcome = run();
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors, "There is no folder " + set_.options.samples_dir + ".\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST_F(ReportOnFolder, WritesJsonEvenOfNothing) {
  options_.json = true;
  const Outcome outcome = run();
  EXPECT_EQ(nlohmann::json::parse(outcome.output)["good"], false);
  EXPECT_NE(outcome.errors, "");
  EXPECT_EQ(outcome.status, 1);
}

TEST_F(ReportOnFolder, WritesTheContactSheetAsWell) {
  add_good_samples();
  options_.sheet = (set_.outside() / "sheet.png").string();
  EXPECT_EQ(run().status, 0);
  EXPECT_TRUE(std::filesystem::exists(options_.sheet));
}

TEST_F(ReportOnFolder, FailsWithoutTheContactSheetButReports) {
  add_good_samples();
  options_.sheet = (set_.outside() / "missing" /
                    "she\x1B"
                    "et.png")
                       .string();
  const Outcome outcome = run();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.output, "");
  EXPECT_NE(outcome.errors.find("she?et.png: No such file or directory.\n"), std::string::npos)
      << outcome.errors;
}

}  // namespace
}  // namespace halcyra
