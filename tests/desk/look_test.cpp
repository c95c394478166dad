// The look and the handling of the real window: names, places, captions, focus and a job done
// by keyboard alone.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QTest>
#include <set>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/limits.h"
#include "app/router.h"
#include "desk/at_desk.h"
#include "documents/document_commands.h"
#include "documents/program_tabs.h"
#include "platform/canvas.h"
#include "platform/window.h"
#include "shell/keys.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "simulator/motion_path.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"

namespace {

constexpr int kLastId = 4000;  // no control of the main window has a greater one

struct Control {
  int id;
  QWidget* widget;
};

class Look : public AtDesk {
 protected:
  static QWidget* Window() { return desk::WidgetOf(platform::kMainWindow); }

  static std::vector<Control> Visible() {
    std::vector<Control> found;
    for (int id = 1; id < kLastId; ++id) {
      QWidget* widget = desk::WidgetOf(id);
      if (widget && widget->isVisible()) found.push_back({id, widget});
    }
    return found;
  }

  // Runs `check` in each of the two modes, at each of the sizes and panel widths.
  template <class Check>
  static void InEveryPlace(const Check& check) {
    for (const int mode : {morva::kModeHome, morva::kModeSimulator}) {
      morva::SetMode(mode);
      for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
        Resize(size.width(), size.height());
        for (const int panel : {morva::kLeftPanelLeast, 300, morva::kLeftPanelMost}) {
          morva::DragSplitter(panel);
          SCOPED_TRACE(testing::Message() << "mode " << mode << ", " << size.width() << " by "
                                          << size.height() << ", panel " << panel);
          check();
        }
      }
    }
  }

  static void OpenEight() {
    while (morva::app.tabCount < 8) desk::Click(morva::kIdTabNew);
    ASSERT_EQ(morva::app.tabCount, 8);
  }
};

TEST_F(Look, GivesEveryVisibleControlAnAccessibleName) {
  const std::vector<Control> controls = Visible();
  ASSERT_GT(controls.size(), 50u);
  for (const Control& control : controls) {
    QAccessibleInterface* speaks = QAccessible::queryAccessibleInterface(control.widget);
    ASSERT_TRUE(speaks) << control.id;
    EXPECT_FALSE(speaks->text(QAccessible::Name).trimmed().isEmpty()) << control.id;
  }
}

TEST_F(Look, TellsAssistiveTechnologyWhatIsOn) {
  const auto checked = [](int id) {
    QAccessibleInterface* speaks = QAccessible::queryAccessibleInterface(desk::WidgetOf(id));
    return speaks->state().checkable && speaks->state().checked;
  };
  EXPECT_TRUE(checked(morva::kIdInch));
  EXPECT_FALSE(checked(morva::kIdMm));
  EXPECT_TRUE(checked(morva::kIdViewGrid));
  EXPECT_FALSE(checked(morva::kIdMeasure));
  desk::Click(morva::kIdMm);
  desk::Click(morva::kIdViewMeasure);
  EXPECT_FALSE(checked(morva::kIdInch));
  EXPECT_TRUE(checked(morva::kIdMm));
  EXPECT_TRUE(checked(morva::kIdMeasure));
  EXPECT_TRUE(checked(morva::kIdViewMeasure));
  // The state is the application's: a press of the unit that is on already leaves it on.
  desk::Click(morva::kIdMm);
  EXPECT_TRUE(checked(morva::kIdMm));
  EXPECT_EQ(desk::TextOf(morva::kIdMm), QStringLiteral("MM *"));
  morva::SetPlaySpeed(9);
  desk::Click(morva::kIdViewMeasure);
  QAccessibleInterface* slider =
      QAccessible::queryAccessibleInterface(desk::WidgetOf(morva::kIdSpeedSlider));
  EXPECT_EQ(slider->text(QAccessible::Name), QStringLiteral("Simulation speed"));
  EXPECT_TRUE(slider->text(QAccessible::Description).contains(QStringLiteral("64x")));
}

void ExpectNothingOverAnother(const std::vector<Control>& controls) {
  for (std::size_t i = 0; i < controls.size(); ++i) {
    for (std::size_t j = i + 1; j < controls.size(); ++j) {
      if (controls[i].widget->parentWidget() != controls[j].widget->parentWidget()) continue;
      EXPECT_FALSE(controls[i].widget->geometry().intersects(controls[j].widget->geometry()))
          << controls[i].id << " and " << controls[j].id;
    }
  }
}

