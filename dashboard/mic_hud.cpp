#include "dashboard/mic_hud.hpp"

#include <algorithm>
#include <array>
#include <string>

#include "app/run_state/runtime_status.hpp"
#include "awareness/direction_zone.hpp"
#include "awareness/voice_direction.hpp"
#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"
#include "face_pipeline/person_identity.hpp"

namespace halcyra {
namespace {

constexpr std::array<const char*, 6> kZones = {"far left",     "left",  "center-left",
                                               "center-right", "right", "far right"};
constexpr int kSegments = static_cast<int>(kZones.size());

constexpr int kLeastAreaWidth = 120;  // a smaller area has no room for the strip
constexpr int kLeastAreaHeight = 70;
constexpr int kLeastSegmentWidth = 14;
constexpr int kMostSegmentWidth = 28;
constexpr int kMostGap = 12;  // between two segments
constexpr int kLeastSegmentHeight = 5;
constexpr int kMostSegmentHeight = 9;

struct StripGeometry {
  int segment_width;
  int gap;
  int segment_height;
  int left;
  int top;
};

StripGeometry strip_geometry(const cv::Rect& area) {
  StripGeometry strip;
  strip.segment_width = std::clamp(area.width / 46, kLeastSegmentWidth, kMostSegmentWidth);
  strip.gap = std::min(strip.segment_width / 2, kMostGap);
  strip.segment_height = std::clamp(area.height / 58, kLeastSegmentHeight, kMostSegmentHeight);
  const int width = kSegments * strip.segment_width + (kSegments - 1) * strip.gap;
  strip.left = area.x + (area.width - width) / 2;
  const int from_bottom = strip.segment_height == kMostSegmentHeight ? 19 : 18;
  strip.top = area.y + area.height - from_bottom;
  return strip;
}

cv::Rect segment_rect(const StripGeometry& strip, int index) {
  return {strip.left + index * (strip.segment_width + strip.gap), strip.top, strip.segment_width,
          strip.segment_height};
}

cv::Scalar highlight_color(const VoiceDirection& voice, const std::string& voice_match,
                           const std::vector<FaceInfo>& faces) {
  if (!voice.trusted) return palette::kUntrustedVoice;
  if (voice_match.find("ambiguous") != std::string::npos) return palette::kAmbiguousVoice;
  for (const FaceInfo& face : faces) {
    if (voice_match.find(person_display_name(face)) != std::string::npos) return face.color;
  }
  return palette::kUnmatchedVoice;
}

}  // namespace

void drawMicHud(cv::Mat& canvas, const cv::Rect& area, const RuntimeStatus& status, bool enabled,
                const std::vector<FaceInfo>& faces) {
  if (!enabled || area.width < kLeastAreaWidth || area.height < kLeastAreaHeight) return;
  const StripGeometry strip = strip_geometry(area);
  const VoiceDirection voice = voice_direction(status.voice);
  const std::string zone = direction_zone(voice.angle);
  const cv::Scalar highlight = highlight_color(voice, status.room.voice_match, faces);
  for (int i = 0; i < kSegments; ++i) {
    const bool lit = zone == kZones[static_cast<std::size_t>(i)];
    if (lit) {
      drawBox(canvas, segment_rect(strip, i), highlight, palette::kLitSegmentOutline);
    } else {
      drawBox(canvas, segment_rect(strip, i), palette::kSegmentFill, palette::kSegmentOutline);
    }
  }
}

}  // namespace halcyra
