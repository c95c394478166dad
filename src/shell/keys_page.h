// The page of all keys: what each chord does and where it holds, with a search.
//
// It is made from the table of commands and from the keys of views (`Handlers::keys`), which are
// what runs them, so that no key stands in it that nobody hears.
#pragma once

#include <string>
#include <vector>

namespace morva {

struct KeyLine {
  std::u16string chord;  // "Ctrl+O"
  std::u16string words;  // "Open a program"
  std::u16string place;  // "program code, drawing"
};
// In the order of places, and of keys within one. Only lines that hold `search` in any of the three
// texts, whatever its case.
std::vector<KeyLine> KeyLines(const std::u16string& search);

void ShowKeysPage();

void RegisterKeysPage();

}  // namespace morva
