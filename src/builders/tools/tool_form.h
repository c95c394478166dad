// The tool builder: the form of one cutter in the work area, with its picture.
//
// It belongs to the mode of the tool library and stays as it is while another mode is up.
#pragma once

namespace morva {

// The form with the record `index`, or with -1 a new tool. `keyboard`: its first field gets the
// keyboard. An index that is no record counts as -1. Asks where something typed would be lost.
void OpenToolBuilder(int index, bool keyboard);
// The form with the record's values in the active unit; what was typed goes.
void LoadToolForm(int index);
// Checks and stores what is typed, then saves the library. False: nothing is stored, and the user
// was told why.
bool SaveToolForm();
// Asks where something typed would be lost. False: it stays open.
bool CloseToolBuilder();
bool IsToolBuilderOpen();
// Whether the user typed something since the form was filled or stored.
bool IsToolFormEdited();
// Before a change of the library: takes over what another program made of it. `index` and the
// form follow their records; -1 where one is gone or changed. True: something was taken over.
bool FollowTools(int& index);
// A record was removed: the form keeps the one it holds, or holds a new tool now.
void ForgetTool(int index);

void RegisterToolForm();
void ResetToolForm();

}  // namespace morva
