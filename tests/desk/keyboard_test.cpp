// Where the keyboard is on the real window when a program comes up, and what a message outlasts.
//
// Keys go to the window that has the keyboard, as the display hands them in; the toolkit finds
// who takes them.

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <functional>

#include "app/app_state.h"
#include "app/commands.h"
#include "app/outlets.h"
#include "app/router.h"
#include "desk/at_desk.h"
#include "desk/control_desk.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace {

using namespace morva;

const QString kTyped = QStringLiteral("97531");
const QString kImportClosed =
    QStringLiteral("Import closed: another program comes up. No code was inserted.");

class Keyboard : public AtDesk {
 protected:
  static bool MainWindowIsActive() {
    const QWidget* window = desk::WidgetOf(platform::kMainWindow);
    return QApplication::activeWindow() == window &&
           QGuiApplication::focusWindow() == window->windowHandle();
  }
  static void Press(Qt::Key key) { QTest::keyClick(QGuiApplication::focusWindow(), key); }
  static int ModeOfRow(int row) { return static_cast<int>(platform::RowData(kIdModeList, row)); }
  // The keyboard is in the editor, what is typed goes there, F5 reports.
  static void ExpectAllKeysGoTo(int editor) {
    ASSERT_TRUE(desk::Until(MainWindowIsActive));
    ASSERT_EQ(platform::FocusedId(), editor);
    ASSERT_TRUE(desk::WidgetOf(editor)->isVisible());
    ASSERT_FALSE(desk::TextOf(editor).contains(kTyped));
    for (const QChar c : kTyped) Press(static_cast<Qt::Key>(c.unicode()));
    EXPECT_TRUE(desk::TextOf(editor).contains(kTyped)) << desk::TextOf(editor).toStdString();
    ClearOutput();
    Press(Qt::Key_F5);
    EXPECT_TRUE(desk::Until([]() {
      return desk::TextOf(kIdOutputLog).contains(QStringLiteral("Validation complete"));
    }));
  }
  // The keyboard is in the feature list; then `act` brings a program up.
  static void ExpectKeyboardAfter(const std::function<void()>& act, int editor) {
    platform::SetFocusTo(kIdFeatureList);
    ASSERT_EQ(platform::FocusedId(), kIdFeatureList);
    act();
    ExpectAllKeysGoTo(editor);
  }
  void ExpectKeyboardAfterNewOpenAndTab(int editor) const {
    const QString part = Write("part.NC", "G0 X1\r\n");
    {
      SCOPED_TRACE("NEW");
      ExpectKeyboardAfter([]() { desk::Click(kIdNew); }, editor);
    }
    {
      SCOPED_TRACE("OPEN");
      ExpectKeyboardAfter([&part]() { Open(part); }, editor);
    }
    {
      SCOPED_TRACE("a tab");
      ExpectKeyboardAfter([]() { desk::Click(kIdTabFirst); }, editor);
    }
    EXPECT_EQ(app.tabCount, 3);
  }
  static void ExpectKeyboardAfterClose(int editor) {
    desk::Click(kIdNew);
    desk::AnswerBox(QStringLiteral("No"));
    ExpectKeyboardAfter([]() { desk::Click(kIdClose); }, editor);
    EXPECT_EQ(app.tabCount, 1);
  }
  static void ShowWords() {
    desk::Click(kIdCommandWords);
    ASSERT_TRUE(desk::Until([]() { return desk::WidgetOf(kIdWordsEditor)->isVisible(); }));
  }
  // Makes a second program and prepares an import for it.
  static void PrepareImport() {
    desk::Click(kIdNew);
    RouteCommand(kIdImport, 0);
    ASSERT_TRUE(desk::WidgetOf(kIdImportOperations)->isVisible());
    platform::SetFocusTo(kIdImportOperations);
    ASSERT_EQ(platform::FocusedId(), kIdImportOperations);
  }
  static void LetTicksPass(int count) {
    int ticks = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, [&ticks]() { ++ticks; });
    clock.start(150);  // as often as the pointer is looked after
    ASSERT_TRUE(desk::Until([&]() { return ticks >= count; }));
  }
  static void MoveOnto(int id) {
    QWidget* widget = desk::WidgetOf(id);
    desk::MovePointer(widget, widget->rect().center());
    ASSERT_TRUE(desk::Until([id]() { return platform::IdUnderPointer() == id; }));
  }
  static QString Status() { return desk::TextOf(kIdStatusLine); }
  static QString Hint(int id) { return QString::fromStdU16String(std::u16string(HintOf(id))); }
};

TEST_F(Keyboard, IsInTheCodeAfterNewOpenAndATab) { ExpectKeyboardAfterNewOpenAndTab(kIdEditor); }

TEST_F(Keyboard, IsInTheWordsAfterNewOpenAndATab) {
  ShowWords();
  ExpectKeyboardAfterNewOpenAndTab(kIdWordsEditor);
}

TEST_F(Keyboard, IsInTheCodeAfterClose) { ExpectKeyboardAfterClose(kIdEditor); }

TEST_F(Keyboard, IsInTheWordsAfterClose) {
  ShowWords();
  ExpectKeyboardAfterClose(kIdWordsEditor);
}

