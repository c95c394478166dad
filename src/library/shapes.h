// The shape library: up to 24 reusable outlines of at most 64 objects each.
//
// It lives in MORVA.ini, sections [CustomShapes] and [SavedShape0] to [SavedShape23], with a
// binary mirror under "Shapes" of the data directory that is written and never read. Objects
// are in inches, about the centre of the shape's own extents.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/limits.h"
#include "documents/feature_settings.h"
#include "library/sketch_object.h"

namespace morva {

struct SavedShape {
  char16_t name[kShapeNameUnits] = {};
  std::int32_t count = 0;  // 0 to 64
  SketchObject objects[kMaxShapeObjects];
  bool operator==(const SavedShape&) const = default;
};

struct ShapeLibrary {
  std::int32_t count = 0;  // 0 to 24
  SavedShape shapes[kMaxShapes];
};
extern ShapeLibrary shapeLibrary;

// From the settings file. A count that is no count is 0, one above 24 is 24; a shape whose own
// count is below 0 or above 64 loads empty and stays listed.
void LoadShapeLibrary();
// Before a change: takes over what another program, or the user by hand, has written into the file
// since it was read or written here, says so and refreshes the lists. False: nothing of the kind,
// and nothing changed.
bool FollowShapeFile();
// Rewrites the keys, then the mirror where the data directory is ready; a mirror that fails is
// no failure. `told` hears, now or when it is written, whether the settings file holds the table;
// where it does not, the table stands in memory only. False: that is known already.
bool SaveShapeLibrary(void (*told)(bool saved) = nullptr);

// A name as the library keeps it, so that it comes back from the settings file unit by unit: at
// most 71 units, whole characters only, a blank for each control character and line break, and
// U+FFFD for half of a surrogate pair.
std::u16string KeptShapeName(std::u16string_view name);
// Index of the shape with this name, case of A to Z ignored; -1 for none.
int FindShape(std::u16string_view name);
// An empty record at the end. Its index, -1 when 24 are held.
int AppendShape(std::u16string_view name);

// The shape under its name: in place of the one that bears it, spelled as given now, or at the end.
// Numbers are kept as they come back from the settings file, so that a block made from the shape
// matches it after a restart too. Its index, -1 when 24 others are held.
int PutShape(const SavedShape& shape);

// The shape at this index, or behind the last for -1, its numbers as in PutShape; its name is not
// looked at. Its index, -1 when 24 others are held.
int PutShapeAt(int index, const SavedShape& shape);
// What the library has at this index is the same shape, as it comes back from the settings file;
// its name does not count.
bool IsShapeAt(int index, const SavedShape& shape);
inline constexpr char16_t kShapesUnsaved[] =
    u"MORVA.ini could not be written — the shape lasts for this run only.";

// The bytes of the mirror: 3224 for each shape, little-endian.
inline constexpr int kShapeMirrorBytes = 3224;
void WriteShapeMirror(const ShapeLibrary& library, std::string& bytes);

// Index of the shape with exactly the items of a block's record, one called "Recovered project
// shape" added at need. -1: more than 64 items, or 24 shapes are held.
int RecoverProjectShape(const FeatureSettings& record);

// The rows of a list that offers shapes: the form's own ones, then "CUSTOM: " and the name of
// each saved shape with 1000 and its index behind it. The selection is kept by its text.
struct ShapeRow {
  const char16_t* text;
  std::int64_t data;
};
inline constexpr std::int64_t kCustomShapeData = 1000;
void FillShapeList(int listId, const ShapeRow* builtIn, int count);
// The seven shapes of the Shape Builder, data 0 to 6.
const ShapeRow* BuiltInShapeRows(int& count);
// A form registers how its list is filled; RefreshShapeLists runs them all. A full table
// and a null `fill` stop the program with words.
void AddShapeList(void (*fill)());
void RefreshShapeLists();

void RegisterShapeLibrary();  // once, when rooms are joined
void ResetShapeLibrary();

}  // namespace morva
