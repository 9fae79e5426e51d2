// A whole cycle but for the window: from a frame set to the finished canvas.
#include <memory>

#include <opencv2/imgproc.hpp>

#include "app/runtime_status.hpp"
#include "app/window_geometry.hpp"
#include "awareness/update_room_awareness.hpp"
#include "bench/enrolled_owner.hpp"
#include "bench/measurement.hpp"
#include "bench/recorded_frames.hpp"
#include "capture/frame_conversion.hpp"
#include "dashboard/draw_dashboard.hpp"
#include "dashboard/font_scale.hpp"
#include "face_pipeline/face_analysis.hpp"
#include "face_pipeline/face_detection.hpp"
#include "face_pipeline/face_detectors.hpp"

namespace halcyra {
namespace {

// The frame's way through the program, with OpenCV's own cascades or with the program's.
class Cycle {
 public:
  Cycle(RecordedFrames frames, bool own_cascades) : frames_(std::move(frames)) {
    fit_to_screen(options_, {1920, 1080, "bench"});
    if (own_cascades) {
      load_detectors(detectors_, options_, status_);
    } else {
      detectors_.frontal.load(options_.cascade_path);
      detectors_.profile.load(options_.profile_cascade_path);
    }
  }

  void run() {
    infrared_picture(frames_.infrared, infrared_);
    depth_picture(frames_.depth, depth_);
    color_ = color_images(frames_.color, ChannelOrder::bgrx);
    const std::vector<FaceInfo> faces =
        analyze_faces(detect_multi(detectors_.frontal, &detectors_.profile, color_.grey, options_),
                      color_.grey, recognition_, status_, options_);
    update_room_awareness(status_, faces, options_, color_.bgr.cols);
    g_font_scale = options_.font_scale;
    draw_dashboard(canvas_, color_.bgr, infrared_, depth_, status_, options_, faces);
  }

 private:
  RecordedFrames frames_;
  Options options_;
  RuntimeStatus status_;
  FaceDetectors detectors_;
  RecognitionState recognition_ = enrolled_owner(24);
  ColorImages color_;
  cv::Mat infrared_;
  cv::Mat depth_;
  cv::Mat canvas_;
};

}  // namespace

void measure_cycle() {
  for (const NamedFrames& named : measured_frames()) {
    auto own = std::make_shared<Cycle>(named.frames, true);
    auto library = std::make_shared<Cycle>(named.frames, false);
    measure(
        "whole cycle", named.name, [own] { own->run(); }, [library] { library->run(); });
  }
}

}  // namespace halcyra
