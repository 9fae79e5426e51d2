#include "app/run_state/runtime_status.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

TEST(RuntimeStatus, StartsWithNothingWorking) {
  const RuntimeStatus status;
  EXPECT_FALSE(status.kinect_connected);
  EXPECT_FALSE(status.rgb_ok);
  EXPECT_FALSE(status.profile_cascade_loaded);
  EXPECT_FALSE(status.frontal_cascade_loaded);
  EXPECT_FALSE(status.samples_loaded);
  EXPECT_FALSE(status.skeleton_available);
  EXPECT_FALSE(status.depth_ok);
  EXPECT_FALSE(status.ir_ok);
}

TEST(RuntimeStatus, StartsWithTheSentencesOfAStartingRun) {
  const RuntimeStatus status;
  EXPECT_EQ(status.kinect_message, "starting");
  EXPECT_EQ(status.kinect_serial, "unknown");
  EXPECT_EQ(status.kinect_firmware, "unknown");
  EXPECT_EQ(status.skeleton_message, "No real skeleton tracker is integrated in this Linux build.");
  EXPECT_EQ(status.depth_message, "Depth preview is not embedded in this Control Center pass.");
  EXPECT_EQ(status.ir_message, "IR preview is not embedded in this Control Center pass.");
}

TEST(RuntimeStatus, StartsWithNothingCountedOrLogged) {
  const RuntimeStatus status;
  EXPECT_EQ(status.frames, 0);
  EXPECT_EQ(status.faces, 0);
  EXPECT_EQ(status.fps, 0.0);
  EXPECT_TRUE(status.events.empty());
}

TEST(RuntimeStatus, StartsWithoutWordOfTheRoomAndTheServices) {
  const RuntimeStatus status;
  EXPECT_EQ(status.room.view_mode, "scan");
  EXPECT_EQ(status.room.reason, "no person detected");
  EXPECT_EQ(status.voice.mic_presence, "unknown");
  EXPECT_EQ(status.corvane.warning, "not evaluated");
}

}  // namespace
}  // namespace halcyra
