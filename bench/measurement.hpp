// A measurement: some work of the program and beside it, in the same run, its floor: the bare
// library calls that the work cannot do without, or, where the program does better than the
// library, the library's own way.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace halcyra {

// Registers both with Google Benchmark. `stage` and `scene` name the row of the table.
void measure(const std::string& stage, const std::string& scene, std::function<void()> work,
             std::function<void()> floor);

// The rows of the table, in the order of their registration.
const std::vector<std::string>& measured_rows();

// Each registers the measurements of one stage of a cycle.
void measure_frame_conversion();
void measure_face_detection();
void measure_face_analysis();
void measure_owner_samples();
void measure_room_awareness();
void measure_dashboard();
void measure_cycle();
void measure_start_up();

}  // namespace halcyra
