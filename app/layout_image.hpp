// The picture that a layout test leaves behind.
#pragma once

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"

namespace halcyra {

struct RuntimeStatus;

// Writes the canvas to captures/control-center-layout-test-WIDTHxHEIGHT.png, named from the
// options, and logs "Layout test image written: " with that path. A folder or file that cannot be
// written is not noticed.
void write_layout_image(const cv::Mat& canvas, const Options& options, RuntimeStatus& status);

}  // namespace halcyra
