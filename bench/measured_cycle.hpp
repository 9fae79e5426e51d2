// A turn of the program's loop with a set of frames, without the window.
#pragma once

#include "app/control_center.hpp"
#include "bench/recorded_frames.hpp"

namespace halcyra {

enum class Cascades {
  kOwn,     // as the program loads them
  kLibrary  // searched by OpenCV itself
};

// The recogniser knows 24 samples and the window is one of a 1920x1080 screen. The services are not
// asked, as that starts processes.
class MeasuredCycle {
 public:
  MeasuredCycle(RecordedFrames frames, Cascades cascades);

  // Hands the frames to the listener, as a driver would. Needed before each turn.
  void feed();

  // From taking the frame set to the finished canvas.
  void take_turn();

 private:
  RecordedFrames frames_;
  ControlCenter center_;
};

}  // namespace halcyra
