#include "library/unit_commands.h"

#include "app/app_state.h"
#include "app/command_ids.h"

namespace morva {

namespace {

constexpr char16_t kHint[] =
    u"Working units: converts builder inputs; existing G-code is not rewritten.";

constexpr Command kCommands[] = {
    {.id = kIdInch,
     .words = u"INCH",
     .help = u"Working units: inch",
     .wordsOn = u"INCH *",
     .hintWords = kHint,
     .on = [](int) { return !app.unitsMetric; },
     .told = kToldChecked | kToldInTip | kToldInWords},
    {.id = kIdMm,
     .words = u"MM",
     .help = u"Working units: millimeter",
     .wordsOn = u"MM *",
     .hintWords = kHint,
     .on = [](int) { return app.unitsMetric; },
     .told = kToldChecked | kToldInTip | kToldInWords},
};

}  // namespace

std::span<const Command> UnitCommands() { return kCommands; }

}  // namespace morva
