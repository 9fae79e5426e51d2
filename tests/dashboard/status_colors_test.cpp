#include "dashboard/status_colors.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

const cv::Scalar kRed(90, 95, 245);

TEST(StatusColors, HasColoursForThreeWords) {
  EXPECT_EQ(color_for("OK"), cv::Scalar(80, 210, 120));
  EXPECT_EQ(color_for("degraded"), cv::Scalar(70, 180, 245));
  EXPECT_EQ(color_for("fallback"), cv::Scalar(60, 200, 220));
}

TEST(StatusColors, ShowsAnyOtherWordInRed) {
  for (const char* word : {"unavailable", "status-only", "", "ok", "Ok", "OK ", "Degraded",
                           "FALLBACK", "fallbac", "degraded mode"}) {
    EXPECT_EQ(color_for(word), kRed) << word;
  }
}

}  // namespace
}  // namespace halcyra
