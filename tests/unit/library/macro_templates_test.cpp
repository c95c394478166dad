// The templates of the macro builder, written out by hand.

#include "library/macro_templates.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "app/limits.h"
#include "platform/file.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace morva {
namespace {

using Texts = std::array<std::u16string, kMacroFields>;

Texts StartOf(int kind) {
  Texts texts;
  for (std::size_t i = 0; i < kMacroFields; ++i) {
    texts[i] = MacroTemplates()[static_cast<std::size_t>(kind)].fields[i].start;
  }
  return texts;
}

CodeWriter Written(int kind, const Texts& texts, bool metric = false) {
  CodeWriter out;
  out.most = kMacroTextUnits - 1;
  WriteMacro(kind, texts, metric, out);
  return out;
}

std::string Text(int kind, const Texts& texts, bool metric = false) {
  return platform::ToUtf8(Written(kind, texts, metric).text);
}

TEST(MacroTemplate, WritesANewProgramInTheUsersUnit) {
  EXPECT_EQ(Text(0, Texts{u"anything"}),
            "%\r\nO10000 (NEW PROGRAM) \r\n(HAAS VF3 - VERIFY OFFSETS, TOOLING, WORKHOLDING)\r\n"
            "\r\nG20 (INCHES)\r\nG90 G17 G94\r\nG54 (WORK COORDINATE SYSTEM)\r\nG40 G80\r\n"
            "(OPERATION CODE BELOW)\r\n");
  EXPECT_NE(Text(0, {}, true).find("\r\n\r\nG21 (MILLIMETERS)\r\nG90"), std::string::npos);
}

TEST(MacroTemplate, WritesTheStartOfAProgram) {
  EXPECT_EQ(Text(1, StartOf(1)),
            "%\r\nO1000 (NEW JOB)\r\nG90 G17 G40 G49 G80\r\nG20\r\nG54\r\n(START TOOL T1)\r\n"
            "G00 Z0.500\r\n");
}

TEST(MacroTemplate, WritesAToolChange) {
  EXPECT_EQ(Text(2, StartOf(2)),
            "(TOOL: 1/2 END MILL)\r\nT1 M06\r\nS2500 M03\r\nG00 G43 H1 Z0.500\r\nM08\r\n");
}

TEST(MacroTemplate, WritesARowOfHoles) {
  EXPECT_EQ(Text(3, StartOf(3)),
            "(ONE-CLICK DRILL ROW)\r\nG00 X0.000 Y0.000\r\nG81 Z-0.500 R0.100 F10.0\r\n"
            "X1.000 Y0.000\r\nX2.000 Y0.000\r\nX3.000 Y0.000\r\nG80\r\n");
}

TEST(MacroTemplate, WritesPecksWithAFeedOfTheirOwn) {
  EXPECT_EQ(Text(4, {u"1", u"-2.5", u"2", u"0.25", u"-0.75 ", u"0.2"}, true),
            "(ONE-CLICK PECK ROW)\r\nG00 X1.000 Y-2.500\r\nG83 Z-0.75  R0.100 Q0.2 F10.0\r\n"
            "X1.250 Y-2.500\r\nG80\r\n");
}

TEST(MacroTemplate, WritesTaps) {
  EXPECT_EQ(Text(5, {u"", u"", u"1", u"", u"-0.500", u"25.0"}),
            "(ONE-CLICK TAP ROW)\r\nG00 X0.000 Y0.000\r\nG84 Z-0.500 R0.100 F25.0\r\nG80\r\n");
}

TEST(MacroTemplate, WritesTheEndOfAProgram) {
  EXPECT_EQ(Text(6, StartOf(6)),
            "(END PROGRAM)\r\nG00 Z0.500\r\nM09\r\nM05\r\nG53 G00 Z0\r\nM30\r\n%\r\n");
}

TEST(MacroTemplate, HasOneHoleWithoutACount) {
  for (const char16_t* count : {u"1", u"abc", u"", u"0", u"-4", u"+3"}) {
    Texts texts = StartOf(3);
    texts[2] = count;
    EXPECT_EQ(Text(3, texts).find("\r\nX"), std::string::npos) << platform::ToUtf8(count);
  }
  Texts texts = StartOf(3);
  texts[3] = u"none";
  EXPECT_NE(Text(3, texts).find("\r\nX3.000 Y0.000\r\n"), std::string::npos);
}

TEST(MacroTemplate, IsCutAt8191Units) {
  Texts texts = StartOf(3);
  texts[2] = u"2000000000";
  const CodeWriter out = Written(3, texts);
  EXPECT_TRUE(out.full);
  EXPECT_EQ(out.text.size(), 8191u);
  texts[2] = u"500";
  EXPECT_EQ(Written(3, texts).text.size(), 8191u);
  EXPECT_EQ(out.text.substr(0, 100), Written(3, texts).text.substr(0, 100));
}

TEST(MacroTemplate, NamesItsFields) {
  ASSERT_EQ(MacroTemplates().size(), 7u);
  EXPECT_EQ(std::u16string(MacroTemplates()[4].name), u"Peck Row G83");
  EXPECT_EQ(std::u16string(MacroTemplates()[4].fields[5].label), u"Peck Q");
  EXPECT_EQ(std::u16string(MacroTemplates()[0].fields[1].label), u"");
}

TEST(MacroTemplate, OfAnotherKindWritesNothing) {
  EXPECT_EQ(Text(7, {}), "");
  EXPECT_EQ(Text(-1, {}), "");
}

}  // namespace
}  // namespace morva
