#include "face_pipeline/owner_recognition.hpp"

#include <cmath>
#include <numeric>
#include <vector>

#include "app/run_state/event_log.hpp"
#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/lbph_model.hpp"
#include "face_pipeline/sample_loader.hpp"

namespace halcyra {
namespace {

constexpr int kOwnerClass = 1;

void count_outcome(const FaceInfo& face, RecognitionState& state, RuntimeStatus& status) {
  if (face.label == "ConfirmedDorran") {
    ++state.cc_confirmed_dorran_predictions;
    add_event(status, "Identity confirmed: Dorran via " + face.detector_type);
  } else if (face.label == "CandidateDorran") {
    ++state.cc_candidate_dorran_predictions;
  } else {
    ++state.cc_unknown_predictions;
    add_event(status, "Unknown face via " + face.detector_type);
  }
}

}  // namespace

void train_recognizer(RecognitionState& state, const Options& options, RuntimeStatus& status) {
  status.samples_loaded = load_samples(options.samples_dir, state.samples);
  if (!status.samples_loaded) {
    add_event(status, "Recognition samples unavailable");
    return;
  }
  state.recognizer = train_model(state.samples);
  add_event(status, "Dorran recognition samples loaded: " + std::to_string(state.samples.size()));
}

std::string vote_identity(RecognitionState& state, int predicted_label, double distance,
                          const Options& options) {
  const bool owner = predicted_label == kOwnerClass;
  const bool candidate = owner && distance <= options.candidate_threshold;
  const int vote = owner && distance <= options.confirmed_threshold ? 1 : 0;
  std::deque<int>& history = state.confirm_history;
  history.push_back(vote);
  while (history.size() > static_cast<std::size_t>(options.confirm_window)) history.pop_front();
  const int votes = std::accumulate(history.begin(), history.end(), 0);
  if (vote == 1 && votes >= options.confirm_required) return "ConfirmedDorran";
  return candidate ? "CandidateDorran" : "Unknown";
}

// The probe is equalised and the samples are not, so the nearest one only hints at the pose. The
// score is the norm of the difference over the number of pixels. Its square comes from three dot
// products, which OpenCV computes ten times as fast as that norm; sums of whole numbers are exact.
std::string nearest_stage(const std::vector<TrainingSample>& samples, const cv::Mat& probe) {
  std::string stage = "unknown";
  double best = 1e100;
  const double probe_square = probe.dot(probe);
  for (const TrainingSample& sample : samples) {
    const cv::Mat& image = sample.image;
    const double distance = std::sqrt(image.dot(image) + probe_square - 2.0 * image.dot(probe));
    const double score = distance / static_cast<double>(probe.total());
    if (score < best) {
      best = score;
      stage = sample.stage;
    }
  }
  return stage;
}

OwnerMatch match_owner(const cv::Mat& crop, const RecognitionState& state) {
  const cv::Mat probe = make_probe(crop);
  OwnerMatch match;
  state.recognizer->predict(probe, match.predicted_label, match.distance);
  match.stage = nearest_stage(state.samples, probe);
  return match;
}

void recognize_owner(FaceInfo& face, const OwnerMatch& match, RecognitionState& state,
                     RuntimeStatus& status, const Options& options) {
  face.confidence = match.distance;
  face.stage = match.stage;
  face.label = vote_identity(state, match.predicted_label, match.distance, options);
  count_outcome(face, state, status);
}

}  // namespace halcyra
