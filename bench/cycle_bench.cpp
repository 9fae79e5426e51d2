// A whole cycle without the window: from a frame set to the finished canvas.
#include <memory>

#include "bench/measured_cycle.hpp"
#include "bench/measurement.hpp"
#include "bench/recorded_frames.hpp"

namespace halcyra {
namespace {

void run(MeasuredCycle& cycle) {
  cycle.feed();
  cycle.take_turn();
}

}  // namespace

void add_cycle_rows() {
  for (const NamedFrames& named : measured_frames()) {
    auto own = std::make_shared<MeasuredCycle>(named.frames, Cascades::kOwn);
    auto library = std::make_shared<MeasuredCycle>(named.frames, Cascades::kLibrary);
    add_row(
        "whole cycle", named.name, [own] { run(*own); }, [library] { run(*library); });
  }
}

}  // namespace halcyra
