// Modal dialogs on real widgets: keys and the close key as the toolkit delivers them.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>
#include <vector>

#include "platform/control.h"
#include "platform/dialog.h"
#include "platform/events.h"
#include "platform/qt/qt_testing.h"
#include "platform/timer.h"
#include "platform/window.h"

namespace {

constexpr int kDialog = 9500;
constexpr int kEdit = 9501;
constexpr int kLog = 9502;
constexpr int kAccept = 9503;
constexpr int kCancel = 9504;

std::vector<int> spoken;

void OnDialog(int id, int notification) {
  spoken.push_back(id);
  if (notification != platform::kNotifyClick) return;
  if (id == kAccept) platform::EndDialog(kDialog, 3);
  if (id == kCancel) platform::EndDialog(kDialog, 0);
}

void MakeIn(int id, platform::ControlKind kind, int top) {
  platform::ControlSpec spec;
  spec.id = id;
  spec.kind = kind;
  spec.text = u"text";
  spec.parent = kDialog;
  ASSERT_TRUE(platform::MakeControl(spec));
  platform::SetPlace(id, {10, top, 200, top + 30});
}

class DialogWidget : public testing::Test {
 protected:
  void SetUp() override {
    spoken.clear();
    if (!platform::Exists(platform::kMainWindow)) {
      ASSERT_TRUE(platform::MakeMainWindow({u"Main", u"Main", {0, 0, 1200, 800}, 400, 300, 0}));
      made_ = true;
    }
    platform::DialogSpec spec;
    spec.id = kDialog;
    spec.className = u"TestDialog";
    spec.title = u"A question";
    spec.place = {100, 120, 640, 460};
    spec.defaultButton = kAccept;
    spec.cancelButton = kCancel;
    spec.command = OnDialog;
    ASSERT_TRUE(platform::MakeDialog(spec));
    MakeIn(kEdit, platform::ControlKind::EditLine, 10);
    MakeIn(kLog, platform::ControlKind::Log, 50);
    MakeIn(kAccept, platform::ControlKind::PushButton, 90);
    MakeIn(kCancel, platform::ControlKind::PushButton, 130);
  }
  void TearDown() override {
    platform::Destroy(kDialog);
    if (made_) platform::Destroy(platform::kMainWindow);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  // Runs the dialog and does this once it stands.
  static int RunAnd(const std::function<void()>& act) {
    QTimer::singleShot(0, [act] { act(); });
    return platform::RunDialog(kDialog);
  }
  static void Press(int id, Qt::Key key) { QTest::keyClick(platform::WidgetOf(id), key); }
  bool made_ = false;
};

TEST_F(DialogWidget, EndsWithTheCodeOfItsFunctionAndIsGone) {
  EXPECT_EQ(RunAnd([] { QTest::mouseClick(platform::WidgetOf(kAccept), Qt::LeftButton); }), 3);
  EXPECT_EQ(spoken, std::vector<int>{kAccept});
  EXPECT_FALSE(platform::Exists(kDialog));
  EXPECT_FALSE(platform::Exists(kEdit));
}

TEST_F(DialogWidget, EnterPressesTheDefaultFromFieldsAndReadOnlyText) {
  for (const int id : {kEdit, kLog}) {
    if (!platform::Exists(kDialog)) SetUp();
    EXPECT_EQ(RunAnd([id] { Press(id, Qt::Key_Return); }), 3) << id;
  }
}

TEST_F(DialogWidget, EnterPressesTheButtonThatHasTheKeyboard) {
  EXPECT_EQ(RunAnd([] { Press(kCancel, Qt::Key_Enter); }), 0);
  EXPECT_EQ(spoken, std::vector<int>{kCancel});
}

TEST_F(DialogWidget, EscapeAndTheCloseKeyPressCancel) {
  for (const int id : {kEdit, kLog, kAccept}) {
    if (!platform::Exists(kDialog)) SetUp();
    EXPECT_EQ(RunAnd([id] { Press(id, Qt::Key_Escape); }), 0) << id;
    EXPECT_EQ(spoken, std::vector<int>{kCancel});
  }
  SetUp();
  EXPECT_EQ(RunAnd([] { platform::WidgetOf(kDialog)->close(); }), 0);
  EXPECT_EQ(spoken, std::vector<int>{kCancel});
}

TEST_F(DialogWidget, ShutsTheMainWindowOffWhileItRuns) {
  RunAnd([] {
    EXPECT_EQ(QApplication::activeModalWidget(), platform::WidgetOf(kDialog));
    EXPECT_EQ(platform::WidgetOf(kDialog)->size(), QSize(540, 340));
    Press(kEdit, Qt::Key_Escape);
  });
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DialogWidget, GivesUpWhenItIsDestroyedMeanwhile) {
  EXPECT_EQ(RunAnd([] {
              platform::Destroy(kDialog);
              QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            }),
            0);
}

}  // namespace
