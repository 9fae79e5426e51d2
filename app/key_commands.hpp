// What each key of the keyboard does.
#pragma once

#include "app/run_state/options.hpp"

namespace halcyra {

struct RuntimeStatus;

// Carries out the command of a key code as the window system gave it and logs its event. Codes
// without a command, -1 for no key among them, do nothing. Returns false when the key ends the run.
bool handle_key(int key, Options& options, RuntimeStatus& status);

}  // namespace halcyra
