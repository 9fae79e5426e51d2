// Reads the RECENT EVENTS panel out of a picture of the dashboard, by drawing each line that could
// stand there and comparing pixel by pixel.
#pragma once

#include <ctime>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// What stands where no known message fits.
extern const char kUnreadableLine[];

struct EventReader {
  double font_scale;                  // of the run
  std::vector<std::string> messages;  // what may have been logged
  std::time_t from;                   // no event is older

  // The lines as drawn ("HH:MM:SS  message"), newest first; kUnreadableLine for any other. A last
  // line that the notice of an overflowing panel is written over is left out.
  std::vector<std::string> lines(const cv::Mat& picture) const;
};

// The lines without their times.
std::vector<std::string> messages_of(const std::vector<std::string>& lines);

// The local time as events carry it.
std::string event_time(std::time_t time);

}  // namespace halcyra
