// What the dashboard is told in the golden pictures. Each call makes a new scene; the size of the
// canvas is left open.
#pragma once

#include "tests/dashboard/test_scene.hpp"

namespace halcyra {

TestScene rgb_scene();
TestScene infrared_scene();
TestScene depth_scene();
TestScene skeletal_scene();
TestScene combo_scene();
TestScene room_overview_scene();  // the owner speaks, a stranger beside him
TestScene follow_owner_scene();
TestScene debug_scene();
TestScene nobody_scene();              // with a depth picture only
TestScene skeletal_nobody_scene();     // the note and the no-person text
TestScene tracking_scene();            // all is well, skeletons too
TestScene degraded_start_scene();      // no sensor, no services
TestScene infrared_missing_scene();    // the streams have just started
TestScene depth_missing_scene();       // the streams could not be started
TestScene more_than_fits_scene();      // overflow notices, cut texts
TestScene without_face_boxes_scene();  // names only, no microphone strip
TestScene ambiguous_speaker_scene();

}  // namespace halcyra
