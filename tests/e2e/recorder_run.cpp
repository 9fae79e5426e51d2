#include "tests/e2e/recorder_run.hpp"

#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>

#include <opencv2/core.hpp>

#include "tests/support/text_file.hpp"
#include "virtual_kinect/recording.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;
using libfreenect2::Frame;

cv::Mat noise(cv::Size size, int type, int seed) {
  cv::Mat picture(size, type);
  cv::RNG random(static_cast<std::uint64_t>(seed) + 1);
  random.fill(picture, cv::RNG::UNIFORM, 0, picture.depth() == CV_8U ? 256 : 5000);
  return picture;
}

}  // namespace

virtual_kinect::DeviceSettings device_of(const fs::path& recording) {
  virtual_kinect::DeviceSettings settings;
  std::string complaint;
  EXPECT_TRUE(fs::exists(recording / "device.yml"));
  EXPECT_TRUE(virtual_kinect::read_device_settings(recording / "device.yml", settings, complaint))
      << complaint;
  return settings;
}

std::vector<PlayedSet> played_sets(const fs::path& recording) {
  virtual_kinect::DeviceSettings settings = device_of(recording);
  settings.after = virtual_kinect::AfterLastSet::kStall;
  const virtual_kinect::FrameSource source = virtual_kinect::open_recording(recording, settings);
  EXPECT_EQ(source.streams.size(), 3U);
  std::vector<PlayedSet> sets(source.set_count.value_or(0));
  for (std::size_t i = 0; i < sets.size(); ++i) {
    for (const Frame::Type stream : source.streams) {
      sets[i].images.push_back(source.image(stream, i));
    }
  }
  return sets;
}

std::vector<TableRow> table_of(const fs::path& recording) {
  std::istringstream text(read_text(recording / "sets.csv"));
  std::string line;
  std::getline(text, line);
  std::vector<TableRow> rows;
  while (std::getline(text, line)) {
    TableRow row;
    std::istringstream cells(line);
    char comma = 0;
    cells >> row.number >> comma >> row.seconds;
    std::uint32_t sequence = 0;
    std::uint32_t timestamp = 0;
    while (cells >> comma >> sequence >> comma >> timestamp) {
      row.sequences.push_back(sequence);
      row.timestamps.push_back(timestamp);
    }
    EXPECT_EQ(row.sequences.size(), 3U) << line;
    rows.push_back(row);
  }
  return rows;
}

::testing::AssertionResult same_image(const virtual_kinect::StreamImage& actual,
                                      const virtual_kinect::StreamImage& expected) {
  if (actual.format != expected.format || actual.pixels.size() != expected.pixels.size() ||
      actual.pixels.type() != expected.pixels.type()) {
    return ::testing::AssertionFailure()
           << "format " << actual.format << " of " << actual.pixels.size() << " instead of format "
           << expected.format << " of " << expected.pixels.size();
  }
  const std::size_t bytes = expected.pixels.total() * expected.pixels.elemSize();
  if (bytes == 0 || std::memcmp(actual.pixels.data, expected.pixels.data, bytes) == 0) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << "other pixels";
}

std::size_t files_of(const fs::path& recording, const std::string& stream) {
  std::error_code none;
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator(recording / stream, none), {}));
}

void RecorderRun::add_sets(int count) {
  using Limits = std::numeric_limits<float>;
  const cv::Size small(32, 24);
  for (int set = 0; set < count; ++set) {
    source_.add_color(noise(cv::Size(64, 48), CV_8UC3, set));
    cv::Mat infrared = noise(small, CV_32FC1, 100 + set);
    infrared.at<float>(0, 0) = Limits::quiet_NaN();
    infrared.at<float>(0, 1) = Limits::infinity();
    infrared.at<float>(0, 2) = -Limits::infinity();
    infrared.at<float>(0, 3) = -0.0F;
    source_.add_infrared(infrared);
    source_.add_depth(noise(small, CV_16UC1, 200 + set));
  }
}

ProgramStart RecorderRun::start(const std::vector<std::string>& options) const {
  ProgramStart start;
  start.executable = HALCYRA_RECORDER;
  start.arguments = {"recorded"};
  start.arguments.insert(start.arguments.end(), options.begin(), options.end());
  start.environment["VIRTUAL_KINECT"] = source_.folder().string();
  return start;
}

int RecorderRun::run(const ProgramStart& start) {
  Program program(stage_, start);
  const std::optional<ProcessEnd> end = program.wait_for_end();
  output_ = program.output();
  errors_ = program.errors();
  return end ? end->exit_status : -1;
}

void RecorderRun::expect_frames_of_the_source() const {
  const std::vector<PlayedSet> delivered = played_sets(source_.folder());
  const std::vector<PlayedSet> recorded = played_sets(folder());
  const std::vector<TableRow> rows = table_of(folder());
  ASSERT_EQ(recorded.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].number, i + 1);
    ASSERT_EQ(recorded[i].images.size(), 3U);
    for (std::size_t stream = 0; stream < 3; ++stream) {
      const PlayedSet& expected = delivered[rows[i].sequences[stream] % delivered.size()];
      EXPECT_TRUE(same_image(recorded[i].images[stream], expected.images[stream]))
          << "set " << i << ", stream " << stream;
    }
  }
}

}  // namespace halcyra
