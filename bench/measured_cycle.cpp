#include "bench/measured_cycle.hpp"

#include <cstdint>
#include <limits>
#include <utility>

#include "app/loop_turn.hpp"
#include "app/window_geometry.hpp"
#include "bench/enrolled_owner.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "tests/support/fed_sensor.hpp"

namespace halcyra {

MeasuredCycle::MeasuredCycle(RecordedFrames frames, Cascades cascades)
    : frames_(std::move(frames)) {
  center_.recognition = enrolled_owner(24);
  center_.loop.frame_count = 1;
  center_.options.status_refresh_frames = std::numeric_limits<std::int32_t>::max();
  fit_to_screen(center_.options, {1920, 1080, "bench"});
  load_detectors(center_.detectors, center_.options, center_.status);
  if (cascades == Cascades::kLibrary) {
    center_.detectors.frontal.load(center_.options.cascade_path);
    center_.detectors.profile.load(center_.options.profile_cascade_path);
  }
  start_fed_sensor(center_.kinect);
}

void MeasuredCycle::feed() {
  feed_set(center_.kinect, frames_.color, frames_.infrared, frames_.depth);
}

void MeasuredCycle::take_turn() {
  render_dashboard(center_, observe_room(center_), center_.options);
}

}  // namespace halcyra
