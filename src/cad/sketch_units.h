// The unit switch of the live sketch: what it converts beside the objects.
#pragma once

namespace morva {

// A field that holds a length, or a feed, in the sketch's unit: its text follows the unit
// switch with this many decimals. Empty stays empty, what is no number becomes 0. Called once
// for each field when rooms are joined. A full table and a field that comes twice stop the
// program with words.
void AddSketchLengthField(int id, int decimals);
// "INCH *" and "MM", or "INCH" and "MM *", on the sketch's pair of unit keys.
void ShowSketchUnitCaptions();

void RegisterSketchUnits();

}  // namespace morva
