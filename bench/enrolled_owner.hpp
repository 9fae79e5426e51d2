// An owner enrolled with as many samples as a measurement wants.
#pragma once

#include <filesystem>

#include "face_pipeline/recognition_state.hpp"

namespace halcyra {

// A folder with `count` sample pictures, some of them alike; it lies in the folder for temporary
// files until the program ends.
std::filesystem::path samples_folder(int count);

// A recogniser trained with that many samples.
RecognitionState enrolled_owner(int count);

}  // namespace halcyra
