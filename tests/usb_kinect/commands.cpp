#include "tests/usb_kinect/commands.hpp"

#include <string>
#include <utility>

#include "tests/usb_kinect/answers.hpp"
#include "tests/usb_kinect/log.hpp"
#include "tests/usb_kinect/settings.hpp"

namespace usb_kinect {
namespace {

constexpr std::uint32_t kCommandMark = 0x06022009;
constexpr std::uint32_t kDoneMark = 0x0A6FE000;

enum CommandCode : std::uint32_t {
  kShutDown = 0x00,
  kFirmware = 0x02,
  kInitStreams = 0x09,
  kStop = 0x0A,
  kHardware = 0x14,
  kStatus = 0x16,
  kDataPage = 0x22,
  kData = 0x26,
  kSetStreaming = 0x2B,
  kColorSetting = 0x3E,
  kUnnamed46 = 0x46,
  kUnnamed47 = 0x47,
  kSetMode = 0x4B,
};

enum DataPage : std::uint32_t {
  kSerialPage = 1,
  kPhaseOffsetsPage = 2,
  kDepthLensPage = 3,
  kColorLensPage = 4,
};

struct Command {
  std::uint32_t sequence = 0;
  std::uint32_t room = 0;  // bytes that the answer may have
  std::uint32_t code = 0;
  std::uint32_t parameters[4] = {0, 0, 0, 0};
};

Command command_of(const std::uint8_t* block, std::size_t size) {
  Command command;
  command.sequence = get32(block + 4);
  command.room = get32(block + 8);
  command.code = get32(block + 12);
  std::size_t place = 20;
  for (std::uint32_t& parameter : command.parameters) {
    if (place + 4 <= size) parameter = get32(block + place);
    place += 4;
  }
  return command;
}

const char* page_name(std::uint32_t page) {
  switch (page) {
    case kSerialPage:
      return "serial";
    case kPhaseOffsetsPage:
      return "p0";
    case kDepthLensPage:
      return "depth-params";
    case kColorLensPage:
      return "color-params";
    default:
      return "page";
  }
}

// As USB_KINECT_FAIL_START names it.
const char* name_of(const Command& command) {
  switch (command.code) {
    case kShutDown:
      return "shutdown";
    case kFirmware:
      return "firmware";
    case kInitStreams:
      return "init";
    case kStop:
      return "stop";
    case kHardware:
      return "hardware";
    case kStatus:
      return "status";
    case kDataPage:
      return page_name(command.parameters[0]);
    case kData:
      return "data";
    case kSetStreaming:
      return "stream";
    case kColorSetting:
      return "color-setting";
    case kSetMode:
      return "mode";
    default:
      return "unknown";
  }
}

Bytes page_answer(const Sensor& sensor, std::uint32_t page) {
  const std::string& other_serial = settings().protocol_serial;
  switch (page) {
    case kSerialPage:
      return serial_answer(other_serial.empty() ? sensor.serial : other_serial);
    case kPhaseOffsetsPage:
      return phase_offsets_answer();
    case kDepthLensPage:
      return depth_lens_answer();
    case kColorLensPage:
      return color_lens_answer();
    default:
      return {};
  }
}

Bytes status_answer(Sensor& sensor) {
  const bool waited = sensor.status_reads++ >= settings().ready_reads;
  Bytes answer(4);
  put32(answer, 0, waited && settings().fail_start != "never-ready" ? 1 : 0);
  return answer;
}

Bytes color_setting_answer(Sensor& sensor, std::uint32_t setting, std::uint32_t value) {
  std::uint32_t& kept = sensor.color_settings[setting];
  if (value != 0) kept = value;
  Bytes answer(16);
  put32(answer, 0, 1);
  put32(answer, 12, kept);
  return answer;
}

// Does what the command says. Its answer is empty for many.
Bytes obey(Sensor& sensor, const Command& command) {
  switch (command.code) {
    case kFirmware:
      return firmware_answer(settings().firmware);
    case kHardware: {
      Bytes answer(0x5C);
      answer[0] = 0x12;
      return answer;
    }
    case kDataPage:
      return page_answer(sensor, command.parameters[0]);
    case kStatus:
      return status_answer(sensor);
    case kData:
    case kUnnamed47:
      return Bytes(0x10);
    case kColorSetting:
      return color_setting_answer(sensor, command.parameters[2], command.parameters[3]);
    case kSetStreaming:
      if (command.parameters[0] == 1) begin_streams(sensor);
      if (command.parameters[0] == 0) end_streams(sensor);
      return {};
    case kShutDown:
      end_streams(sensor);
      return {};
    case kInitStreams:
    case kStop:
    case kSetMode:
    case kUnnamed46:
      return {};
    default:
      note_misuse(&sensor, "unknown command 0x%02x", command.code);
      return {};
  }
}

// The block that ends the answer to a command.
Bytes closing_block(const Command& command) {
  Bytes block(16);
  put32(block, 0, kDoneMark);
  put32(block, 4, command.sequence);
  return block;
}

// Answers to a command that is to fail.
void answer_badly(Sensor& sensor, const Command& command, Bytes answer) {
  const std::string how = settings().fail_how.empty() ? "timeout" : settings().fail_how;
  note("device=%d command %s fails on purpose (%s)", sensor.index, name_of(command), how.c_str());
  if (how == "short" && !answer.empty()) {
    answer.resize(answer.size() / 2);
    sensor.answers = {std::move(answer), closing_block(command)};
  } else if (how == "missing") {
    if (!answer.empty()) sensor.answers = {std::move(answer)};
  } else {
    sensor.answer_fails = true;
    sensor.answer_error = how == "pipe" ? LIBUSB_ERROR_PIPE : LIBUSB_ERROR_TIMEOUT;
  }
}

}  // namespace

void run_command(Sensor& sensor, const std::uint8_t* block, std::size_t size) {
  constexpr std::size_t kShortest = 20;
  sensor.answers.clear();
  sensor.answer_fails = false;
  if (size < kShortest || get32(block) != kCommandMark) {
    note_misuse(&sensor, "bad command block of %zu bytes", size);
    return;
  }
  const Command command = command_of(block, size);
  const char* const name = name_of(command);
  note("device=%d command %s(0x%02x) p=%u,0x%x sequence=%u room=%u", sensor.index, name,
       command.code, command.parameters[0], command.parameters[1], command.sequence, command.room);
  Bytes answer = obey(sensor, command);
  if (answer.size() > command.room) answer.resize(command.room);
  if (settings().fail_start == name) {
    answer_badly(sensor, command, std::move(answer));
    return;
  }
  if (!answer.empty()) sensor.answers.push_back(std::move(answer));
  sensor.answers.push_back(closing_block(command));
}

}  // namespace usb_kinect
