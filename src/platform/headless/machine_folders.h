// Folders of the headless machine that a system may have or not. Settings of all programs have
// HOME/.config, which is not made.
#pragma once

namespace headless {

// The system names no folder for settings, until the next Reset.
void RemoveConfiguration();

}  // namespace headless
