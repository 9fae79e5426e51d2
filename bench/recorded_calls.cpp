#include "bench/recorded_calls.hpp"

#include <string>
#include <utility>

#include <opencv2/imgproc.hpp>

#include "tests/support/next_definition.hpp"

namespace halcyra {
namespace {

// Null unless this thread is recording.
thread_local std::vector<std::function<void()>>* g_recording = nullptr;

// One call of a function below. What OpenCV calls in turn is part of that call, and is not recorded
// a second time: nothing is recorded while one of these lives.
class PassingCall {
 public:
  PassingCall() : recording_(std::exchange(g_recording, nullptr)) {}
  ~PassingCall() { g_recording = recording_; }
  PassingCall(const PassingCall&) = delete;
  PassingCall& operator=(const PassingCall&) = delete;

  bool is_recorded() const { return recording_ != nullptr; }
  void record(std::function<void()> call) const { recording_->push_back(std::move(call)); }

 private:
  std::vector<std::function<void()>>* recording_;
};

}  // namespace

std::vector<std::function<void()>> recorded_calls(const std::function<void()>& drawing) {
  std::vector<std::function<void()>> calls;
  g_recording = &calls;
  drawing();
  g_recording = nullptr;
  return calls;
}

}  // namespace halcyra

// A program's own definitions go before those of the shared libraries it is linked with. These pass
// every call on to OpenCV's, and record it. The signatures are OpenCV's own.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
// NOLINTBEGIN(performance-unnecessary-value-param)
namespace cv {

void putText(InputOutputArray image, const std::string& text, Point origin, int font, double scale,
             Scalar color, int thickness, int line, bool bottom_left) {
  static const auto next = halcyra::next_definition(putText);
  const halcyra::PassingCall call;
  next(image, text, origin, font, scale, color, thickness, line, bottom_left);
  if (!call.is_recorded()) return;
  call.record([=, target = image.getMat()]() mutable {
    next(target, text, origin, font, scale, color, thickness, line, bottom_left);
  });
}

void rectangle(InputOutputArray image, Rect rect, const Scalar& color, int thickness, int line,
               int shift) {
  using Rectangle = void(InputOutputArray, Rect, const Scalar&, int, int, int);
  static const auto next = halcyra::next_definition<Rectangle>(rectangle);
  const halcyra::PassingCall call;
  next(image, rect, color, thickness, line, shift);
  if (!call.is_recorded()) return;
  call.record([=, target = image.getMat()]() mutable {
    next(target, rect, color, thickness, line, shift);
  });
}

void circle(InputOutputArray image, Point center, int radius, const Scalar& color, int thickness,
            int line, int shift) {
  static const auto next = halcyra::next_definition(circle);
  const halcyra::PassingCall call;
  next(image, center, radius, color, thickness, line, shift);
  if (!call.is_recorded()) return;
  call.record([=, target = image.getMat()]() mutable {
    next(target, center, radius, color, thickness, line, shift);
  });
}

void resize(InputArray from, OutputArray to, Size size, double fx, double fy, int interpolation) {
  static const auto next = halcyra::next_definition(resize);
  const halcyra::PassingCall call;
  next(from, to, size, fx, fy, interpolation);
  if (!call.is_recorded()) return;
  call.record([=, source = from.getMat(), target = to.getMat()]() mutable {
    next(source, target, size, fx, fy, interpolation);
  });
}

void Mat::convertTo(OutputArray to, int type, double alpha, double beta) const {
  static const auto next = halcyra::next_definition(&Mat::convertTo);
  const halcyra::PassingCall call;
  next(this, to, type, alpha, beta);
  if (!call.is_recorded()) return;
  call.record([=, source = *this, target = to.getMat()]() mutable {
    next(&source, target, type, alpha, beta);
  });
}

}  // namespace cv
// NOLINTEND(performance-unnecessary-value-param)
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
