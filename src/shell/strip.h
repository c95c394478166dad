// The strip below the editor: output, program information and quick workflow. It can be dragged to
// another height and closed down to its head row.
//
// In the compare review it is closed, whatever it is beside it; opened there, it is so until the
// review is left. The same holds in a window of a small screen for what stands over the code, and
// for forms with the toolpath view. Nothing of it is kept over a restart.
#pragma once

#include "app/commands.h"
#include "platform/events.h"
#include "shell/layout_rects.h"

namespace morva {

// Where its chord holds: anywhere in the main window while the code surface is up.
inline constexpr ChordPlace kStripChords{u"program workspace"};

bool IsStripClosed();
// Pixels of the output as the user wants them, 0: as each mode has it. The layout bounds them.
int StripHeight();

// Where a layout has put it, for the next drag.
void NoteStripPlace(const LayoutAreas& areas);

void OpenStrip();
void ToggleStrip();
// The strip's edge goes to this y of the main window; so far down that less than a line is left,
// it closes.
void DragStrip(int y);
// Up and Down on its key make it higher and lower by a line. True: used.
bool StripKey(const platform::KeyEvent& key);
// The chord. True: used.
bool StripChord(const platform::KeyEvent& key);

void RegisterStrip();
void ResetStrip();

}  // namespace morva
