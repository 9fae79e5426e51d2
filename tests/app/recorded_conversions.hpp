// In which order the infrared and the depth picture were made.
#pragma once

#include <string>
#include <vector>

namespace halcyra {

// Forgets what was recorded before.
void start_recording_conversions();

// "infrared" and "depth" for each picture made since then. The pictures are told apart by the
// OpenCV function that only the one or the other is made with, so this is for runs without faces,
// whose pixels pass through the same functions.
std::vector<std::string> recorded_conversions();

}  // namespace halcyra