// With the review, the import panel and the words view, each in turn, and with the find pane
// beside each of them.
TEST_F(Look, LaysNoPanelOverAControl) {
  OpenEight();
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    for (const int mode :
         {int{morva::kModeHome}, int{morva::kModeSimulator}, int{morva::kModeFind}}) {
      SCOPED_TRACE(testing::Message()
                   << size.width() << " by " << size.height() << ", mode " << mode);
      morva::SetMode(mode);
      ExpectNothingOverAnother(Visible());
      desk::Click(morva::kIdCommandWords);
      EXPECT_TRUE(desk::WidgetOf(morva::kIdWordsEditor)->isVisible());
      ExpectNothingOverAnother(Visible());
      desk::Click(morva::kIdCommandWords);
      desk::Click(morva::kIdCompareSecond);
      EXPECT_TRUE(desk::WidgetOf(morva::kIdReviewRightPane)->isVisible());
      EXPECT_TRUE(desk::WidgetOf(morva::kIdRenumber)->isVisible());
      ExpectNothingOverAnother(Visible());
      desk::Click(morva::kIdCompareSecond);
      morva::RouteCommand(morva::kIdImport, 0);
      EXPECT_TRUE(desk::WidgetOf(morva::kIdImportHead)->isVisible());
      EXPECT_TRUE(desk::WidgetOf(morva::kIdRenumber)->isVisible());
      ExpectNothingOverAnother(Visible());
      desk::Click(morva::kIdImportCancel);
    }
  }
}

TEST_F(Look, LaysNoControlOverAnother) {
  OpenEight();
  InEveryPlace([]() { ExpectNothingOverAnother(Visible()); });
}

TEST_F(Look, KeepsEveryControlInsideTheWindow) {
  OpenEight();
  InEveryPlace([]() {
    for (const Control& control : Visible()) {
      if (control.id == platform::kMainWindow) continue;
      EXPECT_TRUE(Window()->rect().contains(control.widget->geometry())) << control.id;
      EXPECT_GE(control.widget->height(), 16) << control.id;
      EXPECT_GE(control.widget->width(), 24) << control.id;
    }
  });
}

TEST_F(Look, CutsNoCaptionOfAKeyThatShowsItsWords) {
  const auto fits = []() {
    for (const Control& control : Visible()) {
      const morva::KeyLook key = morva::KeyOf(control.id);
      if (key.id == 0 || key.face == morva::Face::Icon || key.face == morva::Face::Tab) continue;
      const auto* button = qobject_cast<QAbstractButton*>(control.widget);
      ASSERT_TRUE(button) << control.id;
      const int words = platform::TextWidth(
          key.font,
          button->text().replace(QStringLiteral("&&"), QStringLiteral("&")).toStdU16String());
      // Where the words do not fit, an icon must stand for them.
      if (key.face == morva::Face::Arrow) {
        EXPECT_LE(words + 4, control.widget->width() - morva::kOpenArrowWidth);
      } else if (key.face == morva::Face::Words) {
        EXPECT_LE(words + 4, control.widget->width()) << button->text().toStdString();
      } else {
        EXPECT_GE(morva::CommandOf(key.id)->icon, 0) << button->text().toStdString();
      }
    }
  };
  InEveryPlace(fits);
  // The longest words of keys whose words change.
  desk::Click(morva::kIdMm);
  desk::Click(morva::kIdPlayToggle);
  InEveryPlace(fits);
}

TEST_F(Look, CutsNoReadOutOfTheLink) {
  for (const int id : {morva::kIdDncState, morva::kIdDncBaud, morva::kIdDncPort}) {
    QWidget* label = desk::WidgetOf(id);
    for (const char16_t* words :
         {u"DNC: CONNECTION FAILED", u"DNC: TRANSFERRING", u"BAUD  115200", u"PORT  COM64"}) {
      const bool state = id == morva::kIdDncState;
      if (state != std::u16string_view(words).starts_with(u"DNC")) continue;
      EXPECT_LE(platform::TextWidth(platform::FontRole::Small, words), label->width()) << id;
    }
  }
}

TEST_F(Look, CutsNoHeadOfTheOutput) {
  InEveryPlace([]() {
    EXPECT_LE(platform::TextWidth(platform::FontRole::Emphasis, u"OUTPUT / VALIDATION"),
              desk::WidgetOf(morva::kIdOutputHead)->width());
  });
}

TEST_F(Look, KeepsTheRowsStillWhenTheirWordsChange) {
  const auto places = []() {
    std::vector<QRect> rects;
    for (const Control& control : Visible()) rects.push_back(control.widget->geometry());
    return rects;
  };
  const std::vector<QRect> before = places();
  desk::Click(morva::kIdMm);
  desk::Click(morva::kIdPlayToggle);
  desk::Click(morva::kIdViewMeasure);
  desk::Run(50);
  EXPECT_EQ(places(), before);
}

TEST_F(Look, TabGoesThroughEveryControlAndReturns) {
  std::set<const QWidget*> wanted;
  for (const Control& control : Visible()) {
    if (control.widget->isEnabled() && (control.widget->focusPolicy() & Qt::TabFocus)) {
      wanted.insert(control.widget);
    }
  }
  ASSERT_GT(wanted.size(), 40u);
  std::set<const QWidget*> seen;
  QWidget* first = desk::WidgetOf(morva::kIdNew);
  first->setFocus();
  for (std::size_t i = 0; i <= wanted.size(); ++i) {
    QWidget* now = QApplication::focusWidget();
    ASSERT_TRUE(now);
    if (!seen.insert(now).second) break;
    // Tab is a character in the program; Ctrl+Tab leaves it.
    const bool editor = now == desk::WidgetOf(morva::kIdEditor);
    QTest::keyClick(now, Qt::Key_Tab, editor ? Qt::ControlModifier : Qt::NoModifier);
  }
  EXPECT_EQ(QApplication::focusWidget(), first);
  for (const QWidget* widget : wanted) {
    EXPECT_TRUE(seen.count(widget)) << widget->accessibleName().toStdString();
  }
}

