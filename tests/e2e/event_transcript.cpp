#include "tests/e2e/event_transcript.hpp"

#include <algorithm>
#include <cmath>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "dashboard/font_scale.hpp"
#include "dashboard/panel_drawing.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {

const char kUnreadableLine[] = "(unreadable)";

namespace {

const cv::Scalar kPanelFill(22, 28, 38);
const cv::Scalar kEventColor(176, 187, 202);

constexpr std::size_t kTimeLength = 8;  // "HH:MM:SS"

// Where the panel stands and how its lines are drawn, by the layout rules of the dashboard.
struct EventPanel {
  cv::Rect content;
  int line_height;
  int lines;     // that fit
  double scale;  // of the text
};

int share(double factor, int length) { return static_cast<int>(length * factor); }

EventPanel event_panel(cv::Size canvas, double font_scale) {
  const int margin = std::clamp(share(0.015, canvas.width), 12, 28);
  const int gap = std::clamp(share(0.012, canvas.width), 10, 24);
  const int footer = std::clamp(share(0.052, canvas.height), 28, 42);
  const int wanted = std::min(share(0.205, canvas.height), canvas.height / 4);
  const int height = std::max(wanted, 98);
  const int top = canvas.height - footer - margin - height;
  const int width = std::clamp(share(0.31, canvas.width), 292, 500);
  const int preview = std::max(canvas.width - width - gap - 2 * margin, 300);
  const int pad = std::clamp(static_cast<int>(std::round(std::min(width, height) * 0.035)), 8, 14);

  EventPanel panel{};
  panel.content = {margin + preview + gap + pad, top + pad + 22, width - 2 * pad,
                   height - 2 * pad - 22};
  panel.line_height = std::clamp(static_cast<int>(std::round(18.0 * font_scale)), 15, 24);
  panel.lines = (panel.content.height - 2) / panel.line_height;
  panel.scale = wanted > 134 ? 0.33 : 0.29;
  return panel;
}

// The pixels of one line: from under the descenders of the line above to under its own.
cv::Rect line_area(const EventPanel& panel, int line) {
  const int baseline = panel.content.y + (line + 1) * panel.line_height;
  const int descent = panel.line_height / 3;
  return {panel.content.x, baseline + descent - panel.line_height, panel.content.width,
          panel.line_height};
}

cv::Mat drawn_line(const EventPanel& panel, const std::string& text) {
  const int descent = panel.line_height / 3;
  cv::Mat strip(panel.line_height, panel.content.width, CV_8UC3, kPanelFill);
  PanelCursor cursor;
  cursor.content = {0, 0, panel.content.width, 2 * panel.line_height};
  cursor.y = panel.line_height - descent;
  cursor.line_height = panel.line_height;
  drawTextLine(strip, cursor, text, panel.scale, kEventColor, 1);
  return strip;
}

// The first of `texts` whose drawing equals the left `width` columns of `strip`, or "".
std::string recognised(const EventPanel& panel, const cv::Mat& strip,
                       const std::vector<std::string>& texts, int width) {
  const cv::Rect left(0, 0, width, strip.rows);
  for (const std::string& text : texts) {
    if (same_pixels(drawn_line(panel, text)(left), strip(left))) return text;
  }
  return "";
}

// Columns that the time alone fills: where the drawing of a time ends.
int time_width(const EventPanel& panel) {
  const cv::Mat blank(panel.line_height, panel.content.width, CV_8UC3, kPanelFill);
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

bool is_blank(const cv::Mat& strip) {
  return same_pixels(strip, cv::Mat(strip.size(), CV_8UC3, kPanelFill));
}

}  // namespace

std::vector<std::string> EventReader::lines(const cv::Mat& picture) const {
  if (picture.cols < 800 || picture.rows < 480) {
    return {};  // a window that has not its size yet
  }
  g_font_scale = font_scale;
  const EventPanel panel = event_panel(picture.size(), font_scale);
  std::vector<std::string> result;
  for (int line = 0; line < panel.lines; ++line) {
    const cv::Mat strip = picture(line_area(panel, line));
    if (is_blank(strip)) break;
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
