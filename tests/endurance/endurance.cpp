// Runs the program so often or so long that leaks show.
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>

#include "tests/endurance/repeated_starts.hpp"
#include "tests/endurance/watched_run.hpp"

namespace {

constexpr int kUsageError = 2;

int usage(const std::string& name) {
  std::cerr << "usage: " << name << " starts PROGRAM COUNT\n"
            << "       " << name << " cycles PROGRAM COUNT\n"
            << "       " << name << " demonstration FOLDER SECONDS\n";
  return kUsageError;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return usage(argv[0]);
  const std::string kind = argv[1];
  const std::string what = argv[2];
  const int amount = std::atoi(argv[3]);
  if (amount <= 0) return usage(argv[0]);
  bool survived = false;
  if (kind == "starts") {
    survived = halcyra::survives_starts(what, amount);
  } else if (kind == "cycles") {
    survived = halcyra::survives_cycles(what, amount);
  } else if (kind == "demonstration") {
    survived = halcyra::survives_demonstration(what, std::chrono::seconds(amount));
  } else {
    return usage(argv[0]);
  }
  return survived ? EXIT_SUCCESS : EXIT_FAILURE;
}
