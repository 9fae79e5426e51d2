// The room's story as the program sees it, turn after turn.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/run_state/room_awareness.hpp"
#include "face_pipeline/face_info.hpp"
#include "virtual_kinect/room/looks.hpp"

namespace halcyra {

struct SeenFace {
  FaceInfo face;
  std::optional<virtual_kinect::room::Person> whose;  // nothing where nobody is
};

struct StoryTurn {
  double time = 0.0;              // seconds of the story
  std::size_t heads_in_view = 0;  // those whose middle the colour picture shows
  std::vector<SeenFace> faces;
  RoomAwareness room;
};

// Shows every `step`th set of the story to the program, whose clock goes with the story. The
// recogniser learns from samples that are written to `folder`.
std::vector<StoryTurn> watch_story(const std::filesystem::path& folder, std::uint64_t step);

}  // namespace halcyra
