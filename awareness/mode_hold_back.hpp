// Keeps the automatic view modes from flickering: a new mode is shown only after it has been wanted
// for a while, and not too soon after the last switch.
#pragma once

#include <chrono>
#include <string>

namespace halcyra {

struct ModeHoldBack {
  std::string held_mode = "scan";       // the mode shown
  std::string candidate_mode = "scan";  // the mode waiting to be shown
  std::chrono::steady_clock::time_point candidate_since;
  std::chrono::steady_clock::time_point last_switch;
};

// Decides whether `mode`, wanted at `now` under the operator's `view`, may be shown. True: yes, and
// `held_mode` equals it. False: the switch is held back, and `held_mode` is still shown. Only the
// views "combo" and "follow" hold modes back: until every call of the last 1.25 s wanted the mode,
// and 1.0 s have passed since the last switch. The mode that is shown already is never held back.
bool admit_mode(ModeHoldBack& hold, const std::string& view, const std::string& mode,
                std::chrono::steady_clock::time_point now);

}  // namespace halcyra
