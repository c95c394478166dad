// Whole jobs on the real window, with pointer and keys.

#include <QAbstractItemView>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "desk/control_desk.h"
#include "dnc/serial_profile.h"
#include "documents/program_tabs.h"
#include "platform/editor.h"
#include "platform/posix/serial_pace.h"
#include "platform/window.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"

namespace {

using Job = AtDesk;

TEST_F(Job, TypingShowsMarkersAndARowAfterAPause) {
  desk::Key(morva::kIdEditor, Qt::Key_End, Qt::ControlModifier);
  desk::TypeInto(morva::kIdEditor, QStringLiteral("\nG01 X1. F10."));
  EXPECT_TRUE(desk::Until([]() { return desk::RowsOf(morva::kIdFeatureList).size() == 2; }));
  const QString text = desk::TextOf(morva::kIdEditor);
  EXPECT_TRUE(text.contains(
      QStringLiteral("(MORVA TEXT 2)\n(MORVA NAME User code)\nG01 X1. F10.\n(MORVA END 2)")))
      << text.toStdString();
  EXPECT_EQ(desk::RowsOf(morva::kIdFeatureList).value(1), QStringLiteral("#2  User code"));
}

TEST_F(Job, OpenEditSaveAndReopenGivesTheSameText) {
  const QString path = Path("part.NC");
  WriteAll(path, "%\nO1234\nG90 G0 X0\nM30\n%\n");
  Open(path);
  ASSERT_TRUE(desk::Until(
      []() { return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("(MORVA END 1)")); }));
  desk::Key(morva::kIdEditor, Qt::Key_Home, Qt::ControlModifier);
  for (int i = 0; i < 4; ++i) desk::Key(morva::kIdEditor, Qt::Key_Down);
  desk::TypeInto(morva::kIdEditor, QStringLiteral("G54\n"));
  desk::Key(morva::kIdEditor, Qt::Key_S, Qt::ControlModifier);
  ASSERT_TRUE(desk::Until([]() {
    return desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Saved program."));
  }));
  const QByteArray saved = ReadAll(path);
  EXPECT_EQ(saved,
            "%\r\n(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nO1234\r\nG54\r\nG90 G0 X0\r\nM30\r\n"
            "(MORVA END 1)\r\n%\r\n");
  EXPECT_EQ(ReadAll(path + QStringLiteral(".features")), QByteArray("MVC1\0\0\0\0", 8));
  const QString shown = desk::TextOf(morva::kIdEditor);
  desk::Key(morva::kIdEditor, Qt::Key_W, Qt::ControlModifier);
  ASSERT_TRUE(desk::Until([]() { return morva::app.tabCount == 1; }));
  Open(path);
  EXPECT_EQ(desk::TextOf(morva::kIdEditor), shown);
  EXPECT_TRUE(desk::Until([&path]() {
    return desk::WidgetOf(platform::kMainWindow)->windowTitle() ==
           QStringLiteral("MORVA v4.20.0  \u2014  part.NC");
  })) << desk::WidgetOf(platform::kMainWindow)->windowTitle().toStdString();
  (void)path;
}

TEST_F(Job, OpensEightTabsAndRefusesTheNinth) {
  for (int i = 2; i <= 8; ++i) {
    desk::Key(morva::kIdEditor, Qt::Key_N, Qt::ControlModifier);
    ASSERT_TRUE(desk::Until([i]() { return morva::app.tabCount == i; }));
  }
  EXPECT_TRUE(desk::WidgetOf(morva::kIdTabLast)->isVisible());
  desk::AnswerBox(QStringLiteral("OK"));
  desk::Click(morva::kIdTabNew);
  EXPECT_TRUE(desk::Until([]() { return desk::BoxesSeen() == 1; }));
  EXPECT_EQ(desk::LastBoxText(),
            QStringLiteral("The workspace supports up to 8 open programs in this build."));
  EXPECT_EQ(morva::app.tabCount, 8);
}

TEST_F(Job, AsksBeforeClosingOverADirtyInactiveTab) {
  // A program whose folder is gone cannot be autosaved, so it stays dirty behind the others.
  QDir().mkpath(Path("gone"));
  const QString path = Path("gone/part.NC");
  WriteAll(path, "G0 X0\n");
  Open(path);
  QDir(Path("gone")).removeRecursively();
  desk::TypeInto(morva::kIdEditor, QStringLiteral("G1 X5 "));
  desk::Click(morva::kIdTabFirst);
  ASSERT_TRUE(desk::Until([]() { return morva::app.activeTab == 0; }));
  EXPECT_TRUE(morva::tabs[1].dirty);
  desk::AnswerBox(QStringLiteral("No"));
  desk::CloseWindow();
  EXPECT_EQ(desk::LastBoxText(),
            QStringLiteral("One or more project tabs have unsaved changes. Close MORVA anyway?"));
  EXPECT_TRUE(
      desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Unsaved changes in: part.NC\n")));
  EXPECT_TRUE(desk::WidgetOf(platform::kMainWindow)->isVisible());
  // What was typed is still there.
  desk::Click(morva::kIdTabFirst + 1);
  EXPECT_TRUE(desk::Until(
      []() { return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("G1 X5 ")); }));
}

