// Waiting for a condition, with a deadline that only a failing test reaches.
#pragma once

#include <chrono>
#include <functional>

namespace halcyra {

// Long enough for a loaded machine and an instrumented build.
constexpr std::chrono::seconds kDeadline{60};

// Polls until `condition` holds. False: it did not before the deadline.
bool wait_until(const std::function<bool()>& condition,
                std::chrono::milliseconds deadline = kDeadline);

}  // namespace halcyra
