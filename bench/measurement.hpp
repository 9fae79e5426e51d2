// The rows of the table. A row measures some work of the program and beside it, in the same run,
// its floor: the bare library calls that the work cannot do without or, where the program does
// better than that, the other way to do it.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace halcyra {

enum class Clock {
  kWall,
  kProcessor  // of the calling thread; other programs on the machine do not add to it
};

// Registers work and floor with Google Benchmark, which runs them later. `stage` and `scene` name
// the row.
void add_row(const std::string& stage, const std::string& scene, std::function<void()> work,
             std::function<void()> floor, Clock clock = Clock::kWall);

// The names of the rows, in the order in which they were added.
const std::vector<std::string>& added_rows();

// Each adds the rows of one stage of a cycle.
void add_frame_conversion_rows();
void add_face_detection_rows();
void add_face_analysis_rows();
void add_owner_samples_rows();
void add_room_awareness_rows();
void add_dashboard_rows();
void add_cycle_rows();
void add_start_up_rows();

}  // namespace halcyra
