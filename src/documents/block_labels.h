// The comments that generators put above their code, by which a program without markers is parted
// into blocks.
#pragma once

#include <string_view>

namespace morva {

inline constexpr std::u16string_view kCircularLabel = u"(CIRCULAR PATTERN)";
inline constexpr std::u16string_view kSketchLabel = u"(CUSTOM SHAPE EDITOR)";
inline constexpr std::u16string_view kPlateLabel = u"(PLATE TEMPLATE MAKER)";
inline constexpr std::u16string_view kRectangularLabel = u"(RECTANGULAR PATTERN)";

}  // namespace morva
