// Assistive technology at the real window: every control says what it is and how it stands, and
// does what it does under the hand.

#include <QApplication>
#include <QComboBox>
#include <QListView>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <map>
#include <set>

#include "app/app_state.h"
#include "app/commands.h"
#include "app/mode_table.h"
#include "app/router.h"
#include "app/surfaces.h"
#include "cad/model/sketch.h"
#include "cad/tools/edit_parts.h"
#include "desk/access_desk.h"
#include "desk/cad_desk.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/program_tabs.h"
#include "library/shapes.h"
#include "platform/editor.h"
#include "platform/events.h"
#include "platform/listing.h"
#include "shell/modes.h"
#include "simulator/motion_path.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"
#include "text/codetext.h"

namespace {

using namespace morva;
using assist::Actions;
using assist::Do;
using assist::Of;

struct Place {
  std::string name;
  std::function<void()> enter;
  std::function<void()> leave;
};

const auto kNothing = [] {};

Place Panel(const char* name, int key) {
  return {name,
          [key] {
            SetSurface(kSurfaceCad);
            desk::Click(key);
          },
          [] { RouteCommand(kIdCadCancel, 0); }};
}

// Where a user can stand: each mode, what lies over it, each panel of the drawing workspace.
std::vector<Place> Places() {
  std::vector<Place> places;
  for (int n = 0; const ModeRow* row = ListedMode(n); ++n) {
    if (!ModeExists(row->mode)) continue;
    places.push_back({QString::fromUtf16(row->words).toStdString(),
                      [mode = row->mode] { SetMode(mode); }, [] { SetSurface(kSurfaceCode); }});
  }
  const auto turn = [](int id) { return [id] { desk::Click(id); }; };
  places.push_back({"the code index at the side", turn(kIdShowIndex), turn(kIdShowFeatures)});
  places.push_back({"the words view", turn(kIdCommandWords), turn(kIdCommandWords)});
  places.push_back({"the review", turn(kIdCompareSecond), turn(kIdCompareSecond)});
  places.push_back(
      {"the import", [] { RouteCommand(kIdImport, 0); }, [] { RouteCommand(kIdImportCancel, 0); }});
  places.push_back({"a feature's name", [] { RouteCommand(kIdInlineName, 0); },
                    [] { desk::KeyHere(Qt::Key_Escape); }});
  places.push_back(Panel("circular pattern", kIdCadCircularPanel));
  places.push_back(Panel("rectangular pattern", kIdCadGridPanel));
  places.push_back(Panel("scale", kIdCadScale));
  places.push_back(Panel("cut data", kIdCadCutData));
  places.push_back(Panel("polygon", kIdCadPolygon));
  places.push_back(Panel("revolve", kIdCadRevolve));
  places.push_back(Panel("dimension", kIdCadDimension));
  places.push_back(Panel("thickness", kIdCadThickness));
  return places;
}

QWidget* WidgetOf(QAccessibleInterface* speaks) { return qobject_cast<QWidget*>(speaks->object()); }

class Access : public CadDesk {
 protected:
  // A saved shape, a program with a path, and a drawing with a line and a circle that is selected.
  void SetUp() override {
    CadDesk::SetUp();
    SetSurface(kSurfaceCode);
    SavedShape ear;
    CopyBounded(ear.name, kShapeNameUnits, u"Ear");
    ear.objects[ear.count++] = {kTypeCircle, 0, 0, 0, 1, 0, 0};
    ASSERT_EQ(PutShape(ear), 0);
    RefreshShapeLists();
    Open(Write("part.NC",
               "%\nO1\n(MORVA TEXT 1)\n(MORVA NAME FACE)\nG20 G90\nG00 X0 Y0 Z1\nG01 Z-0.5 F10\n"
               "X4\nY2\n(MORVA END 1)\nM30\n%\n"));
    ASSERT_TRUE(desk::Until([] { return path.count > 3; }));
    desk::Run(200);
    SetSurface(kSurfaceCad);
    desk::Click(kIdCadCircle);
    ClickAt(1, 1);
    ClickAt(1.5, 1);
    desk::Click(kIdCadLine);
    ClickAt(-2, 0);
    ClickAt(2, 0);
    desk::KeyHere(Qt::Key_Escape);
    ASSERT_EQ(sketch.objectCount, 2);
    SetSurface(kSurfaceCode);
  }
  static QAccessibleInterface* Window() { return Of(platform::kMainWindow); }

