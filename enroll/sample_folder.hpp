// The folder that samples are written to. They are biometric data: what is made here can be read by
// its owner alone.
#pragma once

#include <ctime>
#include <filesystem>
#include <optional>
#include <string>

#include <opencv2/core/mat.hpp>

#include "enroll/pose.hpp"

namespace halcyra {

// Makes the folder and one for each pose where they are missing, with mode 0700, and tries whether
// files can be written there. False, with a sentence in `complaint`, if not.
bool prepare_sample_folder(const std::filesystem::path& folder, std::string& complaint);

// Writes the 8-bit grey crop as FOLDER/STAGE/YYYYMMDDTHHMMSSZ-NUMBER.png, with mode 0600. The time
// is UTC; the number is the lowest from 1 on that makes the name a new one, so no file is ever
// replaced. The file appears whole or not at all. Returns its path; nothing, with a sentence in
// `complaint`, if it cannot be written.
std::optional<std::filesystem::path> write_sample(const std::filesystem::path& folder, Pose pose,
                                                  const cv::Mat& crop, std::time_t time,
                                                  std::string& complaint);

// Whether others than their owner can read the samples: whether the folder exists and lets anybody
// else in.
bool others_can_read(const std::filesystem::path& folder);

}  // namespace halcyra