TEST_F(Look, TellsTheTruthAboutTheProgramAfterMarkersAndAutosave) {
  const auto shows = [](const char* words) {
    return desk::Until(
        [words]() { return desk::TextOf(morva::kIdInfoPanel).contains(QLatin1String(words)); });
  };
  // The markers of the fresh program were written by the workbench itself.
  EXPECT_TRUE(shows("Lines: 10"));
  const QString path = home_.filePath(QStringLiteral("part.NC"));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("G0 X0\n");
  file.close();
  desk::AnswerFile(path);
  desk::Click(morva::kIdOpen);
  ASSERT_TRUE(desk::Until([]() { return morva::app.tabCount == 2; }));
  // Markers alone are not written over the file; the first change after them is.
  EXPECT_TRUE(shows("State: Modified"));
  desk::TypeInto(morva::kIdEditor, QStringLiteral("G1 "));
  EXPECT_TRUE(shows("State: Saved / clean"));
}

TEST_F(Look, DoesATypicalJobByKeyboardAlone) {
  const QString path = home_.filePath(QStringLiteral("part.NC"));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("G90 G0 X0 Y0\nG1 X1 F10\nY1\nX0\nY0\nM30\n");
  file.close();
  const auto tabTo = [](int id) {
    for (int i = 0; i < 80; ++i) {
      if (!desk::Until([]() { return QApplication::focusWidget() != nullptr; })) break;
      QWidget* now = QApplication::focusWidget();
      if (now == desk::WidgetOf(id)) break;
      const bool editor = now == desk::WidgetOf(morva::kIdEditor);
      QTest::keyClick(now, Qt::Key_Tab, editor ? Qt::ControlModifier : Qt::NoModifier);
    }
    return QApplication::focusWidget() == desk::WidgetOf(id);
  };
  const auto press = [](Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    desk::KeyHere(key, held);
  };
  ASSERT_EQ(QApplication::focusWidget(), desk::WidgetOf(morva::kIdEditor));
  desk::AnswerFile(path);
  press(Qt::Key_O, Qt::ControlModifier);
  ASSERT_TRUE(desk::Until([]() { return morva::app.tabCount == 2; }));
  ASSERT_TRUE(desk::Until(
      []() { return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("(MORVA END 1)")); }));
  ASSERT_TRUE(tabTo(morva::kIdEditor));
  press(Qt::Key_F5);
  ASSERT_TRUE(desk::Until([]() {
    return desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Validation complete"));
  }));
  ASSERT_TRUE(tabTo(morva::kIdPath));
  press(Qt::Key_Space);
  EXPECT_EQ(morva::path.count, 5);
  ASSERT_TRUE(tabTo(morva::kViewToolpath));
  press(Qt::Key_Space);
  EXPECT_TRUE(morva::playback.playing);
  press(Qt::Key_Space);
  EXPECT_FALSE(morva::playback.playing);
  ASSERT_TRUE(tabTo(morva::kIdSpeedSlider));
  press(Qt::Key_Right);
  EXPECT_EQ(morva::playback.speedIndex, 4);
  ASSERT_TRUE(tabTo(morva::kIdTabFirst));
  press(Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return morva::app.activeTab == 0; }));
  ASSERT_TRUE(tabTo(morva::kIdTabFirst + 1));
  press(Qt::Key_Space);
  ASSERT_TRUE(desk::Until([]() { return morva::app.activeTab == 1; }));
  // A panel may take the keyboard when it comes up.
  for (int i = 0; i < 12 && morva::app.mode != morva::kModeSimulator; ++i) {
    ASSERT_TRUE(tabTo(morva::kIdModeList));
    press(Qt::Key_Down);
    // The workspace row is passed over, not entered.
    if (morva::app.mode == morva::kModeHome) press(Qt::Key_Down);
  }
  EXPECT_EQ(morva::app.mode, morva::kModeSimulator);
  ASSERT_TRUE(tabTo(morva::kIdModeList));
  press(Qt::Key_Home);
  EXPECT_EQ(morva::app.mode, morva::kModeHome);
  ASSERT_TRUE(tabTo(morva::kIdEditor));
  desk::TypeHere(QStringLiteral("(BY KEYS)"));
  press(Qt::Key_S, Qt::ControlModifier);
  ASSERT_TRUE(desk::Until([]() {
    return desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Saved program."));
  }));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.readAll().contains("(BY KEYS)"));
}

}  // namespace
