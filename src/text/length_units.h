// The factors between inches and millimetres, as every conversion of the program uses them.
#pragma once

namespace morva {

inline constexpr double kMmPerInch = 25.4;
inline constexpr double kInchPerMm = 0.03937007874015748;

}  // namespace morva