  static void InEveryPlace(const std::function<void()>& check) {
    for (const Place& place : Places()) {
      SCOPED_TRACE(place.name);
      place.enter();
      desk::Run(60);
      check();
      place.leave();
      desk::Run(20);
    }
  }
};

// What a thing of the tree must be told as, whatever it is.
void ExpectWellTold(QAccessibleInterface* speaks) {
  SCOPED_TRACE(assist::Words(speaks));
  const QAccessible::State state = speaks->state();
  const QWidget* widget = WidgetOf(speaks);
  // What only holds other parts together says nothing and offers nothing.
  if (speaks->role() == QAccessible::Client) {
    EXPECT_FALSE(state.focusable);
    EXPECT_TRUE(Actions(speaks).isEmpty());
    return;
  }
  EXPECT_FALSE(speaks->text(QAccessible::Name).trimmed().isEmpty());
  EXPECT_NE(speaks->role(), QAccessible::NoRole);
  if (widget) {
    EXPECT_EQ(state.disabled, !widget->isEnabled());
    EXPECT_EQ(state.focusable, widget->focusPolicy() != Qt::NoFocus);
    EXPECT_EQ(state.focused, widget->hasFocus());
  }
  if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
    EXPECT_FALSE(combo->accessibleName().isEmpty());
    EXPECT_TRUE(speaks->text(QAccessible::Name).startsWith(combo->accessibleName()));
    EXPECT_TRUE(speaks->text(QAccessible::Name).endsWith(combo->currentText()));
  }
  const bool rows = speaks->role() == QAccessible::List;
  const bool bar = speaks->role() == QAccessible::ScrollBar;
  const bool worked = (state.focusable && !bar) || speaks->role() == QAccessible::ListItem;
  if (state.disabled && widget) {
    EXPECT_TRUE(Actions(speaks).isEmpty());
  } else if (worked && !rows) {
    EXPECT_FALSE(Actions(speaks).isEmpty());
  }
}

TEST_F(Access, TellsNameRoleAndStateOfEverythingInEveryPlace) {
  std::map<QAccessible::Role, int> roles;
  int seen = 0;
  InEveryPlace([&] {
    assist::Walk(Window(), [&](QAccessibleInterface* speaks) {
      ExpectWellTold(speaks);
      ++roles[speaks->role()];
      ++seen;
    });
  });
  EXPECT_GT(seen, 1000);
  for (const QAccessible::Role role :
       {QAccessible::Window, QAccessible::Button, QAccessible::CheckBox, QAccessible::ComboBox,
        QAccessible::EditableText, QAccessible::StaticText, QAccessible::List,
        QAccessible::ListItem, QAccessible::Slider, QAccessible::Canvas, QAccessible::Grouping}) {
    EXPECT_GT(roles[role], 0) << QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
  }
}

TEST_F(Access, TellsEveryPlacedThingUnderItsOwnRole) {
  InEveryPlace([] {
    for (int id = 1; id < 4000; ++id) {
      QWidget* widget = desk::WidgetOf(id);
      if (!widget || !widget->isVisible()) continue;
      EXPECT_NE(Of(widget)->role(), QAccessible::Client) << id;
    }
  });
}

void ExpectTurns(int id, const Command& row) {
  SCOPED_TRACE(assist::Words(Of(id)) + " " + std::to_string(id));
  const bool checkable = (row.told & kToldChecked) != 0;
  EXPECT_EQ(Of(id)->state().checkable, checkable);
  EXPECT_FALSE(Of(id)->state().checked);
  // The key of saved shapes goes on when one is picked from its menu.
  if (id == kIdCustomShapes) desk::AnswerMenu(QStringLiteral("Ear"));
  Do(id, checkable ? assist::Toggle() : assist::Press());
  EXPECT_TRUE(IsOn(id));
  EXPECT_EQ(Of(id)->state().checked, checkable);
}

