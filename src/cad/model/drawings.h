// Drawings of a program: up to eight, one of them live, beside the program in its companion.
#pragma once

#include <cstdint>
#include <string_view>

#include "documents/feature_settings.h"
#include "documents/known_block.h"
#include "documents/tab_table.h"

namespace morva {

// The set of drawings and the working copy of the active program, made at need; null: no program,
// no workspace or no memory, and nothing changed.
ProgramTab* ProvideDrawings();
// An empty drawing behind the others, in the unit in force, with the cutting data of that unit and
// the name "Drawing " and its number. The drawings have room for it. Its index.
std::uint32_t AddDrawing(ProgramTab& tab);
void NameActiveDrawing(ProgramTab& tab, std::u16string_view name);
// The block that the active drawing was opened from or sent as; one without number and hash: none.
void SetDrawingBlock(ProgramTab& tab, const KnownBlock& block);
// The live sketch is stored and that of drawing `index` comes in; nothing for the active one.
void SwitchDrawing(ProgramTab& tab, std::uint32_t index);

// The live sketch into the active drawing of the current program. A number that a record cannot
// hold is stored as 0. One bad field must not cost the drawing.
void SaveLiveDrawing();
// The live sketch from the current program's working copy; an empty one without it. Undo steps
// and recent operations end here.
void LoadSketchForProgram();
// An empty drawing without steps takes the unit of the application once that has changed; what was
// typed is converted. With a length that is half typed it waits.
void FollowUnit();
// Objects, unit and thickness of a record into the live sketch; flags cleared, nothing selected.
void TakeSketchItems(const FeatureSettings& record);

void RegisterDrawings();  // how documents store and load the live sketch

}  // namespace morva
