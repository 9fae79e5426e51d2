#include "record/sets_table.hpp"

#include <cstdio>

namespace halcyra::record {

std::string sets_table_head() {
  std::string head = "set,seconds";
  for (const std::string stream : kStreamNames) {
    head.append(",").append(stream).append("_sequence,").append(stream).append("_timestamp");
  }
  return head + "\n";
}

std::string sets_table_row(const RecordedSet& set) {
  char start[64];
  std::snprintf(start, sizeof(start), "%u,%.3f", set.number, set.seconds);
  std::string row = start;
  for (const RecordedFrame& frame : set.frames) {
    row += "," + std::to_string(frame.sequence) + "," + std::to_string(frame.timestamp);
  }
  return row + "\n";
}

}  // namespace halcyra::record
