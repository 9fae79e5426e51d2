// What the emulated sensor says about a run when it has ended.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace halcyra {

// Counts by their names in the log's summary, for example "in_flight". Those of all sensors and
// endpoints are added up.
using SensorCounts = std::map<std::string, long>;

SensorCounts counts_of(const std::filesystem::path& log);

// Those of them that should all be 0 in the end, the others left out.
SensorCounts leftovers_of(const std::filesystem::path& log);

// leftovers_of() of a clean run.
SensorCounts nothing_left();

// How many lines of the log hold the text.
int lines_with(const std::filesystem::path& log, const std::string& text);

}  // namespace halcyra
