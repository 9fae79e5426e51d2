#include "tests/usb_kinect/picture_files.hpp"

#include <turbojpeg.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "tests/usb_kinect/color_pattern.hpp"
#include "tests/usb_kinect/depth_codes.hpp"

namespace usb_kinect {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestColorPacket = std::size_t{2} * 1024 * 1024;

// False if the file cannot be read.
bool read_file(const std::string& path, Bytes& contents) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  contents.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  return !file.bad();
}

bool is_jpeg_name(const fs::path& path) {
  std::string extension = path.extension().string();
  for (char& letter : extension) letter = static_cast<char>(std::tolower(letter));
  return extension == ".jpg" || extension == ".jpeg";
}

std::vector<std::string> jpeg_files(const std::string& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<std::string> result;
  for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
    if (is_jpeg_name(entry.path())) result.push_back(entry.path().string());
  }
  std::sort(result.begin(), result.end());
  return result;
}

// False if it is no JPEG.
bool jpeg_size(const Bytes& jpeg, int& width, int& height) {
  const std::unique_ptr<void, int (*)(tjhandle)> decoder(tjInitDecompress(), tjDestroy);
  int subsampling = 0;
  int color_space = 0;
  return tjDecompressHeader3(decoder.get(), jpeg.data(), jpeg.size(), &width, &height, &subsampling,
                             &color_space) == 0;
}

// An end marker of a JPEG is the bytes FF D9.
void cut_after_end_marker(Bytes& jpeg) {
  std::size_t end = jpeg.size();
  while (end > 2 && !(jpeg[end - 2] == 0xff && jpeg[end - 1] == 0xd9)) --end;
  jpeg.resize(end);
}

// Reads the header of a PGM: blanks, comments, and three numbers.
class PgmHeader {
 public:
  explicit PgmHeader(const Bytes& file) : file_(file) {
    if (file.size() < 2 || file[0] != 'P' || file[1] != '5') return;
    is_pgm = true;
    for (long* const number : {&width, &height, &most}) {
      skip_blanks();
      read_number(*number);
    }
    pixels = place_ + 1;
  }

  bool is_pgm = false;
  long width = 0;
  long height = 0;
  long most = 0;           // largest value
  std::size_t pixels = 0;  // where they begin; may lie behind the end

 private:
  bool at(const char* characters) const {
    return place_ < file_.size() &&
           std::string(characters).find(static_cast<char>(file_[place_])) != std::string::npos;
  }
  void skip_blanks() {
    while (at(" \t\n\r#")) {
      if (at("#")) {
        while (place_ < file_.size() && !at("\n")) ++place_;
      } else {
        ++place_;
      }
    }
  }
  void read_number(long& number) {
    constexpr long kEnough = 1000000;
    while (at("0123456789") && number < kEnough) number = number * 10 + (file_[place_++] - '0');
  }

  const Bytes& file_;
  std::size_t place_ = 2;
};

// Why the file cannot be used, "" if it can.
std::string fault_of_pgm(const Bytes& file, const PgmHeader& header) {
  if (!header.is_pgm) return "is no binary PGM";
  const bool size_fits = header.width == kDepthWidth && header.height == kDepthHeight;
  if (!size_fits || header.most < 1 || header.most > 65535) return "is not 512x424";
  const std::size_t pixel_bytes = header.most > 255 ? 2 : 1;
  if (file.size() < header.pixels + kDepthPixels * pixel_bytes) return "is too short";
  return "";
}

}  // namespace

std::vector<Bytes> read_jpegs(const std::string& path) {
  std::vector<Bytes> result;
  for (const std::string& file : jpeg_files(path)) {
    Bytes jpeg;
    int width = 0;
    int height = 0;
    if (!read_file(file, jpeg) || !jpeg_size(jpeg, width, height)) {
      std::fprintf(stderr, "usb_kinect: %s is no readable JPEG\n", file.c_str());
      continue;
    }
    if (width != kColorWidth || height != kColorHeight) {
      std::fprintf(stderr, "usb_kinect: %s is %dx%d; the sensor's pictures are %dx%d\n",
                   file.c_str(), width, height, kColorWidth, kColorHeight);
    }
    cut_after_end_marker(jpeg);
    constexpr std::size_t kFraming = 128;
    if (jpeg.size() + kFraming > kLargestColorPacket) {
      std::fprintf(stderr, "usb_kinect: %s is larger than the 2 MiB that a reader takes\n",
                   file.c_str());
    }
    result.push_back(std::move(jpeg));
  }
  return result;
}

std::vector<float> read_pgm(const std::string& path, const char* variable) {
  Bytes file;
  const bool readable = read_file(path, file);
  const PgmHeader header(file);
  const std::string fault = readable ? fault_of_pgm(file, header) : "cannot be read";
  if (!fault.empty()) {
    std::fprintf(stderr, "usb_kinect: %s %s\n", variable, fault.c_str());
    return {};
  }
  std::vector<float> values(kDepthPixels);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::uint8_t* const pixels = &file[header.pixels];
    const int value = header.most > 255 ? pixels[2 * i] << 8 | pixels[2 * i + 1] : pixels[i];
    values[i] = static_cast<float>(value);
  }
  return values;
}

}  // namespace usb_kinect
