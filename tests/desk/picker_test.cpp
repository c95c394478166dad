// The destination picker on the real window: keys and pointer while its own loop runs.

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <functional>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/limits.h"
#include "cad/model/sketch.h"
#include "desk/cad_desk.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "platform/editor.h"
#include "platform/window.h"

namespace {

class PickerAtTheDesk : public CadDesk {
 protected:
  void SetUp() override {
    CadDesk::SetUp();
    desk::Click(morva::kIdCadLine);
    ClickAt(0, 0);
    ClickAt(2, 0);
    ASSERT_EQ(morva::sketch.objectCount, 1);
    desk::KeyHere(Qt::Key_Escape);
  }

  static bool Stands() {
    QWidget* dialog = desk::WidgetOf(morva::kViewDestination);
    return dialog != nullptr && QApplication::activeModalWidget() == dialog;
  }
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    desk::KeyHere(key, modifiers);
  }
  static void Type(const char* text) { desk::TypeHere(QString::fromLatin1(text)); }
  static QString Position() { return desk::TextOf(morva::kIdDestinationPosition); }
  static QString Help() { return desk::TextOf(morva::kIdDestinationHelp); }
  static QStringList Programs() {
    QStringList rows;
    auto* combo = qobject_cast<QComboBox*>(desk::WidgetOf(morva::kIdDestinationProgram));
    for (int i = 0; combo && i < combo->count(); ++i) rows << combo->itemText(i);
    return rows;
  }
  static QString Code() { return desk::TextOf(morva::kIdEditor); }
  static std::vector<int> Ids() {
    const std::u16string text(platform::EditorText(morva::kIdEditor));
    morva::ScanProgramText(text);
    std::vector<int> ids;
    for (int i = 0; i < morva::features.count; ++i) ids.push_back(morva::features.rows[i].id);
    return ids;
  }
  // The offscreen platform has no window manager, which gives the keyboard back to the window
  // below the one that closed.
  static void GiveKeyboardBack(int window) {
    if (QGuiApplication::platformName() != QStringLiteral("offscreen")) return;
    desk::WidgetOf(window)->activateWindow();
  }

  // The caret before the first place of these words, or beside it.
  static void CaretAt(std::u16string_view words, int beside) {
    const std::u16string text(platform::EditorText(morva::kIdEditor));
    const std::size_t at = text.find(words);
    ASSERT_NE(at, text.npos);
    const int position = morva::MapTextOffset(text, static_cast<std::int32_t>(at)) + beside;
    platform::SetEditorSelection(morva::kIdEditor, {position, position});
  }
  // A drawing that stands in a block already is to become another block.
  static void WantAnother() { desk::AnswerBox(QStringLiteral("No")); }

  // Generate by its key; `act` is what the user does in the picker. It must end it.
  void Generate(const std::function<void()>& act) {
    bool stood = false;
    QTimer late;
    late.setSingleShot(true);
    QObject::connect(&late, &QTimer::timeout, []() {
      ADD_FAILURE() << "the picker still stands";
      desk::Click(morva::kIdDestinationCancel);
    });
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&]() {
      if (!Stands() || !(HasKeyboard(morva::kIdDestinationPosition) ||
                         HasKeyboard(morva::kIdDestinationProgram))) {
        return;
      }
      watch.stop();
      stood = true;
      act();
      late.start(1000);
    });
    watch.start(10);
    desk::Click(morva::kIdCadGenerate);
    EXPECT_TRUE(stood);
    EXPECT_FALSE(Stands());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
};

TEST_F(PickerAtTheDesk, TabFollowsTheScreenAndEscapeChangesNothing) {
  const QString code = Code();
  const int order[] = {morva::kIdDestinationPosition, morva::kIdDestinationList,
                       morva::kIdDestinationSplit,    morva::kIdDestinationHelp,
                       morva::kIdDestinationInsert,   morva::kIdDestinationCancel,
                       morva::kIdDestinationProgram};
  for (const int last : order) {
    Generate([&]() {
      Show("picker_1.png");
      for (const int id : order) {
        EXPECT_TRUE(HasKeyboard(id)) << id;
        Press(Qt::Key_Tab);
      }
      EXPECT_TRUE(HasKeyboard(morva::kIdDestinationPosition));
      Press(Qt::Key_Backtab, Qt::ShiftModifier);
      EXPECT_TRUE(HasKeyboard(morva::kIdDestinationProgram));
      while (!HasKeyboard(last)) Press(Qt::Key_Backtab, Qt::ShiftModifier);
      Press(Qt::Key_Escape);
    });
    EXPECT_EQ(Code(), code) << last;
    EXPECT_EQ(morva::app.tabCount, 1);
    GiveKeyboardBack(platform::kMainWindow);
    EXPECT_TRUE(desk::Until([]() { return QApplication::focusWidget() != nullptr; }));
  }
}

