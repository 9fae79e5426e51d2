// What a run knows about itself, the sensor, the services and the room. Written by the application
// and the modules below it; the dashboard only reads it.
#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "app/run_state/corvane_status.hpp"
#include "app/run_state/room_awareness.hpp"
#include "app/run_state/voice_status.hpp"

namespace halcyra {

struct RuntimeStatus {
  bool kinect_connected = false;  // a sensor was found, even if it could not be opened
  std::string kinect_serial = "unknown";
  std::string kinect_firmware = "unknown";
  bool rgb_ok = false;  // the streams have started
  bool profile_cascade_loaded = false;
  bool frontal_cascade_loaded = false;
  bool samples_loaded = false;
  bool skeleton_available = false;  // for a future tracker; nothing sets it
  std::string skeleton_message = "No real skeleton tracker is integrated in this Linux build.";
  bool depth_ok = false;  // a depth frame has been converted at least once
  bool ir_ok = false;     // an infrared frame has been converted at least once
  std::string depth_message = "Depth preview is not embedded in this Control Center pass.";
  std::string ir_message = "IR preview is not embedded in this Control Center pass.";
  RoomAwareness room;
  std::int32_t frames = 0;  // colour frames, or turns of a limited run without a sensor
  std::int32_t faces = 0;   // detections in the latest colour frame
  double fps = 0.0;         // frames per second since the loop started
  std::string kinect_message = "starting";
  VoiceStatus voice;
  CorvaneStatus corvane;
  std::deque<std::string> events;  // newest first, at most 11
};

}  // namespace halcyra
