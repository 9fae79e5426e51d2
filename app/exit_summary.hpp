// The line that a run prints at its end.
#pragma once

#include <ostream>

#include "app/run_state/options.hpp"
#include "face_pipeline/recognition_state.hpp"
#include "probes/display_info.hpp"

namespace halcyra {

struct RuntimeStatus;

// Writes "Halcyra Control Center exit: " and key=value pairs, ended by a line feed. Numbers are
// in the stream's default format.
void write_exit_summary(std::ostream& out, const RuntimeStatus& status, const Options& options,
                        const DisplayInfo& display, const RecognitionState& recognition);

}  // namespace halcyra