TEST_F(Job, UndoTakesTypedTextBackAfterAFailedSave) {
  QDir().mkpath(Path("gone"));
  WriteAll(Path("gone/part.NC"), "G0 X0\n");
  Open(Path("gone/part.NC"));
  QDir(Path("gone")).removeRecursively();
  desk::TypeInto(morva::kIdEditor, QStringLiteral("M8 "));
  desk::AnswerBox(QStringLiteral("OK"));
  desk::Key(morva::kIdEditor, Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(desk::Until(
      []() { return desk::LastBoxText() == QStringLiteral("Could not save the file."); }));
  EXPECT_TRUE(desk::TextOf(morva::kIdEditor).contains(QStringLiteral("M8 ")));
  EXPECT_TRUE(morva::tabs[morva::app.activeTab].dirty);
}

TEST_F(Job, UndoAtThePaceOfAHandGetsBehindTheMarkersOfWhatWasPasted) {
  const QString block = QStringLiteral("(MORVA TEXT 1)\nG0 X0\n(MORVA END 1)");
  WriteAll(Path("pasted.NC"), block.toLatin1());
  Open(Path("pasted.NC"));
  desk::Run(200);
  ASSERT_EQ(desk::TextOf(morva::kIdEditor), block);
  desk::Key(morva::kIdEditor, Qt::Key_End, Qt::ControlModifier);
  QGuiApplication::clipboard()->setText(QStringLiteral("\nX1 Y1\nX2"));
  desk::Key(morva::kIdEditor, Qt::Key_V, Qt::ControlModifier);
  const QString marked =
      block + QStringLiteral("\n(MORVA TEXT 2)\n(MORVA NAME User code)\nX1 Y1\nX2\n(MORVA END 2)");
  ASSERT_TRUE(desk::Until([&]() { return desk::TextOf(morva::kIdEditor) == marked; }));
  // Back once, whole; then out, whole; then what was pasted.
  const QString wanted[] = {marked, block + QStringLiteral("\nX1 Y1\nX2"), block};
  for (const QString& text : wanted) {
    desk::Key(morva::kIdEditor, Qt::Key_Z, Qt::ControlModifier);
    desk::Run(200);
    EXPECT_EQ(desk::TextOf(morva::kIdEditor), text);
    // Nor does the save that follows by itself bring them back.
    EXPECT_TRUE(desk::Until([]() { return !morva::app.editorDirty; }));
    EXPECT_EQ(desk::TextOf(morva::kIdEditor), text);
  }
}

TEST_F(Job, CtrlEndShowsAnEmptyLastLine) {
  QByteArray program;
  for (int i = 0; i < 200; ++i) program += "G1 X" + QByteArray::number(i) + "\n";
  WriteAll(Path("long.NC"), program);
  Open(Path("long.NC"));
  desk::Run(200);
  EXPECT_EQ(platform::FirstVisibleLine(morva::kIdEditor), 0);
  desk::Key(morva::kIdEditor, Qt::Key_End, Qt::ControlModifier);
  const int last = platform::EditorLineCount(morva::kIdEditor) - 1;
  ASSERT_EQ(platform::EditorLineLength(morva::kIdEditor, last), 0);
  EXPECT_GT(
      platform::FirstVisibleLine(morva::kIdEditor) + platform::VisibleLineCount(morva::kIdEditor),
      last);
}

TEST_F(Job, PlaysThePathWithTheSourceLineInStep) {
  WriteAll(Path("play.NC"), "G0 X0 Y0\nG1 X1 F10\nY1\nX0\nY0\n");
  Open(Path("play.NC"));
  desk::Run(200);
  desk::Click(morva::kIdPath);
  EXPECT_EQ(morva::path.count, 5);
  desk::Click(morva::kIdPlayToggle);
  EXPECT_TRUE(morva::playback.playing);
  EXPECT_TRUE(desk::Until(
      []() { return !morva::playback.playing && morva::playback.playHead == 5; }, 5000));
}

class Line : public Job {
 protected:
  void SetUp() override {
    Job::SetUp();
    WriteAll(desk::SettingsFile(), "[DNC]\r\nBaud=115200\r\n");
    ASSERT_TRUE(control_.Start({QStringLiteral("--save"), Path("control.NC"),
                                QStringLiteral("--hold-after"), QStringLiteral("1000"),
                                QStringLiteral("--hold-ms"), QStringLiteral("700")}));
  }
  void TearDown() override { control_.Stop(); }
  void Say(const QByteArray& line) { control_.Say(line); }
  bool Log(const char* words, int milliseconds = 20000) {
    return desk::Until(
        [words]() { return desk::TextOf(morva::kIdOutputLog).contains(QString::fromUtf8(words)); },
        milliseconds);
  }
  desk::ControlAtTheFarEnd control_;
};

TEST_F(Line, SendsWhileXoffHoldsTheLineAndReceivesTheSameBack) {
  QByteArray program = "%\r\nO4321\r\n";
  // More than a pseudo-terminal takes at once, so that the hold comes in mid-program.
  for (int i = 0; i < 6000; ++i) program += "G01 X" + QByteArray::number(i) + ". F20.\r\n";
  program += "M30\r\n%\r\n";
  WriteAll(Path("long.NC"), program);
  Open(Path("long.NC"));
  desk::Run(300);
  // At the rate of a real line, 0.6 s for the program: unpaced, a pseudo-terminal would take it
  // whole before the control has read enough to hold.
  platform::pacePseudoTerminals = true;
  desk::AnswerBox(QStringLiteral("Yes"));
  QElapsedTimer sending;
  sending.start();
  desk::Click(morva::kIdSend);
  ASSERT_TRUE(
      Log("Send complete. Confirm the Haas reports a successful receive before using the "
          "program."));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  // The control held the line for 700 ms in the middle of the program.
  EXPECT_GE(sending.elapsed(), 700);
  QByteArray shown = desk::TextOf(morva::kIdEditor).toLatin1();
  shown.replace("\n", "\r\n");
  ASSERT_TRUE(desk::Until([this, &shown]() { return ReadAll(Path("control.NC")) == shown; }))
      << ReadAll(Path("control.NC")).size() << " of " << shown.size();
  desk::Click(morva::kIdReceive);
  ASSERT_TRUE(Log("Receive armed."));
  Say("send " + Path("control.NC").toLocal8Bit());
  ASSERT_TRUE(Log("Received RS-232 program opened in a new tab."));
  QByteArray back = desk::TextOf(morva::kIdEditor).toLatin1();
  back.replace("\n", "\r\n");
  EXPECT_EQ(back.size(), shown.size());
  EXPECT_EQ(back.right(6).toHex().toStdString(), shown.right(6).toHex().toStdString());
  EXPECT_TRUE(back == shown);
}

// The engine pauses 10 ms behind every 256 bytes, so that the limit takes a minute and a half.
TEST_F(Line, OpensNothingOfAReceiveOfTwoMebibytes) {
  QByteArray program;
  while (program.size() < 2 << 20) program += "G01 X1. Y2. Z3. F20.\r\n";
  WriteAll(Path("big.NC"), program);
  const QString before = desk::TextOf(morva::kIdEditor);
  desk::Click(morva::kIdReceive);
  ASSERT_TRUE(Log("Receive armed."));
  Say("send " + Path("big.NC").toLocal8Bit());
  ASSERT_TRUE(
      Log("TRANSFER ERROR: serial port failed, receive was aborted, or the 2 MB receive "
          "limit was reached. Incomplete data was not opened.",
          200000));
  EXPECT_TRUE(Log("The control sent 2097152 bytes, and a program may have one less."));
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_EQ(morva::app.tabCount, 1);
  EXPECT_EQ(desk::TextOf(morva::kIdEditor), before);
}

TEST_F(Line, TellsOfACableGoneInMidSend) {
  QByteArray program = "%\r\n";
  for (int i = 0; i < 60000; ++i) program += "G01 X1. Y2. Z3. F20.\r\n";
  WriteAll(Path("long.NC"), program + "%\r\n");
  Open(Path("long.NC"));
  desk::Run(300);
  Say("hold");
  desk::AnswerBox(QStringLiteral("Yes"));
  desk::Click(morva::kIdSend);
  ASSERT_TRUE(Log("Sending current editor program..."));
  Say("vanish");
  ASSERT_TRUE(
      Log("TRANSFER ERROR: serial port failed, receive was aborted, or the 2 MB receive "
          "limit was reached. Incomplete data was not opened."));
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_EQ(
      desk::TextOf(morva::kIdStatusLine),
      QStringLiteral("DNC transfer error \u2014 check COM port, cable, and matching settings."));
}

}  // namespace
