// Paints one complete picture of a live enrolment.
#pragma once

#include <opencv2/core/mat.hpp>

#include "enroll/enrolment_progress.hpp"
#include "enroll/sample_taker.hpp"

namespace halcyra {

// What one picture is drawn from; valid during the call that draws it.
struct EnrolmentScene {
  const cv::Mat& color;            // 8-bit BGR; empty while there is none
  const Observation& observation;  // face boxes are in pixels of `color`
  const EnrolmentProgress& progress;
  const Judgement& judgement;
};

// Makes `canvas` an 8-bit BGR picture of that size, each side raised to at least 800 x 480.
void draw_enrolment(cv::Mat& canvas, cv::Size size, const EnrolmentScene& scene);

}  // namespace halcyra
