#include "record/command_line.hpp"

#include <gtest/gtest.h>

namespace halcyra::record {
namespace {

std::string fault_of(const std::vector<std::string>& arguments) {
  const CommandLine line = parse_command_line(arguments);
  EXPECT_EQ(line.request == Request::kWrongUse, !line.fault.empty());
  return line.fault;
}

TEST(RecorderCommandLine, NeedsNoMoreThanTheFolder) {
  const CommandLine line = parse_command_line({"room"});
  EXPECT_EQ(line.request, Request::kRecord);
  EXPECT_EQ(line.options.folder, "room");
  EXPECT_EQ(line.options.seconds, 0U);
  EXPECT_EQ(line.options.sets, kMostSets);
  EXPECT_EQ(line.options.streams, (StreamChoice{true, true, true}));
  EXPECT_EQ(line.options.color, ColorFiles::kJpeg);
  EXPECT_EQ(line.options.jpeg_quality, 95);
  EXPECT_FALSE(line.options.anonymous);
}

TEST(RecorderCommandLine, TakesEachOption) {
  const CommandLine line =
      parse_command_line({"--sets", "12", "room", "--streams", "depth,color", "--color", "png",
                          "--jpeg-quality", "7", "--anonymous"});
  EXPECT_EQ(line.request, Request::kRecord) << line.fault;
  EXPECT_EQ(line.options.folder, "room");
  EXPECT_EQ(line.options.sets, 12U);
  EXPECT_EQ(line.options.streams, (StreamChoice{true, false, true}));
  EXPECT_EQ(line.options.color, ColorFiles::kPng);
  EXPECT_EQ(line.options.jpeg_quality, 7);
  EXPECT_TRUE(line.options.anonymous);
  EXPECT_EQ(parse_command_line({"room", "--seconds", "90"}).options.seconds, 90U);
}

TEST(RecorderCommandLine, LastOccurrenceWins) {
  const CommandLine line = parse_command_line(
      {"room", "--sets", "3", "--sets", "5", "--streams", "ir", "--streams", "depth"});
  EXPECT_EQ(line.options.sets, 5U);
  EXPECT_EQ(line.options.streams, (StreamChoice{false, false, true}));
}

TEST(RecorderCommandLine, NumbersMustBeWholeAndInRange) {
  for (const std::string option : {"--sets", "--seconds", "--jpeg-quality"}) {
    for (const std::string value : {"", "0", "-1", "+1", " 1", "1 ", "1.5", "1e2", "0x10", "x",
                                    "9x", "1000000", "99999999999999999999999999", "nan", "1,0"}) {
      EXPECT_NE(fault_of({"room", option, value}).find(option + " must be a whole number from 1"),
                std::string::npos)
          << option << " " << value;
    }
  }
  EXPECT_EQ(fault_of({"room", "--sets", "999999"}), "");
  EXPECT_EQ(fault_of({"room", "--seconds", "86400"}), "");
  EXPECT_NE(fault_of({"room", "--seconds", "86401"}), "");
  EXPECT_EQ(fault_of({"room", "--jpeg-quality", "100"}), "");
  EXPECT_NE(fault_of({"room", "--jpeg-quality", "101"}), "");
}

TEST(RecorderCommandLine, SaysWhatIsWrong) {
  EXPECT_EQ(fault_of({}), "no folder is named");
  EXPECT_EQ(fault_of({"--sets", "3"}), "no folder is named");
  EXPECT_EQ(fault_of({""}), "the folder has an empty name");
  EXPECT_EQ(fault_of({"one", "two"}), "a second folder is named, \"two\"");
  EXPECT_EQ(fault_of({"room", "--fps", "3"}), "there is no option \"--fps\"");
  EXPECT_EQ(fault_of({"room", "-x"}), "there is no option \"-x\"");
  EXPECT_EQ(fault_of({"room", "--sets"}), "--sets needs a value");
  EXPECT_EQ(fault_of({"room", "--sets", "3", "--seconds", "3"}),
            "--seconds and --sets exclude each other");
  EXPECT_EQ(fault_of({"room", "--color", "bmp"}), "--color must be jpeg or png, not \"bmp\"");
  for (const std::string list :
       {"", ",", "color,", ",ir", "color,,ir", "colour", "rgb", "ir depth"}) {
    EXPECT_NE(fault_of({"room", "--streams", list}).find("with commas between them"),
              std::string::npos)
        << list;
  }
}

TEST(RecorderCommandLine, HelpAndVersionComeBeforeWhatFollows) {
  EXPECT_EQ(parse_command_line({"--help"}).request, Request::kHelp);
  EXPECT_EQ(parse_command_line({"room", "-h", "--fps"}).request, Request::kHelp);
  EXPECT_EQ(parse_command_line({"--version", "--help"}).request, Request::kVersion);
  EXPECT_EQ(parse_command_line({"--fps", "--help"}).request, Request::kWrongUse);
}

TEST(RecorderCommandLine, UsageNamesEachOption) {
  for (const std::string option : {"--seconds", "--sets", "--streams", "--color", "--jpeg-quality",
                                   "--anonymous", "--help", "--version"}) {
    EXPECT_NE(usage().find(option), std::string::npos) << option;
  }
}

}  // namespace
}  // namespace halcyra::record
