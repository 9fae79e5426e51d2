#include "tests/e2e/event_transcript.hpp"

#include <algorithm>
#include <deque>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "dashboard/font_scale.hpp"
#include "dashboard/panel_drawing.hpp"
#include "dashboard/side_panels.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {

const char kUnreadableLine[] = "(unreadable)";

namespace {

constexpr std::size_t kTimeLength = 8;  // "HH:MM:SS"

// The panel as the dashboard places and draws it.
struct EventPanel {
  cv::Rect place;              // on the dashboard
  DashboardGeometry geometry;  // for drawing the panel alone, at the origin
  PanelCursor first_line;      // of that panel
  int lines = 0;               // that fit
};

EventPanel event_panel(cv::Size canvas) {
  Options options;
  options.width = canvas.width;
  options.height = canvas.height;
  EventPanel panel{};
  panel.geometry = dashboard_geometry(options);
  panel.place = {panel.geometry.side_x, panel.geometry.events_top, panel.geometry.side_width,
                 panel.geometry.events_height};
  panel.geometry.side_x = 0;
  panel.geometry.events_top = 0;

  cv::Mat scratch(panel.place.size(), CV_8UC3);
  panel.first_line = drawPanel(scratch, {{0, 0}, panel.place.size()}, "", 1.0);
  PanelCursor cursor = panel.first_line;
  while (drawTextLine(scratch, cursor, " ", 1.0, cv::Scalar(), 1)) ++panel.lines;
  return panel;
}

// The pixels of one line: from under the descenders of the line above to under its own.
cv::Rect line_area(const EventPanel& panel, int line) {
  const PanelCursor& first = panel.first_line;
  const int descent = first.line_height / 3;
  return {first.content.x, first.y + (line - 1) * first.line_height + descent, first.content.width,
          first.line_height};
}

// The panel with these lines.
cv::Mat drawn_panel(const EventPanel& panel, const std::deque<std::string>& lines) {
  cv::Mat picture(panel.place.size(), CV_8UC3);
  drawEventPanel(picture, panel.geometry, lines);
  return picture;
}

cv::Mat drawn_line(const EventPanel& panel, const std::string& text) {
  return drawn_panel(panel, {text})(line_area(panel, 0));
}

// The first of `texts` whose drawing equals the left `width` columns of `strip`, or "". As many
// as fit are drawn in one panel.
std::string recognised(const EventPanel& panel, const cv::Mat& strip,
                       const std::vector<std::string>& texts, int width) {
  const cv::Rect left(0, 0, width, strip.rows);
  const auto batch = static_cast<std::size_t>(panel.lines);
  for (std::size_t start = 0; start < texts.size(); start += batch) {
    const std::size_t end = std::min(start + batch, texts.size());
    const cv::Mat picture = drawn_panel(panel, {texts.begin() + static_cast<std::ptrdiff_t>(start),
                                                texts.begin() + static_cast<std::ptrdiff_t>(end)});
    for (std::size_t i = start; i < end; ++i) {
      const cv::Mat line = picture(line_area(panel, static_cast<int>(i - start)));
      if (same_pixels(line(left), strip(left))) return texts[i];
    }
  }
  return "";
}

// Columns that the time alone fills: where the drawing of a time ends.
int time_width(const EventPanel& panel) {
  const cv::Mat blank = drawn_line(panel, "");
  cv::Mat ink;
  cv::findNonZero(differing_pixels(drawn_line(panel, "00:00:00"), blank), ink);
  return cv::boundingRect(ink).br().x;
}

std::string read_line(const EventReader& reader, const EventPanel& panel, const cv::Mat& strip) {
  std::vector<std::string> times;
  for (std::time_t time = std::time(nullptr) + 1; time >= reader.from; --time) {
    times.push_back(event_time(time));
  }
  const std::string time = recognised(panel, strip, times, time_width(panel));
  if (time.empty()) return kUnreadableLine;
  std::vector<std::string> texts;
  for (const std::string& message : reader.messages) texts.push_back(time + "  " + message);
  const std::string text = recognised(panel, strip, texts, strip.cols);
  return text.empty() ? kUnreadableLine : text;
}

}  // namespace

std::vector<std::string> EventReader::lines(const cv::Mat& picture) const {
  if (picture.cols < 800 || picture.rows < 480) {
    return {};  // a window that has not its size yet
  }
  g_font_scale = font_scale;
  const EventPanel panel = event_panel(picture.size());
  const cv::Mat blank = drawn_line(panel, "");
  std::vector<std::string> result;
  for (int line = 0; line < panel.lines; ++line) {
    const cv::Mat strip = picture(panel.place)(line_area(panel, line));
    if (same_pixels(strip, blank)) break;
    result.push_back(read_line(*this, panel, strip));
  }
  const bool panel_full = static_cast<int>(result.size()) == panel.lines;
  if (panel_full && result.back() == kUnreadableLine) result.pop_back();
  return result;
}

std::vector<std::string> messages_of(const std::vector<std::string>& lines) {
  std::vector<std::string> messages;
  for (const std::string& line : lines) {
    const bool timed = line != kUnreadableLine && line.size() >= kTimeLength + 2;
    messages.push_back(timed ? line.substr(kTimeLength + 2) : line);
  }
  return messages;
}

std::string event_time(std::time_t time) {
  std::tm local{};
  localtime_r(&time, &local);
  char text[16];
  std::strftime(text, sizeof(text), "%H:%M:%S", &local);
  return text;
}

}  // namespace halcyra
