// OpenCV as the fuzzers want it: without messages, which would drown theirs, and without threads,
// which cost more than they bring on inputs this small. libFuzzer calls this once, before the first
// input.
#include <opencv2/core/utility.hpp>
#include <opencv2/core/utils/logger.hpp>

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
  cv::setNumThreads(1);
  return 0;
}
