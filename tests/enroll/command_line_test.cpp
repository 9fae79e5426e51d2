#include "enroll/command_line.hpp"

#include <sstream>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

class EnrollCommandLine : public ::testing::Test {
 protected:
  // What is asked for; nothing when the line is refused.
  std::optional<EnrollRequest> parse(std::vector<const char*> words) {
    options_ = EnrollOptions();
    complaint_.clear();
    words.insert(words.begin(), "halcyra-enroll");
    return parse_enroll_args(static_cast<int>(words.size()), words.data(), options_, complaint_);
  }

  void expect_refused(const std::vector<const char*>& words, const std::string& complaint) {
    EXPECT_EQ(parse(words), std::nullopt) << complaint;
    EXPECT_EQ(complaint_, complaint);
  }

  EnrollOptions options_;
  std::string complaint_;
};

TEST_F(EnrollCommandLine, EnrollsLiveByDefault) {
  EXPECT_EQ(parse({}), EnrollRequest::kRun);
  EXPECT_EQ(options_.task, EnrollTask::kLive);
  EXPECT_EQ(options_.per_pose, 10);
  EXPECT_EQ(options_.pipeline.samples_dir, "faces/dorran");
  EXPECT_FALSE(options_.fullscreen);
}

TEST_F(EnrollCommandLine, SetsWhatALiveRunNeeds) {
  EXPECT_EQ(parse({"--per-pose", "7", "--samples-dir", "here", "--fullscreen", "--cascade", "a.xml",
                   "--profile-cascade", "b.xml"}),
            EnrollRequest::kRun);
  EXPECT_EQ(options_.task, EnrollTask::kLive);
  EXPECT_EQ(options_.per_pose, 7);
  EXPECT_EQ(options_.pipeline.samples_dir, "here");
  EXPECT_TRUE(options_.fullscreen);
  EXPECT_EQ(options_.pipeline.cascade_path, "a.xml");
  EXPECT_EQ(options_.pipeline.profile_cascade_path, "b.xml");
}

TEST_F(EnrollCommandLine, TakesAllPicturesUpToTheNextOption) {
  EXPECT_EQ(parse({"--from", "a.png", "folder", "-", "--per-pose", "3", "--from", "b.jpg"}),
            EnrollRequest::kRun);
  EXPECT_EQ(options_.task, EnrollTask::kFromPictures);
  EXPECT_EQ(options_.pictures, (std::vector<std::string>{"a.png", "folder", "-", "b.jpg"}));
  EXPECT_EQ(options_.per_pose, 3);
}

TEST_F(EnrollCommandLine, SetsWhatAReportNeeds) {
  EXPECT_EQ(parse({"--report", "--json", "--sheet", "out/sheet.png", "--samples-dir", "here",
                   "--per-pose", "5"}),
            EnrollRequest::kRun);
  EXPECT_EQ(options_.task, EnrollTask::kReport);
  EXPECT_TRUE(options_.json);
  EXPECT_EQ(options_.sheet, "out/sheet.png");
  EXPECT_EQ(options_.pipeline.samples_dir, "here");
  EXPECT_EQ(options_.per_pose, 5);
}

TEST_F(EnrollCommandLine, LetsTheLastOccurrenceWin) {
  parse({"--per-pose", "7", "--per-pose", "8"});
  EXPECT_EQ(options_.per_pose, 8);
}

TEST_F(EnrollCommandLine, CountsFromOneToAThousand) {
  EXPECT_EQ(parse({"--per-pose", "1"}), EnrollRequest::kRun);
  EXPECT_EQ(parse({"--per-pose", "1000"}), EnrollRequest::kRun);
  for (const std::string bad : {"0", "1001", "-3", "ten", "1.5", "5x", " 5", "99999999999"}) {
    expect_refused({"--per-pose", bad.c_str()},
                   "--per-pose takes a number from 1 to 1000, not \"" + bad + "\".");
  }
}

TEST_F(EnrollCommandLine, RefusesOptionsWithoutTheirValue) {
  for (const std::string name : {"--per-pose", "--samples-dir", "--cascade", "--profile-cascade"}) {
    expect_refused({name.c_str()}, name + " needs a value.");
    expect_refused({name.c_str(), ""}, name + " needs a value.");
  }
  expect_refused({"--report", "--sheet"}, "--sheet needs a value.");
  expect_refused({"--from"}, "--from takes at least one file or folder.");
  expect_refused({"--from", "--per-pose", "3"}, "--from takes at least one file or folder.");
  expect_refused({"--from", "a.png", ""}, "--from takes files and folders, not an empty name.");
}

TEST_F(EnrollCommandLine, RefusesWhatItDoesNotKnow) {
  expect_refused({"--smile"}, "There is no option \"--smile\".");
  expect_refused({"picture.png"}, "There is no option \"picture.png\".");
  expect_refused({"--from", "a.png", "--json=yes"}, "There is no option \"--json=yes\".");
}

TEST_F(EnrollCommandLine, WritesSheetsAsPng) {
  for (const std::string bad : {"sheet.jpg", "sheet", ".png"}) {
    expect_refused({"--report", "--sheet", bad.c_str()},
                   "--sheet takes a file that ends in .png, not \"" + bad + "\".");
  }
}

TEST_F(EnrollCommandLine, RefusesOptionsThatDoNotGoTogether) {
  expect_refused({"--report", "--from", "a.png"}, "--from does not go with --report.");
  expect_refused({"--from", "a.png", "--report"}, "--from does not go with --report.");
  expect_refused({"--report", "--fullscreen"}, "--fullscreen does not go with --report.");
  expect_refused({"--report", "--cascade", "a.xml"}, "--cascade does not go with --report.");
  expect_refused({"--report", "--profile-cascade", "a.xml"},
                 "--profile-cascade does not go with --report.");
  expect_refused({"--json"}, "--json only goes with --report.");
  expect_refused({"--sheet", "a.png"}, "--sheet only goes with --report.");
  expect_refused({"--from", "a.png", "--json"}, "--json only goes with --report.");
  expect_refused({"--from", "a.png", "--fullscreen"}, "--fullscreen does not go with --from.");
}

TEST_F(EnrollCommandLine, OffersHelpAndVersion) {
  EXPECT_EQ(parse({"--help"}), EnrollRequest::kShowHelp);
  EXPECT_EQ(parse({"-h"}), EnrollRequest::kShowHelp);
  EXPECT_EQ(parse({"--version"}), EnrollRequest::kShowVersion);
  EXPECT_EQ(parse({"--json", "--help", "--smile"}), EnrollRequest::kShowHelp);
  EXPECT_EQ(parse({"--from", "a.png", "-h"}), EnrollRequest::kShowHelp);
}

TEST_F(EnrollCommandLine, NamesEveryOptionInTheUsage) {
  std::ostringstream usage;
  write_enroll_usage(usage, "halcyra-enroll");
  EXPECT_EQ(usage.str().rfind("Usage: halcyra-enroll ", 0), 0U);
  for (const char* option : {"--per-pose N", "--samples-dir DIR", "--fullscreen", "--cascade FILE",
                             "--profile-cascade FILE", "--from FILE_OR_FOLDER...", "--report",
                             "--json", "--sheet FILE.png", "--help", "--version"}) {
    EXPECT_NE(usage.str().find(option), std::string::npos) << option;
  }
}

TEST_F(EnrollCommandLine, SaysTheVersionOfTheProject) {
  std::ostringstream version;
  write_enroll_version(version);
  EXPECT_EQ(version.str(), "halcyra-enroll " HALCYRA_PROJECT_VERSION "\n");
}

}  // namespace
}  // namespace halcyra
