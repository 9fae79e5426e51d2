// Reads the RECENT EVENTS panel in a picture of the dashboard: draws every line that may be there
// with the dashboard's own code and compares pixel by pixel.
#pragma once

#include <ctime>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Stands for a line that matches no known message.
extern const char kUnreadableLine[];

struct EventReader {
  double font_scale;                  // of the run
  std::vector<std::string> messages;  // that may have been logged
  std::time_t from;                   // no event is older

  // The lines ("HH:MM:SS  message"), newest first; kUnreadableLine where no message matches. In a
  // full panel the overflow notice may cover the last line, which is then left out.
  std::vector<std::string> lines(const cv::Mat& picture) const;
};

// The lines without their times.
std::vector<std::string> messages_of(const std::vector<std::string>& lines);

// The local time in the format of the event log.
std::string event_time(std::time_t time);

}  // namespace halcyra
