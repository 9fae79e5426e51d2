// Says in words why the quality gate refuses a face, and what helps.
#pragma once

#include <string>

#include <opencv2/core/types.hpp>

#include "face_pipeline/quality_gate.hpp"

namespace halcyra {

// The measure that led to a verdict of quality_verdict beside its limit, for example "sharpness
// 31.4, at least 60"; "" for "accepted". The measure is rounded away from the limit.
std::string measure_at_fault(const std::string& verdict, cv::Size size,
                             const FaceMeasures& measures);

// What to do for a better picture: a sentence; "" for "accepted".
std::string advice_for(const std::string& verdict);

}  // namespace halcyra
