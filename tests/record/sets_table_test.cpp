#include "record/sets_table.hpp"

#include <gtest/gtest.h>

namespace halcyra::record {
namespace {

TEST(SetsTable, HasAColumnForEachNumber) {
  EXPECT_EQ(sets_table_head(),
            "set,seconds,color_sequence,color_timestamp,ir_sequence,ir_timestamp,depth_sequence,"
            "depth_timestamp\n");
}

TEST(SetsTable, RowTellsWhenTheFramesCame) {
  RecordedSet set;
  set.number = 12;
  set.seconds = 3.25;
  set.frames[kColor].sequence = 1;
  set.frames[kColor].timestamp = 2;
  set.frames[kInfrared].sequence = 3;
  set.frames[kInfrared].timestamp = 4;
  set.frames[kDepth].sequence = 4'294'967'295;
  set.frames[kDepth].timestamp = 4'294'967'294;
  EXPECT_EQ(sets_table_row(set), "12,3.250,1,2,3,4,4294967295,4294967294\n");
}

}  // namespace
}  // namespace halcyra::record
