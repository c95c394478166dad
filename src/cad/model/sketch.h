// The live sketch: a flat list of at most 96 objects, its selection and its undo steps.
//
// Everybody reads the record; only the functions here, of sketch.cpp, write it.
//
// There is one live sketch. Drawings (drawings.h) are copied into and out of it; no operation
// works on a stored one. Objects are stored by anchor, size and angle; every outline is
// computed (outline.h). Nothing links objects but an equal group number other than 0.
#pragma once

#include <cstdint>

#include "app/limits.h"
#include "library/sketch_object.h"
#include "text/strict_number.h"

namespace morva {

struct FormerDrawing;

struct LiveSketch {
  SketchObject objects[kMaxItems];  // in order of creation, which is the order of cutting
  std::int32_t objectCount = 0;
  unsigned char hidden[kMaxItems] = {};  // display only; hidden geometry is cut
  unsigned char locked[kMaxItems] = {};
  std::int32_t selected = -1;
  double thickness = 0;  // of the wireframe; never in the code, never in an undo step
  bool metric = false;   // the sketch's own unit
  bool snapOn = true;
  bool gridOn = true;
  bool trimPreviewing = false;  // edits run dry: no undo step, no change
  std::int32_t undoDepth = 0;   // 0 to 24
  std::uint32_t undoTurns = 0;  // grows with each step taken, dropped or undone; never falls
};
extern LiveSketch sketch;

inline constexpr double kSketchLimit = kStrictLimit;  // |coordinate| and sizes stay below

// "Line" ...; "LINE" ...; empty for another number.
const char16_t* SketchTypeName(std::int32_t type);
const char16_t* SketchTypeHeading(std::int32_t type);

// One undo step, before a change; also marks the project modified. Nothing in a dry run.
void PushSketchUndo();
void SketchUndo();
// Where another sketch comes in: its steps begin anew.
void DropSketchUndo();
// Where a block's sketch takes the place of a drawing: as DropSketchUndo, but drawings whose place
// blocks took before stay reachable. The live one joins them, with what belongs to it, or not
// (null). Undo brings such a drawing back whole, with thickness, cutting data and name. It unlinks
// the block.
void DropSketchUndoForBlock(const FormerDrawing* live);

bool HasSketchSelection();
// A selection that is not locked. False: nothing changes; for a locked one the status says so.
bool MayEditSelection();
// Whether two objects, which must exist, are the same or share a group other than 0.
bool SamePart(int a, int b);
// Whether this object belongs to the part of the selected one.
bool InSelectedPart(int index);
// The largest group in use plus 1, at least 1; the least free one where no number is larger.
std::int32_t NextSketchGroup();
// Marks of the multi-selection (tool_state.h) on objects that exist.
bool IsMultiSelected(int index);
int MultiSelectCount();
// -1, or an index without an object: none.
void SetSelected(std::int32_t index);
// In place of the object that stands there, its flags kept; no undo step.
void PutSketchObject(int index, const SketchObject& object);
// The object joins the part of this number; 0: it stands alone. No undo step.
void SetSketchGroup(int index, std::int32_t group);
// The unit of the numbers as they stand: nothing is converted.
void SetSketchUnit(bool metric);
void SetSketchThickness(double thickness);
void SetSketchSnap(bool on);
void SetSketchGrid(bool on);
// Edits run dry until it ends.
void SetTrimPreview(bool on);
// Objects, unit and thickness of another drawing, nothing selected; the flags stay.
void ReplaceSketch(const SketchObject* objects, int count, bool metric, double thickness);

enum class ObjectFlag { Hidden, Locked };
bool HasFlag(ObjectFlag flag, int index);
void SetFlag(ObjectFlag flag, int index, bool on);
void ClearFlags();
void StoreFlags(unsigned char (&hidden)[kMaxItems], unsigned char (&locked)[kMaxItems]);
void LoadFlags(const unsigned char (&hidden)[kMaxItems], const unsigned char (&locked)[kMaxItems]);
// At the end, visible and unlocked; no undo step. Its index, or -1 with 96 present.
int AppendSketchObject(const SketchObject& object);
// The later ones move down, with their flags and marks; the selection is left to the caller.
void RemoveSketchObject(int index);
// The unit of the live sketch, which the fields of the workspace follow.
inline bool SketchIsMetric() { return sketch.metric; }
// The inch or the millimetre value, by the sketch's unit.
inline double BySketchUnit(double inch, double mm) { return sketch.metric ? mm : inch; }

void ResetSketch();

}  // namespace morva
