#include "dashboard/preview_faces.hpp"

#include <algorithm>
#include <initializer_list>
#include <string>

#include <opencv2/imgproc.hpp>

#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"
#include "face_pipeline/person_identity.hpp"

namespace halcyra {
namespace {

constexpr int kDebugBoxThickness = 3;
constexpr int kBoxThickness = 2;
constexpr int kSpeakerMargin = 4;  // from a box to the speaker's mark around it

// The name of a face, on a filled background.
constexpr int kLabelAboveBox = 9;        // baseline
constexpr int kLeastLabelBaseline = 24;  // below the top of the picture
constexpr int kLabelAscent = 19;         // from the top of the background to the baseline
constexpr int kLabelHeight = 25;
constexpr int kLabelCharacterWidth = 9;
constexpr int kLeastLabelWidth = 110;
constexpr int kMostLabelWidth = 300;

// How a face is marked; a thickness of 0 means no box.
struct FaceMark {
  int box_thickness;
  std::string label;  // empty for none
  double label_scale;
};

bool is_one_of(const std::string& view, std::initializer_list<const char*> views) {
  return std::any_of(views.begin(), views.end(), [&](const char* each) { return view == each; });
}

FaceMark debug_mark(const FaceInfo& face) {
  return {kDebugBoxThickness,
          person_display_name(face) + "  " + face.detector_type + "  " + face.quality, 0.36};
}

// Without boxes, the views that are about people still show names.
FaceMark normal_mark(const FaceInfo& face, const DashboardScene& scene) {
  const bool boxed = !scene.status.skeleton_available && scene.options.face_boxes &&
                     is_one_of(scene.view, {"rgb", "combo", "room_overview", "follow", "skeletal"});
  const bool named = boxed || is_one_of(scene.view, {"room_overview", "follow", "combo"});
  return {boxed ? kBoxThickness : 0, named ? person_display_name(face) : "", 0.42};
}

bool is_speaker(const FaceInfo& face, const RuntimeStatus& status) {
  return !status.skeleton_available &&
         status.room.voice_match.find(person_display_name(face)) != std::string::npos;
}

void drawLabel(cv::Mat& canvas, const cv::Rect& box, const cv::Rect& area, const FaceMark& mark,
               const cv::Scalar& color) {
  const int baseline = std::max(area.y + kLeastLabelBaseline, box.y - kLabelAboveBox);
  const int width = std::clamp(kLabelCharacterWidth * static_cast<int>(mark.label.size()),
                               kLeastLabelWidth, kMostLabelWidth);
  cv::rectangle(canvas, cv::Rect(box.x + 2, baseline - kLabelAscent, width, kLabelHeight),
                palette::kFaceLabelFill, cv::FILLED, cv::LINE_8);
  put(canvas, mark.label, {box.x + 6, baseline}, mark.label_scale, color, 1);
}

void drawSpeakerMark(cv::Mat& canvas, const cv::Rect& box, const cv::Rect& area,
                     const cv::Scalar& color) {
  const cv::Rect around(box.x - kSpeakerMargin, box.y - kSpeakerMargin,
                        box.width + 2 * kSpeakerMargin, box.height + 2 * kSpeakerMargin);
  cv::rectangle(canvas, around & area, color, 1, cv::LINE_8);
}

}  // namespace

void drawPreviewFaces(cv::Mat& canvas, const DashboardScene& scene, const PreviewMapping& mapping) {
  for (const FaceInfo& face : scene.faces) {
    const cv::Rect box = on_canvas(mapping, face.box);
    if (box.empty()) continue;
    const FaceMark mark = scene.options.debug ? debug_mark(face) : normal_mark(face, scene);
    if (mark.box_thickness > 0) {
      cv::rectangle(canvas, box, face.color, mark.box_thickness, cv::LINE_8);
    }
    if (!mark.label.empty()) drawLabel(canvas, box, mapping.area, mark, face.color);
    if (is_speaker(face, scene.status)) drawSpeakerMark(canvas, box, mapping.area, face.color);
  }
}

}  // namespace halcyra
