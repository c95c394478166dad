// The toolpath view with narrow bars on the real window: a made-up mode whose panel asks for it,
// and a made-up surface. Nothing lies over another, and form, view and bars have their place.

#include <QAccessible>
#include <vector>

#include "app/app_state.h"
#include "app/panels.h"
#include "app/surfaces.h"
#include "desk/at_desk.h"
#include "forms/form.h"
#include "forms/sheet.h"
#include "library/units.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "support/groove.h"

namespace {

namespace groove = support::groove;
using platform::Rect;

constexpr int kLastId = 4000;  // no control of the program's has a greater one
constexpr int kFields[] = {groove::kSide,
                           groove::kFirst + groove::kWidth,
                           groove::kFirst + groove::kHoles,
                           groove::kFirst + groove::kDepth,
                           groove::kFirst + groove::kFeed,
                           groove::kPicture,
                           groove::kInsert};
// The form is higher than what a small window leaves it, so it scrolls.
enum : int { kFrame = 41020, kPaper, kBar };
constexpr morva::Sheet kSheet{.frame = {kFrame, u"MadeUpFrame", u"Groove"},
                              .paper = {kPaper, u"MadeUpPaper", u"Groove"},
                              .bar = {kBar, u"MadeUpBar", u"Scroll the groove"},
                              .parent = platform::kMainWindow};
constexpr morva::FormLook kLook{.edge = 2};
const morva::Form kForm{.look = &kLook,
                        .sheet = &kSheet,
                        .parent = kPaper,
                        .rows = groove::kBuilder.form->rows,
                        .metric = morva::UnitsMetric};

constexpr int kViewKeys[] = {morva::kIdViewRefresh,  morva::kIdViewFit,     morva::kIdViewPan,
                             morva::kIdViewExtents,  morva::kIdViewMeasure, morva::kIdViewGrid,
                             morva::kIdViewGridMenu, morva::kIdViewLayers};
constexpr int kPlayKeys[] = {morva::kIdPlayStart,   morva::kIdPlayRewind, morva::kIdPlayToggle,
                             morva::kIdPlayForward, morva::kIdPlayEnd,    morva::kIdPlayStop};
constexpr int kMadeUpSurface = 41030;
constexpr int kMadeUpMode = 93;  // no mode of the program
constexpr int kCell = 24;        // pixels from a key to the next one

QRect Place(int id) {
  const QWidget* widget = desk::WidgetOf(id);
  return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
}

class NarrowBars : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    desk::TypeInto(morva::kIdEditor,
                   QStringLiteral("G90 G0 X0 Y0\nG1 Z-0.1 F10\nX-2\nY1.5\nX0\nY0\n"));
    desk::Click(morva::kIdPath);
  }
  static QWidget* Window() { return desk::WidgetOf(platform::kMainWindow); }
  static std::vector<int> Standing() {
    std::vector<int> ids;
    const auto take = [&ids](int id) {
      const QWidget* widget = desk::WidgetOf(id);
      if (widget && widget->isVisible()) ids.push_back(id);
    };
    for (int id = 1; id < kLastId; ++id) take(id);
    for (const int id : {int{kFrame}, int{kBar}, int{kMadeUpSurface}}) take(id);
    return ids;
  }
  static void ExpectNothingOverAnother() {
    const std::vector<int> ids = Standing();
    ASSERT_GT(ids.size(), 25u);
    const QRect client(Window()->mapToGlobal(QPoint(0, 0)), Window()->size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
      EXPECT_TRUE(client.contains(Place(ids[i]))) << ids[i];
      for (std::size_t k = i + 1; k < ids.size(); ++k) {
        const QWidget* a = desk::WidgetOf(ids[i]);
        const QWidget* b = desk::WidgetOf(ids[k]);
        if (a->isAncestorOf(b) || b->isAncestorOf(a)) continue;
        EXPECT_FALSE(Place(ids[i]).intersects(Place(ids[k]))) << ids[i] << " and " << ids[k];
      }
    }
  }
  template <std::size_t kCount>
  static void ExpectKeysInCells(const int (&ids)[kCount], int left) {
    for (std::size_t i = 0; i < kCount; ++i) {
      ASSERT_TRUE(desk::WidgetOf(ids[i])->isVisible()) << ids[i];
      EXPECT_EQ(Place(ids[i]).left(), left + kCell * static_cast<int>(i)) << ids[i];
      EXPECT_EQ(Place(ids[i]).height(), kCell) << ids[i];
      EXPECT_LT(Place(ids[i]).width(), kCell) << ids[i];
    }
  }
  static void ExpectView() {
    ASSERT_TRUE(desk::WidgetOf(morva::kViewToolpath)->isVisible());
    const QRect view = Place(morva::kViewToolpath);
    EXPECT_GE(view.width(), 300);
    EXPECT_GE(view.height(), 200);
    constexpr int kIndent = 12;  // pixels
    ExpectKeysInCells(kViewKeys, view.left() + kIndent);
    ExpectKeysInCells(kPlayKeys, view.left());
    EXPECT_FALSE(desk::WidgetOf(morva::kIdPlayPrevious)->isVisible());
    EXPECT_FALSE(desk::WidgetOf(morva::kIdPlayNext)->isVisible());
    EXPECT_LT(Place(morva::kIdViewRefresh).bottom(), view.top());
    EXPECT_GT(Place(morva::kIdPlayStart).top(), view.bottom());
    EXPECT_GE(Place(morva::kIdSpeedSlider).width(), 280);
    ExpectKeysToWork();
  }
  // By the pointer, where the keys stand.
  static void ExpectKeysToWork() {
    const bool grid = GridIsOn();
    desk::Click(morva::kIdViewGrid);
    EXPECT_NE(GridIsOn(), grid);
    desk::Click(morva::kIdViewGrid);
    desk::Click(morva::kIdViewFit);
  }
  static bool GridIsOn() {
    QWidget* key = desk::WidgetOf(morva::kIdViewGrid);
    return QAccessible::queryAccessibleInterface(key)->state().checked;
  }
  template <class Look>
  static void AtBothSizes(const char* what, const Look& look) {
    for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
      SCOPED_TRACE(testing::Message() << size.width() << " by " << size.height());
      Resize(size.width(), size.height());
      desk::Run(100);
      ExpectNothingOverAnother();
      look(size);
      Show(QStringLiteral("narrow_%1_%2.png").arg(what).arg(size.width()).toLatin1().constData());
    }
  }

  static void JoinMode(int mode) {
    morva::AddCommands(groove::kBuilder.commands);
    morva::RegisterForm(kForm);
    morva::RegisterSheet<kSheet>();
    morva::Panel panel;
    panel.mode = mode;
    panel.heightAboveView = 320;
    panel.make = [] { morva::MakeForm(kForm); };
    panel.place = [](const Rect& area) { morva::PlaceForm(kForm, area); };
    panel.hide = [] { morva::HideForm(kForm); };
    morva::RegisterPanel(panel);
    panel.make();
    morva::SetMode(mode);
  }
  // The form fills its panel's body, and each of its controls comes into sight.
  static void ExpectForm() {
    const Rect& body = morva::Areas().panelBody;
    const Rect frame = platform::PlaceInMainWindow(kFrame);
    EXPECT_EQ(frame.left, body.left);
    EXPECT_EQ(frame.top, body.top);
    EXPECT_EQ(frame.bottom, body.bottom);
    for (const int id : kFields) {
      morva::ShowOnSheet(kSheet, platform::PlaceOf(id));
      ASSERT_TRUE(desk::WidgetOf(id)->isVisible()) << id;
      EXPECT_TRUE(Place(kFrame).contains(Place(id))) << id;
    }
    morva::ScrollSheetToTop(kSheet);
  }
};

