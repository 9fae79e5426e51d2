// Takes synchronised frame sets from the running sensor and turns them into pictures.
#pragma once

#include "capture/frame_conversion.hpp"
#include "capture/kinect_session.hpp"

namespace halcyra {

struct RuntimeStatus;

// Waits up to 1000 ms for the next set. True: the session holds it until release_frame_set. False
// at once if the streams do not run. False after a timeout, which is told in `kinect_message`, and
// in `ir_message` and `depth_message` of streams that have never delivered.
bool take_frame_set(KinectSession& session, RuntimeStatus& status);

// Renews the infrared preview (8-bit BGR, the frame's size) from the held set. A frame that is
// missing, unusable or without contrast leaves the preview as it is; `ir_message` tells it as long
// as the stream has never delivered.
void convert_infrared(const KinectSession& session, RuntimeStatus& status, cv::Mat& preview);

// Renews the depth preview in the same way. A frame with nothing between 250 and 8000 mm counts as
// unusable.
void convert_depth(const KinectSession& session, RuntimeStatus& status, cv::Mat& preview);

// Renews the images from the held colour frame. False, with the images as they were, if it is
// missing or unusable.
bool convert_color(const KinectSession& session, ColorImages& images);

// Gives the held set back to the listener, which deletes its frames.
void release_frame_set(KinectSession& session);

}  // namespace halcyra
