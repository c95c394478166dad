// What the live sketch shows in the workspace: operations list, fields, status, recent lines.
#pragma once

namespace morva {

// The commands of the sketch as a whole: Undo, units, operations list, saving of shapes.
void RegisterSketchCommands();

}  // namespace morva
