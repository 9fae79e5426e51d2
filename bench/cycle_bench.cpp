// A whole cycle without the window: from a frame set to the finished canvas.
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>

#include "app/loop_turn.hpp"
#include "app/window_geometry.hpp"
#include "bench/enrolled_owner.hpp"
#include "bench/measurement.hpp"
#include "bench/recorded_frames.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "tests/support/fed_sensor.hpp"

namespace halcyra {
namespace {

// A turn of the loop with the program's cascades or with OpenCV's own. The services are not asked,
// as that starts processes.
class Cycle {
 public:
  Cycle(RecordedFrames frames, bool own_cascades) : frames_(std::move(frames)) {
    center_.recognition = enrolled_owner(24);
    center_.loop.frame_count = 1;
    center_.options.status_refresh_frames = std::numeric_limits<std::int32_t>::max();
    fit_to_screen(center_.options, {1920, 1080, "bench"});
    load_detectors(center_.detectors, center_.options, center_.status);
    if (!own_cascades) {
      center_.detectors.frontal.load(center_.options.cascade_path);
      center_.detectors.profile.load(center_.options.profile_cascade_path);
    }
    start_fed_sensor(center_.kinect);
  }

  void run() {
    feed_set(center_.kinect, frames_.color, frames_.infrared, frames_.depth);
    render_dashboard(center_, observe_room(center_), center_.options);
  }

 private:
  RecordedFrames frames_;
  ControlCenter center_;
};

}  // namespace

void add_cycle_rows() {
  for (const NamedFrames& named : measured_frames()) {
    auto own = std::make_shared<Cycle>(named.frames, true);
    auto library = std::make_shared<Cycle>(named.frames, false);
    add_row(
        "whole cycle", named.name, [own] { own->run(); }, [library] { library->run(); });
  }
}

}  // namespace halcyra
