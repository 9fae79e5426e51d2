// One cascade and what its searches keep from picture to picture.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <opencv2/core/types.hpp>

#include "face_pipeline/haar/instruction_set.hpp"
#include "face_pipeline/haar/pyramid_layer.hpp"
#include "face_pipeline/haar/scan_plan.hpp"
#include "face_pipeline/haar/scan_scratch.hpp"
#include "face_pipeline/haar/search_task.hpp"
#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

enum class Facing {
  kAsIs,
  kMirrored  // searches the picture's mirror image, and answers in its coordinates
};

// The parts of a search; search_picture puts them together.
class CascadeSearch {
 public:
  CascadeSearch(StumpCascade cascade, InstructionSet instructions);

  const cv::Size& window() const { return cascade_.window; }

  // Once for each pass over a picture. The layers are of rising scales. Now and then this finds the
  // order of stages that suits the picture; tasks from before must not be run any more.
  void prepare(const std::vector<const PyramidLayer*>& layers, Facing facing);

  // What searches these layers, in the order in which OpenCV finds windows. Valid until the next
  // `prepare`. Two calls with different facings give tasks that may run side by side.
  std::vector<SearchTask> tasks(const std::vector<const PyramidLayer*>& layers, Facing facing);

  // May be called from several threads at once, with different tasks.
  void run(SearchTask& task);

 private:
  const ScanPlan& plan_by_corner(Facing facing);
  const ScanPlan& plan_for(const PlaneLayout& layout, Facing facing, const WindowColumns& columns);
  bool order_is_due();

  struct CachedPlan {
    PlaneLayout layout;
    Facing facing;
    WindowColumns columns;
    ScanPlan plan;
  };

  StumpCascade cascade_;
  std::optional<ScanPlan> as_is_;  // for place_plan; made when first needed
  std::optional<ScanPlan> mirrored_;
  InstructionSet instructions_;
  std::vector<std::unique_ptr<CachedPlan>> plans_;
  int searches_in_order_ = -1;  // since the order was found; negative before
  ScratchPool scratch_;
};

}  // namespace halcyra::haar
