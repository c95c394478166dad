// Drawings of a program: up to eight, one of them live, beside the program in its companion.
#pragma once

#include "documents/feature_settings.h"
#include "library/motion_text.h"

namespace morva {

// Eight drawing tabs of the active program, index 0 to 7. Each is a command: the set of
// drawings is made at need, and an open name box closes without taking its text.
void SelectDrawingTab(int index);
void AddDrawingTab();
// A two-press toggle: shows the name box, then takes its text.
void RenameDrawingTab();
void RefreshDrawingTabs();  // captions and states of the tab keys
void CloseDrawingName();    // the name box goes without taking its text

// Cutting depth, feed and Safe Z of the live sketch, in its unit.
CutData ShownCutData();  // as the fields read, 0 for what is no number
void ShowCutData(const CutData& cut, int decimals = 6);

// The live sketch into the active drawing of the current program. A number that no record can
// hold is stored as 0, so that one bad field never costs the drawing.
void SaveLiveDrawing();
// The live sketch from the current program's working copy; an empty one without it. Undo steps
// and recent operations end here.
void LoadSketchForProgram();

// The live sketch as a settings record of kind 4, with the cutting fields read as numbers,
// fallback 0. False: it does not validate.
bool WriteSketchSettings(FeatureSettings& record);
// A block's record into the live sketch and the CAD surface up; flags cleared, nothing
// selected. A sketch that held other geometry is one Undo away, with its thickness and cutting
// data. False: it is no record of a sketch or there is no workspace, and nothing changed.
bool OpenSketchBlock(const FeatureSettings& record);

void RegisterDrawings();  // the live model, the settings writer and the builder of kind 4
void ResetDrawings();

}  // namespace morva
