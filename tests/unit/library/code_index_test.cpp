#include "library/code_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "text/codetext.h"

namespace morva {
namespace {

std::vector<std::int32_t> Items(int category, std::u16string_view search = u"") {
  std::vector<std::int32_t> items(kCodeItems);
  const int count = CodeListItems(category, search, items.data(), kCodeItems);
  items.resize(static_cast<std::size_t>(count));
  return items;
}

std::vector<std::u16string> Codes(int category, std::u16string_view search = u"") {
  std::vector<std::u16string> codes;
  for (const std::int32_t item : Items(category, search)) codes.push_back(CodeInsertionText(item));
  return codes;
}

using Texts = std::vector<std::u16string>;

std::u16string_view NameOf(std::u16string_view code) {
  const int row = FindCodeRow(code);
  return row < 0 ? std::u16string_view() : codeTable[row].name;
}

int NumberOf(const CodeRow& row) { return ParseInteger(row.code.substr(1), -1); }

TEST(CodeTable, HoldsTheGRowsThenTheMRowsThenTheTwoPrefixes) {
  ASSERT_EQ(std::size(codeTable), 196u);
  for (int i = 0; i < 196; ++i) {
    const char16_t wanted = i < 107 ? u'G' : i < 194 ? u'M' : i == 194 ? u'N' : u'O';
    EXPECT_EQ(codeTable[i].code[0], wanted) << i;
    EXPECT_FALSE(codeTable[i].name.empty()) << i;
  }
  EXPECT_EQ(codeTable[194].code, u"N");
  EXPECT_EQ(codeTable[195].code, u"O");
  EXPECT_EQ(codeTable[0].code, u"G00");
  EXPECT_EQ(codeTable[106].code, u"G269");
  EXPECT_EQ(codeTable[107].code, u"M00");
  EXPECT_EQ(codeTable[193].code, u"M300");
}

TEST(CodeTable, AscendsInNumberSoThatNoCodeStandsTwice) {
  for (int i = 1; i < 194; ++i) {
    if (i != 107) {
      EXPECT_LT(NumberOf(codeTable[i - 1]), NumberOf(codeTable[i])) << i;
    }
  }
}

TEST(CodeTable, WritesEveryNumberWithTwoDigitsAtLeastAndNoMoreThanItNeeds) {
  for (int i = 0; i < 194; ++i) {
    const int number = NumberOf(codeTable[i]);
    std::u16string text(codeTable[i].code.substr(0, 1));
    if (number < 10) text += u'0';
    EXPECT_EQ(codeTable[i].code, text + IntegerText(number)) << i;
  }
}

TEST(CodeTable, NamesHavePlainCharactersAndNoOuterOrDoubleBlanks) {
  for (const CodeRow& row : codeTable) {
    for (const char16_t c : row.name) EXPECT_TRUE(c >= u' ' && c <= u'~');
    EXPECT_EQ(row.name.find(u"  "), std::u16string_view::npos);
    EXPECT_NE(row.name.front(), u' ');
    EXPECT_NE(row.name.back(), u' ');
  }
}

// Typed by hand from the control's list.
TEST(CodeTable, NamesTheGCodes) {
  EXPECT_EQ(NameOf(u"G00"), u"Rapid Motion Positioning");
  EXPECT_EQ(NameOf(u"G01"), u"Linear Interpolation Motion");
  EXPECT_EQ(NameOf(u"G03"), u"Circular Interpolation Motion CCW");
  EXPECT_EQ(NameOf(u"G41"), u"2D Cutter Compensation Left");
  EXPECT_EQ(NameOf(u"G43"), u"Tool Length Compensation +");
  EXPECT_EQ(NameOf(u"G54"), u"Work Coordinate System #1");
  EXPECT_EQ(NameOf(u"G65"), u"Macro Subprogram Call (option)");
  EXPECT_EQ(NameOf(u"G89"), u"Bore In, Dwell, Bore Out Canned Cycle");
  EXPECT_EQ(NameOf(u"G92"), u"Set Work Coordinate Systems Shift Value");
  EXPECT_EQ(NameOf(u"G110"), u"Coordinate System #7");
  EXPECT_EQ(NameOf(u"G129"), u"Coordinate System #26");
  EXPECT_EQ(NameOf(u"G154"), u"Select Work Coordinates P1-P99");
  EXPECT_EQ(NameOf(u"G234"), u"Tool Center Point Control (TCPC)");
  EXPECT_EQ(NameOf(u"G266"), u"Visible Axes Linear Rapid % Motion");
}

TEST(CodeTable, NamesTheMCodesAndPrefixes) {
  EXPECT_EQ(NameOf(u"M03"), u"Spindle Forward");
  EXPECT_EQ(NameOf(u"M06"), u"Tool Change");
  EXPECT_EQ(NameOf(u"M16"), u"Tool Change");
  EXPECT_EQ(NameOf(u"M25"), u"Optional User M Function with M-Fin");
  EXPECT_EQ(NameOf(u"M30"), u"Program End and Reset");
  EXPECT_EQ(NameOf(u"M46"), u"Qn Pmm Jump to Line");
  EXPECT_EQ(NameOf(u"M51"), u"Set Optional User M-code");
  EXPECT_EQ(NameOf(u"M75"), u"Set G35/G136 Reference Point");
  EXPECT_EQ(NameOf(u"M199"), u"Pallet / Part Load or Program End");
  EXPECT_EQ(NameOf(u"M300"), u"APL/Robot Custom Sequence");
  EXPECT_EQ(NameOf(u"N"), u"Sequence / block number prefix (example N10)");
  EXPECT_EQ(NameOf(u"O"), u"Program number prefix (example O1000)");
}

TEST(CodeTable, CoordinateSystemsCountWithTheirCodes) {
  for (int i = 1; i <= 6; ++i) {
    EXPECT_EQ(NameOf(u"G" + IntegerText(53 + i)), u"Work Coordinate System #" + IntegerText(i));
  }
  for (int i = 7; i <= 26; ++i) {
    EXPECT_EQ(NameOf(u"G" + IntegerText(103 + i)), u"Coordinate System #" + IntegerText(i));
  }
}

TEST(MacroWordTable, HoldsVariablesTheCallAndTheWordsOfMacros) {
  const Texts codes = {u"#1-#33",
                       u"#100-#199",
                       u"#500-#699",
                       u"#3000",
                       u"#3006",
                       u"G65",
                       u"IF",
                       u"THEN",
                       u"GOTO",
                       u"WHILE",
                       u"DO",
                       u"END",
                       u"EQ NE GT LT GE LE",
                       u"SIN COS TAN ATAN",
                       u"FIX FUP ROUND"};
  EXPECT_EQ(Codes(kCodesMacro), codes);
  EXPECT_EQ(macroWordTable[0].name, u"Local macro variables (arguments / temporary values)");
  EXPECT_EQ(macroWordTable[8].name, u"Conditional/unconditional branch to N sequence number");
  EXPECT_EQ(macroWordTable[14].name, u"Macro numeric functions; verify control support");
}

TEST(FindCodeRow, FindsEveryCodeInItsOwnFormAndInEitherCase) {
  for (int i = 0; i < kCodeRows; ++i) {
    std::u16string code(codeTable[i].code);
    EXPECT_EQ(FindCodeRow(code), i);
    if (code[0] == u'G') code[0] = u'g';
    if (code[0] == u'M') code[0] = u'm';
    EXPECT_EQ(FindCodeRow(code), i);
  }
}

TEST(FindCodeRow, TakesNoOtherFormOfANumber) {
  for (const char16_t* code : {u"", u"G", u"M", u"G1", u"G001", u"G1.", u"G01.", u"G054", u"G-1",
                               u"G5", u"G05", u"M301", u"G999", u"M0300", u"N10", u"X01", u"01"}) {
    EXPECT_EQ(FindCodeRow(code), -1);
  }
}

TEST(CodeIndex, AllShowsTheTableAndThenTheMacroRows) {
  const std::vector<std::int32_t> items = Items(kCodesAll);
  ASSERT_EQ(items.size(), 211u);
  for (int i = 0; i < 196; ++i) EXPECT_EQ(items[static_cast<std::size_t>(i)], i);
  for (int i = 0; i < 15; ++i) EXPECT_EQ(items[static_cast<std::size_t>(196 + i)], 10000 + i);
}

TEST(CodeIndex, GAndMShowTheirRowsOnly) {
  EXPECT_EQ(Items(kCodesG).size(), 107u);
  EXPECT_EQ(Items(kCodesG).front(), 0);
  EXPECT_EQ(Items(kCodesM).size(), 87u);
  EXPECT_EQ(Items(kCodesM).front(), 107);
  EXPECT_EQ(Items(kCodesM).back(), 193);
}

TEST(CodeIndex, NShowsNinetyNineNumbersAndNotThePrefixRows) {
  const std::vector<std::int32_t> items = Items(kCodesN);
  ASSERT_EQ(items.size(), 99u);
  EXPECT_EQ(items.front(), 20010);
  EXPECT_EQ(items.back(), 20990);
  EXPECT_EQ(CodeRowText(20010, false), u"N10    Sequence / block number");
}

TEST(CodeIndex, ThePrefixesStandInAllOnly) {
  EXPECT_EQ(Codes(kCodesAll, u"number prefix"), (Texts{u"N", u"O"}));
  for (const int category : {kCodesG, kCodesM, kCodesN, kCodesMacro})
    EXPECT_TRUE(Codes(category, u"number prefix").empty());
}

TEST(CodeIndex, SearchForToolChangeShowsBothOfItsCodes) {
  EXPECT_EQ(Codes(kCodesAll, u"tool change"), (Texts{u"M06", u"M16"}));
  EXPECT_EQ(Codes(kCodesM, u"TOOL CHANGE"), (Texts{u"M06", u"M16"}));
  EXPECT_TRUE(Codes(kCodesG, u"tool change").empty());
}

TEST(CodeIndex, SearchReadsNamesAsWellAsCodes) {
  // No name of an M code has "G0" in it; that of M75 has "G136".
  EXPECT_TRUE(Codes(kCodesM, u"g0").empty());
  EXPECT_EQ(Codes(kCodesM, u"g1"), (Texts{u"M75"}));
}

TEST(CodeIndex, SearchFindsPartsOfCodesWithoutWildCards) {
  const Texts found = Codes(kCodesG, u"G1");
  EXPECT_EQ(found[0], u"G10");
  // G10, 12, 13, 17, 18, 19; G100, 101, 103, 107; G110 to 129; G136, 141, 143, 150, 154, 156,
  // 167, 174, 184, 187. No name of a G code holds "G1".
  EXPECT_EQ(found.size(), 6u + 4u + 20u + 10u);
  EXPECT_EQ(std::count(found.begin(), found.end(), u"G01"), 0);
  EXPECT_TRUE(Codes(kCodesG, u"G*").empty());
  EXPECT_TRUE(Codes(kCodesG, u"G?1").empty());
}

TEST(CodeIndex, SearchIsTakenAsItStandsBlanksAndAll) {
  EXPECT_EQ(Codes(kCodesG, u"Dwell"), (Texts{u"G04", u"G89"}));
  EXPECT_TRUE(Codes(kCodesG, u" Dwell ").empty());
  EXPECT_EQ(Codes(kCodesG, u" Dwell"), (Texts{u"G89"}));
}

TEST(CodeIndex, NumbersAreSearchedByCodeAndByTheirOneName) {
  EXPECT_EQ(Codes(kCodesN, u"99"), (Texts{u"N990"}));
  EXPECT_EQ(Codes(kCodesN, u"n1"), (Texts{u"N10", u"N100", u"N110", u"N120", u"N130", u"N140",
                                          u"N150", u"N160", u"N170", u"N180", u"N190"}));
  EXPECT_EQ(Codes(kCodesN, u"SEQUENCE /").size(), 99u);
  EXPECT_TRUE(Codes(kCodesN, u"prefix").empty());
}

TEST(CodeIndex, MacroShowsTheCallWithItsMacroName) {
  ASSERT_EQ(Items(kCodesMacro, u"G65"), (std::vector<std::int32_t>{10005}));
  EXPECT_EQ(CodeRowText(10005, false),
            u"G65    Macro subprogram call with arguments (option / control dependent)");
  // All has both rows of that code.
  EXPECT_EQ(Items(kCodesAll, u"g65").front(), FindCodeRow(u"G65"));
  EXPECT_EQ(Items(kCodesAll, u"g65").back(), 10005);
}

TEST(CodeIndex, StopsAtTheCapacityGiven) {
  std::int32_t items[4] = {-1, -1, -1, -1};
  EXPECT_EQ(CodeListItems(kCodesAll, u"", items, 3), 3);
  EXPECT_EQ(items[2], 2);
  EXPECT_EQ(items[3], -1);
}

TEST(CodeIndex, AnUnknownCategoryShowsNothing) {
  EXPECT_TRUE(Items(-1).empty());
  EXPECT_TRUE(Items(5).empty());
}

TEST(CodeIndex, RowsReadCodeFirstOrNameFirst) {
  EXPECT_EQ(CodeRowText(0, false), u"G00    Rapid Motion Positioning");
  EXPECT_EQ(CodeRowText(0, true), u"Rapid Motion Positioning  (G00)");
  EXPECT_EQ(CodeRowText(FindCodeRow(u"G04"), true), u"Dwell  (G04)");
  EXPECT_EQ(CodeRowText(10006, true), u"Conditional macro expression  (IF)");
  EXPECT_EQ(CodeRowText(20120, true), u"Sequence / block number  (N120)");
}

TEST(CodeIndex, TheDetailNamesTheRowAndSaysWhatToDo) {
  EXPECT_EQ(CodeDetailText(FindCodeRow(u"G04")),
            u"Dwell\r\n\r\nEdit the insertion below to add coordinates or parameters, then Insert "
            u"into program. Search accepts code numbers or descriptions.");
  EXPECT_EQ(CodeDetailText(20010).substr(0, 27), u"Sequence / block number\r\n\r\n");
}

TEST(CodeIndex, ASelectionOffersTheBareCode) {
  EXPECT_EQ(CodeInsertionText(1), u"G01");
  EXPECT_EQ(CodeInsertionText(194), u"N");
  EXPECT_EQ(CodeInsertionText(195), u"O");
  EXPECT_EQ(CodeInsertionText(20340), u"N340");
}

TEST(CodeIndex, ADoubleClickInsertsTheCodeAndABlank) {
  EXPECT_EQ(CodeDoubleClickText(1), u"G01 ");
  EXPECT_EQ(CodeDoubleClickText(193), u"M300 ");
  EXPECT_EQ(CodeDoubleClickText(194), u"N10 ");
  EXPECT_EQ(CodeDoubleClickText(195), u"O1000 ");
  EXPECT_EQ(CodeDoubleClickText(20990), u"N990 ");
  EXPECT_EQ(CodeDoubleClickText(10000), u"#1-#33 ");
  EXPECT_EQ(CodeDoubleClickText(10012), u"EQ NE GT LT GE LE ");
}

TEST(CodeIndex, ItemDataOutOfRangeIsNoRow) {
  for (const std::int32_t item :
       {-1, 196, 9999, 10015, 19999, 20000, 20005, 20009, 20011, 21000, INT32_MIN, INT32_MAX}) {
    CodeEntry entry;
    EXPECT_FALSE(ReadCodeItem(item, entry)) << item;
    EXPECT_EQ(entry.code[0], 0);
    EXPECT_TRUE(CodeRowText(item, false).empty());
    EXPECT_TRUE(CodeDetailText(item).empty());
    EXPECT_TRUE(CodeInsertionText(item).empty());
    EXPECT_TRUE(CodeDoubleClickText(item).empty());
  }
}

TEST(CodeIndex, EveryRowOfTheListsFitsItsBuffers) {
  for (const int category : {kCodesAll, kCodesN}) {
    for (const std::int32_t item : Items(category)) {
      CodeEntry entry;
      ASSERT_TRUE(ReadCodeItem(item, entry));
      // The longest code is that of the comparisons, 17 units.
      const std::u16string_view code = entry.code;
      EXPECT_LE(code.size(), 17u);
      EXPECT_EQ(CodeRowText(item, false).size(), code.size() + 4 + entry.name.size());
    }
  }
}

TEST(CodeIndex, CategoryKeysKeepTheirIdsWhileTheScreenPutsMBeforeN) {
  EXPECT_EQ(CodeCategoryOfKey(622), 0);
  EXPECT_EQ(CodeCategoryOfKey(623), 1);
  EXPECT_EQ(CodeCategoryOfKey(624), 3);
  EXPECT_EQ(CodeCategoryOfKey(625), 2);
  EXPECT_EQ(CodeCategoryOfKey(626), 4);
  EXPECT_EQ(CodeCategoryOfKey(621), -1);
  EXPECT_EQ(CodeCategoryOfKey(627), -1);
  std::vector<int> order;
  for (const CodeCategoryKey& key : codeCategoryKeys) order.push_back(key.id);
  EXPECT_EQ(order, (std::vector<int>{622, 623, 625, 624, 626}));
}

}  // namespace
}  // namespace morva
