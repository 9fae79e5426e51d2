// The name and the colour of a face, wherever it appears.
#pragma once

#include <string>

#include <opencv2/core/types.hpp>

#include "face_pipeline/face_info.hpp"

namespace halcyra {

// Whether a label is that of the owner, candidate or confirmed: whether it contains "Dorran".
bool is_owner_label(const std::string& label);

// "Dorran" for the owner, otherwise "Person " and `person_id`; "Unknown" if that is below 1.
std::string person_display_name(const FaceInfo& face);

// The owner's green for a label of the owner, otherwise one of five colours, which repeat; a
// negative index counts as 0. BGR, 0 to 255.
cv::Scalar person_color_for(int index, const std::string& label);

}  // namespace halcyra
