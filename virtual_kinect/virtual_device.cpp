#include "virtual_kinect/virtual_device.hpp"

#include <algorithm>
#include <utility>

namespace halcyra::virtual_kinect {

using libfreenect2::Frame;
using libfreenect2::FrameListener;

namespace {

// At 30 sets a second, both overflow half a second later.
constexpr std::uint32_t kSequenceNearOverflow = 0U - 15U;
constexpr std::uint32_t kTimestampNearOverflow = 0U - 4000U;

DeliverySettings delivery_settings(const DeviceSettings& device) {
  DeliverySettings delivery;
  delivery.pace = device.pace;
  delivery.resumes = device.after == AfterLastSet::kPause;
  delivery.lost_percent = device.lost_percent;
  delivery.damaged_percent = device.damaged_percent;
  if (device.counters_wrap) {
    delivery.first_sequence = kSequenceNearOverflow;
    delivery.first_timestamp = kTimestampNearOverflow;
  }
  return delivery;
}

}  // namespace

VirtualDevice::VirtualDevice(DeviceSettings settings, std::function<FrameSource()> open_source,
                             std::function<void(VirtualDevice*)> forget)
    : settings_(std::move(settings)),
      open_source_(std::move(open_source)),
      forget_(std::move(forget)) {}

VirtualDevice::~VirtualDevice() {
  close();
  forget_(this);
}

std::string VirtualDevice::getSerialNumber() { return settings_.serial; }

std::string VirtualDevice::getFirmwareVersion() {
  return firmware_read_ ? settings_.firmware : "<unknown>";
}

void VirtualDevice::setColorFrameListener(FrameListener* listener) {
  listeners_.color = listener;
  listeners_changed();
}

void VirtualDevice::setIrAndDepthFrameListener(FrameListener* listener) {
  listeners_.ir_and_depth = listener;
  listeners_changed();
}

void VirtualDevice::listeners_changed() {
  if (delivery_) delivery_->set_listeners(listeners_);
}

bool VirtualDevice::start() { return startStreams(true, true); }

bool VirtualDevice::startStreams(bool rgb, bool depth) {
  if (!open_ || delivery_ || !settings_.starts) return false;
  FrameSource source = open_source_();
  const auto unwanted = [rgb, depth](Frame::Type stream) {
    return stream == Frame::Color ? !rgb : !depth;
  };
  source.streams.erase(std::remove_if(source.streams.begin(), source.streams.end(), unwanted),
                       source.streams.end());
  delivery_ =
      std::make_unique<Delivery>(std::move(source), delivery_settings(settings_), listeners_);
  firmware_read_ = true;
  return true;
}

bool VirtualDevice::stop() {
  if (!delivery_) return false;
  const bool unplugged = settings_.after == AfterLastSet::kUnplug && delivery_->is_over();
  if (settings_.stop == StopOutcome::kLate && !unplugged) delivery_->end_with_a_late_set();
  delivery_.reset();
  return settings_.stop != StopOutcome::kFail && !unplugged;
}

bool VirtualDevice::close() {
  stop();
  open_ = false;
  return settings_.closes;
}

}  // namespace halcyra::virtual_kinect
