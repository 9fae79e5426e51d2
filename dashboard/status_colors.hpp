// The colour of a status word.
#pragma once

#include <string>

#include <opencv2/core/types.hpp>

namespace halcyra {

// Green for "OK", orange for "degraded", yellow for "fallback", red for any other word; letter case
// counts. BGR.
cv::Scalar color_for(const std::string& state);

}  // namespace halcyra
