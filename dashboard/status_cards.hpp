// The nine status cards and what they say.
#pragma once

#include <string>
#include <vector>

namespace halcyra {

struct RuntimeStatus;

struct StatusCard {
  std::string title;
  std::string state;   // status word; color_for gives its colour
  std::string detail;  // how it is now
  std::string impact;  // what that means
  std::string action;  // what to do about it; not drawn
};

// The cards in the order of the grid.
std::vector<StatusCard> status_cards(const RuntimeStatus& status);

}  // namespace halcyra
