#include "virtual_kinect/recording.hpp"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "virtual_kinect/image_cache.hpp"
#include "virtual_kinect/image_file.hpp"

namespace halcyra::virtual_kinect {

namespace {

namespace fs = std::filesystem;
using libfreenect2::Frame;

// About fifty sets of the sensor's own size.
constexpr std::size_t kLoopCacheBytes = std::size_t{512} << 20U;

struct StreamFolder {
  const char* name;
  std::vector<std::string> extensions;
};

StreamFolder stream_folder(Frame::Type stream) {
  switch (stream) {
    case Frame::Color:
      return {"color", {".png", ".jpg", ".jpeg", ".bmp"}};
    case Frame::Ir:
      return {"ir", {".png", ".tiff"}};
    case Frame::Depth:
      break;
  }
  return {"depth", {".png", ".tiff"}};
}

bool ends_in(const std::string& name, const std::string& ending) {
  return name.size() >= ending.size() &&
         name.compare(name.size() - ending.size(), ending.size(), ending) == 0;
}

struct Recording {
  std::map<Frame::Type, std::vector<fs::path>> files;  // only streams that have any
  Frame::Format color_format = Frame::BGRX;
  ImageCache cache;
};

}  // namespace

std::vector<fs::path> stream_files(const fs::path& recording, Frame::Type stream) {
  const StreamFolder folder = stream_folder(stream);
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(recording / folder.name, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    const bool is_image =
        std::any_of(folder.extensions.begin(), folder.extensions.end(),
                    [&name](const std::string& extension) { return ends_in(name, extension); });
    std::error_code no_status;
    if (is_image && entry->is_regular_file(no_status)) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  std::vector<fs::path> files;
  files.reserve(names.size());
  for (const std::string& name : names) files.push_back(recording / folder.name / name);
  return files;
}

FrameSource open_recording(const fs::path& recording, const DeviceSettings& settings) {
  const bool endless = settings.after == AfterLastSet::kLoop;
  const bool repeats = endless || settings.after == AfterLastSet::kPause;
  const auto opened = std::make_shared<Recording>(
      Recording{{}, settings.color_format, ImageCache(repeats ? kLoopCacheBytes : 0)});
  FrameSource source;
  std::size_t set_count = 0;
  for (const Frame::Type stream : {Frame::Color, Frame::Ir, Frame::Depth}) {
    std::vector<fs::path> files = stream_files(recording, stream);
    if (!files.empty()) {
      set_count = source.streams.empty() ? files.size() : std::min(set_count, files.size());
      source.streams.push_back(stream);
      opened->files[stream] = std::move(files);
    }
  }
  if (!endless) source.set_count = set_count;
  source.image = [opened, set_count](Frame::Type stream, std::uint64_t set) {
    const fs::path& file = opened->files.at(stream)[set % set_count];
    return opened->cache.get(file.string(),
                             [&] { return read_image(file, stream, opened->color_format); });
  };
  return source;
}

}  // namespace halcyra::virtual_kinect
