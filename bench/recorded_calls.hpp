// Records the OpenCV calls that the dashboard makes, so that they can be made again without it.
#pragma once

#include <functional>
#include <vector>

namespace halcyra {

// The calls of putText, rectangle, circle, resize and Mat::convertTo that `drawing` makes, each
// ready to be repeated on the same pixels.
std::vector<std::function<void()>> recorded_calls(const std::function<void()>& drawing);

}  // namespace halcyra
