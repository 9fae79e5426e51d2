// Photographs for the sensor.
#pragma once

#include <opencv2/core.hpp>

namespace halcyra {

// So many people side by side, as wide for its height as the sensor's picture; none is an empty
// room.
cv::Mat people(int count);

}  // namespace halcyra
