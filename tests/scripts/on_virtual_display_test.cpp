// Which picture scripts/on-virtual-display.sh keeps.
#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "tests/scripts/script_stage.hpp"

namespace halcyra {
namespace {

// The tools work, and tell the program that they were called. The window leaves when its second
// picture is begun, so that the first one was kept.
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

}  // namespace
}  // namespace halcyra
