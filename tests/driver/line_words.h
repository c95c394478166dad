// A driver line as words: bare ones parted by blanks, and JSON strings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/events.h"

namespace drive {

struct Word {
  bool quoted = false;
  std::u16string text;
};

// False: the line holds a damaged string, or one that touches its neighbour.
bool SplitLine(std::string_view line, std::vector<Word>& words);

// A whole bare word as a number; the range is tested.
bool ReadInteger(const Word& word, std::int64_t least, std::int64_t most, std::int64_t& value);
bool ReadDecimal(const Word& word, double& value);
bool ReadFlag(const Word& word, bool& value);

// "Ctrl+Shift+F5" and the like. False: no such key.
bool ReadKey(std::u16string_view text, platform::KeyEvent& key);

}  // namespace drive
