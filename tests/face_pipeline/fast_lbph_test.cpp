#include "face_pipeline/fast_lbph.hpp"

#include <cfloat>
#include <cstddef>
#include <future>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/face_pipeline/many_pictures.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

using Model = cv::Ptr<cv::face::LBPHFaceRecognizer>;
using Pictures = std::vector<cv::Mat>;
using Results = std::vector<std::pair<int, double>>;

Model library_model() { return cv::face::LBPHFaceRecognizer::create(1, 8, 8, 8, DBL_MAX); }

// Labels and distances of all samples, in their order.
Results all_results(const Model& model, const cv::Mat& picture) {
  const auto collector = cv::face::StandardCollector::create();
  model->predict(picture, collector);
  return collector->getResults(false);
}

// Both models, side by side: what is done to one is done to the other.
class FastLbph : public ::testing::Test {
 protected:
  void train(const Pictures& pictures, const std::vector<int>& labels) {
    fast_->train(pictures, labels);
    library_->train(pictures, labels);
  }
  void expect_equal_predictions(const cv::Mat& picture) {
    ASSERT_EQ(all_results(fast_, picture), all_results(library_, picture));
    int label = -1;
    double distance = 0.0;
    fast_->predict(picture, label, distance);
    int library_label = -1;
    double library_distance = 0.0;
    library_->predict(picture, library_label, library_distance);
    ASSERT_EQ(label, library_label);
    ASSERT_EQ(distance, library_distance);
  }

  Model fast_ = make_fast_lbph();
  Model library_ = library_model();
  const Pictures& pictures_ = many_pictures();
};

TEST_F(FastLbph, HasTheSettingsOfTheClassicOperator) {
  EXPECT_EQ(fast_->getRadius(), 1);
  EXPECT_EQ(fast_->getNeighbors(), 8);
  EXPECT_EQ(fast_->getGridX(), 8);
  EXPECT_EQ(fast_->getGridY(), 8);
  EXPECT_EQ(fast_->getThreshold(), DBL_MAX);
  EXPECT_EQ(fast_->getDefaultName(), library_->getDefaultName());
}

TEST_F(FastLbph, PredictsManyPicturesAsOpencvDoes) {
  train({pictures_[0], pictures_[9], pictures_[40], pictures_.back()}, {3, 1, 1, 7});
  for (const cv::Mat& picture : pictures_) expect_equal_predictions(picture);
}

TEST_F(FastLbph, PredictsPicturesOfOtherSizesAndTypes) {
  train({pictures_[0], pictures_[9]}, {1, 2});
  cv::Mat large;
  cv::resize(pictures_[20], large, {200, 170});
  cv::Mat fractions;
  pictures_[20].convertTo(fractions, CV_64F, 1.0 / 3.0);
  expect_equal_predictions(large);
  expect_equal_predictions(fractions);
}

TEST_F(FastLbph, PredictsWithSamplesOfAnySize) {
  cv::Mat large;
  cv::resize(pictures_[20], large, {200, 170});
  // With cells of no pixels, OpenCV's histogram of it is not a number.
  const cv::Mat tiny = pictures_[0]({0, 0, 5, 5}).clone();
  train({large, pictures_[1]}, {1, 2});
  expect_equal_predictions(pictures_[5]);
  train({tiny, pictures_[1]}, {1, 2});
  expect_equal_predictions(pictures_[5]);
}

TEST_F(FastLbph, ForgetsWhatItWasTrainedWithBefore) {
  cv::Mat large;
  cv::resize(pictures_[20], large, {200, 170});
  train({pictures_[0], pictures_[9]}, {1, 2});
  train({large, pictures_[1], pictures_[2]}, {3, 4, 5});
  expect_equal_predictions(pictures_[5]);
  expect_equal_predictions(large);
  train({pictures_[7]}, {6});
  expect_equal_predictions(pictures_[5]);
  expect_equal_predictions(large);
}

TEST_F(FastLbph, TellsWhatItWasTrainedWith) {
  train({pictures_[0], pictures_[9]}, {4, 2});
  EXPECT_FALSE(fast_->empty());
  const Pictures histograms = fast_->getHistograms();
  const Pictures expected = library_->getHistograms();
  ASSERT_EQ(histograms.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_TRUE(same_pixels(histograms[i], expected[i]));
  }
  train({pictures_[5], pictures_[9]}, {7, 2});
  EXPECT_TRUE(same_pixels(fast_->getLabels(), library_->getLabels()));
}

TEST_F(FastLbph, PredictsPicturesOfOtherSizesOnSeveralThreads) {
  cv::Mat large;
  cv::resize(pictures_[20], large, {200, 170});
  train({pictures_[0], pictures_[9]}, {1, 2});
  const Results expected = all_results(library_, large);
  std::vector<std::future<Results>> answers;
  for (int i = 0; i < 4; ++i) {
    answers.push_back(std::async(std::launch::async, [&] { return all_results(fast_, large); }));
  }
  for (std::future<Results>& answer : answers) EXPECT_EQ(answer.get(), expected);
}

