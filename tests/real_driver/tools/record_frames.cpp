// Writes what the real driver delivers as a recording for the virtual Kinect.
// Usage: record-frames FOLDER SETS
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

#include <libfreenect2/frame_listener_impl.h>
#include <libfreenect2/libfreenect2.hpp>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

namespace {

using libfreenect2::Frame;

constexpr int kTimeoutMs = 60000;

cv::Mat pixels_of(const Frame& frame, int type) {
  return cv::Mat(static_cast<int>(frame.height), static_cast<int>(frame.width), type, frame.data);
}

void write(const std::filesystem::path& folder, const std::string& file, const cv::Mat& picture) {
  std::filesystem::create_directories(folder);
  // Lossless; floats as they are.
  cv::imwrite((folder / file).string(), picture, {cv::IMWRITE_TIFF_COMPRESSION, 1});
}

void write_set(const std::filesystem::path& folder, int number, libfreenect2::FrameMap& frames) {
  const std::string name = std::to_string(100 + number);
  const Frame& color = *frames[Frame::Color];
  const cv::Mat four_channels = pixels_of(color, CV_8UC4);
  cv::Mat three_channels(four_channels.size(), CV_8UC3);
  const int from_to[] = {0, 0, 1, 1, 2, 2};
  cv::mixChannels(&four_channels, 1, &three_channels, 1, from_to, 3);
  write(folder / "color", name + ".png", three_channels);
  write(folder / "ir", name + ".tiff", pixels_of(*frames[Frame::Ir], CV_32FC1));
  write(folder / "depth", name + ".tiff", pixels_of(*frames[Frame::Depth], CV_32FC1));
}

// Says what is wrong, "" for nothing.
std::string record(const std::filesystem::path& folder, int sets) {
  libfreenect2::Freenect2 context;
  if (context.enumerateDevices() <= 0) return "no device";
  libfreenect2::Freenect2Device* const device =
      context.openDevice(context.getDefaultDeviceSerialNumber());
  if (device == nullptr) return "the device cannot be opened";
  libfreenect2::SyncMultiFrameListener listener(Frame::Color | Frame::Ir | Frame::Depth);
  device->setColorFrameListener(&listener);
  device->setIrAndDepthFrameListener(&listener);
  if (!device->start()) return "the streams do not start";
  std::cout << "serial " << device->getSerialNumber() << '\n'
            << "firmware " << device->getFirmwareVersion() << '\n';
  std::string fault;
  for (int set = 0; set < sets && fault.empty(); ++set) {
    libfreenect2::FrameMap frames;
    if (listener.waitForNewFrame(frames, kTimeoutMs)) {
      write_set(folder, set, frames);
      listener.release(frames);
    } else {
      fault = "no set came";
    }
  }
  device->stop();
  device->close();
  return fault;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: record-frames FOLDER SETS\n";
    return 2;
  }
  const std::string fault = record(argv[1], std::atoi(argv[2]));
  if (fault.empty()) return 0;
  std::cerr << "record-frames: " << fault << '\n';
  return 1;
}
