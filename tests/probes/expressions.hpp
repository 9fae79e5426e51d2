// What the probes look for, in the ECMAScript grammar. The standard library's engine, which needs
// a stack as deep as the text is long, is the measure on small texts.
#pragma once

#include <regex>
#include <string>

namespace halcyra {

struct Expression {
  explicit Expression(const char* written) : text(written), compiled(text) {}

  std::string text;
  std::regex compiled;
};

struct DisplayExpressions {
  Expression active_mode{R"((?: connected primary | connected )(\d+)x(\d+)\+)"};
  Expression whole_screen{R"(current\s+(\d+)\s+x\s+(\d+))"};
  Expression dimensions{R"(dimensions:\s+(\d+)x(\d+)\s+pixels)"};
};

struct VoiceExpressions {
  Expression live_processing{R"(live_processing: ([^\n]+))"};
  Expression default_source{R"(default_source: ([^\n]+))"};
  Expression systemd_user_active{R"(systemd_user_active: ([^\n]+))"};
  Expression angle{R"("direction_angle_degrees"\s*:\s*([-0-9.]+))"};
  Expression confidence{R"("direction_confidence"\s*:\s*([-0-9.]+))"};
};

// The first group of the first match without blanks at its ends, by the standard library.
inline std::string expected_first_match(const std::string& text, const Expression& expression,
                                        const std::string& fallback) {
  std::smatch match;
  if (!std::regex_search(text, match, expression.compiled) || match.size() < 2) return fallback;
  const std::string group = match[1];
  const std::size_t first = group.find_first_not_of(" \t\n\r");
  if (first == std::string::npos) return "";
  return group.substr(first, group.find_last_not_of(" \t\n\r") + 1 - first);
}

}  // namespace halcyra
