// The side panels of the CAD workspace: one form of fields, keys and notes that scrolls.
//
// The panel of the tool in hand stands on top, the selected geometry and the saving of shapes
// below it. Only this file and workspace_form.cpp know where a field stands.
#pragma once

#include "platform/events.h"
#include "platform/geometry.h"

namespace morva {

inline constexpr int kFormHeight = 1360;  // pixels, whatever is shown in it

void MakeCadForm();
// `area` in the workspace's pixels, the scroll bar included.
void PlaceCadForm(const platform::Rect& area);
// The panel of this mode on top and the others hidden; scrolled to the start.
void ShowCadPanel(int panelMode);
int ShownCadPanel();
// A field that got the keyboard comes into view.
void ShowCadField(int id);
int CadFormTop();  // pixels scrolled away
void ScrollCadForm(int pixels);
// A page less 60 pixels down, or up where negative, asked for on a field or a key of the form.
// False: another control, or a combo, which pages through its own rows.
bool PageCadForm(int id, int pages);
// What Enter in a field does: the id of its command, 0 for none.
int CadFieldCommand(int id);
// Ids of the form's controls in the order of the screen; their count.
int CadFormOrder(const int*& ids);
void ResetCadForm();

void PaintCadForm(platform::Canvas& canvas);
void PaintCadSheet(platform::Canvas& canvas);
void PaintCadScroll(platform::Canvas& canvas);
bool CadFormPointer(const platform::PointerEvent& event);
bool CadScrollPointer(const platform::PointerEvent& event);

}  // namespace morva
