// Asks both service managers whether the Corvane assistant runs, and judges whether
// it hears the Sonmere microphone.
#pragma once

namespace halcyra {

struct RuntimeStatus;

// Rewrites `status.corvane`; blocks while systemctl runs. Reads `status.voice`, so call it right
// after refresh_voice. An empty answer reads as "unknown".
void refresh_corvane(RuntimeStatus& status);

}  // namespace halcyra
