// Where a text stands in another: pure functions for finding, counting and rules.
#pragma once

#include <cstddef>
#include <string_view>

namespace morva {

// Whether `find` stands in `text` at `position`. Without `matchCase` a to z are folded on both
// sides. With `wholeToken` the match must not touch a letter, a digit or "_" on either side.
bool MatchAt(std::u16string_view text, std::size_t position, std::u16string_view find,
             bool matchCase, bool wholeToken);
// A unit of a find text that is asked for before all of it is: `unit` with the bits of `fold`.
struct Anchor {
  std::size_t offset = 0;
  char16_t unit = 0;
  char16_t fold = 0;
};

// A find text made ready for many searches; it needs to stand as long as this.
struct ReadyFind {
  std::u16string_view find;
  bool matchCase = false;
  bool wholeToken = false;
  Anchor one;
  Anchor other;
};
ReadyFind MakeReadyFind(std::u16string_view find, bool matchCase, bool wholeToken);

// First match at or behind `from`; npos for none.
std::size_t FindMatch(std::u16string_view text, std::size_t from, const ReadyFind& ready);
std::size_t FindMatch(std::u16string_view text, std::size_t from, std::u16string_view find,
                      bool matchCase, bool wholeToken);

}  // namespace morva
