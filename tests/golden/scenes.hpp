// The inputs of the dashboard in the golden pictures. They do not set the size of the canvas.
#pragma once

#include "tests/dashboard/test_scene.hpp"

namespace halcyra {

TestScene rgb_scene();
TestScene infrared_scene();
TestScene depth_scene();
TestScene skeletal_scene();
TestScene combo_scene();
TestScene room_overview_scene();  // the owner speaks, with a stranger beside him
TestScene follow_owner_scene();
TestScene debug_scene();
TestScene nobody_scene();              // and no infrared picture
TestScene skeletal_nobody_scene();     // the skeletal note together with the no-person text
TestScene tracking_scene();            // nothing is degraded, skeletons are tracked
TestScene degraded_start_scene();      // no sensor, no services
TestScene infrared_missing_scene();    // the streams have just started
TestScene depth_missing_scene();       // the streams could not be started
TestScene more_than_fits_scene();      // overflow notices and cut texts
TestScene without_face_boxes_scene();  // names only, and no microphone strip
TestScene ambiguous_speaker_scene();

}  // namespace halcyra
