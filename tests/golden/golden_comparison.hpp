// Compares a picture with the one that is kept for it.
#pragma once

#include <filesystem>

#include <gtest/gtest.h>
#include <opencv2/core/mat.hpp>

namespace halcyra {

// Succeeds when no pixel differs. Else the picture and a map of what differs, white on black, are
// written into the report folder, which is made when it is missing, and named in the message.
::testing::AssertionResult equals_golden_picture(const cv::Mat& actual,
                                                 const std::filesystem::path& golden,
                                                 const std::filesystem::path& report_folder);

}  // namespace halcyra
