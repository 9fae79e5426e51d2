#include "enroll/draw_enrolment.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include <opencv2/imgproc.hpp>

#include "app/run_state/window_limits.hpp"
#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"
#include "dashboard/preview_mapping.hpp"
#include "enroll/enrolment_layout.hpp"
#include "enroll/face_details.hpp"
#include "enroll/fitted_text.hpp"
#include "enroll/instruction.hpp"

namespace halcyra {
namespace {

cv::Scalar instruction_color(Obstacle obstacle) {
  switch (obstacle) {
    case Obstacle::kWriteFailed:
      return palette::kUnavailable;
    case Obstacle::kDone:
      return palette::kGood;
    case Obstacle::kNoPicture:
    case Obstacle::kPaused:
    case Obstacle::kSeveralPeople:
    case Obstacle::kPoorQuality:
    case Obstacle::kNearCopy:
      return palette::kDegraded;
    default:
      return palette::kPictureLabel;
  }
}

void drawInstruction(cv::Mat& canvas, const EnrolmentLayout& layout, const EnrolmentScene& scene) {
  const cv::Rect room(layout.instruction.x, layout.instruction.y + layout.margin / 2,
                      layout.instruction.width, layout.instruction.height - layout.margin);
  drawFittedText(canvas, instruction(scene.progress, scene.observation, scene.judgement), room,
                 room.height / 2, instruction_color(scene.judgement.obstacle));
}

// Faces of an older picture are not where the boxes say.
void drawFaces(cv::Mat& canvas, const cv::Rect& place, int thickness, const EnrolmentScene& scene) {
  if (scene.judgement.obstacle == Obstacle::kNoPicture) return;
  const PreviewMapping mapping{{cv::Point(0, 0), scene.color.size()}, place};
  const std::vector<FaceInfo>& faces = scene.observation.faces;
  const std::optional<std::size_t> chosen = chosen_face(faces);
  for (std::size_t i = 0; i < faces.size(); ++i) {
    const cv::Rect box = on_canvas(mapping, faces[i].box);
    if (box.empty()) continue;
    cv::Scalar color = palette::kFallback;
    if (i == chosen) color = face_is_good(scene.judgement) ? palette::kGood : palette::kDegraded;
    cv::rectangle(canvas, box, color, thickness, cv::LINE_8);
  }
}

void drawPicture(cv::Mat& canvas, const EnrolmentLayout& layout, const EnrolmentScene& scene) {
  cv::rectangle(canvas, layout.picture, palette::kPictureGround, cv::FILLED);
  if (scene.color.empty()) return;
  const cv::Rect place = place_of_picture(layout.picture, scene.color.size());
  drawScaled(canvas, place, scene.color);
  drawFaces(canvas, place, std::max(2, layout.cap_height / 6), scene);
}

// The part of `row` from one share of its width to another.
cv::Rect column_of(const cv::Rect& row, double from, double to) {
  const int left = row.x + static_cast<int>(row.width * from);
  return {left, row.y, row.x + static_cast<int>(row.width * to) - left, row.height};
}

void drawDetail(cv::Mat& canvas, const cv::Rect& row, int cap_height, const FaceDetail& detail) {
  const cv::Scalar value_color = detail.missed ? palette::kUnavailable : palette::kRowValue;
  const cv::Scalar limit_color = detail.missed ? palette::kUnavailable : palette::kRowKey;
  drawLineOfText(canvas, detail.name, column_of(row, 0.0, 0.34), cap_height, palette::kPanelText);
  drawLineOfText(canvas, detail.value, column_of(row, 0.36, 0.66), cap_height, value_color);
  drawLineOfText(canvas, detail.limit, column_of(row, 0.69, 1.0), 17 * cap_height / 20,
                 limit_color);
}

void drawFaceDetails(cv::Mat& canvas, const EnrolmentLayout& layout, const EnrolmentScene& scene,
                     const FaceInfo& face) {
  constexpr int kHalfRows = 19;  // three for the verdict, two for each detail, four for the note
  const cv::Rect& panel = layout.details;
  const int half_row = panel.height / kHalfRows;
  cv::Rect row(panel.x + layout.margin, panel.y, panel.width - 2 * layout.margin, 3 * half_row);
  const bool accepted = face.quality == "accepted";
  drawLineOfText(canvas, face.quality, row, 3 * layout.cap_height / 2,
                 accepted ? palette::kGood : palette::kUnavailable);
  row.y += row.height;
  row.height = 2 * half_row;
  for (const FaceDetail& detail : face_details(face, scene.progress, scene.observation)) {
    drawDetail(canvas, row, layout.cap_height, detail);
    row.y += row.height;
  }
  if (scene.judgement.obstacle == Obstacle::kNearCopy) {
    row.height = 4 * half_row;
    drawFittedText(canvas, "almost the same as one already taken", row, layout.cap_height,
                   palette::kUnavailable);
  }
}

void drawDetails(cv::Mat& canvas, const EnrolmentLayout& layout, const EnrolmentScene& scene) {
  drawBox(canvas, layout.details, palette::kPanelFill, palette::kPanelOutline);
  const std::vector<FaceInfo>& faces = scene.observation.faces;
  const std::optional<std::size_t> chosen = chosen_face(faces);
  if (chosen && scene.judgement.obstacle != Obstacle::kNoPicture) {
    drawFaceDetails(canvas, layout, scene, faces[*chosen]);
  }
}

std::string bar_text(const EnrolmentProgress& progress, Pose pose) {
  const PoseProgress& one = progress_of(progress, pose);
  return stage_name(pose) + "  " + std::to_string(one.taken) + " of " +
         std::to_string(progress.per_pose) + (one.skipped ? ", skipped" : "");
}

// The pose that is asked for has a bright outline.
void drawBar(cv::Mat& canvas, const cv::Rect& place, const EnrolmentLayout& layout,
             const EnrolmentProgress& progress, Pose pose) {
  const cv::Rect text(place.x, place.y, place.width, place.height / 2);
  const bool skipped = progress_of(progress, pose).skipped;
  drawLineOfText(canvas, bar_text(progress, pose), text, 4 * layout.cap_height / 3,
                 skipped ? palette::kRowKey : palette::kRowValue);
  const cv::Rect bar(place.x, place.y + place.height / 2, place.width,
                     place.height / 2 - layout.margin / 2);
  cv::rectangle(canvas, bar, palette::kSegmentFill, cv::FILLED);
  const double share = static_cast<double>(progress_of(progress, pose).taken) / progress.per_pose;
  const int filled = static_cast<int>(std::lround(bar.width * std::min(share, 1.0)));
  if (filled > 0) {
    cv::rectangle(canvas, cv::Rect(bar.tl(), cv::Size(filled, bar.height)),
                  skipped ? palette::kUntrustedVoice : palette::kGood, cv::FILLED);
  }
  const bool asked = asked_pose(progress) == pose;
  cv::rectangle(canvas, bar, asked ? palette::kLitSegmentOutline : palette::kSegmentOutline,
                asked ? std::max(2, layout.cap_height / 8) : 1);
}

void drawBars(cv::Mat& canvas, const EnrolmentLayout& layout, const EnrolmentProgress& progress) {
  const int count = static_cast<int>(kPoses.size());
  const int width = (layout.bars.width - (count - 1) * layout.margin) / count;
  cv::Rect place(layout.bars.x, layout.bars.y, width, layout.bars.height);
  for (const Pose pose : kPoses) {
    drawBar(canvas, place, layout, progress, pose);
    place.x += width + layout.margin;
  }
}

}  // namespace

void draw_enrolment(cv::Mat& canvas, cv::Size size, const EnrolmentScene& scene) {
  canvas.create(std::max(size.height, kLeastHeight), std::max(size.width, kLeastWidth), CV_8UC3);
  canvas.setTo(cv::Scalar(palette::kBackground));
  const EnrolmentLayout layout = enrolment_layout(canvas.size());
  drawInstruction(canvas, layout, scene);
  drawPicture(canvas, layout, scene);
  drawDetails(canvas, layout, scene);
  drawBars(canvas, layout, scene.progress);
  drawLineOfText(canvas, "space: pause    u: take back the last    n: skip this pose    q: end",
                 layout.keys, layout.cap_height, palette::kKeyHints);
}

}  // namespace halcyra
