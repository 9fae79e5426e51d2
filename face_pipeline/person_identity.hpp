// How a face is named and coloured wherever it appears.
#pragma once

#include <string>

#include <opencv2/core/types.hpp>

#include "face_pipeline/face_info.hpp"

namespace halcyra {

// True when an identity label names the owner, as a candidate or confirmed.
bool is_owner_label(const std::string& label);

// "Dorran" for the owner, else "Person " and the number, else "Unknown" when it has no number.
std::string person_display_name(const FaceInfo& face);

// The owner's green, else one of five colours by index; a negative index counts as 0. BGR.
cv::Scalar person_color_for(int index, const std::string& label);

}  // namespace halcyra
