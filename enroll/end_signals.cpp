#include "enroll/end_signals.hpp"

#include <signal.h>

namespace halcyra {
namespace {

volatile sig_atomic_t g_signalled = 0;

void remember(int) { g_signalled = 1; }

void catch_signal(int number) {
  struct sigaction action {};
  if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) return;
  action = {};
  action.sa_handler = remember;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(number, &action, nullptr);
}

}  // namespace

void catch_end_signals() {
  catch_signal(SIGINT);
  catch_signal(SIGTERM);
}

bool end_was_signalled() { return g_signalled != 0; }

}  // namespace halcyra
