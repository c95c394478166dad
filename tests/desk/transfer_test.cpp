// A transfer on the real window: its bar and abort key in the top band, the keyboard, the question
// of a close. The far end is the control simulator, at the rate of a line on which the program
// takes two minutes.

#include "dnc/transfer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "desk/at_desk.h"
#include "desk/control_desk.h"
#include "dnc/serial_profile.h"
#include "platform/control.h"
#include "platform/posix/serial_pace.h"
#include "platform/window.h"

namespace {

class Transfer : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    WriteAll(desk::SettingsFile(), "[DNC]\r\nBaud=9600\r\n");
    ASSERT_TRUE(control_.Start());
    QByteArray program = "%\r\nO4321\r\n";
    for (int i = 0; i < 6000; ++i) program += "G01 X" + QByteArray::number(i) + ". F20.\r\n";
    WriteAll(Path("long.NC"), program + "M30\r\n%\r\n");
    Open(Path("long.NC"));
    desk::Run(300);
    platform::pacePseudoTerminals = true;
  }
  void TearDown() override {
    platform::pacePseudoTerminals = false;
    if (morva::TransferRuns()) morva::RequestAbort();
    desk::Until([]() { return !morva::TransferRuns(); });
    control_.Stop();
  }
  // Presses SEND and waits for the first bytes that go.
  static void SendFirstBytes() {
    desk::AnswerBox(QStringLiteral("Yes"));
    desk::Click(morva::kIdSend);
    ASSERT_TRUE(desk::Until([]() { return morva::TransferRuns(); }));
    ASSERT_TRUE(desk::Until([]() { return BytesTold() > 0; }));
  }
  // What the bar tells assistive technology.
  static int BytesTold() {
    const QStringList words =
        QString::fromStdU16String(platform::AccessibleName(morva::kViewTransfer)).split(u' ');
    return words.value(0) == QStringLiteral("Sending:") ? words.value(1).toInt() : -1;
  }
  static bool IsShown(int id) { return desk::WidgetOf(id)->isVisible(); }

  desk::ControlAtTheFarEnd control_;
};

TEST_F(Transfer, ShowsItsBarAndTheAbortKeyAndDimsSendAndReceive) {
  EXPECT_FALSE(IsShown(morva::kIdAbortTransfer));
  EXPECT_FALSE(IsShown(morva::kViewTransfer));
  SendFirstBytes();
  EXPECT_FALSE(desk::WidgetOf(morva::kIdSend)->isEnabled());
  EXPECT_FALSE(desk::WidgetOf(morva::kIdReceive)->isEnabled());
  // Never on to some other key, such as the one that switches the units.
  EXPECT_TRUE(desk::Until([]() { return platform::FocusedId() == morva::kIdAbortTransfer; }));
  EXPECT_TRUE(IsShown(morva::kIdAbortTransfer));
  EXPECT_TRUE(IsShown(morva::kViewTransfer));
  EXPECT_EQ(desk::WidgetOf(morva::kIdAbortTransfer)->accessibleName(),
            QStringLiteral("Abort transfer"));
  // The frame of the keyboard takes 4 pixels of each side of the key; its letters keep off it.
  const QWidget* abort = desk::WidgetOf(morva::kIdAbortTransfer);
  const int letters = abort->fontMetrics().tightBoundingRect(QStringLiteral("ABORT")).height();
  EXPECT_LE(letters, abort->height() - 2 * (4 + 2));
  Resize(1200, 800);
  Show("transfer-1200x800.png");
  Resize(1560, 940);
  Show("transfer-1560x940.png");
  desk::Click(morva::kIdSurfaceCad);
  EXPECT_TRUE(desk::Until([]() { return IsShown(morva::kIdAbortTransfer); }));
  Show("transfer-drawing-1560x940.png");
  Resize(1200, 800);
  Show("transfer-drawing-1200x800.png");
  desk::Click(morva::kIdAbortTransfer);
  ASSERT_TRUE(desk::Until([]() { return !morva::TransferRuns(); }));
  EXPECT_EQ(desk::TextOf(morva::kIdStatusLine), QStringLiteral("DNC transfer aborted."));
  EXPECT_FALSE(IsShown(morva::kIdAbortTransfer));
  EXPECT_FALSE(IsShown(morva::kViewTransfer));
}

TEST_F(Transfer, TellsThatTheControlHoldsTheLine) {
  SendFirstBytes();
  const auto bar = []() {
    return QString::fromStdU16String(platform::AccessibleName(morva::kViewTransfer));
  };
  const auto tells = []() {
    return desk::TextOf(morva::kIdStatusLine)
        .endsWith(QStringLiteral("the control holds the line (XOFF)"));
  };
  control_.Say("hold");
  EXPECT_TRUE(desk::Until(tells, 4000));
  EXPECT_TRUE(bar().endsWith(QStringLiteral("held by XOFF")));
  Resize(1200, 800);
  Show("transfer-held-1200x800.png");
  control_.Say("release");
  EXPECT_TRUE(desk::Until([&tells]() { return !tells(); }));
  EXPECT_TRUE(desk::Until([&bar]() { return bar().endsWith(QStringLiteral("left")); }));
  EXPECT_TRUE(morva::TransferRuns());
}

