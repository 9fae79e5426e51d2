#include "face_pipeline/person_identity.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace halcyra {
namespace {

const std::string kOwner = "Dorran";

}  // namespace

bool is_owner_label(const std::string& label) { return label.find(kOwner) != std::string::npos; }

std::string person_display_name(const FaceInfo& face) {
  if (is_owner_label(face.label)) return kOwner;
  if (face.person_id >= 1) return "Person " + std::to_string(face.person_id);
  return "Unknown";
}

cv::Scalar person_color_for(int index, const std::string& label) {
  static const cv::Scalar kOwnerColor(80, 230, 120, 0);
  static const std::array<cv::Scalar, 5> kPalette = {{
      {80, 160, 245, 0},
      {195, 110, 230, 0},
      {55, 200, 220, 0},
      {230, 170, 75, 0},
      {150, 210, 95, 0},
  }};
  if (is_owner_label(label)) return kOwnerColor;
  return kPalette[static_cast<std::size_t>(std::max(index, 0)) % kPalette.size()];
}

}  // namespace halcyra
