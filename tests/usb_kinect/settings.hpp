// What the environment variables USB_KINECT_... ask for; README.md describes them.
#pragma once

#include <string>
#include <vector>

namespace usb_kinect {

struct Settings {
  int devices;
  std::string serial;
  std::string protocol_serial;  // "": the same as `serial`
  std::string firmware;
  std::string color;    // a JPEG file or a folder of them; "": the pattern
  bool color_hold_set;  // whether the number of frames for each picture was given
  double fps;           // of both streams
  long color_hold;      // frames for which each picture is shown
  double depth_mm;      // of the plane, in the middle
  double depth_slope;   // how much farther its right edge is than its left one, mm
  double ir_level;      // infrared value at the bottom
  std::string depth_file;
  std::string ir_file;

  std::string fail_open;   // a word, "" for no failure
  std::string fail_start;  // the command or step, "" for no failure
  std::string fail_how;    // what stands behind the colon of USB_KINECT_FAIL_START
  long stall_after;        // frame number, -1 for never
  std::string stall;       // "all", "color" or "depth"
  double stall_ms;         // 0: for ever
  long unplug_after;       // frame number, -1 for never
  long corrupt_every;      // 0 for never
  std::vector<std::string> corrupt;
  long ready_reads;  // of the status register before it says "ready"
  std::string log;   // a file, "-" for standard error, "" for none
};

// Read once. A value that is not understood is said in one line on standard error.
const Settings& settings();

}  // namespace usb_kinect
