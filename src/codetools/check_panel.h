// The panel of the mode DIAGNOSTICS: the key of the preflight, and what it cannot know.
#pragma once

namespace morva {

struct ModeRow;

extern const ModeRow kCheckMode;

void RegisterCheckPanel();

}  // namespace morva
