#include <optional>
#include <set>

#include <libfreenect2/libfreenect2.hpp>

#include "virtual_kinect/scene.hpp"
#include "virtual_kinect/virtual_device.hpp"

namespace libfreenect2 {

using halcyra::virtual_kinect::find_scene;
using halcyra::virtual_kinect::Scene;
using halcyra::virtual_kinect::VirtualDevice;

struct Freenect2::State {
  bool enumerated = false;
  std::optional<Scene> scene;
  std::set<VirtualDevice*> devices;  // all that exist, including closed ones

  bool has_device(int index) {
    if (!enumerated) enumerate();
    return scene && index == 0;
  }

  void enumerate() {
    scene = find_scene();
    enumerated = true;
  }
};

Freenect2::Freenect2(void* /*usb_context*/) : state_(std::make_unique<State>()) {}

Freenect2::~Freenect2() {
  while (!state_->devices.empty()) {
    delete *state_->devices.begin();  // takes itself out of the set
  }
}

int Freenect2::enumerateDevices() {
  state_->enumerate();
  return state_->scene ? 1 : 0;
}

std::string Freenect2::getDeviceSerialNumber(int index) {
  return state_->has_device(index) ? state_->scene->settings.serial : "";
}

std::string Freenect2::getDefaultDeviceSerialNumber() { return getDeviceSerialNumber(0); }

Freenect2Device* Freenect2::openDevice(int index) {
  if (!state_->has_device(index) || !state_->scene->settings.opens) return nullptr;
  for (VirtualDevice* device : state_->devices) {
    if (device->is_open()) return device;
  }
  State* const state = state_.get();
  auto device =
      std::make_unique<VirtualDevice>(state->scene->settings, state->scene->open_source,
                                      [state](VirtualDevice* gone) { state->devices.erase(gone); });
  state->devices.insert(device.get());
  return device.release();
}

Freenect2Device* Freenect2::openDevice(const std::string& serial) {
  const bool is_ours = state_->has_device(0) && serial == state_->scene->settings.serial;
  return is_ours ? openDevice(0) : nullptr;
}

Freenect2Device* Freenect2::openDefaultDevice() { return openDevice(0); }

}  // namespace libfreenect2
