// The deferred text refresh: markers, feature list and colours after a pause in typing.
#pragma once

namespace morva {

// So many milliseconds from now; a refresh that waits already waits anew.
void ArmTextRefresh(int milliseconds);
// Now: tags the text, refreshes the feature list, colours the editor.
void RunTextRefresh();

}  // namespace morva
