#include "enroll/enrolment_keys.hpp"

namespace halcyra {
namespace {

constexpr int kEscape = 27;

}  // namespace

EnrolmentCommand command_of_key(int key) {
  switch (key) {
    case ' ':
      return EnrolmentCommand::kPauseOrGoOn;
    case 'u':
    case 'U':
      return EnrolmentCommand::kTakeBack;
    case 'n':
    case 'N':
      return EnrolmentCommand::kSkipPose;
    case 'q':
    case 'Q':
    case kEscape:
      return EnrolmentCommand::kEnd;
    default:
      return EnrolmentCommand::kNone;
  }
}

}  // namespace halcyra
