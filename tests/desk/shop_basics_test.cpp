// What every editor of a shop has, on the real window: its keys, files that are dropped, the menu
// at OPEN, a program on paper.

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QUrl>
#include <QWindow>

#include "app/palette.h"
#include "desk/at_desk.h"
#include "platform/editor.h"

namespace {

using morva::app;

class ShopBasicsAtTheDesk : public AtDesk {
 protected:
  // Once a dialog of this kind is there and active: this.
  template <typename Dialog>
  void InDialog(const std::function<void(Dialog& dialog)>& act) {
    auto* timer = new QTimer(&timers_);
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, act]() {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      if (!dialog || !dialog->isVisible() || !dialog->isActiveWindow()) return;
      timer->stop();
      ++dialogs_;
      act(*dialog);
    });
    timer->start(5);
  }
  // Once this control has the keyboard: this. The box around it takes no other turn.
  void WhenUp(int id, const std::function<void()>& act) {
    auto* timer = new QTimer(&timers_);
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer, id, act]() {
      if (!platform::Exists(id) || !HasKeyboard(id)) return;
      timer->stop();
      ++dialogs_;
      act();
    });
    timer->start(5);
  }
  // As the window system hands a drop to a window. Whether it was taken, and as what.
  static Qt::DropAction Drop(const QStringList& files) {
    QList<QUrl> urls;
    for (const QString& file : files) urls << QUrl::fromLocalFile(file);
    QMimeData data;
    data.setUrls(urls);
    data.setText(files.join(u'\n'));  // as file managers do
    QWindow* window = desk::WidgetOf(platform::kMainWindow)->windowHandle();
    const QPoint at = desk::WidgetOf(morva::kIdEditor)
                          ->mapTo(desk::WidgetOf(platform::kMainWindow), QPoint(90, 40));
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
    QDragEnterEvent enter(at, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &enter);
    QDragMoveEvent move(at, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &move);
    if (!move.isAccepted()) return Qt::IgnoreAction;
    QDropEvent drop(at, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &drop);
    return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
  }
  static void PrintInto(QPrintDialog& dialog, const QString& file) {
    auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("filename"));
    if (!edit) return dialog.reject();
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, file);
    QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok),
                      Qt::LeftButton);
  }
  static QString Output() { return desk::TextOf(morva::kIdOutputLog); }
  static bool Says(const QString& words) {
    return desk::Until([&]() { return Output().contains(words); });
  }
  static QByteArray Lines(int count) {
    QByteArray text;
    for (int i = 1; i <= count; ++i) text += "N" + QByteArray::number(i) + " G1 X1.\r\n";
    return text;
  }
  // Pixels of a colour in the shown editor.
  static int Count(platform::Colour colour) {
    const QImage image = desk::WidgetOf(morva::kIdEditor)->grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        count += (image.pixel(x, y) & 0xFFFFFFu) == colour ? 1 : 0;
      }
    }
    return count;
  }

  QObject timers_;
  int dialogs_ = 0;
};

TEST_F(ShopBasicsAtTheDesk, FilesThatAreDroppedOnTheEditorOpen) {
  const QString before = desk::TextOf(morva::kIdEditor);
  const QString one = Write("one.nc", "G0 X1\r\n");
  const QString two = Write("two words.nc", "G0 X2\r\n");
  // Whoever moves files would delete them.
  EXPECT_EQ(Drop({one, two}), Qt::CopyAction);
  ASSERT_TRUE(Says(QStringLiteral("Opened program in a new workspace tab.  ") + two));
  EXPECT_EQ(app.tabCount, 3);
  EXPECT_TRUE(desk::TextOf(morva::kIdEditor).contains(QStringLiteral("G0 X2")));
  EXPECT_TRUE(HasKeyboard(morva::kIdEditor));
  desk::Click(morva::kIdTabFirst);
  EXPECT_EQ(desk::TextOf(morva::kIdEditor), before);
  EXPECT_TRUE(QFile::exists(one));
}

TEST_F(ShopBasicsAtTheDesk, TheNinthFileIsTold) {
  QStringList files;
  for (char name = 'a'; name < 'i'; ++name) {
    files << Write(QByteArray(1, name) + ".nc", "G0\r\n");
  }
  desk::AnswerBox(QStringLiteral("OK"));
  EXPECT_EQ(Drop(files), Qt::CopyAction);
  ASSERT_TRUE(Says(QStringLiteral("Not opened: ") + files.last()));
  EXPECT_EQ(app.tabCount, 8);
  EXPECT_EQ(desk::LastBoxText(),
            QStringLiteral("The workspace supports up to 8 open programs in this build."));
}

