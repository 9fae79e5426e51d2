#include "enroll/picture_files.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <system_error>

#include <opencv2/core/base.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

namespace fs = std::filesystem;

std::string cannot_open(const std::error_code& error) {
  return "cannot be opened: " + error.message();
}

void list_folder(const fs::path& folder, std::vector<PictureFile>& files);

void list_entry(const fs::path& path, std::vector<PictureFile>& files) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (path.filename().string().front() == '.') {
    files.push_back({path, "hidden", false});
  } else if (error) {
    files.push_back({path, cannot_open(error), false});
  } else if (fs::is_directory(status) && fs::is_symlink(path, error)) {
    files.push_back({path, "a link to a folder", false});
  } else if (fs::is_directory(status)) {
    list_folder(path, files);
  } else {
    files.push_back({path, fs::is_regular_file(status) ? "" : "not a file", false});
  }
}

void list_folder(const fs::path& folder, std::vector<PictureFile>& files) {
  std::error_code error;
  std::vector<fs::path> entries;
  for (fs::directory_iterator entry(folder, error); entry != fs::directory_iterator();
       entry.increment(error)) {
    entries.push_back(entry->path());
  }
  if (error) files.push_back({folder, cannot_open(error), false});
  std::sort(entries.begin(), entries.end());
  for (const fs::path& path : entries) list_entry(path, files);
}

void list_name(const fs::path& path, std::vector<PictureFile>& files) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (error) {
    files.push_back({path, cannot_open(error), true});
  } else if (fs::is_directory(status)) {
    const std::size_t before = files.size();
    list_folder(path, files);
    const bool unreadable = files.size() == before + 1 && files.back().path == path;
    if (unreadable) files.back().asked_for = true;
  } else {
    files.push_back({path, fs::is_regular_file(status) ? "" : "not a file", true});
  }
}

bool begins_as_picture(const std::string& bytes) {
  static const std::vector<std::string> kBeginnings = {
      "\x89PNG\r\n\x1A\n",
      "\xFF\xD8\xFF",  // JPEG
      "BM",
      {"II*\0", 4},  // TIFF
      {"MM\0*", 4},
      {"\0\0\0\x0CjP  \r\n\x87\n", 12},  // JPEG 2000
      "\xFF\x4F\xFF\x51"};
  const bool netpbm = bytes.size() > 2 && bytes[0] == 'P' && bytes[1] >= '1' && bytes[1] <= '6';
  const bool webp =
      bytes.compare(0, 4, "RIFF") == 0 && bytes.size() >= 12 && bytes.compare(8, 4, "WEBP") == 0;
  return netpbm || webp ||
         std::any_of(kBeginnings.begin(), kBeginnings.end(), [&](const std::string& beginning) {
           return bytes.compare(0, beginning.size(), beginning) == 0;
         });
}

}  // namespace

std::vector<PictureFile> list_pictures(const std::vector<std::string>& names) {
  std::vector<PictureFile> files;
  for (const std::string& name : names) list_name(name, files);
  return files;
}

cv::Mat read_photograph(const fs::path& file, std::string& obstacle) {
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    obstacle = cannot_open(std::error_code(errno, std::generic_category()));
    return {};
  }
  std::string beginning(12, '\0');
  stream.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
  beginning.resize(static_cast<std::size_t>(stream.gcount()));
  if (!begins_as_picture(beginning)) {
    obstacle = "not a picture";
    return {};
  }
  cv::Mat grey;
  try {
    const cv::Mat colored = cv::imread(file.string(), cv::IMREAD_COLOR);
    if (!colored.empty()) cv::cvtColor(colored, grey, cv::COLOR_BGR2GRAY);
  } catch (const cv::Exception&) {
    obstacle = "too large";
    return {};
  }
  if (grey.empty()) obstacle = "cannot be decoded";
  return grey;
}

}  // namespace halcyra
