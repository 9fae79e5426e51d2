#include "app/run_state/views.hpp"

#include <algorithm>
#include <array>
#include <locale>

namespace halcyra {
namespace {

struct ViewWord {
  const char* word;
  const char* view;
};

constexpr std::array<ViewWord, 14> kViewWords = {{
    {"rgb", "rgb"},
    {"face", "rgb"},
    {"ir", "ir"},
    {"depth", "depth"},
    {"skeletal", "skeletal"},
    {"skeleton", "skeletal"},
    {"combo", "combo"},
    {"auto", "combo"},
    {"audio", "combo"},
    {"debug", "combo"},
    {"room", "room_overview"},
    {"room_overview", "room_overview"},
    {"overview", "room_overview"},
    {"follow", "follow"},
}};

struct ViewLabel {
  const char* view;
  const char* label;
};

constexpr std::array<ViewLabel, 7> kViewLabels = {{
    {"rgb", "RGB"},
    {"ir", "IR"},
    {"depth", "DEPTH"},
    {"skeletal", "SKELETAL"},
    {"combo", "COMBO"},
    {"room_overview", "ROOM OVERVIEW"},
    {"follow", "FOLLOW"},
}};

char lower_ascii(char c) { return std::tolower(c, std::locale::classic()); }

}  // namespace

std::string canonical_view(std::string word) {
  std::transform(word.begin(), word.end(), word.begin(), lower_ascii);
  for (const ViewWord& known : kViewWords) {
    if (word == known.word) return known.view;
  }
  return "";
}

void select_view(Options& options, const std::string& word, bool legacy) {
  const std::string view = canonical_view(word);
  if (!view.empty()) options.view = view;
  options.overlay_mode = legacy ? word : options.view;
  if (word == "debug") options.debug = true;
  if (word == "audio") options.mic_hud = true;
}

std::string view_label(const std::string& view) {
  for (const ViewLabel& known : kViewLabels) {
    if (view == known.view) return known.label;
  }
  return "COMBO";
}

}  // namespace halcyra
