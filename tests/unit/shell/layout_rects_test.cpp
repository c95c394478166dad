#include "shell/layout_rects.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"

namespace morva {
namespace {

using platform::Rect;
using platform::RectHeight;
using platform::RectWidth;

LayoutInput Window(int width, int height, std::int32_t mode = kModeHome) {
  LayoutInput in;
  in.width = width;
  in.height = height;
  in.mode = mode;
  in.rightPanel = mode != kModeHome && mode != kModeCodeIndex && mode != kModeSimulator;
  static constexpr KeyWidth kKeys[] = {
      {kIdSurfaceCode, 64}, {kIdSurfaceCad, 56}, {kIdSurfacePlate, 64}};
  in.surfaceKeys = kKeys;
  return in;
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

std::string Words(const LayoutInput& in, int id) {
  return std::to_string(in.width) + " x " + std::to_string(in.height) + ", mode " +
         std::to_string(in.mode) + ", panel " + std::to_string(in.leftPanelWidth) + ", tabs " +
         std::to_string(in.tabCount) + (in.viewAway ? ", no view" : "") +
         (in.heightAboveView > 0 ? ", view with the panel" : "") + ", id " + std::to_string(id);
}

// Every plan of the sizes, modes, panel widths and tab counts that the program meets.
template <typename Look>
void ForEveryPlan(Look look) {
  for (int width : {1200, 1280, 1366, 1560, 1920, 2560}) {
    for (int height : {800, 905, 940, 1080, 1440}) {
      for (std::int32_t mode = kModeHome; mode <= kModeFind; ++mode) {
        for (int panel : {190, 300, 430}) {
          for (int tabs : {1, 3, 5, 8}) {
            LayoutInput in = Window(width, height, mode);
            in.helpBelow = mode >= kModeShapes && mode <= kModeRectangular;
            in.footPanel = mode == kModeCodeIndex && tabs != 3;
            in.leftPanelWidth = panel;
            in.tabCount = tabs;
            look(in, PlanLayout(in));
            in.viewAway = true;
            look(in, PlanLayout(in));
            in.heightAboveView = 300;
            look(in, PlanLayout(in));
            in.viewAway = false;
            look(in, PlanLayout(in));
            in.headPanel = mode == kModeHome;
            look(in, PlanLayout(in));
            in.transferRuns = true;
            look(in, PlanLayout(in));
          }
        }
      }
    }
  }
}

TEST(LayoutRects, ShowsOneKeyOfAKindBesideTheView) {
  ForEveryPlan([](const LayoutInput& in, const LayoutPlan& plan) {
    const auto shown = [&plan](int id) {
      for (int i = 0; i < plan.count; ++i) {
        if (plan.placements[i].id == id) return !IsEmpty(plan.placements[i].place);
      }
      return false;
    };
    constexpr std::pair<int, int> kDoubles[] = {{kIdRewind, kIdPlayRewind},
                                                {kIdFastForward, kIdPlayForward},
                                                {kIdDimensions, kIdViewExtents},
                                                {kIdMeasure, kIdViewMeasure},
                                                {kIdPan, kIdViewPan},
                                                {kIdFit, kIdViewFit},
                                                {kIdPlay, kIdPlayToggle}};
    for (const auto& [above, beside] : kDoubles) {
      EXPECT_NE(shown(above), shown(beside)) << Words(in, above);
    }
    for (const int id : {kIdPath, kIdViewMenu, kIdZoomReset})
      EXPECT_TRUE(shown(id)) << Words(in, id);
  });
}

// The fields are worked in, the help is read once.
TEST(LayoutRects, GiveThePanelsFieldsTheHeightBeforeTheHelpBelowThem) {
  const auto heights = [](int height) {
    LayoutInput in = Window(1280, height, kModeShapes);
    in.helpBelow = true;
    const LayoutPlan plan = PlanLayout(in);
    int help = 0;
    for (int i = 0; i < plan.count; ++i) {
      const Rect& place = plan.placements[i].place;
      if (plan.placements[i].id == kIdHelpText) help = RectHeight(place);
    }
    return std::pair{RectHeight(plan.areas.panelBody), help};
  };
  const auto [low, noHelp] = heights(640);
  EXPECT_EQ(noHelp, 0);
  const auto [high, wholeHelp] = heights(800);
  EXPECT_EQ(wholeHelp, 112);
  // Nothing but the help was between them: 160 pixels, the help and the gap above it.
  EXPECT_EQ(low, high - 160 + 112 + 8);
  // Between the two the help has what the fields leave.
  for (int height = 640; height <= 800; ++height) {
    const auto [body, help] = heights(height);
    EXPECT_TRUE(help == 0 || (help >= 64 && body >= 400)) << height << ": " << body << ", " << help;
    EXPECT_GE(body, low) << height;
  }
}

TEST(LayoutRects, OverlapNowhereAndLieInsideTheWindow) {
  ForEveryPlan([](const LayoutInput& in, const LayoutPlan& plan) {
    for (int i = 0; i < plan.count; ++i) {
      const Rect& a = plan.placements[i].place;
      if (IsEmpty(a)) continue;
      const bool inside = a.left >= 0 && a.top >= 0 && a.right <= in.width && a.bottom <= in.height;
      ASSERT_TRUE(inside) << Words(in, plan.placements[i].id);
      for (int k = i + 1; k < plan.count; ++k) {
        const Rect& b = plan.placements[k].place;
        ASSERT_FALSE(!IsEmpty(b) && Overlap(a, b))
            << Words(in, plan.placements[i].id) << " over " << plan.placements[k].id;
      }
    }
  });
}

// On a screen of 1366 by 768 title bar and task bar leave 728.
TEST(LayoutRects, ShowAllWorkspacesOnASmallScreen) {
  EXPECT_GE(RectHeight(PlaceIn(PlanLayout(Window(1366, 728)), kIdModeList)), 11 * 24);
}

// A window on a small screen: the lists scroll, and the keys of the features are icons in a row.
TEST(LayoutRects, KeepRowsOfBothListsInALowWindow) {
  for (const int height : {600, 640, 700, 760}) {
    for (const int panel : {190, 300}) {
      LayoutInput in = Window(1200, height);
      in.leftPanelWidth = panel;
      const LayoutPlan plan = PlanLayout(in);
      EXPECT_GE(RectHeight(PlaceIn(plan, kIdFeatureList)), 3 * 24 - 1) << Words(in, kIdFeatureList);
      EXPECT_GE(RectHeight(PlaceIn(plan, kIdModeList)), 7 * 24) << Words(in, kIdModeList);
      EXPECT_GE(RectHeight(PlaceIn(plan, kIdEditor)), 160) << Words(in, kIdEditor);
      EXPECT_EQ(PlaceIn(plan, kIdFeatureEdit).top, PlaceIn(plan, kIdFeatureHide).top);
      EXPECT_GE(RectWidth(PlaceIn(plan, kIdFeatureHide)), 22) << Words(in, kIdFeatureHide);
    }
  }
  const LayoutPlan tall = PlanLayout(Window(1200, 800));
  EXPECT_LT(PlaceIn(tall, kIdFeatureEdit).top, PlaceIn(tall, kIdFeatureHide).top);
}

// Dragged to any height and closed, with or without what stands in the strip and in its head.
TEST(LayoutRects, KeepAllApartAtEveryHeightOfTheStrip) {
  const auto look = [](const LayoutInput& in, const LayoutPlan& plan) {
    const Rect strip{0, plan.areas.stripEdge.top, 1, plan.areas.stripFoot};
    ASSERT_GE(RectHeight(PlaceIn(plan, kIdEditor)), 120) << Words(in, kIdEditor) << in.stripHeight;
    // A view under the editor stands between the two.
    const int above = std::max(PlaceIn(plan, kIdEditor).bottom,
                               PlaceIn(plan, kViewToolpath).left == PlaceIn(plan, kViewGutter).left
                                   ? PlaceIn(plan, kIdSpeedSlider).bottom
                                   : 0);
    ASSERT_GE(plan.areas.stripEdge.top, above) << Words(in, kIdEditor);
    ASSERT_LE(plan.areas.stripEdge.top, above + 4) << Words(in, kIdEditor);
    for (int i = 0; i < plan.count; ++i) {
      const Rect& a = plan.placements[i].place;
      if (IsEmpty(a)) continue;
      ASSERT_LE(a.bottom, in.height) << Words(in, plan.placements[i].id) << in.stripHeight;
      ASSERT_GE(RectHeight(a), 20) << Words(in, plan.placements[i].id) << in.stripHeight;
      ASSERT_FALSE(Overlap(a, plan.areas.stripEdge)) << Words(in, plan.placements[i].id);
      for (int k = i + 1; k < plan.count; ++k) {
        const Rect& b = plan.placements[k].place;
        ASSERT_FALSE(!IsEmpty(b) && Overlap(a, b))
            << Words(in, plan.placements[i].id) << " over " << plan.placements[k].id;
      }
    }
    ASSERT_EQ(IsEmpty(PlaceIn(plan, kIdOutputLog)), in.stripClosed) << Words(in, kIdOutputLog);
    if (!in.stripClosed) {
      ASSERT_GE(RectHeight(PlaceIn(plan, kIdOutputLog)), kStripLeast) << Words(in, kIdOutputLog);
      ASSERT_GT(RectHeight(strip), 54) << Words(in, kIdOutputLog);
    }
  };
  for (const int width : {1200, 1560, 1920}) {
    for (const int height : {640, 720, 800, 940}) {
      for (std::int32_t mode = kModeHome; mode <= kModeFind; ++mode) {
        for (const int strip : {0, 1, 54, 120, 182, 300, 2000}) {
          LayoutInput in = Window(width, height, mode);
          in.stripHeight = strip;
          in.footPanel = mode == kModeCodeIndex;
          in.headPanel = mode == kModeHome;
          look(in, PlanLayout(in));
          in.heightAboveView = in.rightPanel ? 300 : 0;
          look(in, PlanLayout(in));
          in.stripClosed = true;
          look(in, PlanLayout(in));
          in.viewAway = true;
          look(in, PlanLayout(in));
        }
      }
    }
  }
}

TEST(LayoutRects, NameEveryIdOnce) {
  ForEveryPlan([](const LayoutInput& in, const LayoutPlan& plan) {
    ASSERT_LT(plan.count, kMaxPlacements);
    for (int i = 0; i < plan.count; ++i) {
      for (int k = i + 1; k < plan.count; ++k) {
        ASSERT_NE(plan.placements[i].id, plan.placements[k].id) << Words(in, 0);
      }
    }
  });
}

// Nothing that is shown is too small to be read or hit: 22 pixels either way, and the wells
// hold some lines.
TEST(LayoutRects, LeaveEverythingLargeEnoughToUse) {
  ForEveryPlan([](const LayoutInput& in, const LayoutPlan& plan) {
    for (int i = 0; i < plan.count; ++i) {
      const Placement& p = plan.placements[i];
      if (IsEmpty(p.place)) continue;
      ASSERT_GE(RectWidth(p.place), 22) << Words(in, p.id);
      ASSERT_GE(RectHeight(p.place), 20) << Words(in, p.id);
    }
    const bool besidePath = in.mode == kModeSimulator;
    ASSERT_GE(RectWidth(PlaceIn(plan, kIdEditor)), in.mode == kModeHome ? 420
                                                   : besidePath         ? 280
                                                                        : 360);
    const Rect view = PlaceIn(plan, kViewToolpath);
    // In a small window a view beside a form shares the editor's column: seven lines are left.
    const bool shared = view.left == PlaceIn(plan, kViewGutter).left;
    ASSERT_GE(RectHeight(PlaceIn(plan, kIdEditor)), shared ? 140 : 240) << Words(in, kIdEditor);
    ASSERT_GE(RectHeight(PlaceIn(plan, kIdFeatureList)), 4 * 24) << Words(in, kIdFeatureList);
    ASSERT_GE(RectHeight(PlaceIn(plan, kIdModeList)), 11 * 24) << Words(in, kIdModeList);
    if (!IsEmpty(view)) {
      ASSERT_GE(RectWidth(view), 270) << Words(in, kViewToolpath);
      ASSERT_GE(RectHeight(view), shared ? 120 : 190) << Words(in, kViewToolpath);
    }
  });
}

TEST(LayoutRects, KeepTheTrackOfTheSpeedSliderWhole) {
  ForEveryPlan([](const LayoutInput& in, const LayoutPlan& plan) {
    const Rect slider = PlaceIn(plan, kIdSpeedSlider);
    if (!IsEmpty(slider)) {
      ASSERT_GE(RectWidth(slider), 272) << Words(in, kIdSpeedSlider);
    }
  });
}

TEST(LayoutRects, ShowABarOf250PixelsAndTheAbortKeyWhileATransferRuns) {
  for (const int width : {1200, 1560}) {
    for (const std::int32_t surface : {kSurfaceCode, kSurfaceCad}) {
      LayoutInput in = Window(width, 800);
      in.surface = surface;
      EXPECT_TRUE(IsEmpty(PlaceIn(PlanLayout(in), kIdAbortTransfer)));
      EXPECT_TRUE(IsEmpty(PlaceIn(PlanLayout(in), kViewTransfer)));
      in.transferRuns = true;
      const LayoutPlan plan = PlanLayout(in);
      const Rect key = PlaceIn(plan, kIdAbortTransfer);
      EXPECT_EQ(key.right, width - 8);
      EXPECT_EQ(RectWidth(key), 76);
      EXPECT_LT(key.bottom, plan.areas.topBand.bottom);
      const Rect bar = PlaceIn(plan, kViewTransfer);
      EXPECT_GE(RectWidth(bar), 250);
      EXPECT_EQ(bar.right, key.left - 5);
      for (int i = 0; i < plan.count; ++i) {
        if (plan.placements[i].id == kViewTransfer || IsEmpty(plan.placements[i].place)) continue;
        EXPECT_FALSE(Overlap(bar, plan.placements[i].place)) << plan.placements[i].id;
      }
    }
  }
}

TEST(LayoutRects, LeaveTheGripOfThePanelEdgeBare) {
  ForEveryPlan([](const LayoutInput& in, const LayoutPlan& plan) {
    const int edge = plan.leftPanelWidth;
    const Rect grip{edge - 4, in.topBarHeight, edge + 6, plan.areas.status.top};
    for (int i = 0; i < plan.count; ++i) {
      ASSERT_FALSE(!IsEmpty(plan.placements[i].place) && Overlap(grip, plan.placements[i].place))
          << Words(in, plan.placements[i].id);
    }
  });
}

TEST(LayoutRects, StandTheTopKeysInARowFrom240) {
  const LayoutPlan plan = PlanLayout(Window(1200, 800));
  struct {
    int id, left, width;
  } const rows[] = {{kIdNew, 240, 64},  {kIdOpen, 309, 72}, {kIdSaveMenu, 386, 82},
                    {kIdFind, 473, 64}, {kIdSend, 542, 86}, {kIdReceive, 633, 98}};
  for (const auto& row : rows) {
    const Rect place = PlaceIn(plan, row.id);
    EXPECT_EQ(place.left, row.left) << row.id;
    EXPECT_EQ(RectWidth(place), row.width) << row.id;
    EXPECT_EQ(place.top, 10);
    EXPECT_EQ(RectHeight(place), 34);
  }
}

TEST(LayoutRects, HoldTheLeftPanelTo190OnAWindowOf900) {
  EXPECT_EQ(FittedLeftPanel(900, 430), 190);
  EXPECT_EQ(FittedLeftPanel(900, 190), 190);
  EXPECT_EQ(FittedLeftPanel(1100, 430), 340);  // 1100 - 760
  EXPECT_EQ(FittedLeftPanel(1560, 430), 430);
  EXPECT_EQ(FittedLeftPanel(1560, 100), 190);
  EXPECT_EQ(PlanLayout(Window(900, 800)).leftPanelWidth, 190);
}

TEST(LayoutRects, GiveARightPanelToEveryModeButThree) {
  EXPECT_EQ(RightPanelWidth(1180), 350);
  EXPECT_EQ(RightPanelWidth(1179), 320);
  for (std::int32_t mode = kModeHome; mode <= kModeFind; ++mode) {
    const bool none = mode == kModeHome || mode == kModeCodeIndex || mode == kModeSimulator;
    const LayoutPlan plan = PlanLayout(Window(1560, 940, mode));
    EXPECT_EQ(RectWidth(plan.areas.rightPanel), none ? 0 : 350) << mode;
    EXPECT_EQ(IsEmpty(PlaceIn(plan, kViewToolpath)), !none) << mode;
  }
}

// (668 * 48 - 1536) / 100 = 305.28, (300 * 48 - 1536) / 100 = 128.64.
TEST(LayoutRects, LayTheSeparatorByTheHeightOfTheWorkArea) {
  EXPECT_EQ(SeparatorDepth(668), 305);
  EXPECT_EQ(SeparatorDepth(300), 210);
  const LayoutPlan plan = PlanLayout(Window(1200, 800));
  EXPECT_EQ(plan.areas.separator.top, 132 + 305);
}

TEST(LayoutRects, GiveTheViewTwoFifthsInHomeAndThreeFifthsInTheSimulator) {
  LayoutPlan plan = PlanLayout(Window(1920, 1080));
  const double work = 1920 - 300 - 16;
  EXPECT_NEAR(RectWidth(PlaceIn(plan, kViewToolpath)) / work, 0.4, 0.01);
  for (const int width : {1200, 1280, 1366, 1560, 1920, 3840}) {
    plan = PlanLayout(Window(width, 1080, kModeSimulator));
    EXPECT_NEAR(RectWidth(PlaceIn(plan, kViewToolpath)) / (width - 316.0), 0.6, 0.01) << width;
  }
}

// The column beside it is then too narrow for the head of the output in one line: the words, 190
// at the least, stand above the keys.
TEST(LayoutRects, PutTheHeadOfTheOutputInTwoLinesBesideAWideView) {
  const LayoutPlan plan = PlanLayout(Window(1200, 800, kModeSimulator));
  const Rect words = PlaceIn(plan, kIdOutputHead);
  EXPECT_GE(RectWidth(words), 190);
  EXPECT_LE(words.bottom, PlaceIn(plan, kIdPreflight).top);
  EXPECT_LE(PlaceIn(plan, kIdPreflight).bottom, PlaceIn(plan, kIdOutputLog).top);
  EXPECT_EQ(PlaceIn(plan, kIdStrip).right, PlaceIn(plan, kIdRenumber).right);
  EXPECT_GE(PlaceIn(plan, kIdPreflight).left, PlaceIn(plan, kIdEditor).left - 52);
}

// What a panel in the work area covers ends with the editor, above the output's keys.
TEST(LayoutRects, EndTheWorkAreaAtTheEditorsLowerEdge) {
  ForEveryPlan([](const LayoutInput& in, const LayoutPlan& plan) {
    const Rect& work = plan.areas.work;
    ASSERT_EQ(work.left, PlaceIn(plan, kViewGutter).left) << Words(in, kViewGutter);
    ASSERT_EQ(work.top, PlaceIn(plan, kIdEditor).top) << Words(in, kIdEditor);
    ASSERT_EQ(work.bottom, PlaceIn(plan, kIdEditor).bottom) << Words(in, kIdEditor);
    ASSERT_LT(work.bottom, PlaceIn(plan, kIdPreflight).top) << Words(in, kIdPreflight);
    for (int i = 0; in.viewAway && i < plan.count; ++i) {
      const int id = plan.placements[i].id;
      if (id == kIdEditor || id == kViewGutter) continue;
      ASSERT_FALSE(!IsEmpty(plan.placements[i].place) && Overlap(work, plan.placements[i].place))
          << Words(in, id);
    }
  });
}

// The wizard's mode, whose panel asks for the view and for 300 pixels above it.
LayoutInput WithView(int width, int height) {
  LayoutInput in = Window(width, height, kModeWizard);
  in.heightAboveView = 300;
  return in;
}

constexpr int kNarrowViewKeys[] = {kIdViewRefresh, kIdViewFit,  kIdViewPan,      kIdViewExtents,
                                   kIdViewMeasure, kIdViewGrid, kIdViewGridMenu, kIdViewLayers};
constexpr int kNarrowPlayKeys[] = {kIdPlayStart,   kIdPlayRewind, kIdPlayToggle,
                                   kIdPlayForward, kIdPlayEnd,    kIdPlayStop};

TEST(LayoutRects, GiveNarrowBarsToAViewWithAPanel) {
  for (const LayoutInput& in : {WithView(1200, 800), WithView(1560, 940), WithView(1920, 1080)}) {
    const LayoutPlan plan = PlanLayout(in);
    const Rect view = PlaceIn(plan, kViewToolpath);
    for (const auto keys :
         {std::span<const int>(kNarrowViewKeys), std::span<const int>(kNarrowPlayKeys)}) {
      // The keys above the view begin a little off its edge.
      const int first = view.left + (keys[0] == kIdViewRefresh ? 12 : 0);
      for (std::size_t i = 0; i < keys.size(); ++i) {
        const Rect key = PlaceIn(plan, keys[i]);
        EXPECT_EQ(key.left, first + 24 * static_cast<int>(i)) << Words(in, keys[i]);
        EXPECT_EQ(RectHeight(key), 24) << Words(in, keys[i]);
      }
    }
    EXPECT_TRUE(IsEmpty(PlaceIn(plan, kIdPlayPrevious)));
    EXPECT_TRUE(IsEmpty(PlaceIn(plan, kIdPlayNext)));
    EXPECT_FALSE(IsEmpty(PlaceIn(plan, kIdSpeedSlider)));
    EXPECT_GE(RectHeight(view), 200);
  }
}

TEST(LayoutRects, StandTheKeysOfAWideViewInCellsOfForty) {
  constexpr int kKeys = 8 * 40 - 4;
  for (const LayoutInput& in :
       {Window(1200, 800, kModeHome), Window(1560, 940, kModeHome), Window(1920, 1080, kModeHome),
        Window(1200, 800, kModeSimulator), Window(1560, 940, kModeSimulator)}) {
    const LayoutPlan plan = PlanLayout(in);
    const Rect view = PlaceIn(plan, kViewToolpath);
    const bool fits = RectWidth(view) >= 118 + kKeys;
    EXPECT_TRUE(fits || in.width < 1560) << Words(in, kViewToolpath);
    // A view that is too narrow has them at its right end.
    const int first = fits ? view.left + 118 : view.right - kKeys;
    for (int i = 0; i < 8; ++i) {
      const Rect key = PlaceIn(plan, kNarrowViewKeys[i]);
      EXPECT_EQ(key.left, first + 40 * i) << Words(in, kNarrowViewKeys[i]);
      EXPECT_LE(key.right, view.right) << Words(in, kNarrowViewKeys[i]);
    }
  }
}

// The panel keeps its whole height for its form.
TEST(LayoutRects, StandTheViewUnderTheEditorOnASmallWindow) {
  for (const int height : {800, 1080}) {
    const LayoutInput in = WithView(1200, height);
    const LayoutPlan plan = PlanLayout(in);
    LayoutInput without = in;
    without.heightAboveView = 0;
    const LayoutPlan bare = PlanLayout(without);
    const Rect view = PlaceIn(plan, kViewToolpath);
    const Rect editor = PlaceIn(plan, kIdEditor);
    EXPECT_EQ(RectHeight(plan.areas.panelBody), RectHeight(bare.areas.panelBody));
    EXPECT_GT(PlaceIn(plan, kIdViewRefresh).top, editor.bottom);
    EXPECT_LT(PlaceIn(plan, kIdSpeedSlider).bottom, PlaceIn(plan, kIdOutputHead).top);
    EXPECT_EQ(view.left, PlaceIn(plan, kViewGutter).left);
    EXPECT_EQ(view.right, editor.right);
    EXPECT_LE(view.right, plan.areas.rightPanel.left);
    EXPECT_GE(RectHeight(editor), 170);
    EXPECT_GE(RectHeight(view), 200);
    EXPECT_GE(RectHeight(PlaceIn(plan, kIdOutputLog)), 100);
  }
}

TEST(LayoutRects, LeaveTheViewOutWhereItsPanelWouldBeTooLow) {
  LayoutInput in = WithView(1200, 640);
  EXPECT_TRUE(IsEmpty(PlaceIn(PlanLayout(in), kViewToolpath)));
  EXPECT_TRUE(IsEmpty(PlaceIn(PlanLayout(in), kIdSpeedSlider)));
  EXPECT_GE(RectHeight(PlanLayout(in).areas.panelBody), 350);
  // With the strip closed it stands under the editor.
  for (const int height : {600, 640, 720}) {
    in = WithView(1200, height);
    in.stripClosed = true;
    const LayoutPlan plan = PlanLayout(in);
    EXPECT_GE(RectHeight(PlaceIn(plan, kViewToolpath)), 110) << height;
    EXPECT_GE(RectHeight(PlaceIn(plan, kIdEditor)), 120) << height;
  }
}

TEST(LayoutRects, StandTheViewBelowThePanelWhereTheStripIsHigh) {
  LayoutInput in = WithView(1200, 800);
  in.stripHeight = 2000;
  const LayoutPlan plan = PlanLayout(in);
  const Rect& form = plan.areas.panelBody;
  const Rect view = PlaceIn(plan, kViewToolpath);
  EXPECT_EQ(view.left, form.left);
  EXPECT_EQ(view.right, form.right);
  EXPECT_EQ(view.left, plan.areas.rightPanel.left + 12);
  EXPECT_GT(PlaceIn(plan, kIdViewRefresh).top, form.bottom);
  EXPECT_GE(RectWidth(form), 300);
  EXPECT_EQ(RectHeight(view), 200);  // its least: the panel asked for more than there is
}

TEST(LayoutRects, StandTheViewBesideThePanelWhereThereIsRoom) {
  for (const LayoutInput& in : {WithView(1560, 940), WithView(1920, 1080)}) {
    const LayoutPlan plan = PlanLayout(in);
    const Rect view = PlaceIn(plan, kViewToolpath);
    const Rect editor = PlaceIn(plan, kIdEditor);
    LayoutInput without = in;
    without.heightAboveView = 0;
    const LayoutPlan bare = PlanLayout(without);
    EXPECT_EQ(RectHeight(plan.areas.panelBody), RectHeight(bare.areas.panelBody));
    EXPECT_EQ(RectWidth(plan.areas.rightPanel), 350);
    EXPECT_LE(view.right, plan.areas.rightPanel.left);
    EXPECT_GE(view.left, editor.right);
    EXPECT_GE(RectWidth(view), 300);
    EXPECT_GE(RectWidth(editor), 420);
    EXPECT_EQ(RectWidth(PlaceIn(plan, kIdOutputLog)), RectWidth(PlaceIn(bare, kIdOutputLog)));
  }
  LayoutInput wide = WithView(1560, 940);
  wide.leftPanelWidth = 430;  // takes the room
  EXPECT_LT(PlaceIn(PlanLayout(wide), kIdEditor).bottom,
            PlaceIn(PlanLayout(wide), kViewToolpath).top);
  LayoutInput away = WithView(1560, 940);
  away.viewAway = true;  // a panel in the work area takes it
  EXPECT_GE(PlaceIn(PlanLayout(away), kViewToolpath).left, 1560 - 350);
}

// The panel's own controls stand in an area that no placed thing reaches into.
TEST(LayoutRects, LeaveTheBodyOfARightPanelToIt) {
  ForEveryPlan([](const LayoutInput& in, const LayoutPlan& plan) {
    const Rect& body = plan.areas.panelBody;
    if (IsEmpty(body)) return;
    for (int i = 0; i < plan.count; ++i) {
      ASSERT_FALSE(!IsEmpty(plan.placements[i].place) && Overlap(body, plan.placements[i].place))
          << Words(in, plan.placements[i].id);
    }
    ASSERT_GE(RectWidth(body), 300) << Words(in, 0);
    ASSERT_GE(RectHeight(body), in.heightAboveView > 0 ? 100 : 200) << Words(in, 0);
  });
}

TEST(LayoutRects, StandTheViewBesideASurfaceThatShowsIt) {
  for (const auto& [width, height] : {std::pair(1200, 800), {1560, 940}, {1920, 1080}}) {
    LayoutInput in = Window(width, height);
    in.surface = kSurfaceSkim;
    EXPECT_TRUE(IsEmpty(PlaceIn(PlanLayout(in), kViewToolpath)));
    EXPECT_EQ(PlanLayout(in).areas.workspace.right, width);
    in.viewBesideSurface = true;
    const LayoutPlan plan = PlanLayout(in);
    const Rect& area = plan.areas.workspace;
    const Rect view = PlaceIn(plan, kViewToolpath);
    EXPECT_GE(RectWidth(area), 650) << width;
    EXPECT_GE(RectWidth(view), 450) << width;
    EXPECT_GE(RectHeight(view), 400) << height;
    for (int i = 0; i < plan.count; ++i) {
      const Rect& place = plan.placements[i].place;
      if (IsEmpty(place)) continue;
      EXPECT_FALSE(Overlap(area, place)) << plan.placements[i].id;
      EXPECT_TRUE(place.right <= width && place.bottom <= height) << plan.placements[i].id;
    }
    EXPECT_TRUE(IsEmpty(PlaceIn(plan, kIdPlayNext)));
    EXPECT_FALSE(IsEmpty(PlaceIn(plan, kIdPlayStop)));
  }
}

TEST(LayoutRects, WrapTheTabsBeforeTheyBecomeUnreadable) {
  LayoutInput in = Window(1200, 800);
  in.tabCount = 8;
  const LayoutPlan plan = PlanLayout(in);
  for (int i = 0; i < 8; ++i) EXPECT_GE(RectWidth(PlaceIn(plan, kIdTabFirst + i)), 100) << i;
  EXPECT_GT(PlaceIn(plan, kIdTabLast).top, PlaceIn(plan, kIdTabFirst).top);
}

TEST(LayoutRects, HideTheTabsThatAreNotOpen) {
  LayoutInput in = Window(1200, 800);
  in.tabCount = 2;
  const LayoutPlan plan = PlanLayout(in);
  EXPECT_FALSE(IsEmpty(PlaceIn(plan, kIdTabFirst + 1)));
  EXPECT_TRUE(IsEmpty(PlaceIn(plan, kIdTabFirst + 2)));
}

TEST(LayoutRects, PlaceEditorAndGutterSideBySide) {
  ForEveryPlan([](const LayoutInput& in, const LayoutPlan& plan) {
    const Rect gutter = PlaceIn(plan, kViewGutter);
    const Rect editor = PlaceIn(plan, kIdEditor);
    ASSERT_EQ(gutter.right, editor.left) << Words(in, kIdEditor);
    ASSERT_EQ(gutter.top, editor.top);
    ASSERT_EQ(gutter.bottom, editor.bottom);
    ASSERT_LT(editor.bottom, PlaceIn(plan, kIdOutputLog).top);
  });
}

}  // namespace
}  // namespace morva
