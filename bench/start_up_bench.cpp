// Whole processes, from the start to the first picture. The floor only loads the libraries.
#include <cstdlib>
#include <string>

#include "bench/enrolled_owner.hpp"
#include "bench/measurement.hpp"

namespace halcyra {
namespace {

void run_program(const std::string& scene, const std::string& arguments) {
  const std::string command = "QT_QPA_PLATFORM=offscreen VIRTUAL_KINECT=" + scene +
                              " " HALCYRA_PROGRAM " " + arguments + " >/dev/null 2>&1";
  if (std::system(command.c_str()) != 0) std::abort();
}

}  // namespace

void add_start_up_rows() {
  const std::string one_picture = "--smoke --frames 1 --samples-dir " + samples_folder(24).string();
  const auto load_libraries = [] { run_program("", "--help"); };
  add_row(
      "start-up to first picture", "no sensor",
      [=] { run_program("", "--no-camera " + one_picture); }, load_libraries);
  add_row(
      "start-up to first picture", "rendered room", [=] { run_program("room", one_picture); },
      load_libraries);
}

}  // namespace halcyra
