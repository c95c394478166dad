// A named plate as a shape of the library, with the file beside it that holds its record.
#pragma once

#include <string>
#include <string_view>

#include "app/limits.h"
#include "plate/model/plate.h"

namespace morva {

enum class PlateSave {
  Done,        // or an unnamed plate, of which nothing is saved
  NoName,      // the name box should get the keyboard
  BadNumbers,  // a size is not above 0; nobody is told
  TooMany,     // more than 64 objects
  Full,        // the library holds 24 shapes already
  NameTaken,   // another shape came into the library under the plate's name
  Stretched,   // the custom outline is wider or longer than its shape allows
  NoRecord,    // more than 96 items; the library has the plate all the same
  NoFile,      // known later than the others: the settings file could not be written
  NoOwnFile,   // known later too: the plate's own file could not be written
};

// The plate's outline and features as objects in inches, without a name. What other than Done is
// answered leaves `shape` as it was.
PlateSave BuildPlateShape(const PlateRecord& record, SavedShape& shape);
// Puts it into the library under the plate's name and index, and hands the settings file, the
// library's mirror and the plate's own file to the worker that writes files. What became of it
// stands on the plate's status line.
PlateSave SaveNamedPlate();
// The same for a plate with a name that was changed since, before another plate comes up.
void SavePendingShape();
// What could not be written is handed over again, whichever plate is up by now.
void SaveOwedShapes();
// The settings file still lacks a plate that was named and saved.
bool OwesShapes();
// A plate's own file could not be written.
bool OwesOwnFiles();
// What could not be written is said once more, on the program's status line.
void SayWhatIsOwed();
// Behind a load: nothing of the former plate stays on the status line but what still is so, with
// that plate's name, as that it could not be saved.
void SayBehindLoad();
// The plate's name in front of words that are about it; nothing without a name.
std::u16string PlateInWords(std::u16string_view name);
// A field of the form holds no usable number, and what that means: goes on behind "number".
std::u16string HalfNumberWords(int value, std::u16string_view meaning);
// The same of the first such field, and that the plate is kept with the last number; empty where
// every field reads.
std::u16string HalfNumberOf(const PlateRecord& record);
// What follows a completed edit: the program is marked as modified, and the autosave will save the
// plate.
void PlateEdited();
void ResetPlateSaving();
// The shapes of the library that may be the live plate, by what they cut, and where several are cut
// alike by the plates' own files. How many of `found` are filled, by index ascending.
int FindPlateShapes(int (&found)[kMaxShapes]);
// Hands the plate's record to that worker, for "Plate-<index>.platemv" under "Shapes". False: the
// plate has no index, there is no data directory, or the record cannot be built.
bool RefreshPlateMetadataFile();

}  // namespace morva
