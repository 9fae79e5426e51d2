// The expressions of the probes, in the ECMAScript grammar.
#pragma once

#include <string>

namespace halcyra {

struct DisplayExpressions {
  std::string active_mode = R"((?: connected primary | connected )(\d+)x(\d+)\+)";
  std::string whole_screen = R"(current\s+(\d+)\s+x\s+(\d+))";
  std::string dimensions = R"(dimensions:\s+(\d+)x(\d+)\s+pixels)";
};

struct VoiceExpressions {
  std::string live_processing = R"(live_processing: ([^\n]+))";
  std::string default_source = R"(default_source: ([^\n]+))";
  std::string systemd_user_active = R"(systemd_user_active: ([^\n]+))";
  std::string angle = R"("direction_angle_degrees"\s*:\s*([-0-9.]+))";
  std::string confidence = R"("direction_confidence"\s*:\s*([-0-9.]+))";
};

}  // namespace halcyra
