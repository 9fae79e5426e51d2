// The settings of one run of halcyra-enroll.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/run_state/options.hpp"

namespace halcyra {

enum class EnrollTask {
  kLive,          // takes samples from the sensor
  kFromPictures,  // takes samples from picture files
  kReport,        // only judges the samples that are there
};

struct EnrollOptions {
  EnrollTask task = EnrollTask::kLive;
  std::int32_t per_pose = 10;         // samples wanted of each pose, 1 to 1000
  std::vector<std::string> pictures;  // files and folders to take samples from
  bool json = false;                  // the report for programs instead of people
  std::string sheet;                  // where the contact sheet goes; empty = none is made
  bool fullscreen = false;
  // The samples folder, the cascades, and the settings of search and recognition, which are the
  // dashboard's own.
  Options pipeline;
};

}  // namespace halcyra
