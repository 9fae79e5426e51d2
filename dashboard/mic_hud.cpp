#include "dashboard/mic_hud.hpp"

#include <algorithm>
#include <array>
#include <string>

#include "app/run_state/runtime_status.hpp"
#include "awareness/direction_zone.hpp"
#include "awareness/voice_direction.hpp"
#include "dashboard/panel_drawing.hpp"
#include "face_pipeline/person_identity.hpp"

namespace halcyra {
namespace {

constexpr std::array<const char*, 6> kZones = {"far left",     "left",  "center-left",
                                               "center-right", "right", "far right"};
constexpr int kSegments = static_cast<int>(kZones.size());

const cv::Scalar kNeutralFill(42, 49, 59);
const cv::Scalar kNeutralOutline(82, 94, 110);
const cv::Scalar kLitOutline(230, 240, 250);
const cv::Scalar kUntrusted(105, 112, 124);
const cv::Scalar kAmbiguous(80, 190, 230);
const cv::Scalar kSomebody(80, 160, 245);

struct StripGeometry {
  int segment_width;
  int gap;
  int segment_height;
  int left;
  int top;
};

StripGeometry strip_geometry(const cv::Rect& area) {
  const bool high = area.height >= 522;
  StripGeometry strip;
  strip.segment_width = area.width >= 1288 ? 28 : std::max(14, area.width / 46);
  strip.gap = area.width >= 1104 ? 12 : strip.segment_width / 2;
  strip.segment_height = high ? 9 : std::max(5, area.height / 58);
  const int width = kSegments * strip.segment_width + (kSegments - 1) * strip.gap;
  strip.left = area.x + (area.width - width) / 2;
  strip.top = area.y + area.height - (high ? 19 : 18);
  return strip;
}

cv::Rect segment_rect(const StripGeometry& strip, int index) {
  return {strip.left + index * (strip.segment_width + strip.gap), strip.top, strip.segment_width,
          strip.segment_height};
}

cv::Scalar highlight_color(const VoiceDirection& voice, const std::string& voice_match,
                           const std::vector<FaceInfo>& faces) {
  if (!voice.trusted) return kUntrusted;
  if (voice_match.find("ambiguous") != std::string::npos) return kAmbiguous;
  for (const FaceInfo& face : faces) {
    if (voice_match.find(person_display_name(face)) != std::string::npos) return face.color;
  }
  return kSomebody;
}

}  // namespace

void drawMicHud(cv::Mat& canvas, const cv::Rect& area, const RuntimeStatus& status, bool enabled,
                const std::vector<FaceInfo>& faces) {
  if (!enabled || area.width <= 119 || area.height <= 69) return;
  const StripGeometry strip = strip_geometry(area);
  const VoiceDirection voice = voice_direction(status.voice);
  const std::string zone = direction_zone(voice.angle);
  const cv::Scalar highlight = highlight_color(voice, status.room.voice_match, faces);
  for (int i = 0; i < kSegments; ++i) {
    const bool lit = zone == kZones[static_cast<std::size_t>(i)];
    drawBox(canvas, segment_rect(strip, i), lit ? highlight : kNeutralFill,
            lit ? kLitOutline : kNeutralOutline);
  }
}

}  // namespace halcyra
