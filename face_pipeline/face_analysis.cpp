#include "face_pipeline/face_analysis.hpp"

#include <string>

#include "face_pipeline/owner_recognition.hpp"
#include "face_pipeline/person_identity.hpp"
#include "face_pipeline/quality_gate.hpp"

namespace halcyra {
namespace {

std::string box_text(const cv::Rect& box) {
  return std::to_string(box.x) + "," + std::to_string(box.y) + "," + std::to_string(box.width) +
         "x" + std::to_string(box.height);
}

void remember_last(const FaceInfo& face, RecognitionState& state) {
  state.cc_last_label = face.label;
  state.cc_last_detector_type = face.detector_type;
  state.cc_last_face_box = box_text(face.box);
  state.cc_last_confidence = face.confidence;
  state.cc_last_quality = face.quality;
  state.cc_last_stage = face.stage;
}

void measure_and_judge(FaceInfo& face, const cv::Mat& crop) {
  const FaceMeasures measures = measure_face(crop);
  face.brightness = measures.brightness;
  face.contrast = measures.contrast;
  face.sharpness = measures.sharpness;
  face.quality = quality_verdict(crop.size(), measures);
}

// Rejected faces count as unknown. Accepted ones are counted by their identity, so without a model
// they are not counted at all.
void count_or_recognise(FaceInfo& face, const cv::Mat& crop, RecognitionState& state,
                        RuntimeStatus& status, const Options& options) {
  if (face.quality != "accepted") {
    ++state.cc_unknown_predictions;
  } else if (!state.recognizer.empty()) {
    recognize_owner(face, crop, state, status, options);
  }
}

}  // namespace

std::vector<FaceInfo> analyze_faces(const std::vector<Detection>& detections, const cv::Mat& grey,
                                    RecognitionState& state, RuntimeStatus& status,
                                    const Options& options) {
  const cv::Rect frame(0, 0, grey.cols, grey.rows);
  std::vector<FaceInfo> faces;
  for (const Detection& detection : detections) {
    FaceInfo face;
    face.box = detection.box & frame;
    if (face.box.width < 1 || face.box.height < 1) continue;
    face.detector_type = detection.detector_type;
    const cv::Mat crop = grey(face.box).clone();
    measure_and_judge(face, crop);
    count_or_recognise(face, crop, state, status, options);
    remember_last(face, state);
    const int index = static_cast<int>(faces.size());
    face.person_id = index + 1;
    face.color = person_color_for(index, face.label);
    faces.push_back(face);
  }
  return faces;
}

}  // namespace halcyra
