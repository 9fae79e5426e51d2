// Decides whether a face is the owner's: compares it with the samples by the LBPH model, and
// confirms it after several good matches.
#pragma once

#include <string>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/face_info.hpp"
#include "face_pipeline/recognition_state.hpp"

namespace halcyra {

struct RuntimeStatus;

// Loads the samples of `options.samples_dir` into the state, trains the model in memory and sets
// `samples_loaded`. Without any sample the model stays null and "Recognition samples unavailable"
// is logged; otherwise "Dorran recognition samples loaded: " and their number. Throws as
// load_samples does.
void train_recognizer(RecognitionState& state, const Options& options, RuntimeStatus& status);

// Adds this face's vote to the history of the run, keeps the last `confirm_window` votes, and
// returns "ConfirmedDorran", "CandidateDorran" or "Unknown". `predicted_label` is the class that
// the model predicted, `distance` the LBPH distance to it.
std::string vote_identity(RecognitionState& state, int predicted_label, double distance,
                          const Options& options);

// The stage of the sample whose pixels are nearest to the 160 x 160 probe, the first of several;
// "unknown" without samples.
std::string nearest_stage(const std::vector<TrainingSample>& samples, const cv::Mat& probe);

// What the model and the samples say of a face.
struct OwnerMatch {
  int predicted_label = -1;  // class; -1 for none
  double distance = 0.0;     // LBPH distance to the nearest sample, lower is nearer
  std::string stage;         // of the sample with the nearest pixels
};

// Compares an accepted face, given as its 8-bit grey crop, with the model, which must not be null.
// It only reads the state, so several threads may call it at once. Throws what the model throws.
OwnerMatch match_owner(const cv::Mat& crop, const RecognitionState& state);

// Decides by the match and the votes of the run whose the face is. Fills `confidence`, `stage` and
// `label` of `face`, counts the outcome, and logs a confirmed or an unknown face.
void recognize_owner(FaceInfo& face, const OwnerMatch& match, RecognitionState& state,
                     RuntimeStatus& status, const Options& options);

}  // namespace halcyra
