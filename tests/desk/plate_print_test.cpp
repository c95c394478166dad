// The paper template from the real window: the key, the system's dialog, the file.

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPrintDialog>
#include <QTest>
#include <QTimer>

#include "desk/at_desk.h"
#include "plate/model/plate.h"
#include "platform/printer.h"

namespace {

class PlatePrintAtTheDesk : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    desk::Click(morva::kIdSurfacePlate);
    ASSERT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdPlateName); }));
    desk::TypeHere(QStringLiteral("Jig plate"));
    desk::KeyHere(Qt::Key_Return);
    ASSERT_TRUE(desk::Until([]() { return !morva::plate.unnamed; }));
    Put(morva::kPlateLength, "6");
    Put(morva::kPlateWidth, "4");
  }
  static void Put(int value, const char* text) {
    desk::Key(morva::kIdPlateField + value, Qt::Key_A, Qt::ControlModifier);
    desk::TypeHere(QString::fromLatin1(text));
    ASSERT_TRUE(desk::Until(
        [=]() { return desk::TextOf(morva::kIdPlateField + value) == QString::fromLatin1(text); }));
  }

  // Once the dialog is there and active: this, by the pointer and the keys.
  void InDialog(void (*act)(QPrintDialog& dialog, const QString& file), const QString& file) {
    auto* timer = new QTimer(&timers_);
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, act, file]() {
      auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
      if (!dialog || !dialog->isVisible() || !dialog->isActiveWindow()) return;
      timer->stop();
      Show("plate_print_dialog.png");
      ++dialogs_;
      act(*dialog, file);
    });
    timer->start(5);
  }
  static QAbstractButton* ButtonOf(const QPrintDialog& dialog, QDialogButtonBox::StandardButton b) {
    return dialog.findChild<QDialogButtonBox*>()->button(b);
  }
  static void PrintInto(QPrintDialog& dialog, const QString& file) {
    auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("filename"));
    if (!edit) return dialog.reject();
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, file);
    QTest::mouseClick(ButtonOf(dialog, QDialogButtonBox::Ok), Qt::LeftButton);
  }
  static void Leave(QPrintDialog& dialog, const QString&) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
  }
  static bool Says(const char* words) {
    return desk::TextOf(morva::kIdPlateStatus).contains(QString::fromLatin1(words));
  }

  QObject timers_;
  int dialogs_ = 0;
};

TEST_F(PlatePrintAtTheDesk, GoesIntoTheFileThatTheDialogNames) {
  const QString file = Path("jig.pdf");
  InDialog(PrintInto, file);
  desk::Click(morva::kIdPlatePrint);
  ASSERT_TRUE(desk::Until([]() { return Says("Printed at true 1:1 scale."); }));
  EXPECT_EQ(dialogs_, 1);
  const QByteArray page = ReadAll(file);
  EXPECT_TRUE(page.startsWith("%PDF-"));
  EXPECT_EQ(page.count("/Type /Page\n"), 1);
  EXPECT_TRUE(page.trimmed().endsWith("%%EOF"));
  Resize(1200, 800);
  Show("plate_printed_1200.png");
  Resize(1560, 940);
  Show("plate_printed_1560.png");
}

TEST_F(PlatePrintAtTheDesk, ProposesAFileOfThePlatesNameAndLeavesNothingWhenItIsCancelled) {
  static QString proposed;
  InDialog(
      [](QPrintDialog& dialog, const QString& file) {
        auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("filename"));
        if (edit) proposed = edit->text();
        Leave(dialog, file);
      },
      QString());
  desk::Click(morva::kIdPlatePrint);
  ASSERT_TRUE(desk::Until([this]() { return dialogs_ == 1; }));
  EXPECT_TRUE(proposed.endsWith(QStringLiteral("Jig plate.pdf"))) << proposed.toStdString();
  EXPECT_FALSE(QFile::exists(proposed));
  EXPECT_FALSE(Says("Printed"));
  EXPECT_EQ(desk::BoxesSeen(), 0);
  EXPECT_EQ(platform::FiguresOfPrinter().width, 0);
}

}  // namespace
