// A program on paper: what stands on which page, and what is refused with words.

#include "documents/program_print.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/canvas.h"
#include "support/program_stage.h"

namespace {

using headless::DrawCall;
using headless::PrintRecord;

// 96 dots an inch, so that a dot is a pixel of a screen. Of 600 by 400 a page has
// (400 - 48 - 22 - 12) / 18 = 17 lines.
constexpr platform::PrinterFigures kPage = {600, 400, 96, 96};
constexpr std::size_t kLines = 17;

struct ProgramPrint : public support::ProgramStage {
  void Load(std::u16string_view text) { platform::SetEditorText(morva::kIdEditor, text); }
  static PrintRecord Print(const platform::PrinterFigures& page = kPage) {
    headless::QueuePrinter(page);
    morva::PrintProgram();
    EXPECT_FALSE(headless::HoldsPrinter());
    auto jobs = headless::TakePrinted();
    EXPECT_EQ(jobs.size(), 1u);
    return jobs.empty() ? PrintRecord() : jobs.front();
  }
  static std::vector<std::u16string> TextsOf(const PrintRecord& job) {
    std::vector<std::u16string> texts;
    for (const DrawCall& call : job.paint) {
      if (call.name == "PaintText") texts.push_back(call.text);
    }
    return texts;
  }
  static std::u16string OnlyBox() {
    const auto boxes = headless::TakeBoxes();
    EXPECT_EQ(boxes.size(), 1u);
    return boxes.empty() ? u"" : boxes.front().text;
  }
};

TEST_F(ProgramPrint, BearsItsNameThePageAndTheNumbersOfItsLines) {
  Load(u"%\r\nO1000 (PLATE)\r\n\r\nM30");
  const PrintRecord job = Print();
  EXPECT_TRUE(job.ended);
  EXPECT_EQ(job.pages, 1);
  EXPECT_EQ(job.document, u"Untitled-1.NC");
  EXPECT_EQ(TextsOf(job),
            (std::vector<std::u16string>{u"Untitled-1.NC", u"Page 1 of 1", u"1", u"%", u"2",
                                         u"O1000 (PLATE)", u"3", u"4", u"M30"}));
  EXPECT_NE(Output().find(u"Printed Untitled-1.NC: 1 page."), std::u16string::npos);
}

TEST_F(ProgramPrint, GoesOnToFurtherPages) {
  std::u16string text;
  for (std::size_t i = 1; i < 2 * kLines; ++i) text += u"G1\r\n";
  Load(text + u"M30\r\n");  // its line end begins no further line
  EXPECT_EQ(Print().pages, 2);
  Load(text + u"M30\r\nM99");
  const PrintRecord job = Print();
  EXPECT_EQ(job.pages, 3);
  const auto texts = TextsOf(job);
  ASSERT_GE(texts.size(), 4u);
  EXPECT_EQ(std::vector<std::u16string>(texts.end() - 4, texts.end()),
            (std::vector<std::u16string>{u"Untitled-1.NC", u"Page 3 of 3", u"35", u"M99"}));
}

TEST_F(ProgramPrint, BreaksALongLineVisiblyAndLosesNothing) {
  std::u16string line;
  for (int i = 0; i < 60; ++i) line += u"X" + std::u16string(1, u"0123456789"[i % 10]) + u".5 ";
  Load(line);
  const auto texts = TextsOf(Print());
  ASSERT_GE(texts.size(), 6u);
  EXPECT_EQ(texts[2], u"1");
  std::u16string whole = texts[3];
  for (std::size_t i = 4; i + 1 < texts.size(); i += 2) {
    EXPECT_EQ(texts[i], u"\u00BB");
    whole += texts[i + 1];
  }
  EXPECT_EQ(whole, line);
}

TEST_F(ProgramPrint, KeepsEveryPartWithinItsRoom) {
  const int letter = platform::TextWidth(platform::FontRole::Code, u"0");
  const auto parts = morva::PrintedParts(u"0123456789", 4 * letter);
  EXPECT_EQ(parts, (std::vector<std::u16string>{u"0123", u"4567", u"89"}));
  EXPECT_EQ(morva::PrintedParts(u"", 40), (std::vector<std::u16string>{u""}));
  EXPECT_EQ(morva::PrintedParts(u"a\tb", 100 * letter),
            (std::vector<std::u16string>{u"a       b"}));
  // Narrower than a letter: one on each line. A pair stays together.
  EXPECT_EQ(morva::PrintedParts(u"ab", 1), (std::vector<std::u16string>{u"a", u"b"}));
  EXPECT_EQ(morva::PrintedParts(u"\U0001F600b", 1),
            (std::vector<std::u16string>{u"\U0001F600", u"b"}));
}

TEST_F(ProgramPrint, FollowsTheDotsOfThePrinter) {
  Load(u"G0");
  const PrintRecord screen = Print();
  const PrintRecord fine = Print({2400, 1200, 384, 288});
  ASSERT_EQ(screen.paint.size(), fine.paint.size());
  for (std::size_t i = 0; i < screen.paint.size(); ++i) {
    for (const std::size_t side : {0u, 1u, 2u, 3u}) {
      EXPECT_EQ(fine.paint[i].numbers.at(side),
                screen.paint[i].numbers.at(side) * (side % 2 == 0 ? 4 : 3));
    }
  }
}

TEST_F(ProgramPrint, SaysWhatThePrinterCannotDo) {
  headless::QueueNoPrinter();
  morva::PrintProgram();
  EXPECT_EQ(OnlyBox(), u"This system cannot print: no printer, and no way to print into a file.");
  headless::QueuePrinter({100, 100, 96, 96});
  morva::PrintProgram();
  EXPECT_EQ(OnlyBox(), u"A program does not fit on this paper. Choose a larger one.");
  headless::QueuePrinter({0, -1, 0, 0});
  morva::PrintProgram();
  EXPECT_EQ(OnlyBox(), u"A program does not fit on this paper. Choose a larger one.");
  headless::FailCall("document", 1);
  headless::QueuePrinter(kPage);
  morva::PrintProgram();
  EXPECT_EQ(OnlyBox(), u"The printer took no job, or the file cannot be written there.");
  EXPECT_TRUE(headless::TakePrinted().empty());
  headless::FailCall("page", 1);
  EXPECT_FALSE(Print().ended);
  EXPECT_EQ(OnlyBox(), u"The printout is not complete. Print the program again.");
  headless::QueuePrinterCancel();
  morva::PrintProgram();
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(Status(), u"Nothing was printed.");
  EXPECT_FALSE(headless::HoldsPrinter());
}

TEST_F(ProgramPrint, AsksBeforeManyPages) {
  std::u16string text;
  for (std::size_t i = 0; i < 40 * kLines; ++i) text += u"G1\r\n";
  Load(text);
  EXPECT_EQ(Print().pages, 40);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  Load(text + u"M30");
  headless::QueuePrinter(kPage);
  morva::PrintProgram();  // the most cautious answer
  EXPECT_EQ(OnlyBox(), u"This program takes 41 pages on this paper. Print all of them?");
  EXPECT_TRUE(headless::TakePrinted().empty());
  EXPECT_FALSE(headless::HoldsPrinter());
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  EXPECT_EQ(Print().pages, 41);
}

TEST_F(ProgramPrint, PrintsTheProgramThatWasAskedFor) {
  Load(u"G0 (FIRST)");
  headless::WhileOpen([] { morva::NewProgram(); });
  const auto texts = TextsOf(Print());
  EXPECT_EQ(texts[0], u"Untitled-1.NC");
  EXPECT_EQ(texts[3], u"G0 (FIRST)");
}

}  // namespace
