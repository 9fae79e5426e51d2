#include "enroll/enrolment_keys.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

TEST(EnrolmentKeys, HaveTheirCommandsInEitherCase) {
  EXPECT_EQ(command_of_key(' '), EnrolmentCommand::kPauseOrGoOn);
  for (const char key : {'u', 'U'}) EXPECT_EQ(command_of_key(key), EnrolmentCommand::kTakeBack);
  for (const char key : {'n', 'N'}) EXPECT_EQ(command_of_key(key), EnrolmentCommand::kSkipPose);
  for (const char key : {'q', 'Q', '\x1b'}) EXPECT_EQ(command_of_key(key), EnrolmentCommand::kEnd);
}

TEST(EnrolmentKeys, DoNothingOtherwise) {
  for (int key = -1; key <= 0xffff; ++key) {
    const bool has_command =
        key < 0x80 && key > 0 &&
        std::string(" uUnNqQ\x1b").find(static_cast<char>(key)) != std::string::npos;
    EXPECT_EQ(command_of_key(key) != EnrolmentCommand::kNone, has_command) << key;
  }
}

}  // namespace
}  // namespace halcyra