TEST_F(FastLbph, PredictsAPartOfALargerPicture) {
  train({pictures_[0], pictures_[9]}, {1, 2});
  cv::RNG random(3);
  cv::Mat large(200, 200, CV_8UC1);
  random.fill(large, cv::RNG::UNIFORM, 0, 256);
  expect_equal_predictions(large({20, 30, 160, 160}));
}

TEST_F(FastLbph, KnowsTheSamplesAddedLater) {
  train({pictures_[0]}, {1});
  for (const Model& model : {fast_, library_}) {
    model->update(Pictures{pictures_[5], pictures_[6]}, std::vector<int>{2, 3});
  }
  EXPECT_EQ(all_results(fast_, pictures_[5]).size(), 3U);
  expect_equal_predictions(pictures_[5]);
  train({pictures_[7]}, {4});
  EXPECT_EQ(all_results(fast_, pictures_[5]).size(), 1U);
  expect_equal_predictions(pictures_[5]);
}

TEST_F(FastLbph, FollowsEverySetting) {
  const std::vector<void (*)(cv::face::LBPHFaceRecognizer&)> settings = {
      [](cv::face::LBPHFaceRecognizer& model) { model.setGridX(4); },
      [](cv::face::LBPHFaceRecognizer& model) { model.setGridY(4); },
      [](cv::face::LBPHFaceRecognizer& model) { model.setRadius(2); },
      [](cv::face::LBPHFaceRecognizer& model) { model.setNeighbors(6); },
      [](cv::face::LBPHFaceRecognizer& model) { model.setThreshold(1.0); },
  };
  for (const auto& set : settings) {
    fast_ = make_fast_lbph();
    library_ = library_model();
    train({pictures_[0], pictures_[9]}, {1, 2});
    set(*fast_);
    set(*library_);
    train({pictures_[0], pictures_[9]}, {1, 2});
    expect_equal_predictions(pictures_[5]);
  }
}

// With another radius the histograms have as many bins as before, and mean something else.
TEST_F(FastLbph, FollowsASettingWithoutNewTraining) {
  train({pictures_[0], pictures_[9]}, {1, 2});
  fast_->setThreshold(2.0);
  library_->setThreshold(2.0);
  expect_equal_predictions(pictures_[5]);
  fast_->setRadius(2);
  library_->setRadius(2);
  expect_equal_predictions(pictures_[5]);
}

TEST_F(FastLbph, ThrowsWithoutSamples) {
  int label = -1;
  double distance = 0.0;
  EXPECT_TRUE(fast_->empty());
  EXPECT_THROW(fast_->predict(pictures_[0], label, distance), cv::Exception);
  EXPECT_THROW(fast_->train(Pictures{}, std::vector<int>{}), cv::Exception);
}

TEST_F(FastLbph, ThrowsUnlessEachSampleHasALabel) {
  EXPECT_THROW(fast_->train(Pictures{pictures_[0], pictures_[1]}, std::vector<int>{1}),
               cv::Exception);
  EXPECT_THROW(fast_->train(Pictures{pictures_[0]}, std::vector<double>{1.0}), cv::Exception);
}

TEST_F(FastLbph, StopsWhenTheCollectorHasEnough) {
  class FirstOnly : public cv::face::PredictCollector {
   public:
    void init(std::size_t size) override { expected = size; }
    bool collect(int, double) override {
      ++collected;
      return false;
    }
    std::size_t expected = 0;
    int collected = 0;
  };
  train({pictures_[0], pictures_[9], pictures_[3]}, {1, 2, 3});
  const auto collector = cv::makePtr<FirstOnly>();
  fast_->predict(pictures_[5], collector);
  EXPECT_EQ(collector->expected, 3U);
  EXPECT_EQ(collector->collected, 1);
}

TEST_F(FastLbph, IsWrittenAndReadLikeOpencvsOwn) {
  train({pictures_[0], pictures_[9]}, {1, 2});
  fast_->setLabelInfo(2, "second");
  cv::FileStorage written("model.yml", cv::FileStorage::WRITE | cv::FileStorage::MEMORY);
  fast_->write(written);
  const std::string text = written.releaseAndGetString();
  library_ = library_model();
  const Model read = make_fast_lbph();
  for (const Model& model : {library_, read}) {
    model->read(cv::FileStorage(text, cv::FileStorage::READ | cv::FileStorage::MEMORY).root());
    EXPECT_EQ(model->getLabelInfo(2), "second");
    EXPECT_EQ(model->getLabelsByString("second"), std::vector<int>{2});
    EXPECT_EQ(all_results(model, pictures_[5]), all_results(fast_, pictures_[5]));
  }
}

}  // namespace
}  // namespace halcyra
