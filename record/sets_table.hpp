// The lines of sets.csv, which tell when the sensor delivered each set.
#pragma once

#include <string>

#include "record/recorded_set.hpp"

namespace halcyra::record {

// The line with the names of the columns, with its line feed.
std::string sets_table_head();

// The line of one set, with its line feed: its number, the seconds since the first set with three
// decimals, then sequence number and time stamp (units of 0.125 ms) of each stream's frame.
std::string sets_table_row(const RecordedSet& set);

}  // namespace halcyra::record
