// The CAD workspace's window in the whole application: places, panels, right click, keys.

#include "cad/panel/workspace.h"

#include <initializer_list>
#include <iterator>
#include <set>
#include <vector>

#include "app/commands.h"
#include "app/outlets.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/cad_form.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/hint_line.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/workspace_strip.h"
#include "documents/feature_operations.h"
#include "documents/insertion.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "support/stage.h"
#include "support/workbench.h"

namespace morva {
namespace {

using platform::Rect;

class Workspace : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    ASSERT_TRUE(headless::Click(kIdSurfaceCad));
  }

  struct Seen {
    int id;
    Rect place;
  };
  // Controls that can be seen: not views that hold others, and of the form only what is in view.
  static std::vector<Seen> SeenControls() {
    std::vector<Seen> seen;
    for (const int id : headless::AllIds()) {
      if (id == platform::kMainWindow || id == kViewCad || id == kViewCadForm ||
          id == kViewCadSheet || !platform::IsVisible(id)) {
        continue;
      }
      seen.push_back({id, platform::PlaceInMainWindow(id)});
    }
    return seen;
  }
  static bool Overlap(const Rect& a, const Rect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
  }
  // Of the form, which scrolls: only what lies in its view counts against the rest.
  static bool InForm(int id) {
    // These stand below what scrolls.
    if (id == kIdCircularInsert || id == kIdRectInsert || id == kIdCadCreatePattern) return false;
    int ids[kMaxTabStops];
    const int count = FormOrder(kCadForm, ids, kMaxTabStops);
    for (int i = 0; i < count; ++i) {
      if (ids[i] == id) return true;
    }
    return id >= kIdCadLabelFirst && id <= kIdCadLabelLast;
  }
  static void ExpectNothingOverlaps(int panel) {
    const std::vector<Seen> seen = SeenControls();
    const Rect client = platform::ClientArea(platform::kMainWindow);
    for (std::size_t i = 0; i < seen.size(); ++i) {
      const bool form = InForm(seen[i].id);
      EXPECT_LT(seen[i].place.left, seen[i].place.right) << seen[i].id << " in " << panel;
      EXPECT_GE(seen[i].place.left, 0) << seen[i].id;
      EXPECT_LE(seen[i].place.right, client.right) << seen[i].id;
      EXPECT_TRUE(form || seen[i].place.bottom <= client.bottom) << seen[i].id;
      for (std::size_t k = i + 1; k < seen.size(); ++k) {
        if (form != InForm(seen[k].id)) continue;
        EXPECT_FALSE(Overlap(seen[i].place, seen[k].place))
            << seen[i].id << " and " << seen[k].id << " in panel " << panel;
      }
    }
  }
  static void Press(platform::PointerButton button, platform::PointerAction action) {
    platform::PointerEvent event;
    event.action = action;
    event.button = button;
    event.x = 200;
    event.y = 150;
    headless::Pointer(kViewCadCanvas, event);
  }
};

TEST_F(Workspace, HidesTheCodeSurfaceAndKeepsTheProgramTabs) {
  EXPECT_EQ(app.surface, kSurfaceCad);
  for (const int id : {kIdEditor, kViewGutter, kViewToolpath, kIdModeList, kIdFeatureList,
                       kIdOutputLog, kIdSend, kIdPlay}) {
    EXPECT_FALSE(platform::IsVisible(id)) << id;
  }
  for (const int id : {kIdTabFirst, kIdTabNew, kIdBack, kIdSurfaceCode, kIdSaveMenu, kIdStatusLine,
                       kViewCadCanvas, kIdCadOperations, kIdCadRecent}) {
    EXPECT_TRUE(platform::IsVisible(id)) << id;
  }
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
}

