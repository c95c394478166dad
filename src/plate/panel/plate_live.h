// The live plate and the programs: staged when a program or its plate comes up, kept when it goes.
#pragma once

#include "documents/feature_settings.h"

namespace morva {

bool PlateWindowExists();
// The plate of the active program's record, a new one without it.
void LoadPlateOfProgram();
// A plate that nobody has touched takes the unit of the application.
void FollowUnitOnPlate();
// A named plate with changes goes into the library now.
void SavePendingPlate();
// A plate with half a number in its form stays up where another one of its program is to come: its
// text would be lost. The user is told, and has the keyboard in that field. True: every field
// reads.
bool MayPlateGo();
// Asked before the active program, and MORVA, is closed: of half a number in a field of a plate,
// and of files that could not be written. False: it stays.
bool MayCloseWithPlate();
bool MayEndWithPlates();
// Asked before the workspace is left by the user's wish. False: it stays up.
bool MayLeavePlate();

void RegisterPlateLive();

}  // namespace morva
