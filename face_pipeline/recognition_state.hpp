// What owner recognition keeps during a run: the model, its samples, the votes, and the tallies and
// last values that the exit summary prints.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include <opencv2/core/cvstd_wrapper.hpp>
#include <opencv2/face.hpp>

#include "face_pipeline/training_sample.hpp"

namespace halcyra {

struct RecognitionState {
  cv::Ptr<cv::face::LBPHFaceRecognizer> recognizer;  // null when no sample could be loaded
  std::vector<TrainingSample> samples;
  std::deque<int> confirm_history;  // 1 for a vote for the owner, otherwise 0; oldest first
  // Faces that the quality gate rejected, or that were matched as unknown.
  int cc_unknown_predictions = 0;
  int cc_candidate_dorran_predictions = 0;
  int cc_confirmed_dorran_predictions = 0;
  std::string cc_last_label = "Unknown";
  std::string cc_last_detector_type = "none";
  std::string cc_last_face_box = "none";  // x,y,WIDTHxHEIGHT
  double cc_last_confidence = 0.0;
  std::string cc_last_quality = "no_face";
  std::string cc_last_stage = "unknown";
};

}  // namespace halcyra
