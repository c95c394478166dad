// Waiting on the user-interface thread for what a worker does.
#pragma once

namespace platform {

// Lets painting, timers and posted messages go on until `done` answers true, at most so many
// milliseconds. What the user types and clicks meanwhile comes afterwards. Answers what `done`
// answered last.
bool WaitUntil(bool (*done)(), int milliseconds);

}  // namespace platform
