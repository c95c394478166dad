// The limits of the libraries of tools and macros: full, one beyond, one less and full again.

#include <gtest/gtest.h>

#include <string>

#include "app/limits.h"
#include "library/macro_templates.h"
#include "library/macros.h"
#include "library/tool_fields.h"
#include "library/tools.h"
#include "simulator/example.h"
#include "support/stage.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace morva {
namespace {

struct LibraryLimits : support::Stage {
  void SetUp() override { Clear(); }
  void TearDown() override { Clear(); }
  static void Clear() {
    ResetToolLibrary();
    ResetMacroLibrary();
  }
};

TEST_F(LibraryLimits, The65thToolIsRefusedWithWords) {
  static_assert(kMaxTools == 64);
  const ToolTexts texts = NewToolTexts(false);
  for (int i = 0; i < kMaxTools; ++i) {
    EXPECT_EQ(std::u16string(CheckTool(texts, true, false).words), u"");
    EXPECT_EQ(AppendTool(ToolOfTexts(texts, false)), i);
  }
  EXPECT_EQ(std::u16string(CheckTool(texts, true, false).words), u"The tool library is full (64 tools).");
  EXPECT_EQ(AppendTool(ToolRecord()), -1);
  EXPECT_TRUE(RemoveTool(3));
  EXPECT_EQ(AppendTool(ToolRecord()), kMaxTools - 1);
}

TEST_F(LibraryLimits, A65thFluteIsRefusedWithWords) {
  static_assert(kMaxFlutes == 64);
  ToolTexts texts = NewToolTexts(false);
  texts[ToolField::Flutes] = u"64";
  EXPECT_EQ(std::u16string(CheckTool(texts, true, false).words), u"");
  texts[ToolField::Flutes] = u"65";
  EXPECT_EQ(std::u16string(CheckTool(texts, true, false).words), u"Enter a flute count from 1 to 64.");
}

TEST_F(LibraryLimits, TextsOfAToolAreCut) {
  static_assert(kToolNameUnits == 64 && kToolTypeUnits == 32 && kToolNotesUnits == 128);
  ToolTexts texts = NewToolTexts(false);
  for (const std::size_t more : {0u, 1u}) {
    texts[ToolField::Name] = std::u16string(kToolNameUnits - 1 + more, u'n');
    texts[ToolField::Notes] = std::u16string(kToolNotesUnits - 1 + more, u'o');
    const ToolRecord tool = ToolOfTexts(texts, false);
    EXPECT_EQ(std::u16string(tool.name), std::u16string(63, u'n'));
    EXPECT_EQ(std::u16string(tool.notes), std::u16string(127, u'o'));
  }
  Put("bin/MORVA.ini", "[ToolLibrary]\nCount=1\n[Tool0]\nType=" + std::string(32, 't') + "\n");
  LoadToolLibrary();
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].type), std::u16string(31, u't'));
}

TEST_F(LibraryLimits, AToolsBlockIsCutAt1199Units) {
  static_assert(kToolBlockUnits == 1200);
  CodeWriter out;
  out.most = kToolBlockUnits - 1;
  for (int i = 0; i < 12; ++i) WriteToolBlock(ToolOfTexts(NewToolTexts(false), false), false, out);
  EXPECT_TRUE(out.full);
  EXPECT_EQ(out.text.size(), 1199u);
}

TEST_F(LibraryLimits, AnExamplesTextIsCutAt8192Units) {
  static_assert(kExampleUnits == 8192);
  CodeWriter out;
  out.most = kExampleUnits;
  for (int operation = 0; operation < kExamples; ++operation) {
    WriteExample(operation, out);
    EXPECT_FALSE(out.full) << operation;  // all five of them find room
  }
  for (int i = 0; i < 30; ++i) WriteExample(0, out);
  EXPECT_TRUE(out.full);
  EXPECT_EQ(out.text.size(), 8192u);
}

TEST_F(LibraryLimits, The25thMacroIsRefusedWithWords) {
  static_assert(kMaxMacros == 24);
  for (int i = 0; i < kMaxMacros; ++i) EXPECT_EQ(PutMacro(IntegerText(i), u"G1"), i);
  EXPECT_EQ(std::u16string(CheckMacro(u"x", u"G1").words), u"The custom macro library is full.");
  EXPECT_EQ(PutMacro(u"x", u"G1"), -1);
  EXPECT_TRUE(RemoveMacro(0));
  EXPECT_EQ(PutMacro(u"x", u"G1"), kMaxMacros - 1);
}

TEST_F(LibraryLimits, AMacroOf24001UnitsIsRefusedWithWords) {
  static_assert(kMaxMacroCode == 24000);
  const std::u16string code(kMaxMacroCode, u'\\');
  EXPECT_EQ(std::u16string(CheckMacro(u"x", code).words), u"");
  EXPECT_NE(std::u16string(CheckMacro(u"x", code + u"\\").words), u"");
  // The longest text, and the largest part of it escaped, stands whole in the settings file.
  static_assert(kMacroKeyUnits == 48063);
  PutMacro(u"x", code);
  ASSERT_TRUE(SaveMacroLibrary());
  LoadMacroLibrary();
  EXPECT_EQ(macroLibrary.macros[0].code, code);
}

TEST_F(LibraryLimits, TheNameOfAMacroIsCutAt95Units) {
  static_assert(kMacroNameUnits == 96);
  PutMacro(std::u16string(96, u'n'), u"G1");
  EXPECT_EQ(std::u16string(macroLibrary.macros[0].name), std::u16string(95, u'n'));
}

TEST_F(LibraryLimits, ACopyFindsItsNumberWithinTheTable) {
  static_assert(kMaxMacroCopies == 100);
  PutMacro(u"A", u"G1");
  while (macroLibrary.count < kMaxMacros) EXPECT_GT(DuplicateMacro(0), 0);
  EXPECT_EQ(std::u16string(macroLibrary.macros[kMaxMacros - 1].name), u"A Copy 23");
}

TEST_F(LibraryLimits, ATemplateIsCutAt8191Units) {
  static_assert(kMacroTextUnits == 8192);
  CodeWriter out;
  out.most = kMacroTextUnits - 1;
  const std::u16string texts[kMacroFields] = {u"0", u"0", u"9999", u"1", u"-1", u"1"};
  WriteMacro(3, texts, false, out);
  EXPECT_TRUE(out.full);
  EXPECT_EQ(out.text.size(), 8191u);
}

}  // namespace
}  // namespace morva