TEST_F(ShopBasicsAtTheDesk, GoesToALineAndTellsTheCaretsPlace) {
  Open(Write("long.nc", Lines(2000)));
  // The markers come a moment later, and move what stands behind them.
  ASSERT_TRUE(desk::Until(
      []() { return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("(MORVA END 1)")); }));
  WhenUp(morva::kIdLineNumber, []() {
    Show("go_to_line.png");
    desk::TypeHere(QStringLiteral("99999"));
    desk::KeyHere(Qt::Key_Return);
    EXPECT_TRUE(desk::TextOf(morva::kIdLineNote)
                    .startsWith(QStringLiteral("Type a whole number from 1 to 20")));
    desk::TypeHere(QStringLiteral("1500"));
    desk::KeyHere(Qt::Key_Return);
  });
  desk::Key(morva::kIdEditor, Qt::Key_G, Qt::ControlModifier);
  EXPECT_EQ(dialogs_, 1);
  ASSERT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdEditor); }));
  EXPECT_TRUE(desk::TextOf(morva::kIdCaretPlace).startsWith(QStringLiteral("Line 1500")));
  const int first = platform::FirstVisibleLine(morva::kIdEditor);
  EXPECT_NEAR(first + platform::VisibleLineCount(morva::kIdEditor) / 2, 1499, 2);
  EXPECT_GT(Count(morva::kCaretLineBand), 1000);
  Show("caret_line.png");
}

TEST_F(ShopBasicsAtTheDesk, MarksAllHitsInSightAsTheTextScrolls) {
  Open(Write("long.nc", Lines(2000)));
  desk::Key(morva::kIdEditor, Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdFindText); }));
  desk::TypeHere(QStringLiteral("x1."));
  // A frame is wider than 20 pixels, and more than ten lines are in sight. They stay when the
  // colours of the text come.
  constexpr int kSeen = 10 * 20;
  ASSERT_TRUE(desk::Until([]() { return Count(morva::kHitFrame) > kSeen; }));
  desk::Run(300);
  EXPECT_GT(Count(morva::kHitFrame), kSeen);
  Show("find_hits.png");
  platform::ScrollToLine(morva::kIdEditor, 1000);
  desk::Run(300);
  EXPECT_GT(Count(morva::kHitFrame), kSeen);
  desk::Click(morva::kIdBack);
  ASSERT_TRUE(desk::Until([]() { return Count(morva::kHitFrame) < kSeen / 4; }));
}

TEST_F(ShopBasicsAtTheDesk, F1ShowsThePageOfKeysAndEscClosesIt) {
  qsizetype rows = 0;
  QStringList found;
  WhenUp(morva::kIdKeysSearch, [&]() {
    rows = desk::RowsOf(morva::kIdKeysList).size();
    Show("keys_page.png");
    desk::TypeHere(QStringLiteral("print"));
    found = desk::RowsOf(morva::kIdKeysList);
    desk::KeyHere(Qt::Key_Escape);
  });
  desk::Key(morva::kIdFeatureList, Qt::Key_F1);
  EXPECT_EQ(dialogs_, 1);
  EXPECT_FALSE(platform::Exists(morva::kViewKeys));
  EXPECT_GT(rows, 30);
  ASSERT_EQ(found.size(), 1);
  EXPECT_TRUE(found.first().startsWith(QStringLiteral("Ctrl+P        Print")));
}

TEST_F(ShopBasicsAtTheDesk, TheMenuAtOpenComesByItsArrowAndByDown) {
  const QString one = Write("one.nc", "G0 X1\r\n");
  Open(one);
  desk::Click(morva::kIdClose);
  ASSERT_TRUE(desk::Until([]() { return app.tabCount == 1; }));
  QWidget* key = desk::WidgetOf(morva::kIdOpen);
  desk::AnswerMenu(QStringLiteral("one.nc"));
  QTest::mouseClick(key, Qt::LeftButton, Qt::NoModifier,
                    QPoint(key->width() - 5, key->height() / 2));
  ASSERT_TRUE(desk::Until([]() { return app.tabCount == 2; }));
  desk::Click(morva::kIdClose);
  ASSERT_TRUE(desk::Until([]() { return app.tabCount == 1; }));
  QFile::remove(one);
  desk::AnswerMenu(QStringLiteral("one.nc"));
  desk::AnswerBox(QStringLiteral("OK"));
  desk::Key(morva::kIdOpen, Qt::Key_Down);
  ASSERT_TRUE(desk::Until([]() { return desk::BoxesSeen() > 0; }));
  EXPECT_TRUE(desk::LastBoxText().endsWith(
      QStringLiteral("This file is not there any more. It goes off the list.")));
  // It lasts from run to run.
  EXPECT_TRUE(desk::Until([]() { return !ReadAll(desk::SettingsFile()).contains("File1"); }));
}