// Hears what a control says in place of the application, which does nothing.
std::set<std::pair<int, int>> heard;
class Hearing {
 public:
  Hearing() : before_(&platform::Listener()), events_(*before_) {
    heard.clear();
    events_.command = [](int id, int notification) { heard.insert({id, notification}); };
    events_.listClick = nullptr;
    platform::ListenTo(&events_);
  }
  ~Hearing() { platform::ListenTo(before_); }

 private:
  const platform::Events* before_;
  platform::Events events_;
};

int IdOf(QWidget* widget) {
  for (int id = 1; id < 4000; ++id) {
    if (desk::WidgetOf(id) == widget) return id;
  }
  return 0;
}

// Each action of a control is the control's own word to the application.
void ExpectActionsWork(QAccessibleInterface* speaks) {
  SCOPED_TRACE(assist::Words(speaks));
  QWidget* widget = WidgetOf(speaks);
  const int id = widget ? IdOf(widget) : 0;
  for (const QString& action : Actions(speaks)) {
    SCOPED_TRACE(action.toStdString());
    heard.clear();
    if (action == assist::SetFocus()) {
      Do(speaks, action);
      EXPECT_TRUE(widget->hasFocus());
    } else if (speaks->role() == QAccessible::Button || speaks->role() == QAccessible::CheckBox) {
      const bool box = qobject_cast<QAbstractButton*>(widget)->inherits("QCheckBox");
      const bool before = speaks->state().checked;
      Do(speaks, action);
      EXPECT_TRUE(heard.contains({id, platform::kNotifyClick}));
      EXPECT_EQ(speaks->state().checked, box ? !before : before);
      if (box) Do(speaks, action);
    } else if (speaks->role() == QAccessible::ListItem) {
      const int list = IdOf(WidgetOf(speaks->parent()));
      Do(speaks, action);
      EXPECT_TRUE(list == 0 || heard.contains({list, platform::kNotifyListSelect}));
    }
  }
}

TEST_F(Access, WorksEveryControlInEveryPlace) {
  int worked = 0;
  InEveryPlace([&worked] {
    std::vector<QAccessibleInterface*> found;
    assist::Walk(Window(), [&found](QAccessibleInterface* speaks) { found.push_back(speaks); });
    // Who loses the keyboard may go; the order of the screen stays.
    const Hearing hearing;
    for (QAccessibleInterface* speaks : found) {
      if (!speaks->isValid() || speaks->state().invisible) continue;
      ExpectActionsWork(speaks);
      ++worked;
    }
  });
  EXPECT_GT(worked, 1000);
}

// Every key with a state, wherever it stands, is told as what it is, and goes on when it is off
// and is turned.
TEST_F(Access, TurnsEveryKeyThatHasAState) {
  std::set<int> turned;
  for (const Place& place : Places()) {
    SCOPED_TRACE(place.name);
    place.enter();
    for (const Command* row : AllCommands()) {
      for (int id = row->id; row->on && id <= std::max(row->id, row->last); ++id) {
        const QWidget* widget = desk::WidgetOf(id);
        const bool up = widget && widget->isVisible() && widget->isEnabled();
        if (!up || IsOn(id) || !turned.insert(id).second) continue;
        // Some tools begin with a line that is selected.
        SelectSketchObject(1);
        ExpectTurns(id, *row);
        place.leave();
        place.enter();
      }
    }
    place.leave();
  }
  EXPECT_GT(turned.size(), 40u);
}

TEST_F(Access, KeepsTheUnitAndTheTabThatIsOnWhenItIsTurned) {
  Do(kIdMm, assist::Toggle());
  EXPECT_TRUE(app.unitsMetric);
  Do(kIdMm, assist::Toggle());
  EXPECT_TRUE(app.unitsMetric);
  EXPECT_TRUE(Of(kIdMm)->state().checked);
  EXPECT_FALSE(Of(kIdInch)->state().checked);
  Do(kIdTabFirst, assist::Press());
  EXPECT_EQ(app.activeTab, 0);
  Do(kIdTabFirst, assist::Toggle());
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_TRUE(Of(kIdTabFirst)->state().checked);
}