TEST_F(Workspace, ShowsAnIconOfItsOwnOnEveryKeyOfTheStripButTheUnits) {
  std::set<int> icons;
  for (int row = 0; row < kCadStripRows; ++row) {
    int count = 0;
    const CadKeySpec* keys = CadStripRow(row, count);
    for (int i = 0; i < count; ++i) {
      const int icon = CommandOf(keys[i].id)->icon;
      if (keys[i].id == kIdCadInch || keys[i].id == kIdCadMm) continue;
      EXPECT_NE(icon, kNoIcon) << keys[i].id;
      EXPECT_TRUE(icons.insert(icon).second) << keys[i].id;
      // With the words whole below it.
      const std::u16string words = platform::TextOf(keys[i].id);
      EXPECT_LE(platform::TextWidth(platform::FontRole::Small, words) + 4, keys[i].width);
      bool painted = false;
      for (const headless::DrawCall& call : headless::PaintOf(keys[i].id)) {
        painted = painted || (call.name == "PaintText" && call.text == words);
      }
      EXPECT_TRUE(painted) << keys[i].id;
    }
  }
  EXPECT_EQ(icons.size(), 28u);
}

TEST_F(Workspace, OverlapsNowhereInAnyPanelAtAnySize) {
  constexpr struct { int width, height; } kSizes[] = {{1200, 800}, {1560, 940}, {1920, 1080}};
  for (const auto& size : kSizes) {
    headless::Resize(size.width, size.height);
    for (const int panel : {0, 1, 2, 3, 4, 5, 6, 7, 9}) {
      tools.panelMode = panel;
      RefreshCadTools();
      ASSERT_EQ(ShownCadPanel(), panel);
      ExpectNothingOverlaps(panel);
    }
  }
}

TEST_F(Workspace, FitsEveryPanelIntoTheFormThatScrolls) {
  headless::Resize(1200, 800);
  int ids[kMaxTabStops];
  const int count = FormOrder(kCadForm, ids, kMaxTabStops);
  for (const int panel : {0, 1, 2, 3, 4, 5, 6, 7, 9}) {
    tools.panelMode = panel;
    RefreshCadTools();
    for (int i = 0; i < count; ++i) {
      if (!platform::IsVisible(ids[i])) continue;
      EXPECT_LE(platform::PlaceOf(ids[i]).bottom, kFormHeight) << ids[i] << " in " << panel;
    }
  }
}

TEST_F(Workspace, ScrollsTheFormByLinesAndToAFieldThatGetsTheKeyboard) {
  headless::Resize(1200, 800);
  EXPECT_EQ(SheetTop(kCadSheet), 0);
  platform::PointerEvent wheel;
  wheel.action = platform::PointerAction::Wheel;
  wheel.wheel = -1;
  headless::Pointer(kViewCadForm, wheel);
  EXPECT_EQ(SheetTop(kCadSheet), 36);
  wheel.wheel = 5;
  headless::Pointer(kViewCadForm, wheel);
  EXPECT_EQ(SheetTop(kCadSheet), 0);
  wheel.wheel = -100;
  headless::Pointer(kViewCadForm, wheel);
  const int end = SheetTop(kCadSheet);
  EXPECT_EQ(end, kFormHeight - platform::ClientArea(kViewCadForm).bottom);
  ASSERT_TRUE(headless::Focus(kIdCadX));
  EXPECT_LT(SheetTop(kCadSheet), end);
  const Rect place = platform::PlaceOf(kIdCadX);
  EXPECT_GE(place.top, SheetTop(kCadSheet));
}

TEST_F(Workspace, ARightClickAnywhereGivesUpTheToolInHand) {
  tools.dragTool = 1;
  ASSERT_TRUE(headless::ContextMenu(kIdCadGenerate, -1));
  EXPECT_EQ(tools.dragTool, 0);
  EXPECT_TRUE(headless::TakeMenus().empty());
}

TEST_F(Workspace, ARightClickOnAnObjectWithNoToolSelectsItAndShowsItsMenu) {
  SketchObject circle;
  circle.type = kTypeCircle;
  FromCanvas(200, 150, circle.x, circle.y);
  circle.size = 1;
  AppendSketchObject(circle);
  sketch.selected = -1;
  Press(platform::PointerButton::None, platform::PointerAction::Move);
  Press(platform::PointerButton::Right, platform::PointerAction::Press);
  Press(platform::PointerButton::Right, platform::PointerAction::Release);
  const auto menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  const char16_t* kTexts[] = {u"Undo\tCtrl+Z",
                              u"",
                              u"Cut\tCtrl+X",
                              u"Copy\tCtrl+C",
                              u"Paste\tCtrl+V",
                              u"Duplicate",
                              u"",
                              u"Scale...",
                              u"Circular pattern...",
                              u"Rectangular pattern...",
                              u"",
                              u"Hide / Show",
                              u"Lock / Unlock",
                              u"",
                              u"Delete",
                              u"",
                              u"Save reusable shape\u2026"};
  ASSERT_EQ(menus[0].items.size(), std::size(kTexts));
  for (std::size_t i = 0; i < std::size(kTexts); ++i) {
    EXPECT_EQ(menus[0].items[i].text, kTexts[i]) << i;
  }
  EXPECT_EQ(sketch.selected, 0);
}

