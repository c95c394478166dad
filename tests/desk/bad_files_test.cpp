// Files of any bytes in the real window: they open as text or with their message, soon, and the
// window goes on working.

#include <QFile>
#include <ctime>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "documents/program_tabs.h"

namespace {

// Processor time, which a busy machine does not lengthen: three times what the longest of these
// takes, a line of ten megabytes that the toolkit lays out.
constexpr int kLongestMs = 60000;
constexpr int kDeadlineMs = 120000;  // of the clock on the wall, on the busiest machine

int ProcessorMs() {
  return static_cast<int>(static_cast<double>(std::clock()) * 1000 / CLOCKS_PER_SEC);
}

class BadFile : public AtDesk {
 protected:
  // Opens the file, lets the pause pass that tags it, asks for its report and its path.
  void OpensAndWorks(const QString& path) {
    const int start = ProcessorMs();
    desk::AnswerFile(path);
    desk::Click(morva::kIdOpen);
    ASSERT_TRUE(desk::Until([]() { return morva::app.tabCount == 2; }, kDeadlineMs));
    opened_ = desk::TextOf(morva::kIdEditor);
    desk::Run(1500);
    desk::Key(morva::kIdEditor, Qt::Key_F5);
    EXPECT_TRUE(desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Validation complete")));
    desk::Click(morva::kIdPath);
    desk::Key(morva::kIdEditor, Qt::Key_End, Qt::ControlModifier);
    desk::TypeInto(morva::kIdEditor, QStringLiteral("M9"));
    EXPECT_TRUE(desk::TextOf(morva::kIdEditor).contains(QStringLiteral("M9")));
    const int spent = ProcessorMs() - start;
    EXPECT_LT(spent, kLongestMs);
    RecordProperty("milliseconds", spent);
    EXPECT_EQ(desk::BoxesSeen(), 0);
  }
  // The file is refused with this box and no tab comes of it.
  void IsRefused(const QString& path) {
    desk::AnswerBox(QStringLiteral("OK"));
    desk::AnswerFile(path);
    desk::Click(morva::kIdOpen);
    ASSERT_TRUE(desk::Until([]() { return desk::BoxesSeen() == 1; }, kDeadlineMs));
    EXPECT_EQ(desk::LastBoxText(), QStringLiteral("Could not open the selected file."));
    EXPECT_TRUE(desk::TextOf(morva::kIdOutputLog)
                    .contains(QStringLiteral("Not opened: ") + path + QStringLiteral("  (")));
    EXPECT_EQ(morva::app.tabCount, 1);
  }
  QString opened_;
};

TEST_F(BadFile, OfOneLineOfTenMegabytesOpensAndIsEdited) {
  QByteArray line = "G1";
  while (line.size() < 10000000) line += " X1.25";
  OpensAndWorks(Write("line.NC", line));
  EXPECT_EQ(opened_, QString::fromLatin1(line));
}

TEST_F(BadFile, OfLoneCarriageReturnsOpensInLines) {
  OpensAndWorks(Write("cr.NC", "G0 X1\rG0 X2\r\rM30\r"));
  EXPECT_EQ(opened_, QStringLiteral("G0 X1\nG0 X2\n\nM30\n"));
}

TEST_F(BadFile, OfInvalidUtf8OpensWithMarksInThePlaceOfTheBytes) {
  OpensAndWorks(Write("bytes.NC", "(\xff\xfe\xc3\x28 CAF\xe9)\r\nG0 X1\r\n"));
  EXPECT_EQ(opened_, QStringLiteral("(\ufffd\ufffd\ufffd( CAF\ufffd)\nG0 X1\n"));
}

TEST_F(BadFile, OfEveryByteValueOpens) {
  QByteArray bytes = "G0 X1\r\n";
  for (int i = 0; i < 200000; ++i) bytes += static_cast<char>(i * 7);
  OpensAndWorks(Write("all.NC", bytes));
  EXPECT_TRUE(opened_.startsWith(QStringLiteral("G0 X1\n")));
}

TEST_F(BadFile, AboveThirtyTwoMebibytesIsRefused) {
  IsRefused(Write("big.NC", QByteArray((32 << 20) + 1, 'G')));
}

}  // namespace
