// What is under edit in the plate workspace.
#pragma once

namespace morva {

// What the column at the right shows below the list of features; pages of its form.
enum class PlatePage : int {
  Nothing,  // how to come to an editor
  Feature,
  Section,  // one of the thirteen numbers
  Depth,    // thickness and depth of cut
  Name,
};

struct PlateEditor {
  PlatePage page = PlatePage::Nothing;
  int target = -1;        // a section or a feature (plate.h); -1: neither
  int kind = 0;           // row of the kind list, as it was chosen last
  bool through = false;   // what the key says
  int customShape = -1;   // chosen in the library for this feature; -1: what it has stays
  bool creating = false;  // the plate is saved as soon as it has its name
};
// Only plate_editor.cpp writes it.
extern PlateEditor plateEditor;

bool PlateIsMetric();

}  // namespace morva
