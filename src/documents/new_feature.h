// New feature: an empty block for code of the user's own.
#pragma once

namespace morva {

// Behind the selected block, else behind the caret's block, else at the caret; the caret goes
// inside. The user is asked where code would never run there.
void NewUserFeature();

}  // namespace morva
