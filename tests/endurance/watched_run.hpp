// One long run of the program with its resources watched.
#pragma once

#include <chrono>
#include <string>

namespace halcyra {

// `cycles` frames in lockstep, on small frames. While it runs, keys are pressed: every view, every
// switch, every service. Prints what it held in ten periods, its first seconds left out. False: it
// ended too early, otherwise than with status 0, or held more in the last period than in the first.
bool survives_cycles(const std::string& program, int cycles);

// The same in the demonstration, in real time. `demonstration` is the folder that the build target
// of this name has made. A period is a minute, or a tenth of a run of less than ten minutes.
bool survives_demonstration(const std::string& demonstration, std::chrono::seconds duration);

}  // namespace halcyra
