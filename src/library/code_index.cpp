#include "library/code_index.h"

#include "app/command_ids.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::int32_t kFirstN = 10;
constexpr std::int32_t kLastN = 990;
constexpr std::int32_t kStepN = 10;
constexpr std::u16string_view kNameOfN = u"Sequence / block number";

bool InCategory(const CodeRow& row, int category) {
  if (category == kCodesAll) return true;
  const char16_t letter = FoldUpper(row.code[0]);
  return (category == kCodesG && letter == u'G') || (category == kCodesM && letter == u'M');
}

// A filtered list under construction.
struct ItemList {
  std::u16string_view search;
  std::int32_t* items;
  int capacity;
  int count;
};

void AddIfFound(ItemList& list, std::u16string_view code, std::u16string_view name,
                std::int32_t item) {
  if (list.count >= list.capacity) return;
  if (HoldsFolded(code, list.search) || HoldsFolded(name, list.search))
    list.items[list.count++] = item;
}

void AddNumbers(ItemList& list) {
  for (std::int32_t n = kFirstN; n <= kLastN; n += kStepN) {
    AddIfFound(list, u"N" + IntegerText(n), kNameOfN, kNItem + n);
  }
}

}  // namespace

const CodeCategoryKey codeCategoryKeys[kCodeCategories] = {
    {kIdIndexAll, kCodesAll}, {kIdIndexG, kCodesG},         {kIdIndexM, kCodesM},
    {kIdIndexN, kCodesN},     {kIdIndexMacro, kCodesMacro},
};

int CodeCategoryOfKey(int id) {
  for (const CodeCategoryKey& key : codeCategoryKeys) {
    if (key.id == id) return key.category;
  }
  return -1;
}

int CodeListItems(int category, std::u16string_view search, std::int32_t* items, int capacity) {
  ItemList list{search, items, capacity, 0};
  if (category == kCodesN) {
    AddNumbers(list);
    return list.count;
  }
  for (std::int32_t i = 0; i < kCodeRows; ++i) {
    const CodeRow& row = codeTable[i];
    if (InCategory(row, category)) AddIfFound(list, row.code, row.name, i);
  }
  if (category == kCodesAll || category == kCodesMacro) {
    for (std::int32_t i = 0; i < kMacroWordRows; ++i) {
      AddIfFound(list, macroWordTable[i].code, macroWordTable[i].name, kMacroItem + i);
    }
  }
  return list.count;
}

bool ReadCodeItem(std::int32_t item, CodeEntry& entry) {
  const std::int64_t n = std::int64_t{item} - kNItem;
  if (n >= kFirstN && n <= kLastN && n % kStepN == 0) {
    CopyBounded(entry.code, kCodeUnits, u"N" + IntegerText(n));
    entry.name = kNameOfN;
    return true;
  }
  const CodeRow* row = nullptr;
  if (item >= 0 && item < kCodeRows) row = &codeTable[item];
  if (item >= kMacroItem && item < kMacroItem + kMacroWordRows)
    row = &macroWordTable[item - kMacroItem];
  if (!row) return false;
  CopyBounded(entry.code, kCodeUnits, row->code);
  entry.name = row->name;
  return true;
}

std::u16string CodeRowText(std::int32_t item, bool descriptionFirst) {
  CodeEntry entry;
  if (!ReadCodeItem(item, entry)) return {};
  std::u16string text;
  if (descriptionFirst) {
    text.append(entry.name).append(u"  (").append(entry.code).append(u")");
  } else {
    text.append(entry.code).append(u"    ").append(entry.name);
  }
  return text.substr(0, kCodeRowUnits - 1);
}

std::u16string CodeDetailText(std::int32_t item) {
  CodeEntry entry;
  if (!ReadCodeItem(item, entry)) return {};
  return std::u16string(entry.name) +
         u"\r\n\r\nEdit the insertion below to add coordinates or parameters, then Insert into "
         u"program. Search accepts code numbers or descriptions.";
}

std::u16string CodeInsertionText(std::int32_t item) {
  CodeEntry entry;
  return ReadCodeItem(item, entry) ? entry.code : std::u16string();
}

std::u16string CodeDoubleClickText(std::int32_t item) {
  const std::u16string code = CodeInsertionText(item);
  if (code.empty()) return {};
  if (code == u"N") return u"N10 ";
  if (code == u"O") return u"O1000 ";
  return code + u" ";
}

}  // namespace morva
