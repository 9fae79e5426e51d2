// The commands of the keys.
#pragma once

#include "app/run_state/options.hpp"

namespace halcyra {

struct RuntimeStatus;

// Carries out the command of a key and logs its event; the keys that ask or control the services
// block while the commands run. `key` is the code as waitKey returned it. Other codes, -1 among
// them, do nothing. Returns false if the key ends the run.
bool handle_key(int key, Options& options, RuntimeStatus& status);

}  // namespace halcyra
