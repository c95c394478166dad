// The line below the status: what the tool in hand waits for, else the keys of the workspace.
//
// The status line shows the cursor from the first pixel of a move on. What a tool has said would
// be gone before it is read, so it stands here until the tool says something else or is given up.
// The help of a key under the pointer takes the line for as long as the pointer is there.
#pragma once

#include <string_view>

namespace morva {

inline constexpr const char16_t* kCadHint =
    u"Wheel: zoom  \u2022  Middle drag: pan  \u2022  Alt: bypass snap  \u2022  F8: snap on / off  "
    u"\u2022  Tab: type sizes  \u2022  Esc or right click: cancel";

// What the tool in hand says; nothing without one.
void KeepPrompt(std::u16string_view text);
// After a tool was taken or given up.
void RefreshHintLine();
// The pointer came to another control: the help of the last one goes.
void RestoreHintLine();
void ResetHintLine();

}  // namespace morva
