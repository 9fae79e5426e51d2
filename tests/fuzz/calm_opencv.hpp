// OpenCV as the fuzzers want it: without messages, which would drown theirs, and without threads,
// which cost more than they bring on inputs this small.
#pragma once

#include <opencv2/core/utility.hpp>
#include <opencv2/core/utils/logger.hpp>

namespace halcyra {

inline void calm_opencv() {
  cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
  cv::setNumThreads(1);
}

}  // namespace halcyra