TEST_F(Access, TurnsACheckBoxAsAClickDoes) {
  SetMode(kModeFind);
  EXPECT_FALSE(Of(kIdMatchCase)->state().checked);
  Do(kIdMatchCase, assist::Toggle());
  EXPECT_TRUE(Of(kIdMatchCase)->state().checked);
  EXPECT_TRUE(platform::IsChecked(kIdMatchCase));
  Do(kIdMatchCase, assist::Press());
  EXPECT_FALSE(platform::IsChecked(kIdMatchCase));
}

TEST_F(Access, GoesToTheModeOfAPressedRow) {
  QAccessibleInterface* modes = Of(kIdModeList);
  ASSERT_EQ(modes->childCount(), platform::RowCount(kIdModeList));
  QAccessibleInterface* simulator = modes->child(ModeListRow(kModeSimulator));
  EXPECT_FALSE(simulator->state().selected);
  EXPECT_TRUE(simulator->state().selectable);
  Do(simulator, assist::Press());
  EXPECT_EQ(app.mode, kModeSimulator);
  EXPECT_TRUE(simulator->state().selected);
  EXPECT_TRUE(simulator->state().focused);
  EXPECT_EQ(modes->focusChild(), simulator);
  const QPoint middle = simulator->rect().center();
  EXPECT_EQ(modes->childAt(middle.x(), middle.y()), simulator);
}

TEST_F(Access, TellsDimRowsAsDisabled) {
  QAccessibleInterface* modes = Of(kIdModeList);
  for (int row = 0; const ModeRow* listed = ListedMode(row); ++row) {
    EXPECT_EQ(modes->child(row)->state().disabled, !ModeExists(listed->mode)) << row;
  }
  QAccessibleInterface* feature = Of(kIdFeatureList)->child(0);
  EXPECT_FALSE(feature->state().disabled);
  Do(feature, assist::Press());
  Do(kIdFeatureInclude, assist::Press());
  ASSERT_TRUE(desk::Until([] { return FeatureRowExcluded(0); }));
  EXPECT_TRUE(feature->state().disabled);
  // It can be chosen all the same, or it would never come back.
  EXPECT_FALSE(Actions(feature).isEmpty());
  SetSurface(kSurfaceCad);
  QAccessibleInterface* object = Of(kIdCadOperations)->child(1);
  EXPECT_FALSE(object->state().disabled);
  Do(object, assist::Press());
  EXPECT_EQ(sketch.selected, 1);
  Do(kIdCadHide, assist::Press());
  EXPECT_TRUE(object->state().disabled);
}

// An action is done a moment after it was asked for; the list may be another one by then.
TEST_F(Access, WorksTheRowThatWasAskedForWhereverItStandsByThen) {
  const std::int64_t id = platform::RowData(kIdFeatureList, 0);
  const auto ask = [] {
    QAccessibleInterface* feature = Of(kIdFeatureList)->child(0);
    feature->actionInterface()->doAction(assist::Press());
  };
  const auto front = [](std::u16string_view block, int units) {
    platform::ReplaceRange(kIdEditor, {0, units}, block);
    RefreshFeatureList();
  };
  const std::u16string_view block = u"(MORVA TEXT 90)\r\nG4 P1\r\n(MORVA END 90)\r\n";
  ask();
  front(block, 0);
  ASSERT_EQ(platform::RowData(kIdFeatureList, 0), 90);
  ASSERT_EQ(platform::RowData(kIdFeatureList, 1), id);
  QCoreApplication::processEvents();
  EXPECT_EQ(SelectedFeatureId(), static_cast<std::int32_t>(id));
  // One that is gone by then is not worked, nor is what stands in its place.
  ask();
  front(u"", static_cast<int>(block.size()) - 3);
  ASSERT_EQ(platform::RowData(kIdFeatureList, 0), id);
  platform::SelectRow(kIdFeatureList, -1);
  QCoreApplication::processEvents();
  EXPECT_EQ(SelectedFeatureId(), 0);
}

