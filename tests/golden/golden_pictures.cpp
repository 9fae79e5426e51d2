#include "tests/golden/golden_pictures.hpp"

#include "app/window_geometry.hpp"
#include "tests/golden/scenes.hpp"
#include "tests/support/font_scale_setting.hpp"

namespace halcyra {
namespace {

const cv::Size kSmallest(800, 480);
const cv::Size kSmall(1000, 600);
const cv::Size kDefault(1440, 810);
const cv::Size kFullHd(1920, 1080);
const cv::Size kUltraHd(3840, 2160);

// The options of a run whose window has the whole screen.
void fit_to_canvas(Options& options, cv::Size size) {
  DisplayInfo display;
  display.width = options.width = size.width;
  display.height = options.height = size.height;
  fit_to_screen(options, display);
}

}  // namespace

const std::vector<GoldenPicture>& golden_pictures() {
  static const std::vector<GoldenPicture> pictures = {
      {"rgb", rgb_scene, kSmallest},
      {"rgb", rgb_scene, kDefault},
      {"ir", infrared_scene, kSmall},
      {"ir", infrared_scene, kDefault},
      {"depth", depth_scene, kDefault},
      {"depth", depth_scene, kFullHd},
      {"skeletal", skeletal_scene, kSmall},
      {"skeletal", skeletal_scene, kDefault},
      {"combo", combo_scene, kSmallest},
      {"combo", combo_scene, kSmall},
      {"combo", combo_scene, kDefault},
      {"combo", combo_scene, kFullHd},
      {"combo", combo_scene, kUltraHd},
      {"room-overview", room_overview_scene, kSmall},
      {"room-overview", room_overview_scene, kFullHd},
      {"follow-owner", follow_owner_scene, kSmallest},
      {"follow-owner", follow_owner_scene, kDefault},
      {"debug", debug_scene, kSmall},
      {"debug", debug_scene, kDefault},
      {"nobody", nobody_scene, kDefault},
      {"skeletal-nobody", skeletal_nobody_scene, kDefault},
      {"tracking", tracking_scene, kDefault},
      {"degraded-start", degraded_start_scene, kSmallest},
      {"degraded-start", degraded_start_scene, kDefault},
      {"degraded-start", degraded_start_scene, kUltraHd},
      {"ir-missing", infrared_missing_scene, kSmall},
      {"depth-missing", depth_missing_scene, kFullHd},
      {"more-than-fits", more_than_fits_scene, kSmallest},
      {"more-than-fits", more_than_fits_scene, kFullHd},
      {"without-face-boxes", without_face_boxes_scene, kDefault},
      {"ambiguous-speaker", ambiguous_speaker_scene, kSmall},
  };
  return pictures;
}

std::string file_name(const GoldenPicture& picture) {
  return picture.scene + "-" + std::to_string(picture.size.width) + "x" +
         std::to_string(picture.size.height) + ".png";
}

std::ostream& operator<<(std::ostream& out, const GoldenPicture& picture) {
  return out << file_name(picture);
}

cv::Mat draw(const GoldenPicture& picture) {
  TestScene scene = picture.make_scene();
  fit_to_canvas(scene.options, picture.size);
  const FontScaleSetting setting(scene.options.font_scale);
  return dashboard_showing(scene);
}

}  // namespace halcyra