TEST_F(Workspace, ARightClickKeepsTheMarksOnAMarkedObjectAndDropsThemOnAnother) {
  double x = 0;
  double y = 0;
  FromCanvas(200, 150, x, y);
  for (const double aside : {0.0, 2.0, 4.0}) {
    AppendSketchObject({kTypeLine, 0, x - 0.2 + aside, y, 0.4, 0, 0});
  }
  sketch.selected = 1;
  tools.multiSelect[0] = tools.multiSelect[1] = 1;
  const auto rightClick = [] {
    Press(platform::PointerButton::None, platform::PointerAction::Move);
    Press(platform::PointerButton::Right, platform::PointerAction::Press);
    Press(platform::PointerButton::Right, platform::PointerAction::Release);
  };
  rightClick();
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(MultiSelectCount(), 2);
  sketch.selected = 1;
  tools.multiSelect[0] = 0;
  tools.multiSelect[2] = 1;
  rightClick();
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(MultiSelectCount(), 0);
}

TEST_F(Workspace, ShowsItsHintsOnItsOwnLineAndLeavesTheLogAlone) {
  const std::u16string log = Output();
  headless::MovePointerOver(kIdCadScale);
  headless::Advance(300);
  EXPECT_EQ(platform::TextOf(kIdCadHint), u"Scale dimensions around the selected object's anchor.");
  EXPECT_EQ(platform::TextOf(kIdStatusLine),
            u"Scale dimensions around the selected object's anchor.");
  EXPECT_EQ(Output(), log);
}

TEST_F(Workspace, ShowsItsKeysAgainWhenThePointerLeavesAKey) {
  const std::u16string standing = platform::TextOf(kIdCadHint);
  ASSERT_NE(standing.find(u"Alt: bypass snap"), std::u16string::npos);
  headless::MovePointerOver(kIdCadScale);
  headless::Advance(300);
  ASSERT_NE(platform::TextOf(kIdCadHint), standing);
  headless::MovePointerOver(kViewCadCanvas);
  headless::Advance(200);
  EXPECT_EQ(platform::TextOf(kIdCadHint), standing);
}

TEST_F(Workspace, ShowsTheStepOfAMethodWhileThePointerMoves) {
  ASSERT_TRUE(headless::Click(kIdCadLine));
  Press(platform::PointerButton::Left, platform::PointerAction::Press);
  Press(platform::PointerButton::Left, platform::PointerAction::Release);
  Press(platform::PointerButton::None, platform::PointerAction::Move);
  EXPECT_EQ(platform::TextOf(kIdCadStatus).substr(0, 10), u"CAD cursor");
  EXPECT_EQ(platform::TextOf(kIdCadHint), u"Pick the second construction point.");
  Press(platform::PointerButton::Right, platform::PointerAction::Press);
  Press(platform::PointerButton::Right, platform::PointerAction::Release);
  EXPECT_NE(platform::TextOf(kIdCadHint).find(u"Alt: bypass snap"), std::u16string::npos);
}

TEST_F(Workspace, OpensTheMethodsOfAKeyByDownAndByRestAndShowsTheKeyInHand) {
  platform::KeyEvent down;
  down.key = platform::kKeyDown;
  ASSERT_TRUE(headless::Focus(kIdCadCircle));
  headless::QueuePick(kIdMethodCircleThree);
  headless::PressKey(down);
  EXPECT_EQ(headless::TakeMenus().size(), 1u);
  EXPECT_EQ(tools.constructionMethod, kIdMethodCircleThree);
  EXPECT_TRUE(platform::IsChecked(kIdCadCircle));
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);

  headless::QueuePick(kIdMethodRectangleCentre);
  headless::MovePointerOver(kIdCadRectangle);
  headless::Advance(600);  // the tick that sees it, and 450 from there
  EXPECT_EQ(headless::TakeMenus().size(), 1u);
  EXPECT_EQ(tools.constructionMethod, kIdMethodRectangleCentre);
  EXPECT_TRUE(platform::IsChecked(kIdCadRectangle));
  EXPECT_FALSE(platform::IsChecked(kIdCadCircle));
}

