// Where the parts of the enrolment picture are. Computes only; draws nothing.
#pragma once

#include <opencv2/core/types.hpp>

namespace halcyra {

// Rectangles in pixels of the canvas; they do not overlap.
struct EnrolmentLayout {
  cv::Rect instruction;  // across the top
  cv::Rect picture;      // the room for the colour picture
  cv::Rect details;      // beside it: the measures of the face
  cv::Rect bars;         // below: how many samples there are of each pose
  cv::Rect keys;         // across the bottom
  int margin = 0;        // between the parts, and from the edge
  int cap_height = 0;    // of the details' letters
};

// `canvas` is at least 800 x 480.
EnrolmentLayout enrolment_layout(cv::Size canvas);

// The largest rectangle of the picture's shape in the middle of the room. Neither may be empty.
cv::Rect place_of_picture(const cv::Rect& room, cv::Size picture);

}  // namespace halcyra