TEST_F(PickerAtTheDesk, EnterInsertsFromEveryControlButCancel) {
  const int controls[] = {morva::kIdDestinationPosition, morva::kIdDestinationProgram,
                          morva::kIdDestinationList, morva::kIdDestinationHelp,
                          morva::kIdDestinationInsert};
  std::vector<int> wanted = Ids();
  for (const int id : controls) {
    if (id != controls[0]) WantAnother();
    Generate([id]() {
      while (!HasKeyboard(id)) Press(Qt::Key_Tab);
      Press(Qt::Key_Return);
    });
    EXPECT_EQ(Ids().size(), wanted.size() + 1) << id;
    wanted = Ids();
  }
  WantAnother();
  Generate([]() {
    while (!HasKeyboard(morva::kIdDestinationCancel)) Press(Qt::Key_Tab);
    Press(Qt::Key_Return);
  });
  EXPECT_EQ(Ids(), wanted);
}

TEST_F(PickerAtTheDesk, StaysWithTheKeyboardInTheBoxAfterARefusedPosition) {
  Generate([]() {
    // The number is marked: typing takes its place.
    Type("3");
    EXPECT_TRUE(Help().contains(QStringLiteral("at operation 3"))) << Help().toStdString();
    for (const char* bad : {"3", "0"}) {
      Press(Qt::Key_A, Qt::ControlModifier);
      Type(bad);
      desk::AnswerBox(QStringLiteral("OK"));
      Press(Qt::Key_Return);
      ASSERT_TRUE(Stands());
      EXPECT_EQ(desk::LastBoxText(),
                QStringLiteral("Choose an operation position within the displayed range."));
      GiveKeyboardBack(morva::kViewDestination);
      ASSERT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdDestinationPosition); }));
    }
    // What was refused is marked: typing takes its place.
    Type("1");
    EXPECT_EQ(Position(), QStringLiteral("1"));
    Press(Qt::Key_Enter, Qt::KeypadModifier);
  });
  EXPECT_EQ(desk::BoxesSeen(), 2);
  EXPECT_EQ(Ids(), (std::vector<int>{2, 1}));
}

TEST_F(PickerAtTheDesk, OpensANewProjectByKeysAndGoesIntoAnotherProgramByPointer) {
  Generate([]() {
    EXPECT_EQ(Programs().last(), QStringLiteral("+ New project"));
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    Press(Qt::Key_End);
    EXPECT_EQ(Position(), QStringLiteral("2"));
    EXPECT_TRUE(Help().contains(QStringLiteral("New project\u201D at operation 2")));
    EXPECT_TRUE(
        Help().contains(QStringLiteral("The source drawing remains in its original project.")));
    Show("picker_2_new.png");
    Press(Qt::Key_Return);
  });
  ASSERT_EQ(morva::app.tabCount, 2);
  EXPECT_EQ(morva::app.activeTab, 1);
  EXPECT_TRUE(Code().contains(QStringLiteral("(FILE: New project.NC)")));
  EXPECT_LT(Code().indexOf(QStringLiteral("(FILE: ")),
            Code().indexOf(QStringLiteral("(CUSTOM SHAPE EDITOR)")));
  EXPECT_EQ(morva::sketch.objectCount, 0);

  // Back to the drawing; its code once more, by pointer alone.
  morva::SwitchTab(0);
  ASSERT_EQ(morva::sketch.objectCount, 1);
  Generate([]() {
    auto* combo = qobject_cast<QComboBox*>(desk::WidgetOf(morva::kIdDestinationProgram));
    QTest::mouseClick(combo, Qt::LeftButton);
    ASSERT_TRUE(desk::Until([combo]() { return combo->view()->isVisible(); }));
    const QRect row = combo->view()->visualRect(combo->model()->index(1, 0));
    // The list takes a press that comes too soon behind its opening for the same one.
    desk::Run(QApplication::doubleClickInterval() + 50);
    QTest::mouseClick(combo->view()->viewport(), Qt::LeftButton, {}, row.center());
    ASSERT_TRUE(desk::Until([]() { return Position() == QStringLiteral("3"); }));
    // What lies behind it hears no pointer.
    QWidget* window = desk::WidgetOf(platform::kMainWindow);
    QWidget* key = desk::WidgetOf(morva::kIdSurfaceCode);
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                      key->mapTo(window, key->rect().center()));
    desk::Run(50);
    EXPECT_EQ(morva::app.surface, morva::kSurfaceCad);
    desk::Click(morva::kIdDestinationInsert);
  });
  EXPECT_EQ(morva::app.activeTab, 1);
  EXPECT_EQ(Ids(), (std::vector<int>{1, 2, 3}));
}

