#include "tests/app/recorded_conversions.hpp"

#include <opencv2/imgproc.hpp>

#include "tests/support/next_definition.hpp"

namespace halcyra {
namespace {

std::vector<std::string> g_conversions;

using Conversion = void(cv::InputArray, cv::OutputArray);
using ColorMapping = void(cv::InputArray, cv::OutputArray, int);

}  // namespace

void start_recording_conversions() { g_conversions.clear(); }

std::vector<std::string> recorded_conversions() { return g_conversions; }

}  // namespace halcyra

// The program's calls come here, since its own definitions go before those of shared libraries.
namespace cv {

void equalizeHist(InputArray src, OutputArray dst) {
  static const auto next = halcyra::next_definition<halcyra::Conversion>(&equalizeHist);
  halcyra::g_conversions.emplace_back("infrared");
  next(src, dst);
}

void applyColorMap(InputArray src, OutputArray dst, int colormap) {
  static const auto next = halcyra::next_definition<halcyra::ColorMapping>(&applyColorMap);
  halcyra::g_conversions.emplace_back("depth");
  next(src, dst, colormap);
}

}  // namespace cv
