#include "app/stop_signal.hpp"

#include <signal.h>

#include <initializer_list>

namespace halcyra {
namespace {

volatile sig_atomic_t g_stop_requested = 0;

bool is_ignored(int number) {
  struct sigaction action {};
  return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void watch(int number) {
  struct sigaction action {};
  action.sa_handler = [](int) { g_stop_requested = 1; };
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  sigemptyset(&action.sa_mask);
  sigaction(number, &action, nullptr);
}

}  // namespace

void watch_stop_signals() {
  for (const int number : {SIGINT, SIGTERM}) watch(number);
  if (!is_ignored(SIGHUP)) watch(SIGHUP);
  signal(SIGXFSZ, SIG_IGN);
}

bool stop_requested() { return g_stop_requested != 0; }

}  // namespace halcyra
