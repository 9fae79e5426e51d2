#include "tests/golden/golden_pictures.hpp"

#include <algorithm>
#include <filesystem>
#include <set>

#include <gtest/gtest.h>

#include "tests/golden/golden_comparison.hpp"

namespace halcyra {
namespace {

const std::filesystem::path kPictures = HALCYRA_GOLDEN_PICTURES;
const std::filesystem::path kReports = HALCYRA_GOLDEN_REPORTS;

class GoldenPictures : public ::testing::TestWithParam<GoldenPicture> {};

// After an intended change, run update_golden_pictures to write the new pictures.
TEST_P(GoldenPictures, StayAsTheyAre) {
  EXPECT_TRUE(equals_golden_picture(draw(GetParam()), kPictures / file_name(GetParam()), kReports));
}

std::string test_name(const ::testing::TestParamInfo<GoldenPicture>& info) {
  std::string name = std::filesystem::path(file_name(info.param)).stem().string();
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Dashboards, GoldenPictures, ::testing::ValuesIn(golden_pictures()),
                         test_name);

TEST(GoldenFolder, HoldsNoUnusedPicture) {
  std::set<std::string> known;
  for (const GoldenPicture& picture : golden_pictures()) known.insert(file_name(picture));
  EXPECT_EQ(known.size(), golden_pictures().size());
  for (const auto& entry : std::filesystem::directory_iterator(kPictures)) {
    EXPECT_EQ(known.count(entry.path().filename().string()), 1U) << entry.path();
  }
}

}  // namespace
}  // namespace halcyra
