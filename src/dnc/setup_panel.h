// The setup panel: the one place where the serial profile is edited. It takes the work area of the
// DNC mode, whose page in the right panel says what the link does and opens it.
//
// Its lists are the profile while it is open. What is not saved goes with it.
#pragma once

namespace morva {

struct ModeRow;
extern const ModeRow kDncMode;

// In the mode of the link; nothing but its list gets the keyboard where it is open already.
void OpenSetupPanel();
// Asks while a transfer runs. False: it stays open, and the transfer goes on.
bool CloseSetupPanel();
bool IsSetupPanelOpen();

void RegisterSetupPanel();
void ResetSetupPanel();

}  // namespace morva
