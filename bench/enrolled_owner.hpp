// Any number of sample pictures, and a recogniser trained with them.
#pragma once

#include <filesystem>

#include "face_pipeline/recognition_state.hpp"

namespace halcyra {

// A folder with `count` sample pictures, some of them equal. It is made in the folder for temporary
// files on the first call, and removed when the program ends.
std::filesystem::path samples_folder(int count);

// A recogniser trained with `count` samples.
RecognitionState enrolled_owner(int count);

}  // namespace halcyra
