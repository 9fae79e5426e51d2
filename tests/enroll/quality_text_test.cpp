#include "enroll/quality_text.hpp"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

struct Case {
  cv::Size size;
  FaceMeasures measures;
  std::string verdict;
  std::string fault;
};

std::vector<Case> cases() {
  const cv::Size large(160, 160);
  return {{{79, 102}, {100, 50, 500}, "too_small", "79x102 pixels, at least 80x80"},
          {large, {34.96, 50, 500}, "too_dark", "brightness 34.9, at least 35"},
          {large, {220.01, 50, 500}, "too_bright", "brightness 220.1, at most 220"},
          {large, {100, 19.99, 500}, "low_contrast", "contrast 19.9, at least 20"},
          {large, {100, 50, 59.99}, "too_blurry", "sharpness 59.9, at least 60"}};
}

TEST(QualityText, NamesTheMeasureAndTheLimitThatTheGateHas) {
  for (const Case& each : cases()) {
    ASSERT_EQ(quality_verdict(each.size, each.measures), each.verdict);
    EXPECT_EQ(measure_at_fault(each.verdict, each.size, each.measures), each.fault);
  }
}

TEST(QualityText, AdvisesOnEachVerdict) {
  for (const Case& each : cases()) EXPECT_NE(advice_for(each.verdict), "") << each.verdict;
}

TEST(QualityText, SaysNothingOfAnAcceptedFace) {
  EXPECT_EQ(measure_at_fault("accepted", {160, 160}, {100, 50, 500}), "");
  EXPECT_EQ(advice_for("accepted"), "");
}

}  // namespace
}  // namespace halcyra
