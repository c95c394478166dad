// What commands say about themselves, for a test that joins only some of the rooms.
#pragma once

#include "app/commands.h"
#include "app/edit_menu.h"
#include "cad/panel/cad_commands.h"
#include "codetools/codetools_commands.h"
#include "dnc/dnc_commands.h"
#include "documents/document_commands.h"
#include "library/unit_commands.h"
#include "plate/panel/plate_commands.h"
#include "shell/shell_commands.h"
#include "simulator/view_commands.h"

namespace support {

inline void HandInWords() {
  morva::ResetCommandWords();
  morva::AddCommands(morva::EditCommands());
  morva::AddCommands(morva::DocumentCommands());
  morva::AddCommands(morva::UnitCommands());
  morva::AddCommands(morva::CadCommands());
  morva::AddCommands(morva::PlateCommands());
  morva::AddCommands(morva::CodeToolCommands());
  morva::AddCommands(morva::DncCommands());
  morva::AddCommands(morva::SimulatorCommands());
  morva::AddCommands(morva::ShellCommands());
}

}  // namespace support
