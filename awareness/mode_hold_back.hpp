// Keeps the automatic view modes from flickering: a new mode must be wanted for a while, and a
// while after the last switch, before it is shown.
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

// Decides whether `mode`, wanted at `now` under the operator's `view`, may be shown. True: it is,
// and `held_mode` equals it. False: the switch is held back and `held_mode` stays the one shown.
// Only the views "combo" and "follow" hold back; every other view shows its mode at once. A mode is
// let through once it was wanted on every call for 1.25 s and 1.0 s have passed since the last
// switch.
bool admit_mode(ModeHoldBack& hold, const std::string& view, const std::string& mode,
                std::chrono::steady_clock::time_point now);

}  // namespace halcyra
