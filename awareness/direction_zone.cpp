#include "awareness/direction_zone.hpp"

#include <cmath>

namespace halcyra {

std::string direction_zone(double angle) {
  if (!std::isfinite(angle)) return "unknown";
  if (angle < -45) return "far left";
  if (angle < -20) return "left";
  if (angle < 0) return "center-left";
  if (angle < 20) return "center-right";
  if (angle < 45) return "right";
  return "far right";
}

}  // namespace halcyra
