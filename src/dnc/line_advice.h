// What a bad receive tells about the settings of the line: the one to try next.
//
// The line marks each byte with a parity or framing error and hands it on all the same. So the
// bytes themselves tell whether the rate or only the frame of a character differs.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/serial.h"

namespace morva {

// A sentence with the setting to try, or with what to compare where the bytes do not tell one: it
// names every setting that would give these bytes, and no other. Empty where the program came
// whole, where too little came, and where single bytes were damaged: that is the cable. `received`
// holds all bytes, `errors` of them had a parity or framing error.
std::u16string LineAdvice(const platform::SerialSettings& settings, std::string_view received,
                          std::size_t errors);

}  // namespace morva
