// One card of the status grid.
#pragma once

#include <string>

namespace halcyra {

struct StatusCard {
  std::string title;
  std::string state;   // status word; color_for gives its colour
  std::string detail;  // how it is now
  std::string impact;  // what that means
  std::string action;  // what to do about it; carried, not drawn
};

}  // namespace halcyra
