#include "record/program.hpp"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "app/run_state/options.hpp"
#include "app/standard_streams.hpp"
#include "app/stop_signal.hpp"
#include "capture/kinect_device.hpp"
#include "record/command_line.hpp"
#include "record/disk_space.hpp"
#include "record/frame_file.hpp"
#include "record/progress.hpp"
#include "record/recording_folder.hpp"
#include "record/sensor_loop.hpp"

namespace halcyra::record {
namespace {

constexpr int kFailure = 1;
constexpr int kUsageError = 2;

// 10 megabytes each at the sensor's sizes, and what their files take.
constexpr std::size_t kPlacesInQueue = 16;

void complain(const std::string& sentence) {
  std::cerr << "halcyra-record: " << sentence << std::endl;
}

// "" if all is well. Otherwise nothing is left of what was made.
std::string prepare(RecordingFolder& folder, const RecordOptions& options) {
  std::string fault = folder.prepare();
  if (!fault.empty()) return fault;
  fault = space_fault(free_bytes(options.folder), expected_bytes(options));
  if (!fault.empty()) folder.clear();
  return fault;
}

// False, with a sentence said, if the sensor does not deliver.
bool start_sensor(KinectSession& kinect, RuntimeStatus& status) {
  open_kinect(kinect, Options{}, status);
  if (!kinect.streams_started) complain(status.kinect_message);
  return kinect.streams_started;
}

DeviceDescription description(const RuntimeStatus& status, const RecordOptions& options) {
  DeviceDescription device;
  if (!options.anonymous) device.serial = status.kinect_serial;
  device.firmware = status.kinect_firmware;
  return device;
}

RecordingCounts counts(const RecordingFolder& folder, const TakenSets& taken) {
  RecordingCounts result;
  result.sets = folder.sets();
  result.bytes = folder.bytes();
  result.seconds = folder.seconds();
  result.dropped = taken.dropped;
  result.missed = taken.depth.skipped();
  return result;
}

// The sentence for what ended the recording, "" for an end that was asked for.
std::string end_sentence(EndReason reason, const RecordingFolder& folder,
                         const std::string& space_fault) {
  if (!folder.failure().empty()) return folder.failure();
  switch (reason) {
    case EndReason::kRefused:
      return space_fault;
    case EndReason::kStalled:
      return folder.sets() > 0 ? "the sensor has stopped delivering complete sets"
                               : "the sensor delivers no complete set";
    case EndReason::kAsked:
    case EndReason::kLimit:
    case EndReason::kNoWriting:
      break;
  }
  return folder.sets() > 0 ? "" : "nothing was recorded, since the end came before the first set";
}

// Records until the end and returns the sentence for it.
std::string record_sets(KinectSession& kinect, RuntimeStatus& status, const RecordOptions& options,
                        RecordingFolder& folder, TakenSets& taken) {
  SetQueue queue(
      kPlacesInQueue, std::max(1U, std::thread::hardware_concurrency()),
      [&](RecordedSet& set) { encode_set(set, options); },
      [&](const RecordedSet& set) { return folder.commit(set); });
  ProgressReport progress(std::cerr, isatty(STDERR_FILENO) != 0, ProgressReport::Clock::now());
  std::string space_fault;
  const EndReason reason = take_sets(kinect, status, options, queue, taken, [&] {
    RecordingCounts now = counts(folder, taken);
    now.free_bytes = free_bytes(options.folder);
    progress.show(now, ProgressReport::Clock::now());
    space_fault = space_fault_on_the_way(now.free_bytes);
    return space_fault.empty();
  });
  progress.end();
  queue.finish();
  if (folder.sets() > 0) folder.finish();
  return end_sentence(reason, folder, space_fault);
}

int record(const RecordOptions& options) {
  RecordingFolder folder(options.folder, options.streams);
  const std::string fault = prepare(folder, options);
  if (!fault.empty()) {
    complain(fault);
    return kFailure;
  }
  if (options.streams != StreamChoice{true, true, true}) {
    complain("the recording will lack a stream, and the virtual Kinect plays only all three");
  }
  KinectSession kinect;
  RuntimeStatus status;
  if (!start_sensor(kinect, status)) {
    close_kinect(kinect);
    folder.clear();
    return kFailure;
  }
  folder.describe(description(status, options));
  TakenSets taken;
  const std::string sentence = record_sets(kinect, status, options, folder, taken);
  close_kinect(kinect);
  if (!sentence.empty()) complain(sentence);
  if (folder.sets() == 0) {
    folder.clear();
    return kFailure;
  }
  std::cout << summary_text(counts(folder, taken), options.folder) << std::endl;
  return sentence.empty() ? 0 : kFailure;
}

}  // namespace

int run_recorder(int argc, const char* const* argv) {
  secure_standard_streams();
  const CommandLine line =
      parse_command_line(std::vector<std::string>(argv + std::min(1, argc), argv + argc));
  switch (line.request) {
    case Request::kHelp:
      std::cout << usage();
      return 0;
    case Request::kVersion:
      std::cout << "halcyra-record " HALCYRA_VERSION "\n";
      return 0;
    case Request::kWrongUse:
      complain(line.fault);
      std::cerr << usage();
      return kUsageError;
    case Request::kRecord:
      break;
  }
  watch_stop_signals();
  return record(line.options);
}

}  // namespace halcyra::record