TEST_F(Access, ChoosesRowsOfCombosAndOfListsOfSeveral) {
  desk::Click(kIdTabNew);
  ASSERT_EQ(app.tabCount, 3);
  desk::Click(kIdCompareSecond);
  ASSERT_TRUE(desk::Until([] { return desk::WidgetOf(kIdReviewLeft)->isVisible(); }));
  QAccessibleInterface* programs = Of(kIdReviewPrograms);
  EXPECT_TRUE(programs->state().multiSelectable);
  ASSERT_EQ(programs->childCount(), 3);
  Do(programs->child(0), assist::Press());
  for (const int row : {1, 2}) {
    Do(programs->child(row), assist::Toggle());
    EXPECT_TRUE(programs->child(row)->state().selected);
    EXPECT_TRUE(programs->child(0)->state().selected);
  }
  Do(programs->child(2), assist::Toggle());
  EXPECT_FALSE(platform::IsRowSelected(kIdReviewPrograms, 2));
  Do(programs->child(2), assist::Toggle());
  Do(kIdReviewSelected, assist::Press());

  QAccessibleInterface* combo = Of(kIdReviewLeft);
  EXPECT_EQ(combo->role(), QAccessible::ComboBox);
  ASSERT_EQ(combo->child(0)->childCount(), 3);
  EXPECT_EQ(platform::SelectedRow(kIdReviewLeft), 0);
  EXPECT_FALSE(combo->child(0)->child(2)->state().selected);
  Do(combo->child(0)->child(2), assist::Press());
  EXPECT_EQ(platform::SelectedRow(kIdReviewLeft), 2);
  EXPECT_TRUE(combo->child(0)->child(2)->state().selected);
  // And with the list open.
  combo->actionInterface()->doAction(Actions(combo).first());
  auto* box = qobject_cast<QComboBox*>(desk::WidgetOf(kIdReviewLeft));
  ASSERT_TRUE(desk::Until([box] { return box->view()->isVisible(); }));
  Do(combo->child(0)->child(0), assist::Press());
  EXPECT_EQ(platform::SelectedRow(kIdReviewLeft), 0);
  EXPECT_TRUE(desk::Until([box] { return !box->view()->isVisible(); }));
}

TEST_F(Access, InsertsACompletionWhoseRowIsPressed) {
  desk::Key(kIdEditor, Qt::Key_End, Qt::ControlModifier);
  desk::TypeInto(kIdEditor, QStringLiteral("\nG9"));
  ASSERT_TRUE(desk::Until([] { return platform::IsVisible(kIdCompletion); }));
  QAccessibleInterface* rows = Of(kIdCompletion);
  ASSERT_GT(rows->childCount(), 1);
  const QString code = rows->child(1)->text(QAccessible::Name).trimmed().section(u' ', 0, 0);
  Do(rows->child(1), assist::Press());
  EXPECT_TRUE(desk::TextOf(kIdEditor).contains(QStringLiteral("\n") + code)) << code.toStdString();
  EXPECT_FALSE(platform::IsVisible(kIdCompletion));
}

TEST_F(Access, WorksTheSliderInItsTenSteps) {
  QAccessibleInterface* slider = Of(kIdSpeedSlider);
  QAccessibleValueInterface* value = slider->valueInterface();
  EXPECT_EQ(slider->role(), QAccessible::Slider);
  ASSERT_TRUE(value);
  EXPECT_EQ(value->minimumValue().toInt(), 0);
  EXPECT_EQ(value->maximumValue().toInt(), 9);
  EXPECT_EQ(value->minimumStepSize().toInt(), 1);
  EXPECT_EQ(value->currentValue().toInt(), 3);
  EXPECT_EQ(slider->text(QAccessible::Value), QStringLiteral("1x"));
  Do(slider, QAccessibleActionInterface::increaseAction());
  EXPECT_EQ(playback.speedIndex, 4);
  Do(slider, QAccessibleActionInterface::decreaseAction());
  Do(slider, QAccessibleActionInterface::decreaseAction());
  EXPECT_EQ(playback.speedIndex, 2);
  for (const auto& [asked, taken] : {std::pair{7, 7}, {12, 9}, {-3, 0}}) {
    value->setCurrentValue(asked);
    QCoreApplication::processEvents();
    EXPECT_EQ(playback.speedIndex, taken);
    EXPECT_EQ(value->currentValue().toInt(), taken);
  }
  EXPECT_EQ(slider->text(QAccessible::Value), QStringLiteral("0.125x"));
}

