#include "dashboard/preview.hpp"

#include <algorithm>
#include <string>

#include <opencv2/imgproc.hpp>

#include "dashboard/mic_hud.hpp"
#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"
#include "dashboard/preview_faces.hpp"
#include "dashboard/preview_insets.hpp"
#include "dashboard/preview_mapping.hpp"
#include "dashboard/status_colors.hpp"
#include "dashboard/view_status.hpp"

namespace halcyra {
namespace {

constexpr double kDimming = 0.72;  // of the colour picture under the skeletal note

constexpr int kUpperStripBaseline = 29;  // below the top of the preview
constexpr int kLowerStripBaseline = 48;
constexpr int kLeastStreamLeft = 170;  // of the stream's state, from the view's name

constexpr int kMostNoteWidth = 520;
constexpr int kNoteHeight = 58;

std::string view_heading(const DashboardScene& scene) { return "CURRENT VIEW: " + scene.label; }

void drawStatusStrip(cv::Mat& canvas, const cv::Rect& frame, const DashboardScene& scene) {
  const bool streaming = scene.status.rgb_ok;
  const bool tracking = scene.status.skeleton_available;
  const int left = frame.x + kPreviewPadding;
  const int upper = frame.y + kUpperStripBaseline;
  put(canvas, view_heading(scene), {left, upper}, 0.43, palette::kPanelTitle, 1);
  put(canvas, streaming ? "RGB STREAM OK" : "RGB STREAM UNAVAILABLE",
      {left + std::max(frame.width - 214, kLeastStreamLeft), upper}, 0.34,
      color_for(streaming ? "OK" : "unavailable"), 1);
  put(canvas, tracking ? "SKELETON TRACKING" : "SKELETON UNAVAILABLE - FACE FALLBACK ACTIVE",
      {left, frame.y + kLowerStripBaseline}, 0.31, color_for(tracking ? "OK" : "degraded"), 1);
}

// The infrared or the depth picture alone, or a card that says why there is none.
void drawSensorPicture(cv::Mat& canvas, const cv::Rect& area, const cv::Mat& picture,
                       const DashboardScene& scene, const std::string& message) {
  if (picture.empty()) {
    drawViewStatus(canvas, area, view_heading(scene), message, color_for("degraded"));
    return;
  }
  drawScaled(canvas, area, picture);
  put(canvas, "LIVE " + scene.label, area.tl() + cv::Point(18, 34), 0.48, palette::kPictureLabel,
      1);
}

// Dims the picture and says in words that no joints are shown.
void drawSkeletalNote(cv::Mat& canvas, const cv::Rect& area) {
  const cv::Scalar color = color_for("degraded");
  cv::Mat picture = canvas(area);
  picture.convertTo(picture, -1, kDimming);
  const cv::Rect note(area.x + kOverlayInset, area.y + kOverlayInset,
                      std::min(area.width - 2 * kOverlayInset, kMostNoteWidth), kNoteHeight);
  cv::rectangle(canvas, note, palette::kPictureGround, cv::FILLED, cv::LINE_8);
  cv::rectangle(canvas, note, color, 1, cv::LINE_8);
  put(canvas, "SKELETON UNAVAILABLE", note.tl() + cv::Point(12, 23), 0.42, color, 1);
  put(canvas, "face fallback active; no fake skeleton joints drawn", note.tl() + cv::Point(12, 45),
      0.3, palette::kSkeletalNote, 1);
}

void drawColorPicture(cv::Mat& canvas, const cv::Rect& area, const DashboardScene& scene) {
  const PreviewMapping mapping = preview_mapping(scene.color.size(), area, scene.view, scene.faces);
  drawScaled(canvas, area, scene.color(mapping.crop));
  if (scene.view == "skeletal" && !scene.status.skeleton_available) drawSkeletalNote(canvas, area);
  if (scene.view == "combo") drawPreviewInsets(canvas, area, scene.infrared, scene.depth);
  drawPreviewFaces(canvas, scene, mapping);
  if (scene.faces.empty()) {
    put(canvas, "No person detected - wide room scan", area.tl() + cv::Point(20, 36), 0.42,
        palette::kNobodyDetected, 1);
  }
}

void drawPicture(cv::Mat& canvas, const cv::Rect& area, const DashboardScene& scene) {
  if (scene.view == "ir") {
    drawSensorPicture(canvas, area, scene.infrared, scene, scene.status.ir_message);
  } else if (scene.view == "depth") {
    drawSensorPicture(canvas, area, scene.depth, scene, scene.status.depth_message);
  } else if (!scene.color.empty()) {
    drawColorPicture(canvas, area, scene);
  } else {
    drawViewStatus(canvas, area, view_heading(scene), scene.status.kinect_message,
                   palette::kNoCameraHeading);
  }
}

}  // namespace

void drawPreview(cv::Mat& canvas, const DashboardGeometry& geometry, const DashboardScene& scene) {
  drawBox(canvas, geometry.preview, palette::kPanelFill, palette::kPanelOutline);
  drawStatusStrip(canvas, geometry.preview, scene);
  drawPicture(canvas, geometry.image_area, scene);
  drawMicHud(canvas, geometry.image_area, scene.status, scene.options.mic_hud, scene.faces);
}

}  // namespace halcyra
