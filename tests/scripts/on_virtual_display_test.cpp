// Which picture scripts/on-virtual-display.sh keeps.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "tests/scripts/script_stage.hpp"

namespace halcyra {
namespace {

// The tools work, and tell the program that they were called. The window leaves when its second
// picture is begun, so that the first one was kept. Before the program starts, one is taken without
// it.
TEST(OnVirtualDisplay, KeepsNoPictureOfAWindowThatHasLeft) {
  const ScriptStage stage;
  stage.write_program("bin/maim",
                      "#!/bin/sh\necho taken >>\"$STAGE/taken\"\nexec /usr/bin/maim \"$@\"\n");
  stage.write_program("bin/xwininfo",
                      "#!/bin/sh\n/usr/bin/xwininfo \"$@\"\necho asked >>\"$STAGE/asked\"\n");
  const std::string picture = stage.path("picture.png");
  const ScriptResult result = stage.run("scripts/on-virtual-display.sh",
                                        {picture, HALCYRA_BRIEF_WINDOW, stage.path("").string()});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "Picture of the window: " + picture + "\n");
  const cv::Mat shown = cv::imread(picture);
  ASSERT_EQ(shown.size(), cv::Size(320, 240));
  EXPECT_EQ(cv::norm(shown, cv::Mat(shown.size(), shown.type(), cv::Scalar::all(255))), 0.0);
}

// The slow first use of the tool is over when the program starts.
TEST(OnVirtualDisplay, TakesAPictureBeforeTheProgramStarts) {
  const ScriptStage stage;
  stage.write_program("bin/maim", "#!/bin/sh\nsleep 0.5\necho taken >>\"$STAGE/taken\"\n");
  stage.write_program("bin/program", "#!/bin/sh\ncat \"$STAGE/taken\"\n");
  const ScriptResult result =
      stage.run("scripts/on-virtual-display.sh", {stage.path("picture.png"), "program"});
  EXPECT_EQ(result.output, "taken\n") << result.errors;
}

TEST(OnVirtualDisplay, SaysThatThereWasNoWindow) {
  const ScriptStage stage;
  stage.write_program("bin/program", "#!/bin/sh\nexit 7\n");
  const std::string picture = stage.path("picture.png");
  const ScriptResult result = stage.run("scripts/on-virtual-display.sh", {picture, "program"});
  EXPECT_EQ(result.status, 7);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors,
            "No picture of the window: it was not on the screen, or only for a moment.\n");
  EXPECT_FALSE(std::filesystem::exists(picture));
}

TEST(OnVirtualDisplay, SaysThatNoPictureCanBeTaken) {
  const ScriptStage stage;
  stage.write_program("bin/maim", "#!/bin/sh\necho 'no eyes' >&2\nexit 1\n");
  const ScriptResult result =
      stage.run("scripts/on-virtual-display.sh", {stage.path("picture.png"), "true"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.errors.find("No pictures can be taken: no eyes\n"), std::string::npos)
      << result.errors;
}

}  // namespace
}  // namespace halcyra