TEST_F(Access, TellsWhatTheDrawnViewsShow) {
  const auto says = [](int id) { return Of(id)->text(QAccessible::Description).toStdString(); };
  EXPECT_EQ(Of(kViewToolpath)->role(), QAccessible::Canvas);
  EXPECT_EQ(says(kViewToolpath), "PATH EXTENTS (in)   X 4.0000   Y 2.0000   Z 1.5000");
  EXPECT_EQ(Of(kViewToolpath)->text(QAccessible::Value).toStdString(), says(kViewToolpath));
  Do(kIdPlayStart, assist::Press());
  // The path begins where the machine stands.
  EXPECT_TRUE(says(kViewToolpath).ends_with("  /  at line 1")) << says(kViewToolpath);
  SetPlaySpeed(0);
  Do(kIdPlayToggle, assist::Press());
  EXPECT_TRUE(says(kViewToolpath).ends_with("  /  playing, line 1")) << says(kViewToolpath);
  Do(kIdPlayEnd, assist::Press());
  const QStringList lines = desk::TextOf(kIdEditor).split(u'\n');
  const std::string last = std::to_string(lines.indexOf(QStringLiteral("Y2")) + 1);
  EXPECT_TRUE(says(kViewToolpath).ends_with("  /  at line " + last)) << says(kViewToolpath);
  SetSurface(kSurfaceCad);
  EXPECT_EQ(says(kViewCadCanvas), "2 objects, selected 2  Line");
}

// A menu that stands open is worked by `act`, in the loop of its own.
void InMenu(const std::function<void(QMenu*)>& act) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, qApp, [timer, act] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu || !menu->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    act(menu);
  });
  timer->start(5);
}

TEST_F(Access, TellsAndRunsTheRowsOfAMenu) {
  ASSERT_FALSE(switches.showRapids);
  bool open = false;
  InMenu([&open](QMenu* menu) {
    open = true;
    QAccessibleInterface* rows = Of(menu);
    EXPECT_FALSE(rows->text(QAccessible::Name).isEmpty());
    QAccessibleInterface* rapids = rows->child(0);
    EXPECT_EQ(rapids->role(), QAccessible::MenuItem);
    EXPECT_EQ(rapids->text(QAccessible::Name), QStringLiteral("Show rapid moves"));
    // What lies behind the menu waits.
    EXPECT_TRUE(Actions(Of(kIdMm)).isEmpty());
    Of(kIdMm)->actionInterface()->doAction(assist::Toggle());
    rapids->actionInterface()->doAction(assist::Press());
  });
  Do(kIdViewLayers, assist::Press());
  EXPECT_TRUE(open);
  EXPECT_TRUE(switches.showRapids);
  EXPECT_FALSE(app.unitsMetric);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Access, TellsDimRowsOfAMenuAsDisabled) {
  int dim = 0;
  int plain = 0;
  InMenu([&](QMenu* menu) {
    QAccessibleInterface* rows = Of(menu);
    for (int i = 0; i < rows->childCount(); ++i) {
      const QAction* action = menu->actions().at(i);
      if (action->isSeparator()) continue;
      EXPECT_EQ(rows->child(i)->state().disabled, !action->isEnabled());
      EXPECT_FALSE(rows->child(i)->text(QAccessible::Name).isEmpty());
      ++(action->isEnabled() ? plain : dim);
    }
    menu->close();
  });
  // Nothing is selected: there is nothing to cut.
  SetSurface(kSurfaceCad);
  SelectSketchObject(-1);
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
  QApplication::sendEvent(Canvas(), &event);
  EXPECT_GT(plain, 0);
  EXPECT_GT(dim, 0);
}

TEST_F(Access, WorksNothingBehindABox) {
  bool open = false;
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, qApp, [timer, &open] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    open = true;
    EXPECT_TRUE(Actions(Of(kIdMm)).isEmpty());
    Of(kIdMm)->actionInterface()->doAction(assist::Toggle());
    QCoreApplication::processEvents();
    box->reject();
  });
  timer->start(5);
  desk::TypeInto(kIdEditor, QStringLiteral("M08 "));
  Do(kIdClose, assist::Press());
  ASSERT_TRUE(open);
  EXPECT_FALSE(app.unitsMetric);
  EXPECT_FALSE(Of(kIdMm)->state().checked);
}

}  // namespace
