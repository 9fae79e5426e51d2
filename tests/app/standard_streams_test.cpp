#include "app/standard_streams.hpp"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

bool is_null_device(int descriptor) {
  struct stat opened {};
  struct stat null {};
  return fstat(descriptor, &opened) == 0 && stat("/dev/null", &null) == 0 &&
         opened.st_rdev == null.st_rdev;
}

int next_free_descriptor() {
  const int opened = open("/", O_RDONLY | O_DIRECTORY);
  close(opened);
  return opened;
}

// Runs in a process of its own: what was closed must be the null device, the rest as it was, and
// nothing more open than before.
[[noreturn]] void secure_without(const std::vector<int>& closed) {
  int pipe_ends[2];
  if (pipe(pipe_ends) != 0) _exit(2);
  for (int descriptor = 0; descriptor <= 2; ++descriptor) dup2(pipe_ends[1], descriptor);
  const int next = next_free_descriptor();
  for (const int descriptor : closed) close(descriptor);
  secure_standard_streams();
  bool well = next_free_descriptor() == next;
  for (int descriptor = 0; descriptor <= 2; ++descriptor) {
    const bool was_closed = std::find(closed.begin(), closed.end(), descriptor) != closed.end();
    well = well && is_null_device(descriptor) == was_closed;
  }
  _exit(well ? 0 : 1);
}

TEST(SecureStandardStreams, OpensTheNullDeviceForThoseThatAreClosed) {
  for (const std::vector<int>& closed :
       {std::vector<int>{}, {0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}}) {
    EXPECT_EXIT(secure_without(closed), testing::ExitedWithCode(0), "")
        << testing::PrintToString(closed);
  }
}

[[noreturn]] void write_without_reader() {
  int ends[2];
  if (pipe(ends) != 0) _exit(2);
  signal(SIGPIPE, SIG_DFL);
  secure_standard_streams();
  close(ends[0]);
  const bool refused = write(ends[1], "text", 4) < 0 && errno == EPIPE;
  _exit(refused ? 0 : 1);
}

TEST(SecureStandardStreams, LetWritingWithoutAReaderFail) {
  EXPECT_EXIT(write_without_reader(), testing::ExitedWithCode(0), "");
}

[[noreturn]] void start_a_command() {
  signal(SIGPIPE, SIG_IGN);
  secure_standard_streams();
  execl("/bin/sh", "sh", "-c", "kill -PIPE $$", nullptr);
  _exit(2);
}

TEST(SecureStandardStreams, LeaveCommandsTheSignal) {
  EXPECT_EXIT(start_a_command(), testing::KilledBySignal(SIGPIPE), "");
}

}  // namespace
}  // namespace halcyra
