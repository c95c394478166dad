#include "library/unit_commands.h"

#include "app/app_state.h"
#include "app/command_ids.h"

namespace morva {

namespace {

constexpr Command kCommands[] = {InchKey(kIdInch), MmKey(kIdMm),
                                 InchKey(kIdBuilderInch, u"Inch of the builders"),
                                 MmKey(kIdBuilderMm, u"Millimeter of the builders")};

}  // namespace

bool IsInch(int) { return !app.unitsMetric; }
bool IsMm(int) { return app.unitsMetric; }

std::span<const Command> UnitCommands() { return kCommands; }

}  // namespace morva
