// The commands of the keys in the enrolment window.
#pragma once

namespace halcyra {

enum class EnrolmentCommand { kNone, kPauseOrGoOn, kTakeBack, kSkipPose, kEnd };

// `key` is the code as waitKey returned it, -1 without a key. Letters count in either case.
EnrolmentCommand command_of_key(int key);

}  // namespace halcyra
