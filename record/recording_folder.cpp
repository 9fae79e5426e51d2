#include "record/recording_folder.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "record/sets_table.hpp"
#include "record/whole_file.hpp"

namespace halcyra::record {
namespace {

namespace fs = std::filesystem;

std::string numbered(std::uint32_t number) {
  char name[16];
  std::snprintf(name, sizeof(name), "%06u", number);
  return name;
}

std::string in_quotes(const fs::path& path) { return "\"" + path.string() + "\""; }

// Why the folder is not one to record in, "" if it is or can be made.
std::string fault_of(const fs::path& folder, bool& exists) {
  std::error_code error;
  exists = fs::exists(fs::symlink_status(folder, error));
  if (!exists) return "";
  if (!fs::is_directory(folder, error)) return in_quotes(folder) + " is not a folder";
  const bool is_empty = fs::is_empty(folder, error);
  if (error) return "cannot look into " + in_quotes(folder) + ": " + error.message();
  return is_empty ? "" : in_quotes(folder) + " is not empty";
}

}  // namespace

RecordingFolder::RecordingFolder(fs::path folder, const StreamChoice& streams)
    : folder_(std::move(folder)), streams_(streams) {}

RecordingFolder::~RecordingFolder() {
  if (table_ >= 0) close(table_);
}

std::string RecordingFolder::prepare() {
  bool exists = false;
  std::string fault = fault_of(folder_, exists);
  if (!fault.empty()) return fault;
  std::error_code error;
  if (!exists) {
    made_folder_ = fs::create_directory(folder_, error);
    if (error) return "cannot make the folder " + in_quotes(folder_) + ": " + error.message();
  }
  return make_stream_folders();
}

std::string RecordingFolder::make_stream_folders() {
  for (std::size_t stream = 0; stream < kStreams; ++stream) {
    std::error_code error;
    if (streams_[stream]) fs::create_directory(folder_ / kStreamNames[stream], error);
    if (error) {
      clear();
      return "cannot write to the folder " + in_quotes(folder_) + ": " + error.message();
    }
  }
  return "";
}

void RecordingFolder::describe(const DeviceDescription& device) { device_ = device; }

bool RecordingFolder::commit(const RecordedSet& set) {
  if (!set.failure.empty()) {
    failure_ = set.failure;
    return false;
  }
  learn_color_order(set);
  const bool is_first = sets_ == 0;
  if (is_first && !(write_device_file() && append_to_table(sets_table_head()))) return false;
  if (!write_files(set) || !append_to_table(sets_table_row(set))) {
    remove_files(set);
    return false;
  }
  for (std::size_t stream = 0; stream < kStreams; ++stream) {
    if (streams_[stream]) bytes_ += set.files[stream].bytes.size();
  }
  seconds_ = set.seconds;
  ++sets_;
  return true;
}

bool RecordingFolder::finish() {
  device_.pace = measured_pace(sets_, seconds_);
  return write_device_file();
}

void RecordingFolder::clear() {
  std::error_code ignored;
  for (const char* const stream : kStreamNames) fs::remove(folder_ / stream, ignored);
  fs::remove(folder_ / "device.yml", ignored);
  fs::remove(folder_ / "sets.csv", ignored);
  if (made_folder_) fs::remove(folder_, ignored);
}

fs::path RecordingFolder::file_of(const RecordedSet& set, std::size_t stream) const {
  return folder_ / kStreamNames[stream] / (numbered(set.number) + set.files[stream].extension);
}

// A frame that could not be used says nothing, so a later one may be the first to tell.
void RecordingFolder::learn_color_order(const RecordedSet& set) {
  const PixelLayout layout = set.frames[kColor].layout;
  if (color_order_known_ || (layout != PixelLayout::kBgrx && layout != PixelLayout::kRgbx)) return;
  device_.color = layout;
  color_order_known_ = true;
}

bool RecordingFolder::write_device_file() {
  const std::string text = device_file_text(device_);
  const fs::path file = folder_ / "device.yml";
  std::string reason = write_draft(file, text.data(), text.size());
  if (reason.empty()) reason = publish_draft(file);
  return reason.empty() || fails(reason);
}

// All are written before the first gets its name, so that a kill rarely comes between the names.
bool RecordingFolder::write_files(const RecordedSet& set) {
  std::string reason;
  for (std::size_t stream = 0; stream < kStreams && reason.empty(); ++stream) {
    const FrameFile& file = set.files[stream];
    if (!streams_[stream]) continue;
    reason = write_draft(file_of(set, stream), file.bytes.data(), file.bytes.size());
  }
  for (std::size_t stream = 0; stream < kStreams && reason.empty(); ++stream) {
    if (streams_[stream]) reason = publish_draft(file_of(set, stream));
  }
  return reason.empty() || fails(reason);
}

bool RecordingFolder::append_to_table(const std::string& line) {
  const fs::path file = folder_ / "sets.csv";
  if (table_ < 0) table_ = open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  if (table_ < 0) return fails(std::generic_category().message(errno));
  const off_t end = lseek(table_, 0, SEEK_END);
  const ssize_t written = write(table_, line.data(), line.size());
  if (written == static_cast<ssize_t>(line.size())) return true;
  const int error = written < 0 ? errno : ENOSPC;
  static_cast<void>(ftruncate(table_, end) == 0);  // the sentence about the write matters more
  return fails(std::generic_category().message(error));
}

void RecordingFolder::remove_files(const RecordedSet& set) const {
  for (std::size_t stream = 0; stream < kStreams; ++stream) {
    if (!streams_[stream]) continue;
    std::error_code ignored;
    fs::remove(file_of(set, stream), ignored);
    fs::remove(draft_of(file_of(set, stream)), ignored);
  }
}

bool RecordingFolder::fails(const std::string& reason) {
  if (failure_.empty()) failure_ = "cannot write to " + in_quotes(folder_) + ": " + reason;
  return false;
}

}  // namespace halcyra::record
