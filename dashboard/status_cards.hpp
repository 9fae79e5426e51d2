// What the nine status cards say.
#pragma once

#include <vector>

#include "dashboard/status_card.hpp"

namespace halcyra {

struct RuntimeStatus;

// The nine cards in the order of the grid.
std::vector<StatusCard> status_cards(const RuntimeStatus& status);

}  // namespace halcyra
