// The program text of a plate: its outline, then its features, each by its own path at one depth.
#pragma once

#include <cstddef>

#include "documents/builder_table.h"
#include "plate/model/plate.h"
#include "text/code_writer.h"

namespace morva {

inline constexpr char16_t kPlateBoxTitle[] = u"Plate Template Maker";
inline constexpr char16_t kPlateInserted[] =
    u"Plate Template inserted. Verify plate stock size, feature locations, cutter/tool selection, "
    u"work offset, and clearances.";

// Whether there is code for the plate. False: why not. A plate without a name has neither title nor
// words, and no box comes; plate_names.h has the words for the status line. A text that does not
// read has a title alone, and `refusedValue` is its PlateValue, else -1: who has the form words it.
bool CheckPlate(const PlateRecord& record, Refusal& refusal, int& refusedValue);
// The code. Only what passed the check comes here.
void WritePlate(const PlateRecord& record, CodeWriter& out);
// Units that the code may have.
std::size_t PlateCodeRoom(const PlateRecord& record);

}  // namespace morva
