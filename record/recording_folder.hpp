// The folder of a recording while it is written: its stream folders, device.yml and sets.csv.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "record/device_file.hpp"
#include "record/recorded_set.hpp"

namespace halcyra::record {

// Each file appears whole, and a set's files follow each other at once. So the recording can be
// played after the process was killed at any moment: the streams then differ by one file at most,
// and the shortest decides where it ends. `commit` may run on another thread than the rest, but not
// at the same time as `finish` or `clear`.
class RecordingFolder {
 public:
  RecordingFolder(std::filesystem::path folder, const StreamChoice& streams);
  ~RecordingFolder();
  RecordingFolder(const RecordingFolder&) = delete;
  RecordingFolder& operator=(const RecordingFolder&) = delete;

  // Makes the folder unless it is there, and the stream folders in it. Returns why that cannot be:
  // it is a file or not empty, its parent is missing, nothing may be written there. What was made
  // is then removed again. "" if all is well.
  std::string prepare();

  // What device.yml will say, but for the order of the colours and the pace. Call before `commit`.
  void describe(const DeviceDescription& device);

  // Writes the encoded files of one set, and device.yml before those of the first. False if that
  // fails: nothing of the set is left, those before it can be played, and `failure` says why. Call
  // no more after that.
  bool commit(const RecordedSet& set);

  // Renews device.yml with the pace of the sets that were written. False as above.
  bool finish();

  // Removes what `prepare` has made; only for a folder without any set.
  void clear();

  // The sets that were written, their bytes, and the seconds from the first to the last. May be
  // called while another thread commits.
  std::uint32_t sets() const { return sets_; }
  std::uint64_t bytes() const { return bytes_; }
  double seconds() const { return seconds_; }

  // Why the first call failed that did; "" if none did.
  const std::string& failure() const { return failure_; }

 private:
  std::filesystem::path file_of(const RecordedSet& set, std::size_t stream) const;
  std::string make_stream_folders();
  void learn_color_order(const RecordedSet& set);
  bool write_device_file();
  bool write_files(const RecordedSet& set);
  bool append_to_table(const std::string& line);
  void remove_files(const RecordedSet& set) const;
  bool fails(const std::string& reason);

  const std::filesystem::path folder_;
  const StreamChoice streams_;
  DeviceDescription device_;
  bool color_order_known_ = false;
  bool made_folder_ = false;
  int table_ = -1;  // descriptor of sets.csv
  std::atomic<std::uint32_t> sets_{0};
  std::atomic<std::uint64_t> bytes_{0};
  std::atomic<double> seconds_{0.0};
  std::string failure_;
};

}  // namespace halcyra::record
