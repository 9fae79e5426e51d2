#include "dashboard/status_colors.hpp"

#include "dashboard/palette.hpp"

namespace halcyra {

cv::Scalar color_for(const std::string& state) {
  if (state == "OK") return palette::kGood;
  if (state == "degraded") return palette::kDegraded;
  if (state == "fallback") return palette::kFallback;
  return palette::kUnavailable;
}

}  // namespace halcyra