TEST_F(Workspace, OffersTheThreeSizesOfADimensionOnceHoweverOftenItIsOpened) {
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(headless::Click(kIdCadDimension));
    ASSERT_EQ(platform::RowCount(kIdCadDimensionPart), 3);
  }
  EXPECT_EQ(platform::RowText(kIdCadDimensionPart, 0), u"Length / width / diameter");
  EXPECT_EQ(platform::RowText(kIdCadDimensionPart, 1), u"Height / slot width");
  EXPECT_EQ(platform::RowText(kIdCadDimensionPart, 2), u"Circle radius");
}

TEST_F(Workspace, EscapeInTheDimensionValueEndsTheMode) {
  ASSERT_TRUE(headless::Click(kIdCadDimension));
  ASSERT_TRUE(headless::Focus(kIdCadDimensionValue));
  platform::KeyEvent escape;
  escape.key = platform::kKeyEscape;
  headless::PressKey(escape);
  EXPECT_FALSE(tools.dimensionMode);
  EXPECT_EQ(ShownCadPanel(), kPanelNone);
  EXPECT_EQ(platform::FocusedId(), kViewCadCanvas);
}

TEST_F(Workspace, EnterLeavesTheFieldsNewNumberSelected) {
  SketchObject line;
  line.size = 2;
  sketch.selected = AppendSketchObject(line);
  RefreshSketchPanels();
  platform::KeyEvent enter;
  enter.key = platform::kKeyEnter;
  ASSERT_TRUE(headless::Focus(kIdCadSize));
  ASSERT_TRUE(headless::TypeInto(kIdCadSize, u"3"));
  headless::PressKey(enter);
  EXPECT_EQ(sketch.objects[0].size, 3);
  platform::RunEditAction(kIdCadSize, platform::EditAction::Copy);
  EXPECT_EQ(headless::ClipboardText(), u"3.000");
}

TEST_F(Workspace, TellsItsToolsByWordsAndState) {
  EXPECT_TRUE(platform::IsChecked(kIdCadSelect));
  tools.dragTool = 6;
  RefreshCadTools();
  EXPECT_FALSE(platform::IsChecked(kIdCadSelect));
  EXPECT_TRUE(platform::IsChecked(kIdCadWorkAxis));
  sketch.snapOn = false;
  RefreshCadTools();
  EXPECT_EQ(platform::TextOf(kIdCadSnap), u"Snap OFF");
  sketch.metric = true;
  RefreshCadTools();
  EXPECT_EQ(platform::TextOf(kIdCadInch), u"INCH");
  EXPECT_EQ(platform::TextOf(kIdCadMm), u"MM *");
}

TEST_F(Workspace, CutDataOpensItsPanelWithTheDepthReadyToType) {
  tools.dragTool = 2;
  ASSERT_TRUE(headless::Click(kIdCadCutData));
  EXPECT_EQ(tools.dragTool, 0);
  EXPECT_EQ(ShownCadPanel(), kPanelCutData);
  EXPECT_EQ(platform::FocusedId(), kIdCadDepth);
  EXPECT_EQ(platform::TextOf(kIdCadFeed), u"10.000000");
}

TEST_F(Workspace, AskingForAPanelTellsNoMoreOfTheToolThatItEnds) {
  for (const int key : {kIdCadScale, kIdCadRevolve, kIdCadCutData}) {
    ASSERT_TRUE(headless::Click(kIdCadDimension));
    EXPECT_EQ(SketchStatus().substr(0, 10), u"Dimension:");
    ASSERT_TRUE(headless::Click(key));
    EXPECT_EQ(SketchStatus(), u"SELECT mode: click geometry on the canvas.");
  }
}

TEST_F(Workspace, SurvivesItsWindowBeingHidden) {
  SketchObject line;
  line.size = 2;
  AppendSketchObject(line);
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  EXPECT_FALSE(platform::IsVisible(kViewCadCanvas));
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
  ASSERT_TRUE(headless::Click(kIdSurfaceCad));
  EXPECT_EQ(sketch.objectCount, 1);
}

