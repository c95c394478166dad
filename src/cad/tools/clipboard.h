// The sketch's own clipboard: copied objects, kept in the unit they were copied in.
//
// It outlives drawings and programs, so that geometry can be carried from one to another.
#pragma once

namespace morva {

void CopyGeometry();  // the selected part
void CutGeometry();   // what is stored is what goes: the part without its locked members
void PasteGeometry();

void RegisterSketchClipboard();
void EmptySketchClipboard();

}  // namespace morva
