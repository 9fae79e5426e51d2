#include "app/exit_summary.hpp"

#include "app/run_state/runtime_status.hpp"

namespace halcyra {
namespace {

const char* ok_word(bool ok) { return ok ? "OK" : "unavailable"; }

void write_sensor(std::ostream& out, const RuntimeStatus& status) {
  out << "frames=" << status.frames << " fps=" << status.fps
      << " kinect=" << (status.kinect_connected ? "connected" : "unavailable")
      << " rgb=" << ok_word(status.rgb_ok) << " ir=" << ok_word(status.ir_ok)
      << " depth=" << ok_word(status.depth_ok);
}

void write_window(std::ostream& out, const Options& options, const DisplayInfo& display) {
  out << " size=" << options.width << "x" << options.height << " screen=" << display.width << "x"
      << display.height << "(" << display.source << ")"
      << " screen_percent=" << options.screen_percent << " font_scale=" << options.font_scale
      << " window=" << (options.fullscreen ? "fullscreen" : "normal")
      << " current_view=" << options.view;
}

void write_recognition(std::ostream& out, const Options& options, const RecognitionState& state) {
  out << " samples_loaded=" << state.samples.size() << " model_path=trained_in_memory_from_"
      << options.samples_dir << " candidate_threshold=" << options.candidate_threshold
      << " confirmed_threshold=" << options.confirmed_threshold
      << " cc_unknown_predictions=" << state.cc_unknown_predictions
      << " cc_candidate_dorran_predictions=" << state.cc_candidate_dorran_predictions
      << " cc_confirmed_dorran_predictions=" << state.cc_confirmed_dorran_predictions
      << " cc_last_label=" << state.cc_last_label
      << " cc_last_detector_type=" << state.cc_last_detector_type
      << " cc_last_face_box=" << state.cc_last_face_box
      << " cc_last_confidence=" << state.cc_last_confidence
      << " cc_last_quality=" << state.cc_last_quality << " cc_last_stage=" << state.cc_last_stage;
}

}  // namespace

void write_exit_summary(std::ostream& out, const RuntimeStatus& status, const Options& options,
                        const DisplayInfo& display, const RecognitionState& recognition) {
  out << "Halcyra Control Center exit: ";
  write_sensor(out, status);
  write_window(out, options, display);
  write_recognition(out, options, recognition);
  out << "\n";
}

}  // namespace halcyra
