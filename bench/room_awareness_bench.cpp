#include <chrono>
#include <memory>

#include <benchmark/benchmark.h>

#include "app/run_state/runtime_status.hpp"
#include "awareness/update_room_awareness.hpp"
#include "bench/measurement.hpp"

namespace halcyra {

void add_room_awareness_rows() {
  for (const int people : {0, 1, 10}) {
    auto status = std::make_shared<RuntimeStatus>();
    status->voice.direction_angle = "-4.5";
    status->voice.direction_confidence = "0.86";
    std::vector<FaceInfo> faces(static_cast<std::size_t>(people));
    for (FaceInfo& face : faces) face.box = {800, 200, 160, 160};
    add_row(
        "update_room_awareness", std::to_string(people) + " faces",
        [=, hold = ModeHoldBack()]() mutable {
          update_room_awareness(*status, faces, Options{}, 1920, hold,
                                std::chrono::steady_clock::now());
        },
        [] { benchmark::DoNotOptimize(std::chrono::steady_clock::now()); });
  }
}

}  // namespace halcyra
