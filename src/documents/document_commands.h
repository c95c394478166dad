// What the keys and menu items of programs and features say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

// Where chords of this room hold.
// The editors, and the CAD workspace but its size boxes and the name of a drawing.
inline constexpr ChordPlace kProgramChords{u"program code, drawing, skim"};
inline constexpr ChordPlace kFeatureListChords{u"feature list"};  // the feature list
inline constexpr ChordPlace kFeatureChords{
    u"feature list and its keys"};  // it and the keys that change features

std::span<const Command> DocumentCommands();

// Pixels at the right end of OPEN, where an arrow is drawn and a press brings up the last programs.
inline constexpr int kOpenArrowWidth = 18;

// Joins the saves to the writer of files and to their questions.
void RegisterSaveCommands();
// Asks what to do where another program has changed the active program's file, and does it.
void SettleActiveFile();

}  // namespace morva
