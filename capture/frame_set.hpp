// Takes synchronised frame sets from the running sensor and turns them into pictures, one stream
// after the other, while the set is held.
#pragma once

#include "capture/frame_conversion.hpp"
#include "capture/kinect_session.hpp"

namespace halcyra {

struct RuntimeStatus;

// Waits up to 1000 ms for the next set. True: the session holds it until release_frame_set. False:
// the streams do not run, or no set came, which becomes "timeout waiting for Kinect frame" and its
// like for streams that have never delivered.
bool take_frame_set(KinectSession& session, RuntimeStatus& status);

// Renews the infrared preview from the held set. A frame that is missing or has no contrast leaves
// the preview as it is and is said in `ir_message` while the stream has never delivered.
void convert_infrared(const KinectSession& session, RuntimeStatus& status, cv::Mat& preview);

// Renews the depth preview likewise; a frame with nothing between 250 and 8000 mm counts as
// missing.
void convert_depth(const KinectSession& session, RuntimeStatus& status, cv::Mat& preview);

// The held colour frame as new images, both empty when it is missing or not usable.
ColorImages convert_color(const KinectSession& session);

// Gives the held set back to the listener.
void release_frame_set(KinectSession& session);

}  // namespace halcyra
