// The macro library in the settings file, its names and its limits.

#include "library/macros.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "platform/common/faults.h"
#include "support/stage.h"
#include "text/codetext.h"

namespace morva {
namespace {

using support::Narrow;

struct Macros : support::Stage {
  void SetUp() override { ResetMacroLibrary(); }
  void TearDown() override { ResetMacroLibrary(); }
  void PutIni(std::string_view bytes) const { Put("bin/MORVA.ini", bytes); }
  std::string Ini() const { return Raw("bin/MORVA.ini"); }
  static std::string NameAt(int index) { return Narrow(macroLibrary.macros[index].name); }
  static std::string CodeAt(int index) { return Narrow(macroLibrary.macros[index].code); }
  static void Fill() {
    for (int i = 0; i < kMaxMacros; ++i) PutMacro(u"Macro " + IntegerText(i), u"G1");
  }
};

TEST(MacroText, StandsOnOneLine) {
  EXPECT_EQ(Narrow(EscapedMacro(u"a\\b\r\nc\n\\n")), "a\\\\b\\r\\nc\\n\\\\n");
  EXPECT_EQ(EscapedMacro(u""), u"");
  EXPECT_EQ(EscapedMacro(u"\\"), u"\\\\");
}

TEST(MacroText, KeepsABackslashBeforeAnyOtherCharacter) {
  EXPECT_EQ(Narrow(UnescapedMacro(u"a\\tb\\\\n\\r\\n\\")), "a\\tb\\n\r\n\\");
  EXPECT_EQ(UnescapedMacro(u"\\x\\\\\\n"), u"\\x\\\n");
}

TEST(MacroText, ComesBackWhateverItHolds) {
  std::mt19937 random(24);
  const char16_t units[] = {u'\\', u'\r', u'\n', u'n', u'r', u'a', u' ', u'"', u'=', u'\u00D8'};
  for (int round = 0; round < 2000; ++round) {
    std::u16string code;
    for (auto n = random() % 30; n > 0; --n) code += units[random() % std::size(units)];
    const std::u16string line = EscapedMacro(code);
    EXPECT_EQ(line.find_first_of(u"\r\n"), line.npos);
    ASSERT_EQ(UnescapedMacro(line), code);
  }
}

TEST_F(Macros, AreWrittenAsNameAndCode) {
  PutIni("[DNC]\r\nPort=COM3\r\n");
  PutMacro(u"Warm up", u"S500 M03\r\nG04 P1.\\x\r\n");
  EXPECT_TRUE(SaveMacroLibrary());
  EXPECT_EQ(Ini(),
            "[DNC]\r\nPort=COM3\r\n[CustomMacros]\r\nCount=1\r\n[CustomMacro0]\r\nName=Warm up\r\n"
            "Code=S500 M03\\r\\nG04 P1.\\\\x\\r\\n\r\n");
}

TEST_F(Macros, ComeBackFromTheSettingsFile) {
  const std::u16string code = u"  %\r\nO1 (\u00D8 \"x\")\r\n[CustomMacro1]\r\n\\n ; \r\n%\r\n ";
  PutMacro(u" a=b ", code);
  PutMacro(u"[x]", u"\\");
  ASSERT_TRUE(SaveMacroLibrary());
  LoadMacroLibrary();
  ASSERT_EQ(macroLibrary.count, 2);
  EXPECT_EQ(NameAt(0), " a=b ");
  EXPECT_EQ(CodeAt(0), Narrow(code));
  EXPECT_EQ(NameAt(1), "[x]");
  EXPECT_EQ(CodeAt(1), "\\");
}

TEST_F(Macros, TakeOverWhatAnotherProgramWroteAndNothingElse) {
  LoadMacroLibrary();
  PutMacro(u" One ", u"\\G0\r\nX1 \xD800");  // half of a pair, which no file can hold
  SaveMacroLibrary();
  EXPECT_FALSE(FollowMacroFile()) << "its own save";
  PutIni(
      "[CustomMacros]\r\nCount=2\r\n[CustomMacro0]\r\nName=A\r\nCode=M8\r\n"
      "[CustomMacro1]\r\nName=B\r\nCode=M9\r\n");
  EXPECT_TRUE(FollowMacroFile());
  ASSERT_EQ(macroLibrary.count, 2);
  EXPECT_EQ(CodeAt(1), "M9");
  EXPECT_FALSE(FollowMacroFile());
}

TEST_F(Macros, LoadWithTheDefaultsOfMissingKeys) {
  PutIni("[CustomMacros]\r\nCount=2\r\n[CustomMacro1]\r\nCode=G1\\tX\\nM30\r\n");
  LoadMacroLibrary();
  ASSERT_EQ(macroLibrary.count, 2);
  EXPECT_EQ(NameAt(0), "Custom Macro");
  EXPECT_EQ(CodeAt(0), "");
  EXPECT_EQ(CodeAt(1), "G1\\tX\nM30");
}

TEST_F(Macros, CountNoDigitOrANegativeValueAsNoneAndMoreThan24As24) {
  const struct {
    const char* text;
    int count;
  } rows[] = {{"Count=abc", 0}, {"Count=", 0},    {"Count=-3", 0},
              {"Count=24", 24}, {"Count=25", 24}, {"Count=9999", 24}};
  for (const auto& row : rows) {
    PutIni(std::string("[CustomMacros]\r\n") + row.text + "\r\n");
    LoadMacroLibrary();
    EXPECT_EQ(macroLibrary.count, row.count) << row.text;
  }
}

TEST_F(Macros, CutALineThatIsLongerThanAnySavedOne) {
  const std::string line(48070, 'x');
  PutIni("[CustomMacros]\r\nCount=1\r\n[CustomMacro0]\r\nCode=" + line + "\r\n");
  LoadMacroLibrary();
  EXPECT_EQ(CodeAt(0).size(), 48062u);
}

TEST_F(Macros, KeepALineInTheFileOfWhichTheyReadOnlyAPart) {
  // The cut falls between a backslash and its letter.
  const std::string line = std::string(48061, 'x') + "\\nM30\\q";
  PutIni("[CustomMacros]\r\nCount=2\r\n[CustomMacro0]\r\nName=A\r\nCode=G1\r\n"
         "[CustomMacro1]\r\nName=B\r\nCode=" +
         line + "\r\n");
  LoadMacroLibrary();
  RenameMacro(1, u"LONG");
  RemoveMacro(0);
  DuplicateMacro(0);
  ASSERT_TRUE(SaveMacroLibrary());
  const std::string kept = "Code=" + line + "\r\n";
  const std::size_t first = Ini().find("[CustomMacro0]\r\nName=LONG\r\n" + kept);
  EXPECT_NE(first, std::string::npos);
  EXPECT_NE(Ini().find("[CustomMacro1]\r\nName=LONG Copy\r\n" + kept), std::string::npos);
  EXPECT_FALSE(FollowMacroFile());
  // Another text takes its place whole.
  PutMacro(u"long", u"M30");
  ASSERT_TRUE(SaveMacroLibrary());
  EXPECT_NE(Ini().find("[CustomMacro0]\r\nName=long\r\nCode=M30\r\n"), std::string::npos);
}

TEST_F(Macros, HoldTheLongestTextOfNothingButEscapes) {
  const std::u16string code(kMaxMacroCode, u'\\');
  ASSERT_EQ(std::u16string(CheckMacro(u"Long", code).words), u"");
  PutMacro(u"Long", code);
  ASSERT_TRUE(SaveMacroLibrary());
  LoadMacroLibrary();
  EXPECT_EQ(macroLibrary.macros[0].code, code);
}

TEST_F(Macros, AreWrittenInOneStep) {
  Fill();
  static int flushes;
  flushes = 0;
  platform::fileFault = [](std::string_view kind) {
    flushes += kind == "flush";
    return false;
  };
  EXPECT_TRUE(SaveMacroLibrary());
  platform::fileFault = nullptr;
  EXPECT_EQ(flushes, 1);
}

TEST_F(Macros, AreRefusedWhenBlankTooLongOrTooMany) {
  EXPECT_EQ(Narrow(CheckMacro(u"A", u"").words), "The active program is blank.");
  EXPECT_EQ(Narrow(CheckMacro(u"A", u"\r\n\n\r\n").words), "The active program is blank.");
  EXPECT_EQ(CheckMacro(u"A", u"").icon, platform::BoxIcon::Information);
  EXPECT_EQ(Narrow(CheckMacro(u"A", u"").title), "Save Program as Macro");
  EXPECT_EQ(Narrow(CheckMacro(u"A", std::u16string(24000, u'x')).words), "");
  EXPECT_EQ(Narrow(CheckMacro(u"A", std::u16string(24001, u'x')).words),
            "This program is too large for the custom macro library in this build.");
  Fill();
  EXPECT_EQ(Narrow(CheckMacro(u"New", u"x").words), "The custom macro library is full.");
  EXPECT_EQ(Narrow(CheckMacro(u"New", u"x").title), "Custom Macros");
  EXPECT_EQ(PutMacro(u"New", u"x"), -1);
  EXPECT_EQ(Narrow(CheckMacro(u"MACRO 7", u"x").words), "");
}

TEST_F(Macros, AreInsertedWithoutTheMarkersOfBlocks) {
  bool lacks = true;
  EXPECT_EQ(Narrow(MacroToInsert(u"(MORVA TEXT 1)\r\n(MORVA NAME Start)\r\n%\r\nO1\r\n(MORVA END 1)"
                                 u"\r\n(MORVA BEGIN 2)\r\n(MORVA DATA 00)\r\n(MORVA CODE)\r\n\r\n"
                                 u"G1 (MORVA END 2)\r\n (MORVA END 2)\nM30\n%",
                                 lacks)),
            "%\r\nO1\r\n\r\nG1 (MORVA END 2)\r\n (MORVA END 2)\nM30\n%");
  EXPECT_FALSE(lacks);
  EXPECT_EQ(Narrow(MacroToInsert(u"G0\r\n(MORVA DISABLED 4)\r\n", lacks)), "G0\r\n");
  EXPECT_TRUE(lacks);
  EXPECT_EQ(MacroToInsert(u"", lacks), u"");
}

TEST_F(Macros, AreReplacedByNameWhateverItsCase) {
  Fill();
  EXPECT_EQ(PutMacro(u"mACRO 7", u"new"), 7);
  EXPECT_EQ(macroLibrary.count, kMaxMacros);
  EXPECT_EQ(NameAt(7), "mACRO 7");
  EXPECT_EQ(CodeAt(7), "new");
  ResetMacroLibrary();
  PutMacro(u"\u00C4", u"1");
  EXPECT_EQ(FindMacro(u"\u00E4"), -1) << "other letters compare exactly";
}

TEST_F(Macros, CutTheirNamesAndFindThemCut) {
  PutMacro(std::u16string(120, u'n'), u"1");
  EXPECT_EQ(NameAt(0).size(), 95u);
  EXPECT_EQ(FindMacro(std::u16string(120, u'n')), 0);
}

TEST_F(Macros, NumberTheirCopies) {
  PutMacro(u"Face", u"code");
  EXPECT_EQ(DuplicateMacro(0), 1);
  EXPECT_EQ(NameAt(1), "Face Copy");
  EXPECT_EQ(CodeAt(1), "code");
  EXPECT_EQ(DuplicateMacro(0), 2);
  EXPECT_EQ(NameAt(2), "Face Copy 2");
  PutMacro(u"FACE COPY 3", u"");
  EXPECT_EQ(DuplicateMacro(0), 4);
  EXPECT_EQ(NameAt(4), "Face Copy 4");
  EXPECT_EQ(DuplicateMacro(1), 5);
  EXPECT_EQ(NameAt(5), "Face Copy Copy");
  EXPECT_EQ(DuplicateMacro(6), -1);
  while (macroLibrary.count < kMaxMacros) DuplicateMacro(0);
  EXPECT_EQ(DuplicateMacro(0), -1);
  EXPECT_EQ(macroLibrary.count, kMaxMacros);
}

TEST_F(Macros, ShortenALongNameSoThatTheCopyCanBeTold) {
  PutMacro(std::u16string(95, u'n'), u"1");
  DuplicateMacro(0);
  DuplicateMacro(0);
  EXPECT_EQ(NameAt(1), std::string(90, 'n') + " Copy");
  EXPECT_EQ(NameAt(2), std::string(88, 'n') + " Copy 2");
}

TEST_F(Macros, AreRenamedToNamesThatNoOtherBears) {
  PutMacro(u"A", u"1");
  PutMacro(u"B", u"2");
  EXPECT_EQ(Narrow(CheckMacroName(0, u"").words),
            "Enter the new macro name in the name box first.");
  EXPECT_EQ(CheckMacroName(0, u"").icon, platform::BoxIcon::Information);
  EXPECT_EQ(Narrow(CheckMacroName(0, u"b").words), "Another custom macro already uses that name.");
  EXPECT_EQ(Narrow(CheckMacroName(0, u"b").title), "Rename Macro");
  EXPECT_EQ(Narrow(CheckMacroName(0, u"a").words), "");
  EXPECT_TRUE(RenameMacro(0, u"a"));
  EXPECT_EQ(NameAt(0), "a");
  EXPECT_FALSE(RenameMacro(2, u"x"));
}

TEST_F(Macros, MoveDownWhenOneGoes) {
  PutMacro(u"A", u"1");
  PutMacro(u"B", u"2");
  PutMacro(u"C", u"3");
  EXPECT_FALSE(RemoveMacro(3));
  EXPECT_TRUE(RemoveMacro(0));
  ASSERT_EQ(macroLibrary.count, 2);
  EXPECT_EQ(NameAt(0), "B");
  EXPECT_EQ(CodeAt(1), "3");
  EXPECT_EQ(NameAt(2), "");
  EXPECT_EQ(CodeAt(2), "");
}

}  // namespace
}  // namespace morva
