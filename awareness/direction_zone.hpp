// Names for horizontal directions as seen from the sensor.
#pragma once

#include <string>

namespace halcyra {

// The zone of an angle in degrees, negative to the left: "far left", "left", "center-left",
// "center-right", "right" or "far right", split at -45, -20, 0, 20 and 45 with each limit in the
// zone to its right; "unknown" for NaN and infinities.
std::string direction_zone(double angle);

}  // namespace halcyra
