// libusb's functions for transfers.
#include <libusb.h>
#include <sys/time.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <thread>

#include "tests/usb_kinect/bus.hpp"
#include "tests/usb_kinect/color_stream.hpp"
#include "tests/usb_kinect/commands.hpp"
#include "tests/usb_kinect/depth_stream.hpp"
#include "tests/usb_kinect/libusb_exports.hpp"
#include "tests/usb_kinect/log.hpp"
#include "tests/usb_kinect/settings.hpp"

using usb_kinect::Bus;
using usb_kinect::bus;
using usb_kinect::Clock;
using usb_kinect::Lock;
using usb_kinect::note;
using usb_kinect::note_misuse;
using usb_kinect::Sensor;
using usb_kinect::settings;
using usb_kinect::TransferQueue;
using usb_kinect::TransferState;

namespace {

// Feature selectors of USB 3 that let a device fall asleep by itself.
constexpr int kU1Enable = 48;
constexpr int kU2Enable = 49;

int switch_video_function(Bus& used, Sensor& sensor, bool on, Lock& lock) {
  if (on && settings().fail_start == "function") return LIBUSB_ERROR_PIPE;
  if (on) {
    usb_kinect::wait_for_scene(used, lock);
    sensor.scene = used.scene.get();
  }
  sensor.status_reads = 0;
  note("device=%d video function %s", sensor.index, on ? "on" : "suspended");
  return 0;
}

int read_answer(Sensor& sensor, unsigned char* data, int length, int& actual, unsigned int timeout,
                Lock& lock) {
  if (sensor.answers.empty()) {
    const int error = sensor.answer_fails ? sensor.answer_error : LIBUSB_ERROR_TIMEOUT;
    lock.unlock();
    if (error == LIBUSB_ERROR_TIMEOUT) {
      std::this_thread::sleep_for(std::chrono::milliseconds(timeout));
    }
    return error;
  }
  const usb_kinect::Bytes answer = std::move(sensor.answers.front());
  sensor.answers.pop_front();
  if (answer.size() > static_cast<std::size_t>(length)) return LIBUSB_ERROR_OVERFLOW;
  std::memcpy(data, answer.data(), answer.size());
  actual = static_cast<int>(answer.size());
  return LIBUSB_SUCCESS;
}

bool submit_refused(Sensor& sensor, bool isochronous) {
  constexpr int kFirstSubmits = 80;
  const std::string& fault = settings().fail_start;
  if (fault == "submit") return true;
  if (fault == "submit-color") return !isochronous;
  if (fault == "submit-ir") return isochronous;
  if (fault != "submit-some" || sensor.submits >= kFirstSubmits) return false;
  ++sensor.submits;
  return sensor.submits % 2 != 0;
}

int submit_error(Sensor& sensor, const libusb_transfer& transfer) {
  const bool isochronous = usb_kinect::is_isochronous(transfer);
  const int endpoint = isochronous ? usb_kinect::kDepthEndpoint : usb_kinect::kColorEndpoint;
  if (!transfer.dev_handle->device->present) return LIBUSB_ERROR_NO_DEVICE;
  if (submit_refused(sensor, isochronous)) return LIBUSB_ERROR_NO_MEM;
  if (transfer.endpoint != endpoint) return LIBUSB_ERROR_NOT_FOUND;
  if (isochronous && sensor.alternate_setting != 1) return LIBUSB_ERROR_NOT_FOUND;
  return LIBUSB_SUCCESS;
}

}  // namespace

USB_KINECT_EXPORT int libusb_control_transfer(libusb_device_handle* handle, uint8_t type,
                                              uint8_t request, uint16_t value, uint16_t index,
                                              unsigned char* /*data*/, uint16_t length,
                                              unsigned int /*timeout*/) {
  Bus& used = bus();
  Lock lock(used.mutex);
  Sensor* const sensor = handle->device->sensor;
  if (sensor == nullptr || !handle->device->present) return LIBUSB_ERROR_NO_DEVICE;
  const bool of_device = type == LIBUSB_RECIPIENT_DEVICE;
  const bool sets_feature = request == LIBUSB_REQUEST_SET_FEATURE;
  if (of_device && request == LIBUSB_SET_ISOCH_DELAY) {
    note("device=%d isochronous delay %u ns", sensor->index, value);
    return settings().fail_open == "control" ? LIBUSB_ERROR_PIPE : 0;
  }
  if (of_device && request == LIBUSB_REQUEST_SET_SEL) return length;
  if (of_device && sets_feature && (value == kU1Enable || value == kU2Enable)) return 0;
  if (type == LIBUSB_RECIPIENT_INTERFACE && sets_feature && value == 0) {
    return switch_video_function(used, *sensor, (index >> 8 & 1) == 0, lock);
  }
  note_misuse(sensor, "unknown control request type=0x%02x request=0x%02x value=%u index=%u", type,
              request, value, index);
  return LIBUSB_ERROR_PIPE;
}