constexpr int kPanels[] = {0, 1, 2, 3, 4, 5, 6, 7, 9};

platform::PointerEvent ScrollEvent(platform::PointerAction action, int y) {
  platform::PointerEvent event;
  event.action = action;
  event.button = action == platform::PointerAction::Move ? platform::PointerButton::None
                                                         : platform::PointerButton::Left;
  event.leftDown = action != platform::PointerAction::Release;
  event.x = 8;
  event.y = y;
  return event;
}
void Scroll(platform::PointerAction action, int y) {
  headless::Pointer(kViewCadScroll, ScrollEvent(action, y));
}
bool InView(int id) {
  const Rect form = platform::PlaceInMainWindow(kViewCadForm);
  const Rect place = platform::PlaceInMainWindow(id);
  return place.top >= form.top && place.bottom <= form.bottom;
}
void PressOf(int id, int key, bool shift = false) {
  ASSERT_TRUE(headless::Focus(id));
  headless::PressKey({key, false, shift, false});
}

TEST_F(Workspace, NamesEveryControlOnceInEveryPanel) {
  for (const int panel : kPanels) {
    tools.panelMode = panel;
    RefreshCadTools();
    for (const int id : {kIdCadSizeBox1, kIdCadSizeBox2, kIdCadCreateTyped, kIdCadDrawingName}) {
      platform::SetVisible(id, true);
    }
    std::set<std::u16string> names;
    for (const int id : headless::AllIds()) {
      headless::ControlInfo info;
      ASSERT_TRUE(headless::Describe(id, info));
      if (!info.visible || info.kind == u"label") continue;
      EXPECT_FALSE(info.name.empty()) << id << " in panel " << panel;
      EXPECT_TRUE(names.insert(info.name).second)
          << id << " " << support::Narrow(info.name) << " in panel " << panel;
    }
  }
}

TEST_F(Workspace, TabReachesEveryControlInTheOrderOfTheScreen) {
  for (const int panel : kPanels) {
    tools.panelMode = panel;
    RefreshCadTools();
    std::set<int> wanted;
    for (const int id : headless::AllIds()) {
      headless::ControlInfo info;
      ASSERT_TRUE(headless::Describe(id, info));
      const bool takes = info.kind == u"button" || info.kind == u"edit" || info.kind == u"list" ||
                         info.kind == u"combo" || id == kViewCadCanvas ||
                         id == kViewCircularPicture || id == kViewRectPicture;
      if (takes && info.visible && info.enabled) wanted.insert(id);
    }
    ASSERT_TRUE(headless::Focus(kIdCadSelect));
    std::vector<int> walked;
    do {
      walked.push_back(platform::FocusedId());
      headless::PressKey({platform::kKeyTab});
    } while (platform::FocusedId() != kIdCadSelect && walked.size() < 200);
    EXPECT_EQ(std::set<int>(walked.begin(), walked.end()), wanted) << panel;
    EXPECT_EQ(walked.size(), wanted.size()) << panel;
    // Within the strip and within the form every step leads right or down.
    for (std::size_t i = 1; i < walked.size(); ++i) {
      const bool strip = platform::PlaceInMainWindow(walked[i - 1]).bottom <
                             platform::PlaceInMainWindow(kViewCadCanvas).top - 40 &&
                         i < 30;
      if (!strip && !(InForm(walked[i - 1]) && InForm(walked[i]))) continue;
      const Rect from = platform::PlaceOf(walked[i - 1]);
      const Rect to = platform::PlaceOf(walked[i]);
      EXPECT_TRUE(to.top > from.top || to.left > from.left)
          << walked[i - 1] << " to " << walked[i] << " in panel " << panel;
    }
  }
}

TEST_F(Workspace, TabGoesThroughAllEightDrawingsAndOnToTheirKeys) {
  for (int i = 1; i < 8; ++i) ASSERT_TRUE(headless::Click(kIdDrawingAdd));
  ASSERT_TRUE(headless::Focus(kIdDrawingFirst));
  for (int i = 1; i < 8; ++i) {
    headless::PressKey({platform::kKeyTab});
    EXPECT_EQ(platform::FocusedId(), kIdDrawingFirst + i);
  }
  headless::PressKey({platform::kKeyTab});
  EXPECT_EQ(platform::FocusedId(), kIdDrawingAdd);
}

