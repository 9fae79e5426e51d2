// Prints how many sets a second the real driver delivers to somebody who does nothing with them.
// Usage: count-sets SECONDS
#include <chrono>
#include <cstdlib>
#include <iostream>

#include <libfreenect2/frame_listener_impl.h>
#include <libfreenect2/libfreenect2.hpp>

namespace {

using Clock = std::chrono::steady_clock;
using libfreenect2::Frame;

constexpr int kTimeoutMs = 60000;

// False if no set came.
bool take_set(libfreenect2::SyncMultiFrameListener& listener) {
  libfreenect2::FrameMap frames;
  if (!listener.waitForNewFrame(frames, kTimeoutMs)) return false;
  listener.release(frames);
  return true;
}

// From the first set on. 0 if sets fail to come.
double sets_a_second(libfreenect2::SyncMultiFrameListener& listener, std::chrono::seconds length) {
  if (!take_set(listener)) return 0;
  const Clock::time_point begin = Clock::now();
  int sets = 0;
  while (Clock::now() - begin < length) {
    if (!take_set(listener)) return 0;
    ++sets;
  }
  return sets / std::chrono::duration<double>(Clock::now() - begin).count();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: count-sets SECONDS\n";
    return 2;
  }
  libfreenect2::Freenect2 context;
  libfreenect2::Freenect2Device* const device = context.openDefaultDevice();
  if (device == nullptr) return 1;
  libfreenect2::SyncMultiFrameListener listener(Frame::Color | Frame::Ir | Frame::Depth);
  device->setColorFrameListener(&listener);
  device->setIrAndDepthFrameListener(&listener);
  if (!device->start()) return 1;
  const double rate = sets_a_second(listener, std::chrono::seconds(std::atoi(argv[1])));
  device->stop();
  device->close();
  std::cout << rate << '\n';
  return rate > 0 ? 0 : 1;
}
