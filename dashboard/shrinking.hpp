// Shrinks pictures to the pixels that cv::resize gives them with INTER_AREA, in less time.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra {

enum class ShrinkingKernel { kBaseline, kAvx2 };

// Those that the program was built for and this machine can run, the fastest last. None on other
// processors than x86-64: OpenCV is built there with fused multiply-adds, which round otherwise.
const std::vector<ShrinkingKernel>& shrinking_kernels();

// Whether `shrink` can make a picture of that size. It can when the picture is 8-bit BGR, when both
// sides shrink by at most a factor of 14, and not both by a whole factor, for which OpenCV has
// other arithmetic. Never without a kernel, and never while cv::useOptimized() is off.
bool can_shrink(const cv::Mat& picture, cv::Size size);

// Fills `target`, an 8-bit BGR picture for whose size can_shrink holds, with the whole picture. The
// two may be parts of larger ones, but must not share pixels. Works on all of OpenCV's threads.
void shrink(const cv::Mat& picture, cv::Mat& target,
            ShrinkingKernel kernel = shrinking_kernels().back());

}  // namespace halcyra
