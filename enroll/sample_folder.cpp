#include "enroll/sample_folder.hpp"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>
#include <vector>

#include <opencv2/imgcodecs.hpp>

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// Not the ending of a picture, so that nobody takes a file that is being written for a sample.
const std::string kUnfinished = ".unfinished";

// One folder and those above it; only the ones that are made here get the mode.
bool make_private_folder(const fs::path& folder, std::error_code& error) {
  if (fs::is_directory(folder, error)) return true;
  const fs::path parent = folder.parent_path();
  if (!parent.empty() && parent != folder && !make_private_folder(parent, error)) return false;
  if (::mkdir(folder.c_str(), S_IRWXU) == 0) return true;
  const int reason = errno;
  // Somebody else may have made it meanwhile; or a file has its name.
  if (fs::is_directory(folder, error)) return true;
  error = std::error_code(reason == EEXIST ? ENOTDIR : reason, std::generic_category());
  return false;
}

// False with errno set.
bool write_all(int file, const std::vector<unsigned char>& bytes) {
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t count = ::write(file, bytes.data() + written, bytes.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    written += static_cast<std::size_t>(count);
  }
  return ::fsync(file) == 0;
}

// A new file in the folder that only its owner can read; its path. Nothing, with errno set, if it
// cannot be written.
std::optional<fs::path> write_unfinished(const fs::path& folder,
                                         const std::vector<unsigned char>& bytes) {
  std::string path = folder / ("XXXXXX" + kUnfinished);
  const int file = ::mkostemps(path.data(), static_cast<int>(kUnfinished.size()), O_CLOEXEC);
  if (file < 0) return std::nullopt;
  const bool whole = write_all(file, bytes);
  const int reason = errno;
  ::close(file);
  if (whole) return path;
  ::unlink(path.c_str());
  errno = reason;
  return std::nullopt;
}

// Gives the file its name unless that is taken. False with errno set, EEXIST for a taken name.
bool rename_to_new(const fs::path& from, const fs::path& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  // Some file systems cannot keep a taken name by themselves.
  if (errno != EINVAL && errno != ENOSYS) return false;
  if (::access(to.c_str(), F_OK) == 0) {
    errno = EEXIST;
    return false;
  }
  return ::rename(from.c_str(), to.c_str()) == 0;
}

std::string utc_text(std::time_t time) {
  std::tm parts{};
  gmtime_r(&time, &parts);
  char text[32];
  std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", &parts);
  return text;
}

std::string refusal(const fs::path& place, int reason) {
  return "No samples can be written to " + place.string() + ": " + std::strerror(reason) + ".";
}

}  // namespace

bool prepare_sample_folder(const fs::path& folder, std::string& complaint) {
  for (const Pose pose : kPoses) {
    const fs::path stage = folder / stage_name(pose);
    std::error_code error;
    if (!make_private_folder(stage, error)) {
      complaint = refusal(stage, error.value());
      return false;
    }
    const std::optional<fs::path> attempt = write_unfinished(stage, {0});
    if (!attempt) {
      complaint = refusal(stage, errno);
      return false;
    }
    ::unlink(attempt->c_str());
  }
  return true;
}

std::optional<fs::path> write_sample(const fs::path& folder, Pose pose, const cv::Mat& crop,
                                     std::time_t time, std::string& complaint) {
  const fs::path stage = folder / stage_name(pose);
  std::vector<unsigned char> bytes;
  cv::imencode(".png", crop, bytes);
  const std::optional<fs::path> unfinished = write_unfinished(stage, bytes);
  if (!unfinished) {
    complaint = refusal(stage, errno);
    return std::nullopt;
  }
  for (int number = 1;; ++number) {
    const fs::path file = stage / (utc_text(time) + "-" + std::to_string(number) + ".png");
    if (rename_to_new(*unfinished, file)) return file;
    if (errno == EEXIST) continue;
    complaint = refusal(stage, errno);
    ::unlink(unfinished->c_str());
    return std::nullopt;
  }
}

bool others_can_read(const fs::path& folder) {
  std::error_code error;
  const fs::perms modes = fs::status(folder, error).permissions();
  if (error) return false;
  return (modes & (fs::perms::group_all | fs::perms::others_all)) != fs::perms::none;
}

}  // namespace halcyra
