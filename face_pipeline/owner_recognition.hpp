// Decides whether a face is the owner's: matches it with the LBPH model and lets repeated good
// matches confirm it.
#pragma once

#include <string>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/face_info.hpp"
#include "face_pipeline/recognition_state.hpp"

namespace halcyra {

struct RuntimeStatus;

// Loads the samples of `options.samples_dir` into the state and trains the model in memory; sets
// `samples_loaded`. Without a sample the model stays null and "Recognition samples unavailable" is
// logged, else "Dorran recognition samples loaded: " and their number. A samples path that exists
// but is no folder throws std::filesystem::filesystem_error.
void train_recognizer(RecognitionState& state, const Options& options, RuntimeStatus& status);

// Adds this face's vote to the run-wide history, keeps the last `confirm_window` of them and
// returns "ConfirmedDorran", "CandidateDorran" or "Unknown". `distance` is the LBPH distance,
// `predicted_label` the class that the model answered with.
std::string vote_identity(RecognitionState& state, int predicted_label, double distance,
                          const Options& options);

// The stage of the sample whose pixels are nearest to the 160 x 160 probe; "unknown" without one.
std::string nearest_stage(const std::vector<TrainingSample>& samples, const cv::Mat& probe);

// Matches an accepted face (8-bit grey crop) with the model, which must not be null: fills
// `confidence`, `stage` and `label` of `face`, counts the outcome and logs a confirmed or an
// unknown face.
void recognize_owner(FaceInfo& face, const cv::Mat& crop, RecognitionState& state,
                     RuntimeStatus& status, const Options& options);

}  // namespace halcyra
