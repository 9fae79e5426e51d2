// Remembers the OpenCV calls that the dashboard makes, so that they can be made again bare. The
// linker sends those calls through here (--wrap); while nothing is being recorded they only pass.
#pragma once

#include <functional>
#include <vector>

namespace halcyra {

// The calls that `drawing` makes, each ready to be repeated on the same pixels.
std::vector<std::function<void()>> recorded_calls(const std::function<void()>& drawing);

}  // namespace halcyra
