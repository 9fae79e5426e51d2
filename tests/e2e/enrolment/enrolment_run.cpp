#include "tests/e2e/enrolment/enrolment_run.hpp"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <stdexcept>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "dashboard/palette.hpp"
#include "enroll/enrolment_layout.hpp"
#include "enroll/fitted_text.hpp"
#include "tests/e2e/waiting.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// Where the letters are: all pixels that differ from the background, whatever their colour.
cv::Mat ink_of(const cv::Mat& picture) {
  const cv::Scalar background = palette::kBackground;
  cv::Mat blank;
  cv::inRange(picture, background, background, blank);
  return blank == 0;
}

cv::Rect instruction_band(cv::Size window) {
  const EnrolmentLayout layout = enrolment_layout(window);
  return {layout.instruction.x, layout.instruction.y + layout.margin / 2, layout.instruction.width,
          layout.instruction.height - layout.margin};
}

cv::Mat expected_band(cv::Size window, const std::string& instruction) {
  const cv::Rect band = instruction_band(window);
  cv::Mat canvas(window, CV_8UC3, cv::Scalar(palette::kBackground));
  drawFittedText(canvas, instruction, band, band.height / 2, palette::kPictureLabel);
  return canvas(band).clone();
}

}  // namespace

cv::Mat enrolment_picture(const std::string& name) {
  const std::string file = HALCYRA_ENROLMENT_PICTURES "/" + name + ".png";
  cv::Mat picture = cv::imread(file, cv::IMREAD_COLOR);
  if (picture.empty()) throw std::runtime_error("no picture " + file);
  return picture;
}

std::vector<cv::Mat> pictures_of_all_poses() {
  std::vector<cv::Mat> pictures;
  for (int number = 0; number < 4; ++number) {
    for (const std::string pose : {"front", "left", "right"}) {
      pictures.push_back(enrolment_picture(pose + "-" + std::to_string(number)));
    }
  }
  return pictures;
}

cv::Mat side_by_side(const std::string& left, const std::string& right) {
  cv::Mat both;
  cv::hconcat(enrolment_picture(left), enrolment_picture(right), both);
  return both;
}

EnrolmentRun::EnrolmentRun()
    : recording_(stage_.folder() / "recording"), desktop_(server_.display(), "Halcyra Enrolment") {
  recording_.set_device("pace: 0\n");
}

void EnrolmentRun::record(const cv::Mat& picture) {
  recording_.add_color(picture);
  recording_.add_infrared(cv::Mat(12, 16, CV_16UC1, cv::Scalar(100)));
  recording_.add_depth(cv::Mat(12, 16, CV_16UC1, cv::Scalar(1000)));
}

void EnrolmentRun::record_all_poses() {
  for (const cv::Mat& picture : pictures_of_all_poses()) record(picture);
}

ProgramStart EnrolmentRun::start_of(const std::vector<std::string>& arguments) const {
  ProgramStart start{arguments};
  start.environment = {{"VIRTUAL_KINECT", recording_.folder().string()}};
  start.executable = HALCYRA_ENROLL;
  return start;
}

void EnrolmentRun::start(const std::vector<std::string>& arguments) {
  ProgramStart on_server = start_of(arguments);
  on_server.display = server_.display();
  program_ = std::make_unique<Program>(stage_, on_server);
  ASSERT_TRUE(desktop_.find_window()) << program_->errors();
  // The window system drops keys that come before the first picture.
  ASSERT_TRUE(wait_until([&] {
    const cv::Mat picture = desktop_.screenshot();
    return !picture.empty() && cv::countNonZero(ink_of(picture)) > 0 &&
           cv::countNonZero(ink_of(picture) == 0) > 0;
  }));
}

ProcessEnd EnrolmentRun::run_to_end(const ProgramStart& start) {
  program_ = std::make_unique<Program>(stage_, start);
  const std::optional<ProcessEnd> end = program_->wait_for_end();
  EXPECT_TRUE(end) << "still running";
  return end.value_or(ProcessEnd());
}

::testing::AssertionResult EnrolmentRun::shows(const std::string& instruction) {
  const bool shown = wait_until([&] {
    const cv::Mat picture = desktop_.screenshot();
    if (picture.empty()) return false;
    const cv::Mat expected = ink_of(expected_band(picture.size(), instruction));
    return cv::countNonZero(ink_of(picture(instruction_band(picture.size()))) != expected) == 0;
  });
  if (shown) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "never showed \"" << instruction << "\"; it said\n"
                                       << program_->output() << program_->errors();
}

bool EnrolmentRun::shows_new_pictures(int count) {
  cv::Mat last;
  return wait_until([&] {
    const cv::Mat window = desktop_.screenshot();
    if (window.empty()) return false;
    const cv::Mat picture = window(enrolment_layout(window.size()).picture).clone();
    const bool same = picture.size() == last.size() && cv::norm(picture, last, cv::NORM_INF) == 0.0;
    if (same) return false;
    last = picture;
    return count-- == 0;
  });
}

bool EnrolmentRun::says(const std::string& beginning) {
  return wait_until([&] { return lines_that_begin(beginning) > 0; });
}

std::optional<ProcessEnd> EnrolmentRun::quit() {
  desktop_.press("q");
  return program_->wait_for_end();
}

std::vector<std::string> EnrolmentRun::samples() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(stage_.samples_folder())) {
    if (entry.is_regular_file()) names.push_back(fs::relative(entry, stage_.samples_folder()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::string> EnrolmentRun::output_lines() const {
  std::istringstream output(program_->output());
  std::vector<std::string> lines;
  for (std::string line; std::getline(output, line);) lines.push_back(line);
  return lines;
}

int EnrolmentRun::lines_that_begin(const std::string& beginning) const {
  const std::vector<std::string> lines = output_lines();
  return static_cast<int>(std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
    return line.rfind(beginning, 0) == 0;
  }));
}

}  // namespace halcyra