TEST_F(Workspace, ZoomsTheCanvasByTheWheelOverABoxThatFloatsOnIt) {
  const Rect canvas = platform::PlaceOf(kViewCadCanvas);
  platform::PointerEvent wheel;
  wheel.action = platform::PointerAction::Wheel;
  wheel.wheel = 1;
  wheel.x = canvas.left + 200;
  wheel.y = canvas.top + 150;
  double x = 0;
  double y = 0;
  FromCanvas(200, 150, x, y);
  headless::Pointer(kViewCad, wheel);
  EXPECT_DOUBLE_EQ(canvasView.zoom, 1.15);
  double x2 = 0;
  double y2 = 0;
  FromCanvas(200, 150, x2, y2);
  EXPECT_NEAR(x2, x, 1e-9);
  EXPECT_NEAR(y2, y, 1e-9);
  wheel.x = canvas.left - 20;
  headless::Pointer(kViewCad, wheel);
  EXPECT_DOUBLE_EQ(canvasView.zoom, 1.15);
}

TEST_F(Workspace, LetsTabFollowTheBandOfEachSurface) {
  const auto expectWalk = [](std::initializer_list<int> ids) {
    headless::Focus(*ids.begin());
    for (const int id : ids) {
      EXPECT_EQ(platform::FocusedId(), id);
      headless::PressKey({platform::kKeyTab});
    }
  };
  expectWalk({kIdBack, kIdSurfaceCode, kIdSurfaceCad, kIdSurfacePlate, kIdNew, kIdOpen, kIdSaveMenu,
              kIdTabFirst, kIdTabNew, kIdCadSelect, kIdCadLine});
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  expectWalk({kIdInch, kIdMm, kIdBack, kIdSurfaceCode, kIdSurfaceCad, kIdSurfacePlate});
  expectWalk({kIdZoomReset, kIdModeList, kIdShowFeatures});
  expectWalk({kIdTabNew, kIdCommandWords});
}

TEST_F(Workspace, ScrollsByTheArrowsThePagesAndTheThumbOfItsBar) {
  using platform::PointerAction;
  headless::Resize(1200, 800);
  const int height = platform::ClientArea(kViewCadForm).bottom;
  const int most = 1360 - height;
  Scroll(PointerAction::Press, height - 3);
  EXPECT_EQ(SheetTop(kCadSheet), 36);
  Scroll(PointerAction::Press, 3);
  EXPECT_EQ(SheetTop(kCadSheet), 0);
  Scroll(PointerAction::Press, 3);
  EXPECT_EQ(SheetTop(kCadSheet), 0);
  Scroll(PointerAction::Press, height - 20);  // below the thumb
  EXPECT_EQ(SheetTop(kCadSheet), height - 60);
  Scroll(PointerAction::Press, 18);  // above it
  EXPECT_EQ(SheetTop(kCadSheet), 0);
  Scroll(PointerAction::Press, 40);
  Scroll(PointerAction::Move, 5000);
  EXPECT_EQ(SheetTop(kCadSheet), most);
  Scroll(PointerAction::Move, 40);
  EXPECT_EQ(SheetTop(kCadSheet), 0);
  Scroll(PointerAction::Lost, 0);
  Scroll(PointerAction::Move, 300);
  EXPECT_EQ(SheetTop(kCadSheet), 0);
}

TEST_F(Workspace, TurnsThePagesOfTheFormByKeysOnFieldsAndKeys) {
  headless::Resize(1200, 800);
  const int page = platform::ClientArea(kViewCadForm).bottom - 60;
  for (const int id : {kIdCadX, kIdCadApply}) {
    PressOf(id, platform::kKeyPageDown);
    EXPECT_EQ(SheetTop(kCadSheet), page) << id;
    headless::PressKey({platform::kKeyPageUp});
    EXPECT_EQ(SheetTop(kCadSheet), 0) << id;
  }
  // What is typed is seen.
  PressOf(kIdCadX, platform::kKeyPageDown);
  EXPECT_FALSE(InView(kIdCadX));
  headless::PressKey({'7'});
  EXPECT_TRUE(InView(kIdCadX));
  // A combo pages through its own rows, the canvas zooms.
  tools.panelMode = kPanelCircular;
  RefreshCadTools();
  ASSERT_TRUE(headless::Focus(kIdCadCircularOrientation));
  const int top = SheetTop(kCadSheet);
  headless::PressKey({platform::kKeyPageDown});
  EXPECT_EQ(SheetTop(kCadSheet), top);
}

