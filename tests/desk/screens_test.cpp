// Every mode and surface at the sizes of small and large screens: nothing is outside the window,
// over another control or cut, and what does not fit scrolls.

#include <QAbstractButton>
#include <QLabel>
#include <QScreen>
#include <algorithm>
#include <functional>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/router.h"
#include "desk/at_desk.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "shell/modes.h"

namespace {

using namespace morva;

struct Placed {
  int id;
  QWidget* widget;
};

// What may lie over others: help for the pointer, boxes that float where the work is.
constexpr int kFloating[] = {kIdOutputHelp,  kIdInlineName,  kIdCompletion,
                             kIdCadSizeBox1, kIdCadSizeBox2, kIdCadSizeCaption};
// Forms that move in their view, each with the bar that moves it.
struct Sheet {
  int paper;
  int bar;
};
constexpr Sheet kSheets[] = {{kViewCadSheet, kViewCadScroll}, {kViewBuilderPaper, kViewBuilderBar},
                             {kViewToolPaper, kViewToolBar},  {kViewDncPaper, kViewDncBar},
                             {kViewSkimPaper, kViewSkimBar},  {kViewPlatePaper, kViewPlateBar}};

class Screens : public AtDesk {
 protected:
  static std::vector<Placed> Shown() {
    std::vector<Placed> found;
    for (const auto& [first, last] : {std::pair{1, 4000}, {20002, 20100}, {30000, 32000}}) {
      for (int id = first; id <= last; ++id) {
        QWidget* widget = desk::WidgetOf(id);
        if (widget && widget->isVisible() && id != platform::kMainWindow) {
          found.push_back({id, widget});
        }
      }
    }
    return found;
  }
  static bool Floats(int id) {
    return std::find(std::begin(kFloating), std::end(kFloating), id) != std::end(kFloating);
  }
  static bool ScrollsByABar(int id) {
    for (const Sheet& sheet : kSheets) {
      QWidget* bar = desk::WidgetOf(sheet.bar);
      if (sheet.paper == id && bar && bar->isVisible()) return true;
    }
    return false;
  }

  static void ExpectInside(const std::vector<Placed>& shown) {
    for (const Placed& each : shown) {
      if (ScrollsByABar(each.id)) continue;
      EXPECT_TRUE(each.widget->parentWidget()->rect().contains(each.widget->geometry()))
          << each.id << " is outside";
    }
  }
  static void ExpectApart(const std::vector<Placed>& shown) {
    for (std::size_t i = 0; i < shown.size(); ++i) {
      for (std::size_t k = i + 1; k < shown.size(); ++k) {
        const QWidget* a = shown[i].widget;
        const QWidget* b = shown[k].widget;
        if (a->parentWidget() != b->parentWidget() || Floats(shown[i].id) || Floats(shown[k].id)) {
          continue;
        }
        EXPECT_FALSE(a->geometry().intersects(b->geometry()))
            << shown[i].id << " and " << shown[k].id << " lie over each other";
      }
    }
  }
  // Words of labels and keys; keys and lists that are too small to hit.
  static void ExpectWhole(const std::vector<Placed>& shown) {
    for (const Placed& each : shown) {
      EXPECT_GE(each.widget->width(), 8) << each.id;
      EXPECT_GE(each.widget->height(), 8) << each.id;
      const auto* label = qobject_cast<const QLabel*>(each.widget);
      if (!label || label->text().isEmpty() || each.id == kIdStatusLine) continue;
      const QFontMetrics metrics = label->fontMetrics();
      if (label->height() < 2 * metrics.lineSpacing()) {
        EXPECT_LE(metrics.horizontalAdvance(label->text()), label->width())
            << each.id << " cuts " << label->text().toStdString();
      } else {
        const QRect words = metrics.boundingRect(QRect(0, 0, label->width(), 9999),
                                                 Qt::AlignLeft | Qt::TextWordWrap, label->text());
        EXPECT_LE(words.height(), label->height())
            << each.id << " cuts " << label->text().toStdString();
      }
    }
  }
  static void ExpectWorkable(const char* what) {
    SCOPED_TRACE(what);
    desk::Run(20);
    const std::vector<Placed> shown = Shown();
    ASSERT_GT(shown.size(), 8u);
    ExpectInside(shown);
    ExpectApart(shown);
    ExpectWhole(shown);
  }
  static void Picture(const QSize& size, const char* what) {
    const QString name = QStringLiteral("%1x%2-%3.png")
                             .arg(size.width())
                             .arg(size.height())
                             .arg(QLatin1String(what));
    Show(name.toLatin1().constData());
  }

