// The printer that records: what was printed, what was told to fail.

#include "platform/printer.h"

#include "machine_for_test.h"
#include "platform/canvas.h"

namespace {

using headless_test::HeadlessTest;
using platform::PrinterChoice;

class Printer : public HeadlessTest {
 protected:
  static void Choose() {
    headless::QueuePrinter({100, 80, 300, 600});
    ASSERT_EQ(platform::ChoosePrinter(u"page"), PrinterChoice::Chosen);
  }
};

TEST_F(Printer, KeepsWhatIsDrawnOnItsPages) {
  Choose();
  ASSERT_TRUE(platform::StartDocument(u"a document"));
  for (const double x : {1.0, 2.0}) {
    platform::Canvas* const canvas = platform::StartPage();
    ASSERT_NE(canvas, nullptr);
    platform::PaintLine(*canvas, {x, 3}, {4, 5}, {});
    platform::EndPage();
  }
  EXPECT_TRUE(platform::EndDocument());
  platform::ReleasePrinter();
  const std::vector<headless::PrintRecord> records = headless::TakePrinted();
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].document, u"a document");
  EXPECT_EQ(records[0].pages, 2);
  EXPECT_TRUE(records[0].ended);
  ASSERT_EQ(records[0].paint.size(), 2u);
  EXPECT_EQ(records[0].paint[0].name, "PaintLine");
  EXPECT_EQ(records[0].paint[0].numbers[0], 1);
  EXPECT_EQ(records[0].paint[1].numbers[0], 2);
  EXPECT_TRUE(headless::TakePrinted().empty());
}

TEST_F(Printer, IsCancelledWhenNoneIsWaiting) {
  EXPECT_EQ(platform::ChoosePrinter(u"page"), PrinterChoice::Cancelled);
  headless::QueueNoPrinter();
  EXPECT_EQ(platform::ChoosePrinter(u"page"), PrinterChoice::Missing);
  headless::QueuePrinter({1, 2, 3, 4});
  headless::ClearQueues();
  EXPECT_EQ(platform::ChoosePrinter(u"page"), PrinterChoice::Cancelled);
  EXPECT_FALSE(headless::HoldsPrinter());
}

TEST_F(Printer, HasNoJobFromADocumentThatCouldNotStart) {
  Choose();
  headless::FailCall("document", 1);
  EXPECT_FALSE(platform::StartDocument(u"a document"));
  EXPECT_TRUE(headless::TakePrinted().empty());
  EXPECT_TRUE(platform::StartDocument(u"once more"));
}

TEST_F(Printer, HasNotEndedAJobWhosePageFailed) {
  Choose();
  headless::FailCall("page", 2);
  ASSERT_TRUE(platform::StartDocument(u"a document"));
  EXPECT_NE(platform::StartPage(), nullptr);
  platform::EndPage();
  EXPECT_EQ(platform::StartPage(), nullptr);
  EXPECT_EQ(platform::StartPage(), nullptr);
  EXPECT_FALSE(platform::EndDocument());
  const std::vector<headless::PrintRecord> records = headless::TakePrinted();
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].pages, 1);
  EXPECT_FALSE(records[0].ended);
}

}  // namespace
