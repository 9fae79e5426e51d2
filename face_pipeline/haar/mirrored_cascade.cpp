#include "face_pipeline/haar/mirrored_cascade.hpp"

namespace halcyra::haar {

StumpCascade mirrored(StumpCascade cascade) {
  for (RectFeature& feature : cascade.features) {
    for (WeightedRect& rect : feature) {
      rect.area.x = cascade.window.width - rect.area.x - rect.area.width;
    }
  }
  return cascade;
}

}  // namespace halcyra::haar
