// The unit switch: inch and millimetre for everything that the user types or reads.
//
// Program text is never converted. Library values stay in inches.
#pragma once

namespace morva {

inline constexpr double kMmPerInch = 25.4;
inline constexpr double kInchPerMm = 0.03937007874015748;

// UnitsMetric. Only SetUnits changes it.
bool UnitsMetric();
// Converts the fields of every open form, then switches and has the path drawn anew. To the
// active unit: captions only, no conversion and no message.
void SetUnits(bool metric);
// "INCH *" and "MM", or "INCH" and "MM *", on every pair of unit keys that exists.
void ShowUnitCaptions();

// A form that SetUnits converts registers here; `convert` gets the new unit and the factor,
// `captions` follows any change of the captions; either may be null. A full table stops the
// program with words.
void RegisterUnitForm(void (*convert)(bool metric, double factor), void (*captions)());
void ResetUnits();
void RegisterUnitCommands();

}  // namespace morva