TEST_F(PickerAtTheDesk, OffersNoNewProjectWithEightProgramsOpen) {
  while (morva::app.tabCount < morva::kMaxTabs) {
    ASSERT_GE(morva::OpenTab(u"", u"G0 X1", u"X.NC"), 0);
  }
  Generate([]() {
    EXPECT_EQ(Programs().size(), 8);
    EXPECT_FALSE(Programs().contains(QStringLiteral("+ New project")));
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    Press(Qt::Key_End);
    EXPECT_TRUE(Help().contains(QStringLiteral("Add code to \u201C") +
                                QString::fromStdU16String(morva::NameOfTab(7)) +
                                QStringLiteral("\u201D")));
    Press(Qt::Key_Return);
  });
  EXPECT_EQ(morva::app.activeTab, 7);
  EXPECT_TRUE(Code().contains(QStringLiteral("(CUSTOM SHAPE EDITOR)")));
}

TEST_F(PickerAtTheDesk, HoldsThePositionOfAnUpdateUntilAnotherProgramIsChosen) {
  Generate([]() { Press(Qt::Key_Return); });
  ASSERT_EQ(Ids(), (std::vector<int>{2, 1}));
  ASSERT_GE(morva::OpenTab(u"", u"G0 X1", u"Other.NC"), 0);
  desk::Click(morva::kIdSurfaceCode);
  desk::WidgetOf(morva::kIdFeatureList)->setFocus();
  desk::Key(morva::kIdFeatureList, Qt::Key_Home);
  desk::Key(morva::kIdFeatureList, Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return morva::app.surface == morva::kSurfaceCad; }));
  ASSERT_EQ(morva::editLink.kind, morva::kKindSketch);

  desk::Click(morva::kIdCadCutData);
  desk::Key(morva::kIdCadDepth, Qt::Key_A, Qt::ControlModifier);
  desk::TypeInto(morva::kIdCadDepth, QStringLiteral("-0.3"));
  Generate([]() {
    QWidget* box = desk::WidgetOf(morva::kIdDestinationPosition);
    EXPECT_FALSE(box->isEnabled());
    EXPECT_EQ(Position(), QStringLiteral("1"));
    EXPECT_TRUE(Help().startsWith(QStringLiteral("Update code in \u201C")));
    Show("picker_3_update.png");
    // Tab passes the box by, and a click does not get into it.
    Press(Qt::Key_Tab);
    EXPECT_TRUE(HasKeyboard(morva::kIdDestinationHelp));
    QTest::mouseClick(box, Qt::LeftButton);
    EXPECT_FALSE(box->hasFocus());
    while (!HasKeyboard(morva::kIdDestinationProgram)) Press(Qt::Key_Tab);
    Press(Qt::Key_Down);
    EXPECT_TRUE(box->isEnabled());
    EXPECT_EQ(Position(), QStringLiteral("2"));
    Press(Qt::Key_Up);
    EXPECT_FALSE(box->isEnabled());
    EXPECT_EQ(Position(), QStringLiteral("1"));
    Press(Qt::Key_Return);
  });
  EXPECT_EQ(Ids(), (std::vector<int>{2, 1}));
  EXPECT_TRUE(Code().contains(QStringLiteral("G01 Z-0.300 F10.00")));
  EXPECT_FALSE(Code().contains(QStringLiteral("G01 Z-0.100 F10.00")));
  EXPECT_EQ(morva::editLink.kind, 0);
}

