// The bus with its root hub and the sensors.
#pragma once

#include <atomic>
#include <condition_variable>
#include <future>
#include <memory>
#include <mutex>
#include <vector>

#include "tests/usb_kinect/sensor.hpp"
#include "tests/usb_kinect/transfers.hpp"

namespace usb_kinect {

struct Bus {
  std::mutex mutex;  // guards all that is not atomic, of the sensors as well
  std::condition_variable changed;
  libusb_device* hub = nullptr;
  std::vector<std::unique_ptr<Sensor>> sensors;
  std::shared_future<std::shared_ptr<const Scene>> scene;  // being made since the first open
  int contexts = 0;
  int handles = 0;
  long transfers = 0;  // allocated
  std::atomic<long> lists{0};
  std::uint8_t next_address = 2;
};

using Lock = std::unique_lock<std::mutex>;

// The sensors that the settings ask for are attached at the first call. Never destroyed.
Bus& bus();

// Adds a device under the next free address.
libusb_device* attach(Bus& bus, Sensor& sensor);

// Starts making what the sensors see, once.
void prepare_scene(Bus& bus);

// Waits while the scene is being made, without the lock.
void wait_for_scene(const Bus& bus, Lock& lock);

// Ends every transfer whose time has come, and adds it to `done`.
void run_until(Bus& bus, Time now, Transfers& done);

// When there is something to do again, `latest` at the latest.
Time next_event(const Bus& bus, Time latest);

// The process that uses the bus says how it left it when it ends.
void report_at_end_of_this_process();

}  // namespace usb_kinect
