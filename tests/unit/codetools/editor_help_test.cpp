#include "codetools/editor_help.h"

#include <gtest/gtest.h>

namespace morva {
namespace {

TEST(TokenInLine, TakesTheTokenAroundTheCaretOrLeftOfIt) {
  const std::u16string_view line = u"n10 g01x-1.5 (a)";
  EXPECT_EQ(TokenInLine(line, 0).text, u"N10");
  EXPECT_EQ(TokenInLine(line, 3).text, u"N10");  // behind its last digit
  EXPECT_EQ(TokenInLine(line, 6).text, u"G01X-1.5");
  EXPECT_EQ(TokenInLine(line, 6).start, 4);
  EXPECT_EQ(TokenInLine(line, 6).end, 12);
  EXPECT_EQ(TokenInLine(line, 13).text, u"");
  EXPECT_EQ(TokenInLine(line, 16).text, u"");
  EXPECT_EQ(TokenInLine(u"", 0).text, u"");
  EXPECT_EQ(TokenInLine(u"#100", 4).text, u"#100");
}

TEST(TokenInLine, CutsALongToken) {
  EXPECT_EQ(TokenInLine(std::u16string(200, u'1'), 5).text.size(), 63u);
}

TEST(HoverHelp, HasFixedWordsForTheFullTokenOnly) {
  EXPECT_EQ(HelpForToken(u"M05"), u"Spindle stop.");
  EXPECT_EQ(HelpForToken(u"G57"),
            u"Work coordinate offset. Verify this offset is established correctly on the machine.");
  EXPECT_EQ(HelpForToken(u"G1"), u"");
}

TEST(HoverHelp, KnowsAddressesWithSomethingBehindThem) {
  EXPECT_EQ(HelpForToken(u"F20").substr(0, 16), u"Feedrate address");
  EXPECT_EQ(HelpForToken(u"X1.5").substr(0, 14), u"X-axis address");
  EXPECT_EQ(HelpForToken(u"N10").substr(0, 21), u"Sequence/block number");
  EXPECT_EQ(HelpForToken(u"F"), u"");
  EXPECT_EQ(HelpForToken(u"NX"), u"");
}

TEST(HoverHelp, NamesEveryOtherCodeOfTheTable) {
  EXPECT_EQ(HelpForToken(u"G04"),
            u"G04  \u2014  Dwell. Verify modal state and 1997 control support.");
  EXPECT_EQ(HelpForToken(u"M300"),
            u"M300  \u2014  APL/Robot Custom Sequence. Verify modal state and 1997 control "
            u"support.");
  EXPECT_EQ(HelpForToken(u"G999"), u"");
  EXPECT_EQ(HelpForToken(u""), u"");
}

}  // namespace
}  // namespace morva
