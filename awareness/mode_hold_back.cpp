#include "awareness/mode_hold_back.hpp"

namespace halcyra {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kDwellSeconds = 1.25;  // a new mode must be wanted for this long
constexpr double kGapSeconds = 1.0;     // between two switches

double seconds_between(Clock::time_point from, Clock::time_point to) {
  const auto elapsed = std::chrono::duration_cast<std::chrono::nanoseconds>(to - from);
  return static_cast<double>(elapsed.count()) / 1e9;
}

bool switches_automatically(const std::string& view) { return view == "combo" || view == "follow"; }

}  // namespace

bool admit_mode(ModeHoldBack& hold, const std::string& view, const std::string& mode,
                Clock::time_point now) {
  if (!switches_automatically(view)) {
    hold = {mode, mode, now, now};
    return true;
  }
  if (mode != hold.candidate_mode || mode == hold.held_mode) {
    hold.candidate_mode = mode;
    hold.candidate_since = now;
  }
  if (mode == hold.held_mode) return true;
  if (seconds_between(hold.candidate_since, now) < kDwellSeconds) return false;
  if (seconds_between(hold.last_switch, now) < kGapSeconds) return false;
  hold.held_mode = mode;
  hold.last_switch = now;
  return true;
}

}  // namespace halcyra
