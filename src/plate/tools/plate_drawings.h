// The plates of a program: up to eight, one of them live, beside the program in its companion.
#pragma once

#include <cstdint>
#include <string>

#include "documents/feature_settings.h"
#include "documents/tab_table.h"

namespace morva {

inline constexpr char16_t kPlatesFullTitle[] = u"Plate drawings";
inline constexpr char16_t kPlatesFull[] =
    u"Eight plate drawings per project. Create another project for more drawings.";

// What liveModels.storePlate and loadPlate are to be. Store is false where the plate takes more
// items than a record holds, and says so on the plate's status line; such a plate, and one with
// half a number in a field, comes back as it was when its program does, until the end of the run.
// Load with null: a new plate in the unit of the
// application. A loaded plate gets its name back where the library knows it.
bool StoreLivePlate(FeatureSettings& record);
void LoadLivePlate(const FeatureSettings* record);

// The set of plates and the working copy of the active program, made at need with the live plate in
// it; null: no program or no memory, and nothing changed.
ProgramTab* ProvidePlates();
// A new plate behind the others, in the unit of the application and without a name. Its index, -1
// where eight are held, for a box with the words above.
int AddPlateDrawing(ProgramTab& tab);
// The live plate is stored and that of drawing `index` comes in. False: nothing changed, as the
// live plate cannot be stored, or `index` is the active one or none.
bool SwitchPlateDrawing(ProgramTab& tab, std::uint32_t index);
// The live plate into the active drawing of the current program. False: as StoreLivePlate.
bool SaveLivePlate();

// The live plate, or the one that waits for its program to come up, has a field without a usable
// number: which, and that the plate is kept with the last one, with the program's title where that
// is not the active one; empty for a program without.
std::u16string HalfNumberKept(const ProgramTab& tab);

// The active drawing of the current program forgets its plate's name, before another plate comes
// into it.
void ForgetPlateName();

void ResetPlateDrawings();

}  // namespace morva
