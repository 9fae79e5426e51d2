#include "dashboard/preview.hpp"

#include <algorithm>
#include <string>

#include <opencv2/imgproc.hpp>

#include "dashboard/mic_hud.hpp"
#include "dashboard/panel_drawing.hpp"
#include "dashboard/preview_faces.hpp"
#include "dashboard/preview_insets.hpp"
#include "dashboard/preview_mapping.hpp"
#include "dashboard/status_colors.hpp"
#include "dashboard/view_status.hpp"

namespace halcyra {
namespace {

const cv::Scalar kFrameFill(22, 28, 38);
const cv::Scalar kFrameOutline(52, 64, 80);
const cv::Scalar kTitleColor(222, 230, 240);
const cv::Scalar kLiveColor(245, 250, 255);
const cv::Scalar kMissingColor(96, 110, 130);
const cv::Scalar kNoteFill(8, 11, 16);
const cv::Scalar kNoteColor(210, 220, 232);
const cv::Scalar kScanColor(215, 224, 236);

constexpr double kDimming = 0.72;

void drawStatusStrip(cv::Mat& canvas, const cv::Rect& frame, const DashboardScene& scene) {
  const bool streaming = scene.status.rgb_ok;
  const bool tracking = scene.status.skeleton_available;
  const int left = frame.x + 12;
  put(canvas, "CURRENT VIEW: " + scene.label, {left, frame.y + 29}, 0.43, kTitleColor, 1);
  put(canvas, streaming ? "RGB STREAM OK" : "RGB STREAM UNAVAILABLE",
      {left + std::max(frame.width - 214, 170), frame.y + 29}, 0.34,
      color_for(streaming ? "OK" : "unavailable"), 1);
  put(canvas, tracking ? "SKELETON TRACKING" : "SKELETON UNAVAILABLE - FACE FALLBACK ACTIVE",
      {left, frame.y + 48}, 0.31, color_for(tracking ? "OK" : "degraded"), 1);
}

void drawScaled(cv::Mat& canvas, const cv::Rect& area, const cv::Mat& picture) {
  cv::Mat target = canvas(area);
  cv::resize(picture, target, target.size(), 0, 0, cv::INTER_AREA);
}

// The infrared or the depth picture alone, or a card that says why there is none.
void drawSensorPicture(cv::Mat& canvas, const cv::Rect& area, const cv::Mat& picture,
                       const DashboardScene& scene, const std::string& message) {
  if (picture.empty()) {
    drawViewStatus(canvas, area, "CURRENT VIEW: " + scene.label, message, color_for("degraded"));
    return;
  }
  drawScaled(canvas, area, picture);
  put(canvas, "LIVE " + scene.label, {area.x + 18, area.y + 34}, 0.48, kLiveColor, 1);
}

// Dims the picture and says in words that no joints are shown.
void drawSkeletalNote(cv::Mat& canvas, const cv::Rect& area) {
  const cv::Scalar color = color_for("degraded");
  cv::Mat picture = canvas(area);
  picture.convertTo(picture, -1, kDimming);
  const cv::Rect note(area.x + 14, area.y + 14, std::min(area.width - 28, 520), 58);
  cv::rectangle(canvas, note, kNoteFill, cv::FILLED, cv::LINE_8);
  cv::rectangle(canvas, note, color, 1, cv::LINE_8);
  put(canvas, "SKELETON UNAVAILABLE", {area.x + 26, area.y + 37}, 0.42, color, 1);
  put(canvas, "face fallback active; no fake skeleton joints drawn", {area.x + 26, area.y + 59},
      0.3, kNoteColor, 1);
}

void drawColorPicture(cv::Mat& canvas, const cv::Rect& area, const DashboardScene& scene) {
  const PreviewMapping mapping = preview_mapping(scene.color.size(), area, scene.view, scene.faces);
  drawScaled(canvas, area, scene.color(mapping.crop));
  if (scene.view == "skeletal" && !scene.status.skeleton_available) drawSkeletalNote(canvas, area);
  if (scene.view == "combo") drawPreviewInsets(canvas, area, scene.infrared, scene.depth);
  drawPreviewFaces(canvas, scene, mapping);
  if (scene.faces.empty()) {
    put(canvas, "No person detected - wide room scan", {area.x + 20, area.y + 36}, 0.42, kScanColor,
        1);
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
    drawViewStatus(canvas, area, "CURRENT VIEW: " + scene.label, scene.status.kinect_message,
                   kMissingColor);
  }
}

}  // namespace

void drawPreview(cv::Mat& canvas, const DashboardGeometry& geometry, const DashboardScene& scene) {
  drawBox(canvas, geometry.preview, kFrameFill, kFrameOutline);
  drawStatusStrip(canvas, geometry.preview, scene);
  drawPicture(canvas, geometry.image_area, scene);
  drawMicHud(canvas, geometry.image_area, scene.status, scene.options.mic_hud, scene.faces);
}

}  // namespace halcyra
