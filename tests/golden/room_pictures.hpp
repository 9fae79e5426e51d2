// What the sensor sees in the golden pictures: a room with nobody, one person or two in it.
#pragma once

#include <opencv2/core/mat.hpp>

namespace halcyra {

// The pictures of one moment, as the capture hands them on.
struct RoomPictures {
  cv::Mat color;     // 1920 x 1080
  cv::Mat infrared;  // 512 x 424
  cv::Mat depth;     // 512 x 424
};

// The people are a photograph, the second one mirrored; the room is computed.
RoomPictures room_pictures(int people);

// Where the face of a person, the first or the second of `people`, stands in the colour picture.
cv::Rect face_in_room(int person, int people);

}  // namespace halcyra
