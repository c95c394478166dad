// Code index: the words that a classic control knows, as static tables, and the list that is
// searched and inserted from.
//
// Nothing is loaded and nothing can be edited here. A row's index is its identity: the G rows
// come first in ascending number, then the M rows, then the prefixes N and O.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morva {

struct CodeRow {
  std::u16string_view code;
  std::u16string_view name;
};

inline constexpr int kCodeRows = 196;
inline constexpr int kGRows = 107;
inline constexpr int kMRows = 87;
inline constexpr int kMacroWordRows = 15;
extern const CodeRow codeTable[kCodeRows];
extern const CodeRow macroWordTable[kMacroWordRows];

// The row whose code is all of `code`, case of A to Z ignored; -1 for none. A code is found in
// its own form only: "G01", not "G1", "G001" or "G1.".
int FindCodeRow(std::u16string_view code);

// codeTab: what the list shows.
enum CodeCategory : int { kCodesAll, kCodesG, kCodesM, kCodesN, kCodesMacro };
inline constexpr int kCodeCategories = 5;
struct CodeCategoryKey {
  int id;
  CodeCategory category;
};
// In their order on screen, which is not that of their ids.
extern const CodeCategoryKey codeCategoryKeys[kCodeCategories];
// The category of a key by its id; -1 for other ids.
int CodeCategoryOfKey(int id);

inline constexpr int kCodeSearchUnits = 100;  // with the terminator; the search line takes no more
inline constexpr int kCodeRowUnits = 340;     // with the terminator; a longer row is cut
inline constexpr int kCodeItems = kCodeRows + kMacroWordRows;

// Item data of the list's rows: an index into codeTable, or one of these and an index into
// macroWordTable or the number of an N word, 10 to 990 in tens.
inline constexpr std::int32_t kMacroItem = 10000;
inline constexpr std::int32_t kNItem = 20000;

// The item data of the rows whose code or name holds `search`, in the order of the list; an
// empty search passes all. Case of A to Z is ignored, there are no wild cards. The answer is
// their count, never above `capacity`.
int CodeListItems(int category, std::u16string_view search, std::int32_t* items, int capacity);

inline constexpr int kCodeUnits = 24;  // with the terminator
struct CodeEntry {
  char16_t code[kCodeUnits] = {};
  std::u16string_view name;
};
// False: no row has this item data, and `entry` is as it was. So it is for the texts below,
// which are then empty.
bool ReadCodeItem(std::int32_t item, CodeEntry& entry);
// One row of the list: "G04    Dwell", or "Dwell  (G04)" with the name in front.
std::u16string CodeRowText(std::int32_t item, bool descriptionFirst);
// What the detail pane says about a row.
std::u16string CodeDetailText(std::int32_t item);
// What a selection puts into the insertion line: the bare code.
std::u16string CodeInsertionText(std::int32_t item);
// What a double click puts into the program: the code and one blank; an example behind the
// prefixes N and O.
std::u16string CodeDoubleClickText(std::int32_t item);

}  // namespace morva
