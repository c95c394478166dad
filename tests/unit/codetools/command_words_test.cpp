#include "codetools/command_words.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "library/code_index.h"
#include "support/program_maker.h"
#include "support/reference_words.h"
#include "support/stage.h"
#include "text/codetext.h"

namespace morva {
namespace {

std::u16string Words(std::u16string_view code) { return std::u16string(CodeToWords(code).View()); }
std::u16string Code(std::u16string_view words) { return std::u16string(WordsToCode(words).View()); }
std::u16string Round(std::u16string_view code) { return Code(Words(code)); }

std::u16string_view WordOf(std::u16string_view code) { return CommandWord(FindCodeRow(code)); }

TEST(CommandWord, IsTheNameOfACodeThatSharesItWithNoOther) {
  EXPECT_EQ(WordOf(u"G00"), u"Rapid Motion Positioning");
  EXPECT_EQ(WordOf(u"G65"), u"Macro Subprogram Call (option)");
  EXPECT_EQ(WordOf(u"M30"), u"Program End and Reset");
}

TEST(CommandWord, GoesOnWithTheCodeWhereANameIsShared) {
  EXPECT_EQ(WordOf(u"M06"), u"Tool Change \u2014 Command M06");
  EXPECT_EQ(WordOf(u"M16"), u"Tool Change \u2014 Command M16");
  EXPECT_EQ(WordOf(u"M23"), u"Optional User M Function with M-Fin \u2014 Command M23");
  EXPECT_EQ(WordOf(u"M65"), u"Clear Optional User M-code \u2014 Command M65");
}

TEST(CommandWord, NamesTheCodeOnSeventeenRows) {
  int marked = 0;
  for (int row = 0; row < kCodeRows; ++row)
    marked += CommandWord(row).find(u"\u2014") != std::u16string_view::npos ? 1 : 0;
  EXPECT_EQ(marked, 17);
}

TEST(CommandWord, IsThereForNoPrefixAndNothingBeyondTheTable) {
  for (const int row : {-1, 194, 195, 196, 100000}) EXPECT_TRUE(CommandWord(row).empty());
}

TEST(CommandWord, OneWordBelongsToOneCodeOnly) {
  std::set<std::u16string> words;
  for (int row = 0; row < 194; ++row) {
    const std::u16string folded = reference::Uppered(CommandWord(row));
    EXPECT_TRUE(words.insert(folded).second) << row;
  }
  for (const auto& macro : reference::kMacros) {
    EXPECT_TRUE(words.insert(reference::Uppered(macro[1])).second);
  }
}

TEST(CodeToWords, WritesAMotionInWordsAndKeepsItApartFromTheAxis) {
  EXPECT_EQ(Words(u"G1X2."), u"Linear Interpolation Motion X2.");
  EXPECT_EQ(Words(u"G01 X2."), u"Linear Interpolation Motion X2.");
  EXPECT_EQ(Words(u"g0z.5"), u"Rapid Motion Positioning z.5");
  EXPECT_EQ(Words(u"G4P1"), u"Dwell P1");
  EXPECT_EQ(Words(u"G53#5"), u"Non-Modal Machine Coordinate Selection Macro Variable 5");
}

TEST(CodeToWords, NamesSequenceProgramAndVariableByTheirNumbers) {
  EXPECT_EQ(Words(u"O1000\r\nN10 M30\r\n"),
            u"Program 1000\r\nSequence 10 Program End and Reset\r\n");
  EXPECT_EQ(Words(u"o5n007"), u"Program 5 Sequence 007");
  EXPECT_EQ(Words(u"#100=#1"), u"Macro Variable 100=Macro Variable 1");
  EXPECT_EQ(Words(u"N10X5#1Y2"), u"Sequence 10X5 Macro Variable 1Y2");
}

TEST(CodeToWords, AHashWithoutADigitStays) {
  EXPECT_EQ(Words(u"#"), u"#");
  EXPECT_EQ(Words(u"#[1]"), u"#[1]");
  EXPECT_EQ(Words(u"##1"), u"# Macro Variable 1");
}

TEST(CodeToWords, LettersOfNumbersWithoutANumberStay) {
  EXPECT_EQ(Words(u"N O G M X"), u"N O G M X");
  EXPECT_EQ(Words(u"N-1 O.5 G-1 M 6"), u"N-1 O.5 G-1 M 6");
}

TEST(CodeToWords, UnknownAndOddlyWrittenCodesStay) {
  for (const char16_t* code : {u"G5", u"g5", u"G001", u"G1.", u"G1.0", u"G54.1", u"G.1", u"M999",
                               u"G0000000000000000000000000000000000000001"}) {
    EXPECT_EQ(Words(code), code);
    EXPECT_EQ(Round(code), code);
  }
}

TEST(CodeToWords, TakesWholeLetterRunsAsMacroWordsOnly) {
  EXPECT_EQ(Words(u"THEN"), u"Conditional action");
  EXPECT_EQ(Words(u"then"), u"Conditional action");
  EXPECT_EQ(Words(u"IFX"), u"IFX");
  EXPECT_EQ(Words(u"XIF"), u"XIF");
  EXPECT_EQ(Words(u"ROUNDS"), u"ROUNDS");
  EXPECT_EQ(Words(u"IF[#1GE3]GOTO20"),
            u"Conditional macro expression[Macro Variable 1 Greater than or equal 3]Branch to "
            u"sequence number 20");
  EXPECT_EQ(Words(u"WHILE[#1LT10]DO1"),
            u"Begin macro loop[Macro Variable 1 Less than 10]Macro loop level 1");
}

TEST(CodeToWords, LeavesCommentsAndMarkersAlone) {
  const char16_t* text =
      u"(MORVA BEGIN 3)\r\n(G1 M6 N10 #5 IF)\r\n(two\r\nlines G1)\r\n(open G1\r\nM30";
  EXPECT_EQ(Words(text), text);
  EXPECT_EQ(Code(text), text);
}

TEST(CodeToWords, CommentsDoNotNestAndASemicolonOpensNone) {
  EXPECT_EQ(Words(u"(A(B)G4)"), u"(A(B)Dwell)");
  EXPECT_EQ(Words(u";G4"), u";Dwell");
  EXPECT_EQ(Words(u")G4"), u")Dwell");
}

TEST(CodeToWords, KeepsGluedCodesApartSoThatTheyComeBack) {
  EXPECT_EQ(Words(u"T1M6"), u"T1 Tool Change \u2014 Command M06");
  EXPECT_EQ(Words(u"N10G1X2"), u"Sequence 10 Linear Interpolation Motion X2");
  EXPECT_EQ(Words(u"GOTO100"), u"Branch to sequence number 100");
  EXPECT_EQ(Round(u"T1M6"), u"T1 M06");
  EXPECT_EQ(Round(u"N10G1X2"), u"N10 G01 X2");
  EXPECT_EQ(Round(u"GOTO100"), u"GOTO 100");
  EXPECT_EQ(Round(u"X1M199"), u"X1 M199");
  EXPECT_EQ(Round(u"#1#2"), u"#1 #2");
  EXPECT_EQ(Round(u"G90G54G0X1Y2N5O6"), u"G90 G54 G00 X1Y2 N5 O6");
}

TEST(CodeToWords, AnEmptyProgramHasNoWords) {
  EXPECT_TRUE(CodeToWords(u"").units);
  EXPECT_EQ(Words(u""), u"");
  EXPECT_EQ(Code(u""), u"");
}

TEST(WordsToCode, EveryWordComesBackAsItsCodeInEitherCase) {
  for (int row = 0; row < 194; ++row) {
    std::u16string word(CommandWord(row));
    EXPECT_EQ(Code(word), codeTable[row].code);
    EXPECT_EQ(Code(reference::Uppered(word)), codeTable[row].code);
    EXPECT_EQ(Code(u"/" + word + u"-"), u"/" + std::u16string(codeTable[row].code) + u"-");
    EXPECT_EQ(Code(word + u" P1"), std::u16string(codeTable[row].code) + u" P1");
  }
  for (const auto& macro : reference::kMacros) EXPECT_EQ(Code(macro[1]), macro[0]);
}

TEST(WordsToCode, GivesEveryCodeInItsTableForm) {
  EXPECT_EQ(Code(u"Linear Interpolation Motion X2."), u"G01 X2.");
  EXPECT_EQ(Code(u"linear interpolation motion x2."), u"G01 x2.");
  EXPECT_EQ(Round(u"G1 X2."), u"G01 X2.");
  EXPECT_EQ(Round(u"g1 x2. m6"), u"G01 x2. M06");
}

TEST(WordsToCode, ASharedWordComesBackByItsCode) {
  EXPECT_EQ(Code(u"Tool Change \u2014 Command M16"), u"M16");
  EXPECT_EQ(Code(u"Tool Change"), u"Tool Change");
  EXPECT_EQ(Code(u"Tool Change - Command M16"), u"Tool Change - Command M16");
  EXPECT_EQ(Code(u"Tool Change \u2014 Command M17"), u"Tool Change \u2014 Command M17");
}

TEST(WordsToCode, AWordGluedToALetterADigitOrAHashStays) {
  for (const char16_t* words : {u"XDwell", u"1Dwell", u"#Dwell", u"DwellX", u"Dwell1", u"Dwell#1",
                                u"Dwellings", u"xSine", u"Sine2", u"1Sequence 5", u"xProgram 5"}) {
    EXPECT_EQ(Code(words), words);
  }
}

TEST(WordsToCode, OtherCharactersMayTouchAWord) {
  EXPECT_EQ(Code(u"[Dwell]"), u"[G04]");
  EXPECT_EQ(Code(u"Dwell.Dwell,Dwell"), u"G04.G04,G04");
  EXPECT_EQ(Code(u"\u00E9Dwell\u00E9"), u"\u00E9G04\u00E9");
  EXPECT_EQ(Code(u"Dwell\r\nDwell"), u"G04\r\nG04");
}

TEST(WordsToCode, TheLongestWordWins) {
  EXPECT_EQ(Code(u"Exact Stop"), u"G09");
  EXPECT_EQ(Code(u"Exact Stop Mode"), u"G61");
  EXPECT_EQ(Code(u"Exact Stop Model"), u"G09 Model");
  EXPECT_EQ(Code(u"Program End and Reset"), u"M30");
  EXPECT_EQ(Code(u"Program End and Rest"), u"M02 and Rest");
  EXPECT_EQ(Code(u"Greater than or equal 5"), u"GE 5");
  EXPECT_EQ(Code(u"Greater than or less"), u"GT or less");
  EXPECT_EQ(Code(u"Orient Spindle Normal To Feature Coordinate System"), u"G253");
  EXPECT_EQ(Code(u"Set Work Coordinate Systems Shift Value"), u"G92");
  EXPECT_EQ(Code(u"Work Coordinate System #1"), u"G54");
  EXPECT_EQ(Code(u"Coordinate System #10"), u"G113");
  EXPECT_EQ(Code(u"Coordinate System #100"), u"Coordinate System #100");
}

TEST(WordsToCode, AWordWithABracketIsReadBeforeAComment) {
  EXPECT_EQ(Code(u"Macro Subprogram Call (option) P9001"), u"G65 P9001");
  EXPECT_EQ(Round(u"G65P9001(G1)"), u"G65 P9001(G1)");
  // Not a word as a whole: the words within it are, and its "(" opens a comment.
  EXPECT_EQ(Code(u"xMacro Subprogram Call (option) Dwell"), u"xMacro M98 (option) G04");
  EXPECT_EQ(Code(u"Macro Subprogram Call (Dwell) Dwell"), u"Macro M98 (Dwell) G04");
}

TEST(WordsToCode, WordsInCommentsStayWords) {
  EXPECT_EQ(Code(u"(Dwell)Dwell"), u"(Dwell)G04");
  EXPECT_EQ(Code(u"(Sequence 5\r\nSine) Sine"), u"(Sequence 5\r\nSine) SIN");
}

TEST(WordsToCode, SequenceAndProgramTakeTheDigitsBehindBlanks) {
  EXPECT_EQ(Code(u"Sequence 10"), u"N10");
  EXPECT_EQ(Code(u"SEQUENCE10"), u"N10");
  EXPECT_EQ(Code(u"sequence   007X1"), u"N007X1");
  EXPECT_EQ(Code(u"Program 1000"), u"O1000");
  EXPECT_EQ(Code(u"Sequence"), u"Sequence");
  EXPECT_EQ(Code(u"Sequence X"), u"Sequence X");
  EXPECT_EQ(Code(u"Program\r\n5"), u"Program\r\n5");
  EXPECT_EQ(Code(u"Stop Program 5"), u"M00 5");
}

TEST(WordsToCode, AMacroVariableHasNoBoundsAndMayHaveItsHash) {
  EXPECT_EQ(Code(u"Macro Variable 100"), u"#100");
  EXPECT_EQ(Code(u"macro variable #100"), u"#100");
  EXPECT_EQ(Code(u"Macro Variable100"), u"#100");
  EXPECT_EQ(Code(u"XMacro Variable 5Y"), u"X#5Y");
  EXPECT_EQ(Code(u"Macro Variable # 5"), u"Macro Variable # 5");
  EXPECT_EQ(Code(u"Macro Variable ##5"), u"Macro Variable ##5");
  EXPECT_EQ(Code(u"Macro Variable"), u"Macro Variable");
}

TEST(WordsToCode, LeavesCodeAsItStands) {
  EXPECT_EQ(Code(u"%\r\nO1000\r\nN10 G1X1.M8\r\n#1=2\r\nM30\r\n%"),
            u"%\r\nO1000\r\nN10 G1X1.M8\r\n#1=2\r\nM30\r\n%");
}

TEST(CommandWords, WhatTheListInsertsReadsAsTheRowsWordAndABlank) {
  for (int row = 0; row < 194; ++row) {
    EXPECT_EQ(Words(CodeDoubleClickText(row)), std::u16string(CommandWord(row)) + u" ");
  }
  EXPECT_EQ(Words(CodeDoubleClickText(194)), u"Sequence 10 ");
  EXPECT_EQ(Words(CodeDoubleClickText(195)), u"Program 1000 ");
}

// "G3" goes from 2 units to 33 and a blank, which is 17 for one; no piece grows more, so the
// bound of 18 never cuts a program.
TEST(WordsBetween, KeepsAWordFromALetterADigitAndAHash) {
  EXPECT_EQ(WordsBetween(u'1', u"G04", u'X'), u" Dwell ");
  EXPECT_EQ(WordsBetween(u'X', u"G43", u'5'), u" Tool Length Compensation + ");
  EXPECT_EQ(WordsBetween(u'a', u"IF", u'#'), u" Conditional macro expression ");
  EXPECT_EQ(WordsBetween(u'1', u"O10 ", u'X'), u" Program 10 ");
  EXPECT_EQ(WordsBetween(u'N', u"#100", 0), u" Macro Variable 100");
}

TEST(WordsBetween, AddsNothingElsewhere) {
  EXPECT_EQ(WordsBetween(0, u"G04", 0), u"Dwell");
  EXPECT_EQ(WordsBetween(u'.', u"G04", u'\r'), u"Dwell");
  EXPECT_EQ(WordsBetween(u' ', u"G04 ", u'X'), u"Dwell ");
  EXPECT_EQ(WordsBetween(u'X', u"1.5", u'0'), u"1.5");
  EXPECT_EQ(WordsBetween(u'G', u"54.1", u'5'), u"54.1");
  EXPECT_EQ(WordsBetween(u'1', u"", u'1'), u"");
}

TEST(CommandWords, TheBoundsCutNothingInTheWorstOfPrograms) {
  for (const char16_t* piece : {u"G3", u"G13", u"M21", u"M6", u"#1", u"N1", u"GE", u"G253"}) {
    std::u16string code;
    for (int i = 0; i < 20000; ++i) code += piece;
    code += u" END";
    const OwnedText words = CodeToWords(code);
    EXPECT_LE(words.length, 18 * code.size() + 8192);
    EXPECT_EQ(words.View().substr(words.length - 14), u"End macro loop");
    EXPECT_TRUE(reference::NothingLost(code, WordsToCode(words.View()).View()));
  }
}

TEST(CommandWords, WithoutMemoryNothingIsConverted) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizer ends the program at such a request";
#else
  // A view of a text that no machine can hold; the request for the new text is refused first.
  const char16_t unit = u'G';
  const std::u16string_view endless(&unit, std::size_t{1} << 56);
  EXPECT_FALSE(CodeToWords(endless).units);
  EXPECT_EQ(CodeToWords(endless).length, 0u);
  EXPECT_FALSE(WordsToCode(endless).units);
#endif
}

// Programs by chance: motion lines and torn ones, between them macro lines and glued codes.
std::u16string MixedProgram(std::uint32_t seed) {
  static constexpr const char16_t* kPieces[] = {u"IF[#1EQ2]THEN#3=4",
                                                u"WHILE[#100LT#5]DO1",
                                                u"END1",
                                                u"GOTO100",
                                                u"GOTO#1",
                                                u"T1M6",
                                                u"N10G1X2",
                                                u"X1M199",
                                                u"G65P9#",
                                                u"ATAN[1]",
                                                u"FUP",
                                                u"g4p.5",
                                                u"(IF G1",
                                                u")",
                                                u"m16",
                                                u"O12",
                                                u"#",
                                                u"##7",
                                                u"G5",
                                                u"M21M25",
                                                u"IFX",
                                                u"XSIN",
                                                u"G3G13",
                                                u"ROUND[#1]",
                                                u"G54.1",
                                                u"G1.",
                                                u"n",
                                                u"LOG10",
                                                u"FOO1",
                                                u"THENN10",
                                                u"G43H1",
                                                u"G43-1",
                                                u"G44.5",
                                                u"G266F100",
                                                u" ",
                                                u"\r\n"};
  reference::Dice dice{seed};
  std::u16string text;
  for (std::uint32_t parts = dice.Roll(6); parts > 0; --parts) {
    text += reference::RandomProgram(seed * 7 + parts, 6);
    for (std::uint32_t pieces = dice.Roll(8); pieces > 0; --pieces)
      text += kPieces[dice.Roll(std::size(kPieces))];
  }
  return text;
}

TEST(CommandWords, AgreeWithTheSlowReadingOfTheirRules) {
  for (std::uint32_t seed = 0; seed < 400; ++seed) {
    const std::u16string code = MixedProgram(seed);
    const std::u16string words = Words(code);
    ASSERT_EQ(words, reference::CodeToWords(code)) << seed;
    ASSERT_EQ(Code(words), reference::WordsToCode(words)) << seed;
  }
}

// No word may grow into another one over what stands beside it.
TEST(CommandWords, AnyTwoCodesBesideEachOtherComeBack) {
  std::vector<std::u16string> codes = {u"N10", u"O5", u"#1", u"X1", u"5", u".",   u"+",
                                       u"-",   u"G5", u"G1", u"M3", u"[", u"(A)", u"OR"};
  for (int row = 0; row < kGRows + kMRows; ++row) codes.emplace_back(codeTable[row].code);
  for (const auto& macro : reference::kMacros) codes.emplace_back(macro[0]);
  for (const std::u16string& left : codes) {
    for (const std::u16string& right : codes) {
      for (const std::u16string_view between : {u"", u" ", u"."}) {
        const std::u16string code = left + std::u16string(between) + right;
        ASSERT_TRUE(reference::NothingLost(code, Round(code))) << support::Narrow(code);
      }
    }
  }
}

TEST(CommandWords, ThereAndBackLosesNoCharacterOfAProgram) {
  for (std::uint32_t seed = 0; seed < 4000; ++seed) {
    const std::u16string code = MixedProgram(seed);
    ASSERT_TRUE(reference::NothingLost(code, Round(code))) << seed;
  }
}

// The first time may part "FUPG1" into "FUP G01", the second time reads FUP as a word.
TEST(CommandWords, ThereAndBackSettlesAtTheSecondTime) {
  EXPECT_EQ(Round(u"X2FUPG1"), u"X2FUP G01");
  EXPECT_EQ(Round(u"X2FUP G01"), u"X2 FUP G01");
  for (std::uint32_t seed = 0; seed < 2000; ++seed) {
    const std::u16string twice = Round(Round(MixedProgram(seed)));
    ASSERT_EQ(Round(twice), twice) << seed;
  }
}

// Every character that could open a word is taken out; comments keep theirs.
TEST(CommandWords, AProgramWithoutWordsComesBackToTheCharacter) {
  for (std::uint32_t seed = 0; seed < 2000; ++seed) {
    std::u16string code;
    bool comment = false;
    for (const char16_t c : MixedProgram(seed)) {
      if (c == u'(') comment = true;
      if (c == u')') comment = false;
      const char16_t letter = FoldUpper(c);
      const bool opens = letter == u'#' || (letter >= u'A' && letter <= u'W');
      if (comment || !opens) code += c;
    }
    ASSERT_EQ(Words(code), code) << seed;
    ASSERT_EQ(Round(code), code) << seed;
  }
}

TEST(NothingLost, WouldSeeALoss) {
  EXPECT_TRUE(reference::NothingLost(u"T1m6", u"T1 M06"));
  EXPECT_TRUE(reference::NothingLost(u"G0X1", u"G00 X1"));
  EXPECT_FALSE(reference::NothingLost(u"T1M6", u"T1 M6 X"));
  EXPECT_FALSE(reference::NothingLost(u"T1M6", u"T1 M"));
  EXPECT_FALSE(reference::NothingLost(u"T1M6", u"T1 Tool Change"));
  EXPECT_FALSE(reference::NothingLost(u"G10", u"G010"));
  EXPECT_FALSE(reference::NothingLost(u"X1", u"X01"));
  EXPECT_FALSE(reference::NothingLost(u"(g1)", u"(G1)"));
  EXPECT_FALSE(reference::NothingLost(u"(G1X)", u"(G1 X)"));
}

}  // namespace
}  // namespace morva