TEST_F(Workspace, BringsEveryFieldIntoViewEitherWayRound) {
  headless::Resize(1200, 800);
  tools.panelMode = kPanelRectangular;
  RefreshCadTools();
  for (const bool back : {false, true}) {
    ASSERT_TRUE(headless::Focus(back ? kIdCadClear : kIdCadColumns));
    for (int i = 0; i < 30; ++i) {
      const int id = platform::FocusedId();
      // Two keys stand below what scrolls.
      EXPECT_TRUE(id == kIdRectInsert || id == kIdCadCreatePattern || InView(id)) << id;
      headless::PressKey({platform::kKeyTab, false, back, false});
    }
  }
}

TEST_F(Workspace, StaysUnderAPressOfThePointer) {
  headless::Resize(1200, 800);
  tools.panelMode = kPanelCircular;
  RefreshCadTools();
  const int top = platform::PlaceOf(kIdCadQuickCircular).top + 10;
  ScrollSheet(kCadSheet, top);
  headless::MovePointerOver(kIdCadQuickCircular);
  ASSERT_TRUE(headless::Focus(kIdCadQuickCircular));
  EXPECT_EQ(SheetTop(kCadSheet), top);
  headless::MovePointerOver(0);
  ASSERT_TRUE(headless::Focus(kIdCadCircularX));
  ASSERT_TRUE(headless::Focus(kIdCadQuickCircular));
  EXPECT_TRUE(InView(kIdCadQuickCircular));
}

TEST_F(Workspace, LeavesTheModelViewByEscapeFromEveryControlAndSnapsByNoKeyThere) {
  for (const int id : {kViewCadCanvas, kIdCadThicknessValue, kIdCadLine, kIdCadOperations}) {
    ASSERT_TRUE(headless::Click(kIdCadThickness));
    ASSERT_TRUE(canvasView.modelView);
    PressOf(id, platform::kKeyF1 + 7);
    EXPECT_TRUE(sketch.snapOn) << id;
    EXPECT_TRUE(canvasView.modelView) << id;
    headless::PressKey({platform::kKeyEscape});
    EXPECT_FALSE(canvasView.modelView) << id;
    EXPECT_EQ(platform::FocusedId(), kViewCadCanvas) << id;
    headless::PressKey({platform::kKeyF1 + 7});
    EXPECT_FALSE(sketch.snapOn) << id;
    headless::PressKey({platform::kKeyF1 + 7});
  }
}

TEST_F(Workspace, EditsNothingByKeysInTheModelViewWhereverTheKeyboardIs) {
  PushSketchUndo();
  sketch.selected = AppendSketchObject({kTypeCircle, 0, 0, 0, 1, 0, 0});
  ASSERT_TRUE(headless::Click(kIdCadThickness));
  for (const int id : {kViewCadCanvas, kIdCadLine, kIdCadOperations}) {
    headless::Focus(id);
    headless::PressKey({'Z', true});
    headless::PressKey({platform::kKeyDelete});
    EXPECT_EQ(sketch.objectCount, 1) << id;
    EXPECT_TRUE(canvasView.modelView) << id;
  }
  ASSERT_TRUE(headless::Click(kIdCadReturnTo2D));
  headless::Focus(kIdCadLine);
  headless::PressKey({platform::kKeyDelete});
  EXPECT_EQ(sketch.objectCount, 0);
}

// The pattern forms stand in the same form as the cutting data, and no block of a sketch holds
// them.
TEST_F(Workspace, LeavesTheListsOfThePatternsAsChosenWhenABlockOpens) {
  AppendSketchObject({kTypeCircle, 0, 0, 0, 1, 0, 0});
  ASSERT_TRUE(InsertFeatureBlock(kKindSketch, u"G1 X1\r\n"));
  constexpr int kLists[] = {kIdCadCircularOrientation, kIdCircularItem, kIdCircularOrientation,
                            kIdRectItem};
  for (const int list : kLists) platform::SelectRow(list, 2);
  EditFeature();
  ASSERT_EQ(editLink.kind, kKindSketch);
  for (const int list : kLists) EXPECT_EQ(platform::SelectedRow(list), 2) << list;
}