TEST_F(NarrowBars, StandWithTheFormOfAMode) {
  JoinMode(kMadeUpMode);
  AtBothSizes("mode", [](const QSize& size) {
    ExpectForm();
    ExpectView();
    const QRect view = Place(morva::kViewToolpath);
    EXPECT_LT(view.right(), Place(kFrame).left());
    EXPECT_EQ(view.top() > Place(morva::kIdEditor).bottom(), size.width() == 1200);
  });
  morva::SetMode(morva::kModeHome);
  ExpectNothingOverAnother();
  EXPECT_TRUE(desk::WidgetOf(morva::kIdPlayNext)->isVisible());
}

TEST_F(NarrowBars, StandWithTheFormOfAModeThatHasAHelpText) {
  constexpr int kHelpedMode = 95;
  static const morva::ModeRow kRow{.mode = kHelpedMode,
                                   .header = u"MADE UP",
                                   .help = u"HELP OF A MODE\r\n\r\nWords below its form."};
  morva::RegisterMode(kRow);
  JoinMode(kHelpedMode);
  AtBothSizes("help", [](const QSize&) {
    ExpectForm();
    ExpectView();
  });
}

TEST_F(NarrowBars, StandBesideASurface) {
  platform::ViewSpec made;
  made.id = kMadeUpSurface;
  made.className = u"MadeUpSurface";
  made.accessibleName = u"Made up";
  ASSERT_TRUE(platform::MakeView(made));
  static Rect given;
  morva::Surface skim;
  constexpr int kNumber = 9;  // no surface of the program
  skim.surface = kNumber;
  skim.withView = true;
  skim.show = [](const Rect& area) {
    given = area;
    morva::ShowAt(kMadeUpSurface, area);
  };
  skim.hide = [] { platform::SetVisible(kMadeUpSurface, false); };
  morva::RegisterSurface(skim);
  morva::SetSurface(kNumber);
  AtBothSizes("surface", [](const QSize& size) {
    EXPECT_GE(platform::RectWidth(given), size.width() / 2);
    EXPECT_LT(Place(kMadeUpSurface).right(), Place(morva::kViewToolpath).left());
    ExpectView();
  });
}

}  // namespace
