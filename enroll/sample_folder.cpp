#include "enroll/sample_folder.hpp"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>
#include <vector>

#include <opencv2/imgcodecs.hpp>

#include "enroll/private_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// One folder and those above it; only the ones that are made here get the mode.
bool make_private_folder(const fs::path& folder, std::error_code& error) {
  if (fs::is_directory(folder, error)) return true;
  const fs::path parent = folder.parent_path();
  if (!parent.empty() && parent != folder && !make_private_folder(parent, error)) return false;
  if (::mkdir(folder.c_str(), S_IRWXU) == 0) return true;
  error = std::error_code(errno, std::generic_category());
  if (error != std::errc::file_exists) return false;
  // Somebody else has made the folder, or a file is in its place.
  if (fs::is_directory(folder, error)) return true;
  if (!error) error = std::make_error_code(std::errc::not_a_directory);
  return false;
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
