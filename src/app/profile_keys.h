// Numbers of the settings file, and where it is kept.
#pragma once

#include <cstdint>

namespace morva {

// A default passes through its own text first, so a decimal default is rounded at 4 decimals.
std::int32_t ProfileReadInteger(const char16_t* section, const char16_t* key,
                                std::int32_t fallback);
double ProfileReadDecimal(const char16_t* section, const char16_t* key, double fallback);
// Rewrites the file at once, or at the end of the change that is under way.
void ProfileWriteDecimal(const char16_t* section, const char16_t* key, double value);

// Says in the status line where settings are kept, if that is not beside the executable.
void TellWhereSettingsAre();

}  // namespace morva
