// Asks both service managers whether the Corvane assistant runs, and judges what it hears through.
#pragma once

namespace halcyra {

struct RuntimeStatus;

// Rewrites `status.corvane`, blocking while systemctl runs. Reads `status.voice`, so it belongs
// right after refresh_voice. An empty answer reads as "unknown".
void refresh_corvane(RuntimeStatus& status);

}  // namespace halcyra
