// The folder "Recovery" of the data directory: texts that could be kept nowhere else.
#pragma once

#include <string>
#include <string_view>

namespace morva {

// Writes the text as UTF-8 under the title and the tick. False: it could not be written.
bool KeepInRecovery(std::u16string_view title, std::u16string_view text, std::u16string& path);

}  // namespace morva
