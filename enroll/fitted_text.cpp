#include "enroll/fitted_text.hpp"

#include <algorithm>
#include <cmath>
#include <sstream>

#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

constexpr int kFont = cv::FONT_HERSHEY_SIMPLEX;
constexpr double kCapHeight = 21.0;    // of the font at scale 1
constexpr double kLineHeight = 1.75;   // in cap heights
constexpr double kBaseline = 1.2;      // below the top of the line; leaves room for a descender
constexpr double kSmallestCaps = 9.0;  // that can be read
constexpr double kShrinkStep = 0.95;

int thickness_for(double scale) { return std::max(1, static_cast<int>(std::lround(1.9 * scale))); }

int width_of(const std::string& text, double scale) {
  int below_baseline = 0;
  return cv::getTextSize(text, kFont, scale, thickness_for(scale), &below_baseline).width;
}

int line_height_for(double scale) {
  return static_cast<int>(std::lround(kLineHeight * kCapHeight * scale));
}

// Adds the word to the lines in pieces of at most `width`, one character at least.
void break_word(std::vector<std::string>& lines, const std::string& word, double scale, int width) {
  lines.emplace_back();
  for (const char character : word) {
    std::string& line = lines.back();
    if (!line.empty() && width_of(line + character, scale) > width) {
      lines.emplace_back(1, character);
    } else {
      line += character;
    }
  }
}

// The words in lines of at most `width`. A longer word is broken, or makes the line too long.
std::vector<std::string> lines_of(const std::string& text, double scale, int width,
                                  bool break_words) {
  std::vector<std::string> lines;
  std::istringstream words(text);
  std::string word;
  while (words >> word) {
    const bool fits_in_line = !lines.empty() && width_of(lines.back() + " " + word, scale) <= width;
    if (fits_in_line) {
      lines.back() += " " + word;
    } else if (break_words) {
      break_word(lines, word, scale, width);
    } else {
      lines.push_back(word);
    }
  }
  return lines;
}

bool fits(const FittedText& text, cv::Size room) {
  const auto is_narrow = [&](const std::string& line) {
    return width_of(line, text.scale) <= room.width;
  };
  return static_cast<int>(text.lines.size()) * text.line_height <= room.height &&
         std::all_of(text.lines.begin(), text.lines.end(), is_narrow);
}

// Makes the lines about equally long, without adding any.
void balance(FittedText& fitted, const std::string& text, int width) {
  while (fitted.lines.size() > 1) {
    width = static_cast<int>(width * kShrinkStep);
    FittedText narrower = fitted;
    narrower.lines = lines_of(text, fitted.scale, width, false);
    const cv::Size room(width, static_cast<int>(fitted.lines.size()) * fitted.line_height);
    if (!fits(narrower, room)) return;
    fitted = narrower;
  }
}

void putLine(cv::Mat& canvas, const std::string& text, cv::Point left_baseline, double scale,
             const cv::Scalar& color) {
  cv::putText(canvas, text, left_baseline, kFont, scale, color, thickness_for(scale), cv::LINE_AA);
}

}  // namespace

FittedText fit_text(const std::string& text, cv::Size room, int cap_height) {
  constexpr double kLeastScale = 0.05;  // ends the search in a room without any size
  FittedText result;
  result.scale = cap_height / kCapHeight;
  while (true) {
    const bool break_words = result.scale * kCapHeight < kSmallestCaps;
    result.lines = lines_of(text, result.scale, room.width, break_words);
    result.line_height = line_height_for(result.scale);
    if (fits(result, room) || result.scale < kLeastScale) break;
    result.scale *= kShrinkStep;
  }
  balance(result, text, room.width);
  return result;
}

void drawFittedText(cv::Mat& canvas, const std::string& text, const cv::Rect& room, int cap_height,
                    const cv::Scalar& color) {
  const FittedText fitted = fit_text(text, room.size(), cap_height);
  const int height = static_cast<int>(fitted.lines.size()) * fitted.line_height;
  int baseline =
      room.y + (room.height - height) / 2 + static_cast<int>(kBaseline * kCapHeight * fitted.scale);
  for (const std::string& line : fitted.lines) {
    const int left = room.x + (room.width - width_of(line, fitted.scale)) / 2;
    putLine(canvas, line, {left, baseline}, fitted.scale, color);
    baseline += fitted.line_height;
  }
}

void drawLineOfText(cv::Mat& canvas, const std::string& text, const cv::Rect& room, int cap_height,
                    const cv::Scalar& color) {
  double scale = cap_height / kCapHeight;
  scale *= std::min(1.0, static_cast<double>(room.width) / std::max(1, width_of(text, scale)));
  const int caps = static_cast<int>(kCapHeight * scale);
  putLine(canvas, text, {room.x, room.y + (room.height + caps) / 2}, scale, color);
}

}  // namespace halcyra
