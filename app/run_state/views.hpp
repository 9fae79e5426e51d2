// The seven views of the dashboard, the words that select them and the labels that name them.
#pragma once

#include <string>

#include "app/run_state/options.hpp"

namespace halcyra {

// The canonical name ("rgb", "ir", "depth", "skeletal", "combo", "room_overview", "follow") for a
// view word in any letter case, or "" for an unknown word.
std::string canonical_view(std::string word);

// Applies a view word to `options`. An unknown word leaves the view as it is. `overlay_mode`
// becomes the word as given if `legacy` is set, else the view. The words "debug" and "audio", in
// lower case only, also switch `debug` or `mic_hud` on.
void select_view(Options& options, const std::string& word, bool legacy);

// The upper-case label of a canonical view name; "COMBO" for anything else.
std::string view_label(const std::string& view);

}  // namespace halcyra
