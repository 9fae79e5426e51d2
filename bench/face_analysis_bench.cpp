#include <cfloat>
#include <memory>
#include <vector>

#include <opencv2/face.hpp>
#include <opencv2/imgproc.hpp>

#include "app/run_state/runtime_status.hpp"
#include "bench/enrolled_owner.hpp"
#include "bench/measurement.hpp"
#include "bench/recorded_frames.hpp"
#include "face_pipeline/face_analysis.hpp"

namespace halcyra {
namespace {

// Where the owner's face is in the frame.
const cv::Rect kFace(820, 240, 160, 160);

// OpenCV's recogniser, trained with the same pictures.
cv::Ptr<cv::face::LBPHFaceRecognizer> library_model(const RecognitionState& state) {
  std::vector<cv::Mat> images;
  for (const TrainingSample& sample : state.samples) images.push_back(sample.image);
  auto model = cv::face::LBPHFaceRecognizer::create(1, 8, 8, 8, DBL_MAX);
  model->train(images, std::vector<int>(images.size(), 1));
  return model;
}

// The OpenCV calls for a face, without the program around them.
void library_calls(const cv::Mat& grey, const cv::face::LBPHFaceRecognizer& model,
                   const RecognitionState& state) {
  const cv::Mat crop = grey(kFace).clone();
  cv::Scalar mean;
  cv::Scalar deviation;
  cv::meanStdDev(crop, mean, deviation);
  cv::Mat edges;
  cv::Laplacian(crop, edges, CV_64F);
  cv::meanStdDev(edges, mean, deviation);
  cv::Mat probe;
  cv::equalizeHist(crop, probe);
  cv::resize(probe, probe, {160, 160}, 0, 0, cv::INTER_AREA);
  int label = -1;
  double distance = 0;
  model.predict(probe, label, distance);
  for (const TrainingSample& sample : state.samples) cv::norm(sample.image, probe, cv::NORM_L2);
}

}  // namespace

void add_face_analysis_rows() {
  cv::Mat grey;
  cv::cvtColor(measured_frames()[1].frames.color, grey, cv::COLOR_BGRA2GRAY);
  for (const int count : {10, 100, 1000}) {
    auto state = std::make_shared<RecognitionState>(enrolled_owner(count));
    auto status = std::make_shared<RuntimeStatus>();
    const cv::Ptr<cv::face::LBPHFaceRecognizer> model = library_model(*state);
    add_row(
        "analyze_faces", std::to_string(count) + " samples",
        [=] {
          analyze_faces({{kFace, "frontal"}}, grey, *state, *status, Options{});
        },
        [=] { library_calls(grey, *model, *state); });
  }
}

}  // namespace halcyra
