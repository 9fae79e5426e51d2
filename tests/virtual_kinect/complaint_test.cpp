#include "virtual_kinect/complaint.hpp"

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect {
namespace {

TEST(Complain, PrintsOneLineWhateverItQuotes) {
  testing::internal::CaptureStderr();
  complain("\"a\tb\x1B[31m\r\nc\x7F\" is no folder, \xC3\xA4 neither");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "virtual Kinect: \"a?b?[31m??c?\" is no folder, \xC3\xA4 neither\n");
}

}  // namespace
}  // namespace halcyra::virtual_kinect
