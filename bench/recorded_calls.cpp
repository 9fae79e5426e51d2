#include "bench/recorded_calls.hpp"

#include <string>

#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

std::vector<std::function<void()>>* g_recording = nullptr;

void record(std::function<void()> call) {
  if (g_recording != nullptr) g_recording->push_back(std::move(call));
}

}  // namespace

std::vector<std::function<void()>> recorded_calls(const std::function<void()>& drawing) {
  std::vector<std::function<void()>> calls;
  g_recording = &calls;
  drawing();
  g_recording = nullptr;
  return calls;
}

// A wrapped function is known to the linker as __wrap_ and its mangled name, what it stands for as
// __real_ and the same.
#define HALCYRA_PUT_TEXT                                                                           \
  "_ZN2cv7putTextERKNS_17_InputOutputArrayERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE" \
  "NS_6Point_IiEEidNS_7Scalar_IdEEiib"
#define HALCYRA_RECTANGLE \
  "_ZN2cv9rectangleERKNS_17_InputOutputArrayENS_5Rect_IiEERKNS_7Scalar_IdEEiii"
#define HALCYRA_CIRCLE "_ZN2cv6circleERKNS_17_InputOutputArrayENS_6Point_IiEEiRKNS_7Scalar_IdEEiii"
#define HALCYRA_RESIZE "_ZN2cv6resizeERKNS_11_InputArrayERKNS_12_OutputArrayENS_5Size_IiEEddi"
#define HALCYRA_CONVERT_TO "_ZNK2cv3Mat9convertToERKNS_12_OutputArrayEidd"

void real_put_text(cv::InputOutputArray image, const std::string& text, cv::Point origin, int font,
                   double scale, cv::Scalar color, int thickness, int line,
                   bool bottom_left) asm("__real_" HALCYRA_PUT_TEXT);
void put_text(cv::InputOutputArray image, const std::string& text, cv::Point origin, int font,
              double scale, cv::Scalar color, int thickness, int line,
              bool bottom_left) asm("__wrap_" HALCYRA_PUT_TEXT);
void put_text(cv::InputOutputArray image, const std::string& text, cv::Point origin, int font,
              double scale, cv::Scalar color, int thickness, int line, bool bottom_left) {
  record([=, target = image.getMat()]() mutable {
    real_put_text(target, text, origin, font, scale, color, thickness, line, bottom_left);
  });
  real_put_text(image, text, origin, font, scale, color, thickness, line, bottom_left);
}

void real_rectangle(cv::InputOutputArray image, cv::Rect rect, const cv::Scalar& color,
                    int thickness, int line, int shift) asm("__real_" HALCYRA_RECTANGLE);
void rectangle(cv::InputOutputArray image, cv::Rect rect, const cv::Scalar& color, int thickness,
               int line, int shift) asm("__wrap_" HALCYRA_RECTANGLE);
void rectangle(cv::InputOutputArray image, cv::Rect rect, const cv::Scalar& color, int thickness,
               int line, int shift) {
  record([=, target = image.getMat()]() mutable {
    real_rectangle(target, rect, color, thickness, line, shift);
  });
  real_rectangle(image, rect, color, thickness, line, shift);
}

void real_circle(cv::InputOutputArray image, cv::Point center, int radius, const cv::Scalar& color,
                 int thickness, int line, int shift) asm("__real_" HALCYRA_CIRCLE);
void circle(cv::InputOutputArray image, cv::Point center, int radius, const cv::Scalar& color,
            int thickness, int line, int shift) asm("__wrap_" HALCYRA_CIRCLE);
void circle(cv::InputOutputArray image, cv::Point center, int radius, const cv::Scalar& color,
            int thickness, int line, int shift) {
  record([=, target = image.getMat()]() mutable {
    real_circle(target, center, radius, color, thickness, line, shift);
  });
  real_circle(image, center, radius, color, thickness, line, shift);
}

void real_resize(cv::InputArray from, cv::OutputArray to, cv::Size size, double fx, double fy,
                 int interpolation) asm("__real_" HALCYRA_RESIZE);
void resize(cv::InputArray from, cv::OutputArray to, cv::Size size, double fx, double fy,
            int interpolation) asm("__wrap_" HALCYRA_RESIZE);
void resize(cv::InputArray from, cv::OutputArray to, cv::Size size, double fx, double fy,
            int interpolation) {
  real_resize(from, to, size, fx, fy, interpolation);
  record([=, source = from.getMat(), target = to.getMat()]() mutable {
    real_resize(source, target, size, fx, fy, interpolation);
  });
}

void real_convert_to(const cv::Mat* from, cv::OutputArray to, int type, double alpha,
                     double beta) asm("__real_" HALCYRA_CONVERT_TO);
void convert_to(const cv::Mat* from, cv::OutputArray to, int type, double alpha,
                double beta) asm("__wrap_" HALCYRA_CONVERT_TO);
void convert_to(const cv::Mat* from, cv::OutputArray to, int type, double alpha, double beta) {
  real_convert_to(from, to, type, alpha, beta);
  record([=, source = *from, target = to.getMat()]() mutable {
    real_convert_to(&source, target, type, alpha, beta);
  });
}

}  // namespace halcyra