// A long program of other hands, with the caret behind its tool change.
TEST_F(PickerAtTheDesk, PutsTheCodeAtTheCaretOfAForeignProgramWithEnterTwice) {
  QString text =
      QStringLiteral("%\nO1001 (PLATE)\nG20 G90 G54\nT1 M06\nG00 X0 Y0 S3000 M03\nM30\n%\n");
  platform::SetEditorText(morva::kIdEditor, text.toStdU16String());
  ASSERT_TRUE(desk::Until([]() { return Code().contains(QStringLiteral("(MORVA END 1)")); }));
  CaretAt(u"G00 X0", -1);
  desk::Click(morva::kIdCadCutData);
  bool stood = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&]() {
    if (!Stands() || !HasKeyboard(morva::kIdDestinationPosition)) return;
    watch.stop();
    stood = true;
    auto* box = qobject_cast<QLineEdit*>(desk::WidgetOf(morva::kIdDestinationPosition));
    EXPECT_EQ(box->selectedText(), QStringLiteral("1"));
    EXPECT_EQ(desk::TextOf(morva::kIdDestinationAround),
              QStringLiteral("Behind line 6 (T1 M06), before line 7 (G00 X0 Y0 S3000 M03)"));
    auto* check = qobject_cast<QAbstractButton*>(desk::WidgetOf(morva::kIdDestinationSplit));
    EXPECT_TRUE(check->isChecked());
    EXPECT_GE(check->width(), check->sizeHint().width());
    EXPECT_EQ(check->text(), QStringLiteral("Split the user code at line 7"));
    Show("picker_4_split.png");
    // By hand and back: Space turns it over, the words follow.
    check->setFocus();
    Press(Qt::Key_Space);
    EXPECT_EQ(desk::TextOf(morva::kIdDestinationAround),
              QStringLiteral("Before the program's head (O1001)"));
    Press(Qt::Key_Space);
    box->setFocus();
    Press(Qt::Key_Return);
  });
  watch.start(10);
  desk::Key(morva::kIdCadFeed, Qt::Key_Return);
  ASSERT_TRUE(stood);
  EXPECT_EQ(Ids(), (std::vector<int>{1, 2, 3}));
  EXPECT_LT(Code().indexOf(QStringLiteral("T1 M06")),
            Code().indexOf(QStringLiteral("(CUSTOM SHAPE EDITOR)")));
  EXPECT_LT(Code().indexOf(QStringLiteral("(CUSTOM SHAPE EDITOR)")),
            Code().indexOf(QStringLiteral("G00 X0 Y0 S3000")));
}

// Nothing is cut off with many operations of long names and long lines of code around the place.
TEST_F(PickerAtTheDesk, ShowsALongListAndLongWordsWhole) {
  QString text;
  for (int i = 1; i <= 30; ++i) {
    text += QStringLiteral(
                "(MORVA TEXT %1)\n(MORVA NAME Operation %1 of the left hand bracket, roughed and "
                "finished in one setup%2)\nG00 X%1.123456789 Y-12.123456789 Z1.\nG01 X1\n"
                "(MORVA END %1)\n")
                .arg(i)
                .arg(i % 2 ? QStringLiteral("") : QStringLiteral(", soft jaws"));
  }
  platform::SetEditorText(morva::kIdEditor, text.toStdU16String());
  CaretAt(u"G01 X1\r\n(MORVA END 15)", 0);
  const QSize sizes[] = {{1200, 800}, {1560, 940}};
  for (const QSize& size : sizes) {
    Resize(size.width(), size.height());
    Generate([]() {
      Show("picker_5_long.png");
      const QWidget* dialog = desk::WidgetOf(morva::kViewDestination);
      for (const int id : {morva::kIdDestinationAround, morva::kIdDestinationList,
                           morva::kIdDestinationInsert, morva::kIdDestinationHelp}) {
        EXPECT_TRUE(dialog->rect().contains(desk::WidgetOf(id)->geometry())) << id;
      }
      // The words break into two lines at most, which is what their place holds.
      const QWidget* around = desk::WidgetOf(morva::kIdDestinationAround);
      const QRect words =
          around->fontMetrics().boundingRect(QRect(0, 0, around->width(), 1000), Qt::TextWordWrap,
                                             desk::TextOf(morva::kIdDestinationAround));
      EXPECT_LE(words.height(), around->height());
      Press(Qt::Key_Escape);
    });
    GiveKeyboardBack(platform::kMainWindow);
  }
}

}  // namespace
