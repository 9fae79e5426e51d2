// What the sensor sees in the golden pictures: a room with nobody, with one person or with two.
#pragma once

#include <opencv2/core/mat.hpp>

namespace halcyra {

// The pictures of one moment, 8-bit BGR.
struct RoomPictures {
  cv::Mat color;     // 1920 x 1080
  cv::Mat infrared;  // 512 x 424
  cv::Mat depth;     // 512 x 424
};

// `people` is 0 to 2. Everybody is the same photograph, mirrored for the second person; the room
// and the distances are computed.
RoomPictures room_pictures(int people);

// The face of a person, 1 to `people`, in pixels of the colour picture.
cv::Rect face_in_room(int person, int people);

}  // namespace halcyra
