// The dashboards that have a golden picture.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "tests/dashboard/test_scene.hpp"

namespace halcyra {

struct GoldenPicture {
  std::string scene;
  TestScene (*make_scene)();
  cv::Size size;  // of the canvas
};

const std::vector<GoldenPicture>& golden_pictures();

// SCENE-WIDTHxHEIGHT.png
std::string file_name(const GoldenPicture& picture);

// Writes the file name; GoogleTest uses it in its messages.
std::ostream& operator<<(std::ostream& out, const GoldenPicture& picture);

// Draws the dashboard with the font scale that the program chooses for a window of this size.
cv::Mat draw(const GoldenPicture& picture);

}  // namespace halcyra
