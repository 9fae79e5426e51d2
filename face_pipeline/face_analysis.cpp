#include "face_pipeline/face_analysis.hpp"

#include <exception>
#include <optional>
#include <string>

#include <opencv2/core/utility.hpp>

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

// A face and what came of looking at its pixels, which depends on no other face.
struct SeenFace {
  FaceInfo face;
  std::optional<OwnerMatch> match;  // of an accepted face, if there is a model
  std::exception_ptr failure;
};

std::vector<SeenFace> faces_inside(const cv::Rect& frame,
                                   const std::vector<Detection>& detections) {
  std::vector<SeenFace> all;
  for (const Detection& detection : detections) {
    SeenFace seen;
    seen.face.box = detection.box & frame;
    if (seen.face.box.width < 1 || seen.face.box.height < 1) continue;
    seen.face.detector_type = detection.detector_type;
    all.push_back(seen);
  }
  return all;
}

void measure_and_judge(FaceInfo& face, const cv::Mat& crop) {
  const FaceMeasures measures = measure_face(crop);
  face.brightness = measures.brightness;
  face.contrast = measures.contrast;
  face.sharpness = measures.sharpness;
  face.quality = quality_verdict(crop.size(), measures);
}

bool is_accepted(const FaceInfo& face) { return face.quality == "accepted"; }

void look_at(SeenFace& seen, const cv::Mat& grey, const RecognitionState& state) {
  const cv::Mat crop = grey(seen.face.box).clone();
  measure_and_judge(seen.face, crop);
  if (is_accepted(seen.face) && !state.recognizer.empty()) seen.match = match_owner(crop, state);
}

// Looks at several faces side by side. OpenCV would replace an exception that leaves one of its
// threads, and the faces before the one that failed must still count. So exceptions wait in
// `failure`.
void look_at_all(std::vector<SeenFace>& all, const cv::Mat& grey, const RecognitionState& state) {
  const auto look_at_some = [&](const cv::Range& range) {
    for (int i = range.start; i < range.end; ++i) {
      SeenFace& seen = all[static_cast<std::size_t>(i)];
      try {
        look_at(seen, grey, state);
      } catch (...) {
        seen.failure = std::current_exception();
      }
    }
  };
  const cv::Range every(0, static_cast<int>(all.size()));
  // A single face needs no loop. Inside one, OpenCV would do all its work on one thread.
  if (every.size() > 1) {
    cv::parallel_for_(every, look_at_some);
  } else {
    look_at_some(every);
  }
}

// Rejected faces count as unknown. Accepted ones are counted by their identity, so without a model
// they are not counted at all.
void count_or_recognise(SeenFace& seen, RecognitionState& state, RuntimeStatus& status,
                        const Options& options) {
  if (!is_accepted(seen.face)) {
    ++state.cc_unknown_predictions;
  } else if (seen.match) {
    recognize_owner(seen.face, *seen.match, state, status, options);
  }
}

}  // namespace

std::vector<FaceInfo> analyze_faces(const std::vector<Detection>& detections, const cv::Mat& grey,
                                    RecognitionState& state, RuntimeStatus& status,
                                    const Options& options) {
  std::vector<SeenFace> all = faces_inside({0, 0, grey.cols, grey.rows}, detections);
  look_at_all(all, grey, state);
  std::vector<FaceInfo> faces;
  for (SeenFace& seen : all) {
    if (seen.failure) std::rethrow_exception(seen.failure);
    count_or_recognise(seen, state, status, options);
    FaceInfo& face = seen.face;
    remember_last(face, state);
    const int index = static_cast<int>(faces.size());
    face.person_id = index + 1;
    face.color = person_color_for(index, face.label);
    faces.push_back(face);
  }
  return faces;
}

}  // namespace halcyra
