#include "app/standard_streams.hpp"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace halcyra {
namespace {

// open returns the lowest free descriptor, so once one above the three comes, no gap is left.
void open_closed_streams() {
  int opened = -1;
  do {
    opened = open("/dev/null", O_RDWR);
  } while (opened >= STDIN_FILENO && opened <= STDERR_FILENO);
  if (opened > STDERR_FILENO) close(opened);
}

// An empty handler: SIG_IGN would be inherited by every command.
void outlive_readers() {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(SIGPIPE, &action, nullptr);
}

}  // namespace

void secure_standard_streams() {
  open_closed_streams();
  outlive_readers();
}

}  // namespace halcyra
