// Records what OpenCV would hand to its threads. Every cv::parallel_for_, of the program and of
// OpenCV itself, becomes a section of tasks. What runs between sections is serial.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <opencv2/core/parallel/parallel_backend.hpp>

namespace halcyra {

// Times in milliseconds.
struct Section {
  double serial_before = 0;   // since the section before it, or since the start
  std::vector<double> tasks;  // in the order of their ranges; never empty
};

struct RecordedRun {
  std::vector<Section> sections;
  double serial_after = 0;  // since the last section
};

// Takes the place of OpenCV's pool of threads and runs all tasks on the calling thread, one after
// the other. A task is the smallest range into which OpenCV cuts a loop. A pool may run a few
// neighbours as one, as TBB does in loops of hundreds of ranges; the sum stays the same.
//
// OpenCV asks it only for loops that it cuts at all: of more than one range, not inside another
// loop, and while cv::setNumThreads is not 1.
class SectionRecorder : public cv::parallel::ParallelForAPI {
 public:
  // Starts recording. OpenCV is told that there are `threads` threads.
  void start(int threads);

  // What was recorded since start().
  RecordedRun stop();

  // The same for the callers of sections. The times of this run are worthless.
  void start_naming(int threads);

  // Who called each section since start_naming(): the innermost function of the program, and the
  // library function that it called, if any. A name that appears again gets a number. Only
  // exported functions are found; others go by the name of their nearest exported caller.
  std::vector<std::string> stop_naming();

  void parallel_for(int tasks, FN_parallel_for_body_cb_t body, void* data) override;
  int getThreadNum() const override { return 0; }
  int getNumThreads() const override { return threads_; }
  int setNumThreads(int threads) override;
  const char* getName() const override { return "section recorder"; }

 private:
  using Clock = std::chrono::steady_clock;

  int threads_ = 2;
  bool naming_ = false;
  RecordedRun run_;
  std::vector<std::string> names_;
  Clock::time_point last_end_;
};

}  // namespace halcyra
