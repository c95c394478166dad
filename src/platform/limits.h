// The capacities of the platforms. They lie below the application's limits.h, and the user
// meets none of them in normal work.
#pragma once

#include <cstddef>

namespace platform {

inline constexpr std::size_t kMaxProfileBytes = 33554432;  // a longer MORVA.ini is not touched
inline constexpr std::size_t kMaxSpareProfile = 4194304;  // memory of it kept between two changes
inline constexpr int kMaxLinks = 40;     // links to follow from a path; more count as a circle
inline constexpr int kMaxOpenLines = 8;  // serial lines, of which one transfer opens one
inline constexpr int kMaxPostsAtOnce = 1000000;  // headless: messages that one drain hands out
inline constexpr int kMaxLineDrawnWhole = 4096;  // units; of a longer line what is in view is drawn
inline constexpr int kMaxLinesAside = 3000000;  // of texts that an editor keeps; older ones go
inline constexpr std::size_t kMaxStretches = 16;     // changed parts that an editor keeps apart
inline constexpr std::size_t kMaxKeptChanges = 64;    // of an editor's lines, to be asked for
inline constexpr std::size_t kMaxKeptWidths = 8192;  // of words, a font
inline constexpr std::size_t kMaxKeptLabels = 4096;  // words on their ground, as pixels

}  // namespace platform
