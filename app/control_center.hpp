// The state of one run of the program.
#pragma once

#include <chrono>
#include <cstdint>

#include <opencv2/core/mat.hpp>

#include "app/room_events.hpp"
#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "awareness/mode_hold_back.hpp"
#include "capture/frame_conversion.hpp"
#include "capture/kinect_session.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "face_pipeline/recognition_state.hpp"
#include "probes/display_info.hpp"

namespace halcyra {

// The last pictures of each stream, those of infrared and depth in BGR; a turn without a new frame
// shows the old ones.
struct Previews {
  ColorImages color;
  cv::Mat infrared;
  cv::Mat depth;
};

// What the loop remembers from one turn to the next.
struct LoopMemory {
  std::int32_t frame_count = 0;
  RoomEventMemory room_events;
  ModeHoldBack mode_hold_back;
  bool layout_image_written = false;
  std::chrono::steady_clock::time_point start;  // the frame rate counts from here
};

// Members are destroyed in reverse order, so the Kinect goes before the recogniser and the
// cascades.
struct ControlCenter {
  Options options;
  DisplayInfo display;
  RuntimeStatus status;
  FaceDetectors detectors;
  RecognitionState recognition;
  KinectSession kinect;
  cv::Mat canvas;
  Previews previews;
  LoopMemory loop;
  // The clock of the frame rate and of the mode hold-back; tests replace it.
  std::chrono::steady_clock::time_point (*now)() = std::chrono::steady_clock::now;
};

}  // namespace halcyra
