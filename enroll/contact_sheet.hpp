// A picture of all samples, for a person to look through.
#pragma once

#include <string>

#include <opencv2/core/mat.hpp>

#include "enroll/sample_report.hpp"

namespace halcyra {

// Each sample as the recogniser has it, stage by stage, with its number in the report's table, its
// name, its distance and its result. What a finding is about has a red frame and words that say
// what it is. 8-bit BGR; its size follows from the number of samples, of which there may be none.
cv::Mat draw_contact_sheet(const SampleReport& report);

// Writes the sheet as a PNG file that only its owner can read. The file appears whole or not at
// all, and replaces an earlier one. False, with a sentence in `complaint`, if it cannot be written,
// if the report has nothing to show, or if the file is a sample or would be taken for one.
bool write_contact_sheet(const SampleReport& report, const std::string& file,
                         std::string& complaint);

}  // namespace halcyra