  // Every mode of the code surface, what stands over the code, and every other surface.
  static void VisitAll(const std::function<void(const char*)>& look) {
    struct {
      int mode;
      const char* name;
    } const modes[] = {
        {kModeHome, "home"},         {kModeWizard, "wizard"},           {kModeTools, "tools"},
        {kModeCodeIndex, "index"},   {kModeMacros, "macros"},           {kModeShapes, "shapes"},
        {kModeSlot, "slot"},         {kModeSimulator, "simulator"},     {kModeDnc, "dnc"},
        {kModeFind, "find"},         {kModeDiagnostics, "check"},       {kModeCadItem, "cad"},
        {kModeCircular, "circular"}, {kModeRectangular, "rectangular"}, {kModePlateItem, "plate"}};
    for (const auto& each : modes) {
      SetMode(each.mode);
      look(each.name);
    }
    SetMode(kModeHome);
    desk::Click(kIdCompareSecond);
    look("compare");
    desk::Click(kIdCompareSecond);
    RouteCommand(kIdImport, 0);
    look("import");
    desk::Click(kIdImportCancel);
    desk::Click(kIdCommandWords);
    look("words");
    desk::Click(kIdCommandWords);
    desk::Click(kIdStrip);
    look("closed");
    desk::Click(kIdStrip);
    RouteCommand(kIdSetup, 0);
    look("setup");
    SetMode(kModeTools);
    desk::Click(kIdToolAdd);
    look("tool");
    desk::Click(kIdToolClose);
    SetMode(kModeHome);
    if (Call(hooks.openSkim)) look("skim");
    SetMode(kModeHome);
  }

  static void VisitAt(int width, int height) {
    const QSize size(width, height);
    SCOPED_TRACE(testing::Message() << width << " by " << height);
    desk::WidgetOf(platform::kMainWindow)->setMinimumSize(0, 0);
    Resize(width, height);
    VisitAll([&size](const char* what) {
      ExpectWorkable(what);
      Picture(size, what);
    });
  }
};

// Whatever the screen: one between the least and the wished size would lose the status line.
TEST_F(Screens, ComesUpInsideTheScreenWithItsFrame) {
  const QWidget* window = desk::WidgetOf(platform::kMainWindow);
  ASSERT_TRUE(desk::Until([&]() { return window->isVisible(); }));
  const QRect room = window->screen()->availableGeometry();
  EXPECT_TRUE(desk::Until([&]() { return room.contains(window->frameGeometry()); }))
      << window->frameGeometry().right() << " " << window->frameGeometry().bottom() << " of "
      << room.right() << " " << room.bottom();
}

// The window manager gives back the size that the window had: it is asked for less while maximised.
TEST_F(Screens, IsNoSmallerThanItsLeastWhenItIsRestored) {
  QWidget* window = desk::WidgetOf(platform::kMainWindow);
  const QSize least = window->minimumSize();
  ASSERT_EQ(least, QSize(1200, 800));
  window->showMaximized();
  ASSERT_TRUE(desk::Until([=]() { return window->isMaximized() && window->height() > 850; }));
  window->resize(700, 500);
  window->showNormal();
  ASSERT_TRUE(desk::Until([=]() { return !window->isMaximized(); }));
  desk::Run(200);
  EXPECT_GE(window->width(), least.width());
  EXPECT_GE(window->height(), least.height());
  window->showMinimized();
  desk::Run(200);
  window->resize(700, 500);
  window->showNormal();
  ASSERT_TRUE(desk::Until([=]() { return !window->isMinimized() && window->isVisible(); }));
  desk::Run(200);
  EXPECT_GE(window->width(), least.width());
  EXPECT_GE(window->height(), least.height());
}

// 1920 by 1080 at 150 %, less the bars of the desktop and the window.
TEST_F(Screens, CanBeWorkedOnAt1280By640) { VisitAt(1280, 640); }
TEST_F(Screens, CanBeWorkedOnAt1366By690) { VisitAt(1366, 690); }
TEST_F(Screens, CanBeWorkedOnAt1200By800) { VisitAt(1200, 800); }
TEST_F(Screens, CanBeWorkedOnAt1560By940) { VisitAt(1560, 940); }
TEST_F(Screens, CanBeWorkedOnAt1920By1000) { VisitAt(1920, 1000); }
// The least that a small screen allows.
TEST_F(Screens, CanBeWorkedOnAt1200By600) { VisitAt(1200, 600); }

}  // namespace
