// Colours that say how something is.
#pragma once

#include <string>

#include <opencv2/core/types.hpp>

namespace halcyra {

// Green for "OK", orange for "degraded", yellow for "fallback", red for any other word. BGR.
cv::Scalar color_for(const std::string& state);

}  // namespace halcyra
