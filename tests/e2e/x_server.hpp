// A private X server without a monitor, so that windows and keys are real and nobody is disturbed.
#pragma once

#include <memory>
#include <string>

#include "tests/e2e/child_process.hpp"

namespace halcyra {

class XServer {
 public:
  explicit XServer(int width = 1920, int height = 1200);

  // Value for the environment variable DISPLAY.
  const std::string& display() const { return display_; }

 private:
  std::unique_ptr<ChildProcess> process_;
  std::string display_;
};

}  // namespace halcyra