// What lies below the key comes under a pointer that nobody moves.
TEST_F(Transfer, KeepsItsLastWordsUnderThePointerThatAbortedIt) {
  Resize(1200, 800);
  SendFirstBytes();
  QWidget* key = desk::WidgetOf(morva::kIdAbortTransfer);
  desk::MovePointer(key, key->rect().center());
  ASSERT_TRUE(desk::Until([]() { return platform::IdUnderPointer() == morva::kIdAbortTransfer; }));
  desk::Click(morva::kIdAbortTransfer);
  ASSERT_TRUE(desk::Until([]() { return !morva::TransferRuns(); }));
  ASSERT_TRUE(desk::Until([]() { return platform::IdUnderPointer() != morva::kIdAbortTransfer; }));
  int ticks = 0;
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, [&ticks]() { ++ticks; });
  clock.start(150);
  ASSERT_TRUE(desk::Until([&ticks]() { return ticks >= 5; }));
  EXPECT_EQ(desk::TextOf(morva::kIdStatusLine), QStringLiteral("DNC transfer aborted."));
  EXPECT_FALSE(IsShown(morva::kIdOutputHelp));
}

TEST_F(Transfer, IsReachedAndAbortedByTheKeyboardAlone) {
  SendFirstBytes();
  platform::SetFocusTo(morva::kIdFind);
  for (const int id : {int{morva::kIdFind}, int{morva::kIdSetup}, int{morva::kIdMachine}}) {
    ASSERT_EQ(platform::FocusedId(), id);
    desk::Key(id, Qt::Key_Tab);
  }
  ASSERT_EQ(platform::FocusedId(), morva::kIdAbortTransfer);
  desk::Key(morva::kIdAbortTransfer, Qt::Key_Space);
  EXPECT_TRUE(desk::Until([]() { return morva::dncState == morva::kDncOffline; }));
}

// The hand on the pointer is at work in the program that is shown.
TEST_F(Transfer, OpensAReceivedProgramBehindTheOneThatIsPointedInto) {
  const int before = morva::app.activeTab;
  WriteAll(Path("small.NC"), "%\r\nO77\r\nM30\r\n%\r\n");
  QWidget* text = desk::WidgetOf(morva::kIdEditor)->findChild<QWidget*>("qt_scrollarea_viewport");
  ASSERT_NE(text, nullptr);
  const auto receive = [&](bool points) {
    desk::Click(morva::kIdReceive);
    ASSERT_TRUE(desk::Until([]() { return morva::TransferRuns(); }));
    control_.Say("send " + Path("small.NC").toLocal8Bit());
    int at = 40;
    ASSERT_TRUE(desk::Until(
        [&]() {
          if (points) QTest::mouseClick(text, Qt::LeftButton, {}, QPoint(60, at += 2));
          return !morva::TransferRuns();
        },
        20000));
  };
  receive(true);
  EXPECT_EQ(morva::app.activeTab, before);
  EXPECT_EQ(desk::TextOf(morva::kIdStatusLine),
            QStringLiteral("DNC receive complete — program opened in a tab behind this one."));
  receive(false);
  EXPECT_NE(morva::app.activeTab, before);
}

TEST_F(Transfer, OpensAReceivedProgramBehindADrawing) {
  const int before = morva::app.activeTab;
  WriteAll(Path("small.NC"), "%\r\nO77\r\nM30\r\n%\r\n");
  desk::Click(morva::kIdReceive);
  ASSERT_TRUE(desk::Until([]() { return morva::TransferRuns(); }));
  desk::Click(morva::kIdSurfaceCad);
  control_.Say("send " + Path("small.NC").toLocal8Bit());
  ASSERT_TRUE(desk::Until([]() { return !morva::TransferRuns(); }, 20000));
  EXPECT_EQ(morva::app.activeTab, before);
  EXPECT_EQ(morva::app.surface, morva::kSurfaceCad);
}

// Enter takes what stands first: the window stays, and the transfer goes on.
TEST_F(Transfer, IsNotEndedByAHastyEnterAtTheClose) {
  SendFirstBytes();
  QString words;
  QString pressed;
  QTimer eyes;
  QObject::connect(&eyes, &QTimer::timeout, [&]() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !words.isEmpty()) return;
    words = box->text();
    pressed = box->defaultButton() ? box->defaultButton()->text() : QString();
    QTest::keyClick(box, Qt::Key_Return);
  });
  eyes.start(20);
  desk::CloseWindow();
  ASSERT_TRUE(desk::Until([&]() { return !words.isEmpty(); }));
  EXPECT_TRUE(words.startsWith(QStringLiteral("A program is being sent. Abort it and close")));
  EXPECT_EQ(pressed.remove(QLatin1Char('&')), QStringLiteral("No"));
  desk::Run(50);
  EXPECT_TRUE(IsShown(platform::kMainWindow));
  EXPECT_TRUE(morva::TransferRuns());
}

}  // namespace
