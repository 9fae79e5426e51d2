#include "tests/usb_kinect/faults.hpp"

#include <algorithm>
#include <vector>

#include "tests/usb_kinect/log.hpp"
#include "tests/usb_kinect/settings.hpp"

namespace usb_kinect {
namespace {

bool damages(const std::string& kind, Stream stream) {
  static const std::vector<std::string> kOfColor = {"jpeg",  "header", "footer",
                                                    "short", "noeoi",  "big"};
  if (kind == "transfer") return true;
  const bool of_color = std::find(kOfColor.begin(), kOfColor.end(), kind) != kOfColor.end();
  return of_color == (stream == Stream::kColor);
}

}  // namespace

std::string damage_to(Stream stream, std::int64_t frame) {
  const long every = settings().corrupt_every;
  const std::vector<std::string>& kinds = settings().corrupt;
  if (every <= 0 || kinds.empty() || (frame + 1) % every != 0) return "";
  const auto turn = static_cast<std::size_t>((frame + 1) / every - 1);
  const std::string& kind = kinds[turn % kinds.size()];
  return damages(kind, stream) ? kind : "";
}

bool stalls(Sensor& sensor, Stream stream, std::int64_t frame, Time now) {
  const Settings& wanted = settings();
  if (wanted.stall_after < 0 || frame < wanted.stall_after) return false;
  const std::string name = stream == Stream::kColor ? "color" : "depth";
  if (wanted.stall != "all" && wanted.stall != name) return false;
  const Time begin = due(sensor, static_cast<double>(wanted.stall_after));
  if (wanted.stall_ms > 0 && now >= in_ms(begin, wanted.stall_ms)) return false;
  if (!sensor.stall_noted) {
    note("device=%d %s stalls at frame %ld", sensor.index, wanted.stall.c_str(),
         wanted.stall_after);
  }
  sensor.stall_noted = true;
  return true;
}

}  // namespace usb_kinect
