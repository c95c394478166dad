// What the keys of the code tools say about themselves.
#pragma once

#include <span>

#include "app/commands.h"

namespace morva {

// Where chords of this room hold.
inline constexpr ChordPlace kEditorChords{u"program code"};  // the code editor and the words view
inline constexpr ChordPlace kReviewChords{u"compare"};       // any control of the compare review

std::span<const Command> CodeToolCommands();

}  // namespace morva
