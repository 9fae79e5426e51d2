// Compares a picture with its golden picture.
#pragma once

#include <filesystem>

#include <gtest/gtest.h>
#include <opencv2/core/mat.hpp>

namespace halcyra {

// Succeeds when size, type and all pixels are the same. Otherwise writes the picture and, if size
// and type are the same, a map of the differing pixels, white on black, into the report folder,
// which is created if needed. The message names the files.
::testing::AssertionResult equals_golden_picture(const cv::Mat& actual,
                                                 const std::filesystem::path& golden,
                                                 const std::filesystem::path& report_folder);

}  // namespace halcyra