TEST_F(ShopBasicsAtTheDesk, TheDialogBeginsInTheLastFolderAndShowsWholeNames) {
  QDir(home_.path()).mkdir(QStringLiteral("jobs"));
  const QByteArray name = "jobs/" + QByteArray(90, 'w') + ".nc";
  Open(Write(name, "G0\r\n"));
  QString folder;
  int column = 0;
  int needed = 0;
  InDialog<QFileDialog>([&](QFileDialog& dialog) {
    folder = dialog.directory().absolutePath();
    auto* rows = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
    desk::Until([&]() { return rows->model()->rowCount(rows->rootIndex()) > 0; });
    desk::Run(100);
    column = rows->columnWidth(0);
    needed = rows->fontMetrics().horizontalAdvance(QString(90, u'w') + QStringLiteral(".nc"));
    Show("open_dialog.png");
    dialog.reject();
  });
  desk::Click(morva::kIdOpen);
  ASSERT_TRUE(desk::Until([&]() { return dialogs_ == 1 && !QApplication::activeModalWidget(); }));
  EXPECT_EQ(folder, Path("jobs"));
  EXPECT_GT(column, needed);
}

TEST_F(ShopBasicsAtTheDesk, PrintsAProgramWithItsNameItsPagesAndItsNumbers) {
  QByteArray text = Lines(120);
  QByteArray longLine = "(";
  for (int i = 0; i < 40; ++i) longLine += "WORD" + QByteArray::number(100 + i) + " ";
  text += longLine + ")\r\nM30\r\n";
  Open(Write("PART-7.nc", text));
  const QString file = Path("part.pdf");
  InDialog<QPrintDialog>([&](QPrintDialog& dialog) { PrintInto(dialog, file); });
  desk::Key(morva::kIdEditor, Qt::Key_P, Qt::ControlModifier);
  ASSERT_TRUE(Says(QStringLiteral("Printed PART-7.nc: ")));
  const QByteArray pages = ReadAll(file);
  EXPECT_TRUE(pages.startsWith("%PDF-"));
  EXPECT_GE(pages.count("/Type /Page\n"), 3);
  const QString reader = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
  if (reader.isEmpty()) GTEST_SKIP() << "no pdftotext to read the text";
  QProcess process;
  process.start(reader, {QStringLiteral("-layout"), file, QStringLiteral("-")});
  ASSERT_TRUE(process.waitForFinished());
  const QString read = QString::fromUtf8(process.readAllStandardOutput());
  EXPECT_EQ(read.count(QStringLiteral("PART-7.nc")), pages.count("/Type /Page\n"));
  EXPECT_TRUE(read.contains(QStringLiteral("Page 1 of ")));
  const QString flat = QString(read).simplified();
  for (int i = 1; i <= 120; ++i) {
    const QString words = QStringLiteral("N%1 G1 X1.").arg(i);
    EXPECT_TRUE(flat.contains(words)) << i;
  }
  for (int i = 0; i < 40; ++i) {
    QString joined = flat;
    joined.remove(u' ').remove(u'\u00BB');
    EXPECT_TRUE(joined.contains(QStringLiteral("WORD%1").arg(100 + i))) << i;
  }
  EXPECT_TRUE(flat.contains(u'\u00BB'));
}

TEST_F(ShopBasicsAtTheDesk, ACancelledPrintLeavesNothing) {
  InDialog<QPrintDialog>([](QPrintDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  desk::Key(morva::kIdEditor, Qt::Key_P, Qt::ControlModifier);
  ASSERT_TRUE(desk::Until([&]() { return dialogs_ == 1 && !QApplication::activeModalWidget(); }));
  ASSERT_TRUE(desk::Until([]() {
    return desk::TextOf(morva::kIdStatusLine) == QStringLiteral("Nothing was printed.");
  }));
}

}  // namespace