class KeyboardOfAReceive : public Keyboard {
 protected:
  void SetUp() override {
    Keyboard::SetUp();
    ASSERT_TRUE(control_.Start());
  }
  void TearDown() override { control_.Stop(); }
  // From the press of RECEIVE to the program in its tab. The press puts the keyboard on ABORT.
  void ExpectKeyboardAfterReceive(int editor) {
    const QString sent = Write("sent.NC", "%\r\nO1234\r\nG0 X1.\r\nM30\r\n%\r\n");
    const auto log = [](const char* words) {
      return desk::Until(
          [words]() { return desk::TextOf(kIdOutputLog).contains(QString::fromUtf8(words)); },
          20000);
    };
    const auto receive = [&]() {
      desk::Click(kIdReceive);
      ASSERT_TRUE(log("Receive armed."));
      ASSERT_EQ(platform::FocusedId(), kIdAbortTransfer);
      control_.Say("send " + sent.toLocal8Bit());
      ASSERT_TRUE(log("Received RS-232 program opened in a new tab."));
    };
    ExpectKeyboardAfter(receive, editor);
    EXPECT_EQ(app.tabCount, 2);
  }

 private:
  desk::ControlAtTheFarEnd control_;
};

TEST_F(KeyboardOfAReceive, IsInTheCodeOfTheReceivedProgram) {
  ExpectKeyboardAfterReceive(kIdEditor);
}

TEST_F(KeyboardOfAReceive, IsInTheWordsOfTheReceivedProgram) {
  ShowWords();
  ExpectKeyboardAfterReceive(kIdWordsEditor);
}

TEST_F(Keyboard, StaysInTheListOfModesForAsLongAsTheArrowsWalkIt) {
  const int last = platform::RowCount(kIdModeList) - 1;
  platform::SetFocusTo(kIdModeList);
  Press(Qt::Key_Home);
  for (int row = 1; row <= last; ++row) {
    Press(Qt::Key_Down);
    ASSERT_EQ(platform::FocusedId(), kIdModeList) << row;
    ASSERT_EQ(platform::SelectedRow(kIdModeList), row);
    // What was said at a row that Enter opens is gone at the next one.
    const bool opens = ModeOfRow(row) == kModeCadItem || ModeOfRow(row) == kModePlateItem;
    EXPECT_EQ(std::u16string_view(app.statusText) == u"Enter opens this workspace.", opens) << row;
  }
  for (int row = last - 1; row >= 0; --row) {
    Press(Qt::Key_Up);
    ASSERT_EQ(platform::FocusedId(), kIdModeList) << row;
    ASSERT_EQ(platform::SelectedRow(kIdModeList), row);
  }
}

TEST_F(Keyboard, GoesFromTheListOfModesIntoAPanelByEnter) {
  platform::SetFocusTo(kIdModeList);
  Press(Qt::Key_End);
  for (int row = platform::RowCount(kIdModeList) - 1; ModeOfRow(row) != kModeFind; --row) {
    ASSERT_GT(row, 0);
    Press(Qt::Key_Up);
  }
  Press(Qt::Key_Return);
  EXPECT_EQ(platform::FocusedId(), kIdFindText);
}

TEST_F(Keyboard, LeavesAnImportThatClosesForAnotherTabAndSaysSo) {
  PrepareImport();
  desk::Click(kIdTabFirst);
  EXPECT_FALSE(desk::WidgetOf(kIdImportOperations)->isVisible());
  EXPECT_EQ(Status(), kImportClosed);
  EXPECT_TRUE(desk::TextOf(kIdOutputLog).contains(kImportClosed));
  ExpectAllKeysGoTo(kIdEditor);
}

// The pointer comes to rest on a key, and the message comes before the hint of that key.
TEST_F(Keyboard, LeavesAMessageUnderAPointerThatRestsOnAKey) {
  PrepareImport();
  MoveOnto(kIdStatusLine);  // the pointer may lie on the key already, and has to move
  MoveOnto(kIdSend);
  desk::Click(kIdTabFirst);
  ASSERT_EQ(Status(), kImportClosed);
  LetTicksPass(6);
  ASSERT_EQ(platform::IdUnderPointer(), kIdSend);
  EXPECT_EQ(Status(), kImportClosed);
  EXPECT_FALSE(desk::WidgetOf(kIdOutputHelp)->isVisible());
}

TEST_F(Keyboard, LeavesAMessageThatTookTheHintsPlaceAndItComesBackBehindAnother) {
  PrepareImport();
  MoveOnto(kIdStatusLine);  // the pointer may lie on the key already, and has to move
  MoveOnto(kIdSend);
  ASSERT_TRUE(desk::Until([]() { return Status() == Hint(kIdSend); })) << Status().toStdString();
  desk::Click(kIdTabFirst);
  LetTicksPass(6);
  ASSERT_EQ(platform::IdUnderPointer(), kIdSend);
  EXPECT_EQ(Status(), kImportClosed);
  EXPECT_FALSE(desk::WidgetOf(kIdOutputHelp)->isVisible());
  const QString log = desk::TextOf(kIdOutputLog);
  MoveOnto(kIdNew);
  EXPECT_TRUE(desk::Until([]() { return Status() == Hint(kIdNew); }));
  EXPECT_TRUE(desk::WidgetOf(kIdOutputHelp)->isVisible());
  MoveOnto(kIdStatusLine);
  EXPECT_TRUE(desk::Until([]() { return Status() == kImportClosed; })) << Status().toStdString();
  EXPECT_FALSE(desk::WidgetOf(kIdOutputHelp)->isVisible());
  EXPECT_EQ(desk::TextOf(kIdOutputLog), log);
}

}  // namespace
