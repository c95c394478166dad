// What commands say about themselves, for a test that joins only some of the rooms.
#pragma once

#include "app/commands.h"
#include "cad/cad_commands.h"
#include "codetools/codetools_commands.h"
#include "documents/document_commands.h"

namespace support {

inline void HandInWords() {
  morva::AddCommands(morva::DocumentCommands());
  morva::AddCommands(morva::CodeToolCommands());
  morva::AddCommands(morva::CadCommands());
}

}  // namespace support
