#include "dashboard/status_colors.hpp"

namespace halcyra {

cv::Scalar color_for(const std::string& state) {
  if (state == "OK") return {80, 210, 120};
  if (state == "degraded") return {70, 180, 245};
  if (state == "fallback") return {60, 200, 220};
  return {90, 95, 245};
}

}  // namespace halcyra
