#include "tests/usb_kinect/bus.hpp"

#include <unistd.h>

#include <algorithm>

#include "tests/usb_kinect/color_stream.hpp"
#include "tests/usb_kinect/depth_stream.hpp"
#include "tests/usb_kinect/log.hpp"
#include "tests/usb_kinect/settings.hpp"

namespace usb_kinect {
namespace {

constexpr std::uint8_t kBusNumber = 2;

// Further sensors have their index in place of the last digits.
std::string serial_of(int index) {
  std::string serial = settings().serial;
  if (index == 0) return serial;
  const std::string end = std::to_string(index);
  return serial.erase(serial.size() - std::min(end.size(), serial.size())) + end;
}

Bus* new_bus() {
  Bus* const result = new Bus;
  result->hub = new libusb_device;
  result->hub->bus = kBusNumber;
  result->hub->address = 1;
  for (int index = 0; index < settings().devices; ++index) {
    auto sensor = std::make_unique<Sensor>();
    sensor->index = index;
    sensor->serial = serial_of(index);
    sensor->device = attach(*result, *sensor);
    result->sensors.push_back(std::move(sensor));
  }
  return result;
}

// Between two frames, so that it does not matter how far the transfers are.
Time unplug_time(const Sensor& sensor) {
  return due(sensor, static_cast<double>(settings().unplug_after) + 0.15);
}

bool to_be_unplugged(const Sensor& sensor) {
  return settings().unplug_after >= 0 && sensor.streaming;
}

void unplug(Sensor& sensor) {
  if (!sensor.device->present) return;
  sensor.device->present = false;
  sensor.streaming = false;
  note("device=%d unplugged with %zu bulk and %zu iso transfers in flight", sensor.index,
       sensor.color.queue.size(), sensor.depth.queue.size());
}

void run_sensor(Sensor& sensor, Time now, Transfers& done) {
  if (to_be_unplugged(sensor) && now >= unplug_time(sensor)) unplug(sensor);
  const bool present = sensor.device->present;
  for (TransferQueue* const queue : {&sensor.color.queue, &sensor.depth.queue}) {
    if (!present) {
      const auto any = [](const TransferState&) { return true; };
      finish_if(*queue, any, LIBUSB_TRANSFER_NO_DEVICE, done);
    }
    const auto cancelled = [](const TransferState& state) { return state.cancelled; };
    finish_if(*queue, cancelled, LIBUSB_TRANSFER_CANCELLED, done);
  }
  if (!present) return;
  send_color(sensor, now, done);
  send_depth(sensor, now, done);
  for (TransferQueue* const queue : {&sensor.color.queue, &sensor.depth.queue}) {
    const auto too_late = [now](const TransferState& state) {
      return state.has_deadline && now >= state.deadline;
    };
    finish_if(*queue, too_late, LIBUSB_TRANSFER_TIMED_OUT, done);
  }
}

void note_counts(const Sensor& sensor, const char* kind, const TransferCounts& counts,
                 std::size_t in_flight) {
  note(
      "device=%d summary %s submitted=%ld completed=%ld cancelled=%ld timed_out=%ld failed=%ld "
      "refused=%ld in_flight=%zu",
      sensor.index, kind, counts.submitted, counts.completed, counts.cancelled, counts.timed_out,
      counts.failed, counts.refused, in_flight);
}

void note_summary(const Bus& bus) {
  for (const auto& sensor : bus.sensors) {
    const ColorStream& color = sensor->color;
    const DepthStream& depth = sensor->depth;
    note(
        "device=%d summary color_frames=%ld depth_frames=%ld corrupted=%ld/%ld misuse=%ld "
        "opens=%d",
        sensor->index, color.delivered, depth.delivered, color.corrupted, depth.corrupted,
        sensor->misuse, sensor->opens);
    note_counts(*sensor, "bulk", color.counts, color.queue.size());
    note_counts(*sensor, "iso", depth.counts, depth.queue.size());
    note("device=%d summary references=%d (1 is the bus's own)", sensor->index,
         sensor->device->references.load());
  }
  note("summary handles_open=%d contexts=%d transfers_allocated=%ld lists=%ld", bus.handles,
       bus.contexts, bus.transfers, bus.lists.load());
}

// The process that said it would report, 0 for none. Commands that it starts stay silent.
pid_t& reporting_process() {
  static pid_t process = 0;
  return process;
}

// After everything that the program registered for its end.
[[gnu::destructor]] void report() {
  if (reporting_process() != getpid()) return;
  Bus& used = bus();
  if (used.scene.valid()) used.scene.wait();
  note("process exit");
  note_summary(used);
}

}  // namespace

Bus& bus() {
  static Bus* const kBus = new_bus();
  return *kBus;
}

libusb_device* attach(Bus& bus, Sensor& sensor) {
  libusb_device* const device = new libusb_device;
  device->bus = kBusNumber;
  device->address = bus.next_address++;
  device->sensor = &sensor;
  return device;
}

void prepare_scene(Bus& bus) {
  if (bus.scene.valid()) return;
  bus.scene = std::async(std::launch::async, [] {
    return std::shared_ptr<const Scene>(std::make_shared<Scene>(make_scene()));
  });
}

void wait_for_scene(const Bus& bus, Lock& lock) {
  const auto scene = bus.scene;
  if (!scene.valid()) return;
  lock.unlock();
  scene.wait();
  lock.lock();
}

void run_until(Bus& bus, Time now, Transfers& done) {
  for (const auto& sensor : bus.sensors) run_sensor(*sensor, now, done);
}

Time next_event(const Bus& bus, Time latest) {
  Time next = latest;
  for (const auto& sensor : bus.sensors) {
    if (!sensor->device->present) continue;
    if (!sensor->depth.queue.empty()) next = std::min(next, sensor->depth.next_tick);
    if (to_be_unplugged(*sensor)) next = std::min(next, unplug_time(*sensor));
    if (sensor->color.queue.empty()) continue;
    const Time frame = due(*sensor, static_cast<double>(sensor->color.next_frame));
    if (sensor->streaming && frame > Clock::now()) next = std::min(next, frame);
    const TransferState& first = state_of(sensor->color.queue.front());
    if (first.has_deadline) next = std::min(next, first.deadline);
  }
  return next;
}

void report_at_end_of_this_process() { reporting_process() = getpid(); }

}  // namespace usb_kinect
