// The compare review where it meets something else: commands beside it, long programs.

#include <string>

#include "documents/program_tabs.h"
#include "platform/listing.h"
#include "support/workbench.h"

namespace morva {
namespace {

class ReviewEdges : public support::Workbench {
 protected:
  // Opens both as tabs 1 and 2, markers written, and compares them; tab 2 is the active one.
  void Compare(const std::string& left, const std::string& right) {
    WriteFile("L.NC", left);
    WriteFile("R.NC", right);
    Open("L.NC");
    headless::Advance(200);
    Open("R.NC");
    headless::Advance(200);
    headless::HoldCtrl(true);
    headless::Click(kIdTabFirst + 1);
    headless::Click(kIdTabFirst + 2);
    headless::HoldCtrl(false);
    headless::Click(kIdCompareSecond);
    ASSERT_TRUE(app.compareActive);
  }
  static std::u16string Summary() { return platform::TextOf(kIdReviewSummary); }
  static std::u16string Left() { return std::u16string(platform::EditorText(kIdReviewLeftPane)); }
  static std::u16string Right() { return std::u16string(platform::EditorText(kIdReviewRightPane)); }
};

std::string Lines(int count, int changed) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += "G01 X" + std::to_string(i) + (i == changed ? ".5\r\n" : ".\r\n");
  }
  return text;
}

TEST_F(ReviewEdges, FortyThousandLinesTellTheLimitAndTheirRestIsNotCompared) {
  // Two marker lines stand in front and take part in no entry: entry 32,767 is line 32,770 of
  // the file, code line 32,767.
  Compare(Lines(40000, 39000), Lines(40000, 32767));
  EXPECT_EQ(Summary(),
            u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 1   | large-file alignment "
            u"(64-line lookahead)   | LIMIT: first 32768 lines only");
  EXPECT_EQ(platform::EditorLineCount(kIdReviewLeftPane), 32769);
  headless::Click(kIdReviewLines);
  EXPECT_EQ(Left(), u"32770 ~  G01 X32767.\r\n");
  EXPECT_EQ(Right(), u"32770 ~  G01 X32767.5\r\n");
  // Nothing of it touched the programs.
  headless::Click(kIdReviewBack);
  std::u16string whole = u"(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\n";
  for (const char c : Lines(40000, 32767)) whole += static_cast<char16_t>(c);
  whole.insert(whole.size() - 2, u"\r\n(MORVA END 1)");
  EXPECT_TRUE(Text() == whole);
}

TEST_F(ReviewEdges, WhatChangesTheCodeBehindItIsSeenInIt) {
  Compare("G01 X1.\r\nM30\r\n", "G01 X1.\r\nM30\r\n");
  ASSERT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 0");
  headless::Click(kIdRenumber);
  headless::Advance(150);
  EXPECT_TRUE(app.compareActive);
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 2");
  EXPECT_EQ(Right(), u"3 ~  N10 G01 X1.\r\n4 ~  N20 M30\r\n");
}

TEST_F(ReviewEdges, ACommandBesideItLeavesThePlaceInItAlone) {
  Compare(Lines(300, 200), Lines(300, 100));
  platform::ScrollToLine(kIdReviewRightPane, 60);
  headless::Advance(150);
  headless::Click(kIdPath);
  headless::Click(kIdPreflight);
  headless::Advance(300);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewLeftPane), 60);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewRightPane), 60);
  headless::Click(kIdRenumber);
  headless::Advance(300);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewLeftPane), 60);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewRightPane), 60);
}

TEST_F(ReviewEdges, AProgramThatComesUpMeanwhileJoinsTheList) {
  Compare("G01 X1.\r\n", "G01 X2.\r\n");
  const std::u16string before = Left();
  // As a receive that ends.
  SwitchTab(OpenTab(u"", u"M30\r\n", u"RECEIVED_RS232.NC"));
  headless::Advance(300);
  EXPECT_TRUE(app.compareActive);
  EXPECT_FALSE(platform::IsVisible(kIdEditor));
  EXPECT_EQ(platform::RowText(kIdReviewPrograms, 3), u"RECEIVED_RS232.NC");
  EXPECT_FALSE(platform::IsRowSelected(kIdReviewPrograms, 3));
  EXPECT_EQ(Left(), before);
}

TEST_F(ReviewEdges, NoKeyReachesTheCodeBehindIt) {
  Compare("G01 X1.\r\n", "G01 X2.\r\n");
  const std::u16string before = Text();
  for (const int id : {kIdReviewPrograms, kIdReviewLeftPane, kIdReviewNext}) {
    headless::Focus(id);
    for (const int key : {platform::kKeyF1 + 4, int{'Q'}, int{platform::kKeyDelete}}) {
      headless::PressKey({key});
    }
  }
  headless::Click(kIdCommandWords);
  EXPECT_FALSE(platform::IsVisible(kIdWordsEditor));
  EXPECT_NE(platform::FocusedId(), kIdWordsEditor);
  EXPECT_NE(platform::FocusedId(), kIdEditor);
  headless::PressKey({'Q'});
  EXPECT_EQ(Text(), before);
  EXPECT_FALSE(OutputHas(u"VALIDATION"));
  EXPECT_TRUE(app.compareActive);
}

}  // namespace
}  // namespace morva
