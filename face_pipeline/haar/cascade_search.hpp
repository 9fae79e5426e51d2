// Searches a picture with a cascade at many scales.
#pragma once

#include <memory>
#include <vector>

#include <opencv2/core/types.hpp>

#include "face_pipeline/haar/image_pyramid.hpp"
#include "face_pipeline/haar/instruction_set.hpp"
#include "face_pipeline/haar/scan_plan.hpp"
#include "face_pipeline/haar/scan_scratch.hpp"
#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

enum class Facing {
  kAsIs,
  kMirrored  // searches the picture's mirror image, and answers in its coordinates
};

class CascadeSearch {
 public:
  CascadeSearch(StumpCascade cascade, InstructionSet instructions);

  const cv::Size& window() const { return cascade_.window; }

  // Every window that passes the cascade, before any grouping, in pixels of the picture: ordered by
  // scale, then from top to bottom, then from left to right, as cv::CascadeClassifier finds them on
  // one thread. The pyramid's picture must be at least as large as the window. For kMirrored,
  // resize_mirrors_exactly must hold from the picture's width to that of each scale. One call at a
  // time; the search itself runs on OpenCV's threads.
  std::vector<cv::Rect> operator()(ImagePyramid& pyramid, const std::vector<float>& scales,
                                   Facing facing);

 private:
  struct Task;

  const ScanPlan& plan_for(const PlaneLayout& layout, Facing facing, const WindowColumns& columns);
  std::vector<Task> tasks_for(const std::vector<const PyramidLayer*>& layers,
                              const PlaneLayout& layout, Facing facing);
  // Puts the stages into the order that is quickest for the tasks' windows. The tasks' plans are
  // then those of another order.
  bool reorder_stages(const std::vector<Task>& tasks, const PlaneLayout& layout);
  void run(Task& task, const PlaneLayout& layout);

  struct CachedPlan {
    PlaneLayout layout;
    Facing facing;
    WindowColumns columns;
    ScanPlan plan;
  };

  StumpCascade cascade_;
  StumpCascade mirrored_;
  InstructionSet instructions_;
  std::vector<std::unique_ptr<CachedPlan>> plans_;
  int searches_in_order_ = -1;  // since the order was found; negative before
  ScratchPool scratch_;
};

}  // namespace halcyra::haar
