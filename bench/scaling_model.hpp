// How long a recorded run would take on more cores.
#pragma once

#include "bench/section_recorder.hpp"

namespace halcyra {

// Takes the shorter one of each time. Returns false, and leaves `shortest` as it is, if the two
// runs do not have the same numbers of sections and tasks.
bool keep_shortest(RecordedRun& shortest, const RecordedRun& run);

// Where the time of a run goes, in milliseconds.
struct ScaledRun {
  double serial = 0;        // outside of sections
  double shared = 0;        // all tasks, if the cores shared them evenly
  double longest_task = 0;  // what sections take longer since they have a task that long
  double uneven_end = 0;    // what they take longer than that, as cores wait for the last one

  double total() const { return serial + shared + longest_task + uneven_end; }
};

// A core that is free takes the next task of the section, and a section starts when the one before
// it has ended. `cores` is at least 1. Waking threads costs nothing here, and cores do not slow
// each other down by sharing memory and caches.
ScaledRun run_on(const RecordedRun& run, int cores);

// The same for one section.
double section_on(const Section& section, int cores);

// The sum of a section's tasks, and the longest of them; both in milliseconds.
double sum_of_tasks(const Section& section);
double longest_task(const Section& section);

// What no number of cores can undercut: the serial time and the longest task of each section.
double least_time(const RecordedRun& run);

}  // namespace halcyra
