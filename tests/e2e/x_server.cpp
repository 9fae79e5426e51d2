#include "tests/e2e/x_server.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

namespace halcyra {
namespace {

// The server writes the number of the display it found free, once it accepts connections.
std::string read_line(int descriptor) {
  std::string line;
  char byte = 0;
  while (read(descriptor, &byte, 1) == 1 && byte != '\n') line += byte;
  return line;
}

}  // namespace

XServer::XServer(int width, int height) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("cannot make a pipe for the X server");
  ProcessStart start;
  start.executable = "Xvfb";
  start.arguments = {"-displayfd",
                     std::to_string(ends[1]),
                     "-screen",
                     "0",
                     std::to_string(width) + "x" + std::to_string(height) + "x24",
                     "-nolisten",
                     "tcp",
                     "-noreset"};
  start.environment = {{"PATH", "/usr/bin:/bin"}};
  start.inherited_descriptor = ends[1];
  process_ = std::make_unique<ChildProcess>(start);
  close(ends[1]);
  const std::string number = read_line(ends[0]);
  close(ends[0]);
  if (number.empty()) throw std::runtime_error("Xvfb did not start");
  display_ = ":" + number;
}

}  // namespace halcyra