USB_KINECT_EXPORT int libusb_bulk_transfer(libusb_device_handle* handle, unsigned char endpoint,
                                           unsigned char* data, int length, int* actual,
                                           unsigned int timeout) {
  Bus& used = bus();
  Lock lock(used.mutex);
  Sensor* const sensor = handle->device->sensor;
  int ignored = 0;
  int& done = actual != nullptr ? *actual : ignored;
  done = 0;
  if (sensor == nullptr || !handle->device->present) return LIBUSB_ERROR_NO_DEVICE;
  if (!handle->claimed[0]) {
    note_misuse(sensor, "bulk transfer on an interface that is not claimed");
  }
  if (endpoint == usb_kinect::kAnswerEndpoint) {
    return read_answer(*sensor, data, length, done, timeout, lock);
  }
  if (endpoint != usb_kinect::kCommandEndpoint) return LIBUSB_ERROR_NOT_FOUND;
  usb_kinect::run_command(*sensor, data, static_cast<std::size_t>(std::max(length, 0)));
  done = length;
  used.changed.notify_all();
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT libusb_transfer* libusb_alloc_transfer(int packets) {
  Bus& used = bus();
  const Lock lock(used.mutex);
  ++used.transfers;
  return usb_kinect::allocate_transfer(packets);
}

USB_KINECT_EXPORT void libusb_free_transfer(libusb_transfer* transfer) {
  if (transfer == nullptr) return;
  Bus& used = bus();
  const Lock lock(used.mutex);
  const TransferState& state = usb_kinect::state_of(transfer);
  if (state.in_flight) {
    note_misuse(state.sensor, "transfer on endpoint 0x%02x freed while in flight",
                transfer->endpoint);
    for (TransferQueue* const queue : {&state.sensor->color.queue, &state.sensor->depth.queue}) {
      queue->erase(std::remove(queue->begin(), queue->end(), transfer), queue->end());
    }
  }
  --used.transfers;
  usb_kinect::free_transfer(transfer);
}

USB_KINECT_EXPORT int libusb_submit_transfer(libusb_transfer* transfer) {
  Bus& used = bus();
  const Lock lock(used.mutex);
  Sensor* const sensor = transfer->dev_handle->device->sensor;
  if (sensor == nullptr) return LIBUSB_ERROR_NO_DEVICE;
  TransferState& state = usb_kinect::state_of(transfer);
  if (state.in_flight) return LIBUSB_ERROR_BUSY;
  const bool isochronous = usb_kinect::is_isochronous(*transfer);
  usb_kinect::TransferCounts& counts = isochronous ? sensor->depth.counts : sensor->color.counts;
  const int error = submit_error(*sensor, *transfer);
  if (error != LIBUSB_SUCCESS) {
    ++counts.refused;
    return error;
  }
  ++counts.submitted;
  const usb_kinect::Time now = Clock::now();
  state.in_flight = true;
  state.cancelled = false;
  state.sensor = sensor;
  state.handle = transfer->dev_handle;
  state.has_deadline = transfer->timeout > 0;
  state.deadline = usb_kinect::in_ms(now, transfer->timeout);
  if (isochronous && sensor->depth.queue.empty()) {
    sensor->depth.next_tick = std::max(sensor->depth.next_tick, usb_kinect::in_ms(now, 1));
  }
  (isochronous ? sensor->depth.queue : sensor->color.queue).push_back(transfer);
  used.changed.notify_all();
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT int libusb_cancel_transfer(libusb_transfer* transfer) {
  Bus& used = bus();
  const Lock lock(used.mutex);
  TransferState& state = usb_kinect::state_of(transfer);
  if (!state.in_flight || state.cancelled) return LIBUSB_ERROR_NOT_FOUND;
  if (!state.sensor->device->present) return LIBUSB_ERROR_NO_DEVICE;
  state.cancelled = true;
  used.changed.notify_all();
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT int libusb_handle_events_timeout_completed(libusb_context* /*context*/,
                                                             timeval* time, int* completed) {
  Bus& used = bus();
  usb_kinect::Transfers done;
  Lock lock(used.mutex);
  const usb_kinect::Time deadline =
      Clock::now() + std::chrono::seconds(time->tv_sec) + std::chrono::microseconds(time->tv_usec);
  for (;;) {
    const usb_kinect::Time now = Clock::now();
    usb_kinect::run_until(used, now, done);
    const bool asked_to_end = completed != nullptr && *completed != 0;
    if (!done.empty() || asked_to_end || now >= deadline) break;
    used.changed.wait_until(lock, usb_kinect::next_event(used, deadline));
  }
  lock.unlock();
  for (libusb_transfer* const transfer : done) transfer->callback(transfer);
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT int libusb_handle_events_timeout(libusb_context* context, timeval* time) {
  return libusb_handle_events_timeout_completed(context, time, nullptr);
}

USB_KINECT_EXPORT int libusb_handle_events_completed(libusb_context* context, int* completed) {
  timeval minute = {60, 0};
  return libusb_handle_events_timeout_completed(context, &minute, completed);
}

USB_KINECT_EXPORT int libusb_handle_events(libusb_context* context) {
  return libusb_handle_events_completed(context, nullptr);
}
