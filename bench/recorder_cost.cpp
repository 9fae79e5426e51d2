// Prints what recording costs: the sets that the virtual Kinect delivers to a program that only
// takes them, and to the recorder. Run by bench/recorder.
#include <stdlib.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "capture/frame_set.hpp"
#include "capture/kinect_device.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

constexpr int kSeconds = 20;

// A quarter of the sensor's width and height, with noise that no format compresses well.
void write_small_recording(const fs::path& folder) {
  cv::RNG random(1);
  for (int set = 0; set < 30; ++set) {
    const std::string name = std::to_string(100 + set);
    cv::Mat color(270, 480, CV_8UC3);
    cv::Mat values(106, 128, CV_32FC1);
    random.fill(color, cv::RNG::UNIFORM, 0, 256);
    random.fill(values, cv::RNG::UNIFORM, 500.0, 4500.0);
    for (const char* const stream : {"color", "ir", "depth"})
      fs::create_directories(folder / stream);
    cv::imwrite((folder / "color" / (name + ".png")).string(), color);
    cv::imwrite((folder / "ir" / (name + ".tiff")).string(), values);
    cv::imwrite((folder / "depth" / (name + ".tiff")).string(), values);
  }
  write_text(folder / "device.yml", "pace: 120\n");
}

// Sets a second that a program gets that releases them at once.
double pace_alone() {
  using Clock = std::chrono::steady_clock;
  KinectSession session;
  RuntimeStatus status;
  open_kinect(session, Options{}, status);
  const auto take = [&] {
    if (!take_frame_set(session, status)) throw std::runtime_error(status.kinect_message);
    release_frame_set(session);
  };
  take();
  const auto start = Clock::now();
  int sets = 0;
  while (Clock::now() - start < std::chrono::seconds(kSeconds)) {
    take();
    ++sets;
  }
  const double pace = sets / std::chrono::duration<double>(Clock::now() - start).count();
  close_kinect(session);
  return pace;
}

struct Recorded {
  int sets = 0;
  double seconds = 0.0;
  int dropped = 0;
};

// What the recorder's last line says.
Recorded recorded(const std::string& options) {
  const TemporaryFolder parent;
  const std::string command = std::string(HALCYRA_RECORDER) + " '" + parent.path().string() +
                              "/recorded' --seconds " + std::to_string(kSeconds) + " " + options;
  FILE* const output = popen(command.c_str(), "r");
  Recorded result;
  const int read =
      output == nullptr
          ? 0
          : std::fscanf(output, "Recorded %d sets in %lf seconds (%*f a second, %*f MB, %d",
                        &result.sets, &result.seconds, &result.dropped);
  if (output != nullptr) pclose(output);
  if (read != 3) throw std::runtime_error("no last line of the recorder");
  return result;
}

void print_row(const std::string& scene, const std::string& variable, const std::string& options) {
  setenv("VIRTUAL_KINECT", variable.c_str(), 1);
  const double alone = pace_alone();
  const Recorded with = recorded(options);
  std::printf("| %s | %.1f | %.1f | %.1f |\n", scene.c_str(), alone,
              (with.sets + with.dropped - 1) / with.seconds, (with.sets - 1) / with.seconds);
  std::fflush(stdout);
}

void print_table() {
  const TemporaryFolder folder;
  const std::string small = (folder.path() / "small").string();
  write_small_recording(small);
  std::puts("| scene and colour files | taken alone | taken by the recorder | recorded |");
  std::puts("|---|---:|---:|---:|");
  print_row("room, 30 a second, JPEG", "room", "");
  print_row("room, 30 a second, PNG", "room", "--color png");
  print_row("small pictures, 120 a second, JPEG", small, "");
  print_row("small pictures, 120 a second, PNG", small, "--color png");
}

}  // namespace
}  // namespace halcyra

int main() {
  try {
    halcyra::print_table();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "recorder_cost: %s\n", error.what());
    return 1;
  }
  return 0;
}
