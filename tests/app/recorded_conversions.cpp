#include "tests/app/recorded_conversions.hpp"

#include <dlfcn.h>

#include <stdexcept>

#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

std::vector<std::string> g_conversions;

// OpenCV's own definition of a function that this file defines as well.
template <typename Function>
Function* next_definition(Function* own) {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(own), &info) == 0 || info.dli_sname == nullptr) {
    throw std::runtime_error("a recorded function has no name");
  }
  void* const next = dlsym(RTLD_NEXT, info.dli_sname);
  if (next == nullptr) throw std::runtime_error(std::string("no other ") + info.dli_sname);
  return reinterpret_cast<Function*>(next);
}

using Conversion = void(cv::InputArray, cv::OutputArray);
using ColorMapping = void(cv::InputArray, cv::OutputArray, int);

}  // namespace

void start_recording_conversions() { g_conversions.clear(); }

std::vector<std::string> recorded_conversions() { return g_conversions; }

}  // namespace halcyra

// The program's calls come here, since its own definitions go before those of shared libraries.
namespace cv {

void equalizeHist(InputArray from, OutputArray to) {
  static const auto next = halcyra::next_definition<halcyra::Conversion>(&equalizeHist);
  halcyra::g_conversions.emplace_back("infrared");
  next(from, to);
}

void applyColorMap(InputArray from, OutputArray to, int map) {
  static const auto next = halcyra::next_definition<halcyra::ColorMapping>(&applyColorMap);
  halcyra::g_conversions.emplace_back("depth");
  next(from, to, map);
}

}  // namespace cv
