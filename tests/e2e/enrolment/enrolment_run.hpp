// Runs of halcyra-enroll on recordings of the rendered owner.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core/mat.hpp>

#include "tests/e2e/program.hpp"
#include "tests/e2e/recording.hpp"
#include "tests/e2e/stage.hpp"
#include "tests/e2e/x_desktop.hpp"
#include "tests/e2e/x_server.hpp"

namespace halcyra {

// A rendered picture, 960 x 600, BGR: "front-0" to "front-3", "left-0" to "left-3", "right-0" to
// "right-3", and "far-0", on which the face is too small.
cv::Mat enrolment_picture(const std::string& name);

// All of the owner, near enough, the three poses in turn.
std::vector<cv::Mat> pictures_of_all_poses();

// Two of the pictures side by side.
cv::Mat side_by_side(const std::string& left, const std::string& right);

class EnrolmentRun : public ::testing::Test {
 protected:
  EnrolmentRun();

  // Adds a set with that colour picture to the recording.
  void record(const cv::Mat& picture);
  void record_all_poses();

  // How the program is started on the recording, with the display still to be named.
  ProgramStart start_of(const std::vector<std::string>& arguments) const;

  // Starts the program on the X server and waits until its window shows a picture.
  void start(const std::vector<std::string>& arguments);

  // Runs the program, which is expected to end by itself.
  ProcessEnd run_to_end(const ProgramStart& start);

  // Waits until the window shows this instruction.
  ::testing::AssertionResult shows(const std::string& instruction);

  // Waits until the camera's picture in the window has changed that often.
  bool shows_new_pictures(int count);

  // Waits until standard output has a line that begins with the text.
  bool says(const std::string& beginning);

  // Presses q and waits for the end.
  std::optional<ProcessEnd> quit();

  // The samples in the folder, relative to it, in order.
  std::vector<std::string> samples() const;
  std::vector<std::string> output_lines() const;
  // How many lines of standard output begin with the text.
  int lines_that_begin(const std::string& beginning) const;

  Stage stage_;
  Recording recording_;
  XServer server_;
  XDesktop desktop_;
  std::unique_ptr<Program> program_;
};

}  // namespace halcyra
