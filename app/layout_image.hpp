// The image that a layout test writes.
#pragma once

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"

namespace halcyra {

struct RuntimeStatus;

// Writes the canvas to captures/control-center-layout-test-WIDTHxHEIGHT.png below the working
// folder, with the width and height of the options, and logs "Layout test image written: " with
// that path. Logs it too when the folder or the file cannot be written.
void write_layout_image(const cv::Mat& canvas, const Options& options, RuntimeStatus& status);

}  // namespace halcyra