TEST_F(Workspace, DropsTheCubesHelpWithTheModelView) {
  ASSERT_TRUE(headless::Click(kIdCadThickness));
  EXPECT_EQ(SketchStatus().substr(0, 10), u"View cube:");
  headless::PressKey({platform::kKeyEscape});
  EXPECT_EQ(SketchStatus(), u"SELECT mode: click geometry on the canvas.");
}

TEST_F(Workspace, ARightClickOnAnyKindOfControlGivesUpTheToolInHand) {
  tools.panelMode = kPanelCircular;
  RefreshCadTools();
  const int around[] = {kIdCadLabelFirst + 1, kIdCadQuantity,   kIdCadCircularOrientation,
                        kIdCadStatus,         kIdCadOperations, kIdTabFirst,
                        kViewCadSheet,        kViewCadScroll,   kIdStatusLine};
  for (const int id : around) {
    tools.dragTool = 1;
    tools.panelMode = kPanelCircular;
    RefreshCadTools();
    EXPECT_TRUE(headless::ContextMenu(id, -1)) << id;
    EXPECT_EQ(tools.dragTool, 0) << id;
  }
  tools.dragTool = 1;
  EXPECT_TRUE(platform::Listener().contextMenu(platform::kMainWindow, -1, 1000, 30));
  EXPECT_EQ(tools.dragTool, 0);
  ASSERT_TRUE(headless::Click(kIdCadPan));
  EXPECT_TRUE(headless::ContextMenu(kIdCadGenerate, -1));
  EXPECT_FALSE(canvasView.panTool);
  EXPECT_TRUE(headless::TakeMenus().empty());
}

TEST_F(Workspace, ARightClickOnTheCanvasIsUsedUpByTheToolThatItEnds) {
  ASSERT_TRUE(headless::Click(kIdCadLine));
  for (const std::size_t menus : {0u, 1u, 1u}) {
    Press(platform::PointerButton::Right, platform::PointerAction::Press);
    Press(platform::PointerButton::Right, platform::PointerAction::Release);
    EXPECT_EQ(tools.constructionMethod, 0);
    EXPECT_EQ(headless::TakeMenus().size(), menus);
  }
}

TEST_F(Workspace, TellsOnItsStatusLineWhatTheLogOutOfSightTells) {
  AppendOutput(u"Saved program.");
  EXPECT_EQ(SketchStatus(), u"Saved program.");
  EXPECT_EQ(platform::TextOf(kIdCadStatus), u"Saved program.");
  LogOutput(u"Transfer complete.");
  EXPECT_EQ(SketchStatus(), u"Transfer complete.");
  EXPECT_TRUE(OutputHas(u"Saved program.\r\n"));
  ASSERT_TRUE(headless::Click(kIdSurfaceCode));
  AppendOutput(u"Seen where it stands.");
  EXPECT_EQ(SketchStatus(), u"Transfer complete.");
}

TEST_F(Workspace, GivesTheHintLineBackWhenAFieldIsWorkedIn) {
  headless::Focus(kViewCadCanvas);
  platform::SetText(kIdCadHint, u"0.100");  // the pointer came to the field
  ASSERT_TRUE(headless::Focus(kIdCadAmount));
  EXPECT_EQ(platform::TextOf(kIdCadHint), kCadHint);
}

TEST_F(Workspace, GivesTheDimensionsSentenceTheWholeWidthOfTheForm) {
  headless::Click(kIdCadDimension);
  const Rect value = platform::PlaceOf(kIdCadDimensionValue);
  const Rect part = platform::PlaceOf(kIdCadDimensionPart);
  EXPECT_EQ(value.left, part.left);
  EXPECT_EQ(value.right, part.right);
  const std::u16string words = platform::TextOf(kIdCadDimensionValue);
  ASSERT_EQ(words, u"Click geometry to measure and resize.");
  EXPECT_LE(platform::TextWidth(platform::FontRole::Small, words), RectWidth(value));
}

}  // namespace
}  // namespace morva
