// Printing: the choice of a printer, documents, pages.

#include "platform/printer.h"

#include "contract/contract.h"
#include "platform/canvas.h"

namespace contract {
namespace {

using platform::PrinterChoice;

constexpr platform::PrinterFigures kPage = {1200, 900, 300, 300};

class Printer : public Contract {
 protected:
  void TearDown() override {
    platform::ReleasePrinter();
    Contract::TearDown();
  }
  static void Choose() {
    hands::AnswerPrinter(kPage);
    ASSERT_EQ(platform::ChoosePrinter(u"page"), PrinterChoice::Chosen);
  }
  static bool HoldsNone() { return platform::FiguresOfPrinter().width == 0; }
};

TEST_F(Printer, TellsTheFiguresOfThePageThatWasChosen) {
  Choose();
  const platform::PrinterFigures figures = platform::FiguresOfPrinter();
  EXPECT_EQ(figures.width, kPage.width);
  EXPECT_EQ(figures.height, kPage.height);
  EXPECT_EQ(figures.dpiX, kPage.dpiX);
  EXPECT_EQ(figures.dpiY, kPage.dpiY);
}

TEST_F(Printer, IsNoneWhenTheDialogIsCancelled) {
  hands::CancelPrinter();
  EXPECT_EQ(platform::ChoosePrinter(u"page"), PrinterChoice::Cancelled);
  EXPECT_TRUE(HoldsNone());
  EXPECT_FALSE(platform::StartDocument(u"a document"));
  EXPECT_EQ(platform::StartPage(), nullptr);
  EXPECT_FALSE(platform::EndDocument());
  platform::ReleasePrinter();
}

TEST_F(Printer, IsNotAskedForWhileOneIsHeld) {
  Choose();
  EXPECT_EQ(platform::ChoosePrinter(u"page"), PrinterChoice::Cancelled);
  EXPECT_EQ(platform::FiguresOfPrinter().width, kPage.width);
}

TEST_F(Printer, PrintsOnePageAfterTheOtherOnTheWholeOfThePrintableArea) {
  Choose();
  ASSERT_TRUE(platform::StartDocument(u"a document"));
  for (int page = 0; page < 2; ++page) {
    platform::Canvas* const canvas = platform::StartPage();
    ASSERT_NE(canvas, nullptr);
    const platform::Rect area = platform::CanvasArea(*canvas);
    EXPECT_TRUE(platform::SameRect(area, {0, 0, kPage.width, kPage.height}));
    platform::Pen pen;
    pen.width = 2;
    platform::PaintLine(*canvas, {0, 0}, {1200, 900}, pen);
    platform::PaintText(*canvas, area, u"words", platform::FontRole::Body, 0, 0);
    platform::EndPage();
  }
  EXPECT_TRUE(platform::EndDocument());
}

TEST_F(Printer, HasOneDocumentAndOnePageOpenAtATime) {
  Choose();
  EXPECT_EQ(platform::StartPage(), nullptr);
  EXPECT_FALSE(platform::EndDocument());
  ASSERT_TRUE(platform::StartDocument(u"a document"));
  EXPECT_FALSE(platform::StartDocument(u"another one"));
  ASSERT_NE(platform::StartPage(), nullptr);
  EXPECT_EQ(platform::StartPage(), nullptr);
  EXPECT_TRUE(platform::EndDocument());
  EXPECT_FALSE(platform::EndDocument());
}

TEST_F(Printer, IsLetGoWithWhatIsStillOpen) {
  Choose();
  ASSERT_TRUE(platform::StartDocument(u"a document"));
  ASSERT_NE(platform::StartPage(), nullptr);
  platform::ReleasePrinter();
  EXPECT_TRUE(HoldsNone());
  EXPECT_FALSE(platform::EndDocument());
  Choose();
  EXPECT_TRUE(platform::StartDocument(u"the next one"));
}

TEST_F(Printer, TakesTheKeyboardOnlyWhileItIsChosen) {
  Make(1, platform::ControlKind::EditLine, u"");
  platform::SetFocusTo(1);
  hands::Settle();
  Choose();
  EXPECT_TRUE(hands::Until([] { return platform::FocusedId() == 1; }));
}

}  // namespace
}  // namespace contract
