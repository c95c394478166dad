// Boxes, popups and file dialogs: what comes back for which answer.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <iterator>

#include "platform/menu.h"
#include "platform/message.h"
#include "platform/pick_file.h"
#include "platform/process.h"
#include "widgets/stand.h"

namespace {

using namespace platform;

// Runs `act` on the modal thing of this class as soon as it is shown.
template <class Widget, class Find>
void WhenShown(Find find, std::function<void(Widget*)> act) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, qApp, [timer, find, act] {
    auto* widget = dynamic_cast<Widget*>(find());
    if (widget == nullptr || !widget->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    act(widget);
  });
  timer->start(5);
}

void OnBox(std::function<void(QMessageBox*)> act) {
  WhenShown<QMessageBox>([] { return QApplication::activeModalWidget(); }, std::move(act));
}

void OnFiles(std::function<void(QFileDialog*)> act) {
  WhenShown<QFileDialog>([] { return QApplication::activeModalWidget(); }, std::move(act));
}

void OnMenu(std::function<void(QMenu*)> act) {
  WhenShown<QMenu>([] { return QApplication::activePopupWidget(); }, std::move(act));
}

BoxAnswer Escaped(BoxButtons buttons) {
  OnBox([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); });
  return ShowBox(u"MORVA", u"words", buttons, BoxIcon::Warning);
}

TEST(Boxes, EscapeAnswersCancelElseNoElseOk) {
  stand::Open();
  EXPECT_EQ(Escaped(BoxButtons::Ok), BoxAnswer::Ok);
  EXPECT_EQ(Escaped(BoxButtons::YesNo), BoxAnswer::No);
  EXPECT_EQ(Escaped(BoxButtons::YesNoCancel), BoxAnswer::Cancel);
}

// In a process of its own, which ends once the box is answered.
TEST(BoxesDeathTest, AStopTellsItsWordsTwiceAndEndsTheProcess) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  const auto stop = [] {
    stand::Open();
    OnBox([](QMessageBox* box) {
      std::fprintf(stderr, "%s/%s", qPrintable(box->windowTitle()), qPrintable(box->text()));
      box->button(QMessageBox::Ok)->click();
    });
    StopProcess(u"MORVA", u"The table is full.", 3);
  };
  EXPECT_EXIT(stop(), testing::ExitedWithCode(3),
              "The table is full\\.(.|\n)*MORVA/The table is full\\.");
}

TEST(Boxes, ShowTitleWordsAndExactlyTheirButtons) {
  stand::Open();
  OnBox([](QMessageBox* box) {
    EXPECT_EQ(box->windowTitle(), QStringLiteral("Save plate shape"));
    EXPECT_EQ(box->text(), QStringLiteral("a <b> & c\r\nsecond line"));
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    EXPECT_EQ(box->buttons().size(), 3);
    box->button(QMessageBox::Yes)->click();
  });
  EXPECT_EQ(ShowBox(u"Save plate shape", u"a <b> & c\r\nsecond line", BoxButtons::YesNoCancel,
                    BoxIcon::Question),
            BoxAnswer::Yes);
}

TEST(Popups, AnswerTheChosenIdAndZeroForNone) {
  stand::Open();
  const MenuItem items[] = {
      {7, u"Undo\tAlt+Z"}, {0, u""}, {9, u"Grid & axes", true, true}, {11, u"Gone", false, false}};
  OnMenu([](QMenu* menu) {
    ASSERT_EQ(menu->actions().size(), 4);
    EXPECT_TRUE(menu->actions().at(1)->isSeparator());
    EXPECT_TRUE(menu->actions().at(2)->isChecked());
    EXPECT_FALSE(menu->actions().at(3)->isEnabled());
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
  });
  EXPECT_EQ(ShowPopup(items, static_cast<int>(std::size(items)), 40, 40), 9);
  OnMenu([](QMenu* menu) { QTest::keyClick(menu, Qt::Key_Escape); });
  EXPECT_EQ(ShowPopup(items, static_cast<int>(std::size(items)), 40, 40), 0);
}

struct Pick {
  QTemporaryDir folder;
  std::u16string initial;
  PickFileSpec spec;
  FileFilter filters[2] = {{u"Haas programs (*.NC;*.TAP)", u"*.NC;*.TAP"},
                           {u"All files (*.*)", u"*.*"}};
  Pick() {
    initial = folder.filePath(QStringLiteral("first.NC")).toStdU16String();
    spec.title = u"Pick";
    spec.filters = filters;
    spec.filterCount = 2;
    spec.initialName = initial.c_str();
    spec.defaultExtension = u"NC";
  }
};

void Enter(QFileDialog* dialog, const QString& name) {
  auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  ASSERT_NE(edit, nullptr);
  edit->setText(name);
  QTest::keyClick(edit, Qt::Key_Return);
}

TEST(FileDialogs, SavingAddsTheExtensionToANameWithoutOne) {
  stand::Open();
  Pick pick;
  OnFiles([](QFileDialog* dialog) {
    EXPECT_EQ(dialog->nameFilters().size(), 2);
    Enter(dialog, QStringLiteral("part"));
  });
  std::u16string path;
  ASSERT_TRUE(PickFileToSave(pick.spec, path));
  EXPECT_EQ(QString::fromStdU16String(path), pick.folder.filePath(QStringLiteral("part.NC")));
}

TEST(FileDialogs, SavingOverAFileAsksFirst) {
  stand::Open();
  Pick pick;
  QFile file(pick.folder.filePath(QStringLiteral("old.NC")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  static int asked;
  asked = 0;
  OnFiles([](QFileDialog* dialog) {
    OnBox([dialog](QMessageBox* box) {
      ++asked;
      box->button(QMessageBox::No)->click();
      QTimer::singleShot(0, dialog, [dialog] { dialog->reject(); });
    });
    Enter(dialog, QStringLiteral("old.NC"));
  });
  std::u16string path = u"kept";
  EXPECT_FALSE(PickFileToSave(pick.spec, path));
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(path, u"kept");
}

TEST(FileDialogs, APathBeyondTheCapacityCountsAsACancel) {
  stand::Open();
  Pick pick;
  pick.spec.capacity = static_cast<int>(pick.folder.path().size()) + 5;
  OnFiles([](QFileDialog* dialog) { Enter(dialog, QStringLiteral("longer.NC")); });
  std::u16string path = u"kept";
  EXPECT_FALSE(PickFileToSave(pick.spec, path));
  EXPECT_EQ(path, u"kept");
}

}  // namespace
