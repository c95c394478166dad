// The information panel: file, lines and state of the active program.
#pragma once

namespace morva {

// Writes the panel anew, in the modes that show it; nothing where its text stands already.
void WriteProgramInformation();

}  // namespace morva
