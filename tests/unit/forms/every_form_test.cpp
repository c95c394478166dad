// What holds for every form of the program, on the whole application: each is brought up as the
// user brings it up, and stands where its panel puts it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/commands.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "dnc/setup_panel.h"
#include "dnc/transfer_worker.h"
#include "documents/builder_table.h"
#include "documents/destination.h"
#include "forms/form.h"
#include "forms/form_table.h"
#include "forms/sheet.h"
#include "library/shapes.h"
#include "library/units.h"
#include "plate/model/plate.h"
#include "plate/tools/plate_editor.h"
#include "platform/control.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "support/bores.h"
#include "support/groove.h"
#include "support/workbench.h"

namespace morva {
namespace {

using platform::Rect;

constexpr int kToolPanels[] = {kIdCadCircularPanel, kIdCadGridPanel, kIdCadScale,
                               kIdCadCutData,       kIdCadPolygon,   kIdCadRevolve,
                               kIdCadDimension,     kIdCadThickness};
constexpr std::pair<int, int> kWindows[] = {{1200, 800}, {1560, 940}, {1920, 1080}};

// A control or a label of a form that is shown.
struct Piece {
  int id = 0;
  bool label = false;
};

struct EveryForm : support::Workbench {
  void SetUp() override {
    support::Workbench::SetUp();
    // Builders of the tests' own, one of them with pages that share their controls.
    support::groove::Join();
    support::bores::Join();
    // A saved shape has fields of its own.
    SavedShape shape;
    shape.name[0] = u'S';
    shape.objects[shape.count++] = {kTypeCircle, 0, 0, 0, 1, 0, 0};
    ASSERT_EQ(PutShape(shape), 0);
    RefreshShapeLists();
    SetMode(kModeHome);
  }
  using Look = std::function<void(const Form&, const std::vector<Piece>&)>;
  std::set<std::pair<const Form*, int>> seen;  // rows

  // What is shown of a form, in the order of its rows; each piece once.
  std::vector<Piece> PiecesOf(const FormEntry& entry) {
    const Form& form = *entry.form;
    std::vector<Piece> pieces;
    const auto put = [&pieces](int id, bool label) {
      const auto same = [id](const Piece& piece) { return piece.id == id; };
      if (id == 0 || !platform::IsVisible(id)) return false;
      if (std::none_of(pieces.begin(), pieces.end(), same)) pieces.push_back({id, label});
      return true;
    };
    for (int i = 0; i < static_cast<int>(form.rows.size()); ++i) {
      const FormRow& row = form.rows[static_cast<std::size_t>(i)];
      if (!IsRowShown(form, i)) continue;
      const bool words = row.kind == RowKind::Head || row.kind == RowKind::Note;
      bool any = false;
      if (words || HasLabel(form, row)) any = put(LabelId(entry, i), true);
      if (!words) any = put(row.id, false) || any;
      for (const int key : row.keys) any = put(key, false) || any;
      if (any) seen.insert({&form, i});
    }
    return pieces;
  }
  void LookAround(const char* where, const Look& look) {
    for (int n = 0; const FormEntry* entry = EntryAt(n); ++n) {
      // A dialog keeps the user from what stands behind it.
      const int dialog = headless::OpenDialog();
      if (dialog != 0 && entry->form->parent != dialog) continue;
      const std::vector<Piece> pieces = PiecesOf(*entry);
      if (pieces.empty()) continue;
      SCOPED_TRACE(testing::Message() << "form " << n << ", " << where);
      look(*entry->form, pieces);
    }
  }
  void LookAtCodeSurface(const Look& look) {
    for (int n = 0; const Builder* builder = BuilderAt(n); ++n) {
      if (builder->mode < 0) continue;
      SetMode(builder->mode);
      int list = 0;
      int pages = 1;
      for (const FormRow& row : builder->form->rows) {
        if (row.picks > 0) list = row.id;
        pages = std::max(pages, row.picks);
      }
      // The first page last, so that it comes up with its own start.
      for (int page = pages - 1; page >= 0; --page) {
        if (list != 0) headless::SelectRows(list, {page});
        LookAround("page of a builder", look);
      }
    }
    SetMode(kModeTools);
    headless::Click(kIdToolAdd);
    LookAround("tools", look);
    headless::Click(kIdToolSave);
    headless::Click(kIdToolClose);
    SetMode(kModeHome);
    LookAround("tools at home", look);
    SetMode(kModeFind);
    LookAround("find", look);
    SetMode(kModeDiagnostics);
    LookAround("check", look);
    SetMode(kModeDnc);
    OpenSetupPanel();
    LookAround("connection", look);
    transfer.active = true;
    Layout();
    LookAround("connection while a transfer runs", look);
    transfer.active = false;
    CloseSetupPanel();
    for (const int width : {kLeftPanelLeast, kLeftPanelMost}) {
      app.leftPanelWidth = width;
      SetMode(kModeHome);
      SetMode(kModeCodeIndex);
      LookAround("page of the index", look);
      SetMode(kModeHome);
      app.sidebarShowsFeatures = false;
      Layout();
      LookAround("index", look);
    }
    RouteCommand(kIdImport, platform::kNotifyClick);
    LookAround("import", look);
    headless::Click(kIdImportCancel);
    headless::Advance(200);  // the program gets its markers, so that the caret lies in user code
    headless::InDialog([&] {
      LookAround("go to line", look);
      headless::Click(kIdLineCancel);
    });
    RouteCommand(kIdGoToLine, platform::kNotifyClick);
    headless::InDialog([&] {
      LookAround("keys", look);
      headless::Click(kIdKeysClose);
    });
    RouteCommand(kIdKeysPage, platform::kNotifyClick);
    headless::InDialog([&] {
      LookAround("picker", look);
      headless::Click(kIdDestinationCancel);
    });
    RunDestinationPicker(kKindSketch);
  }
  void LookAtSkim(const Look& look) {
    SetMode(kModeWizard);
    headless::Click(kIdWizardInsert);
    LookAround("stock of the skim", look);
    headless::Click(kIdSkimPosition);
    LookAround("place of the skim", look);
    headless::Click(kIdSkimNext);
    LookAround("cutter of the skim", look);
    headless::Click(kIdSkimNext);
    for (const int row : {1, 0}) {
      headless::SelectRows(kIdSkimDepths, {row});
      LookAround("depths of the skim", look);
    }
    headless::Click(kIdSkimNext);
    headless::Click(kIdSkimShowMatrix);
    LookAround("review of the skim", look);
    headless::Click(kIdSkimCancel);
  }
  void LookAtPlate(const Look& look) {
    constexpr int kDepthSection = 13;  // numbers below are those of the form, from 100 on features
    constexpr int kFirstFeature = 100;
    headless::Click(kIdSurfacePlate);
    OpenPlateNaming(false);
    LookAround("name of the plate", look);
    if (plate.unnamed) {
      headless::TypeInto(kIdPlateName, u"Plate of the round");
      headless::Click(kIdPlateApply);
    }
    ClosePlateEditor();
    LookAround("plate", look);
    for (const int target : {0, kDepthSection, kFirstFeature}) {
      OpenPlateTarget(target, Keyboard::Stays);
      LookAround("editor of the plate", look);
    }
    ClosePlateEditor();
    headless::QueuePick(kIdCustomShapeFirst);
    headless::SelectRows(kIdPlateShape, {3});
    LookAround("plate with an outline of its own", look);
    headless::SelectRows(kIdPlateShape, {0});
    headless::QueueAnswer(platform::BoxAnswer::No);  // no library shape of it
    headless::Click(kIdSurfaceCad);
    headless::ClearQueues();
  }
  // Every form on every page, as the program shows it.
  void OnEveryForm(const Look& look) {
    headless::Click(kIdSurfaceCode);
    LookAtCodeSurface(look);
    LookAtSkim(look);
    LookAtPlate(look);
    headless::Click(kIdSurfaceCad);
    LookAround("no tool", look);
    for (const int panel : kToolPanels) {
      RouteCommand(panel, platform::kNotifyClick);
      LookAround("tool panel", look);
    }
    for (const int mode : {int{kModeCircular}, int{kModeRectangular}}) {
      SetMode(mode);
      LookAround("pattern alone", look);
    }
  }
};

bool IsFixed(const Form& form, int id) {
  const int row = RowOfControl(form, id);
  return row >= 0 && form.rows[static_cast<std::size_t>(row)].fixed;
}

// The area of the ground of one of the form's controls, in pixels of that control.
Rect GroundArea(const Form& form, int id) {
  if (form.sheet && IsFixed(form, id)) return platform::ClientArea(form.sheet->parent);
  return form.sheet ? SheetPaper(*form.sheet) : platform::ClientArea(form.parent);
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// Below what came before, or in a column to its right.
bool Follow(const Rect& before, const Rect& place) {
  return place.top >= before.bottom || place.left >= before.right;
}

bool IsNumber(const FormRow& row) {
  return row.kind == RowKind::Number || row.kind == RowKind::Count;
}

TEST_F(EveryForm, PlacesItsControlsAndLabelsWithoutOverlapOnItsGround) {
  for (const auto& [width, height] : kWindows) {
    SCOPED_TRACE(testing::Message() << width << " by " << height);
    headless::Resize(width, height);
    seen.clear();
    OnEveryForm([](const Form& form, const std::vector<Piece>& pieces) {
      for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Rect ground = GroundArea(form, pieces[i].id);
        const Rect place = platform::PlaceOf(pieces[i].id);
        EXPECT_LT(place.left, place.right) << pieces[i].id;
        EXPECT_LT(place.top, place.bottom) << pieces[i].id;
        EXPECT_GE(place.left, ground.left) << pieces[i].id;
        EXPECT_GE(place.top, ground.top) << pieces[i].id;
        EXPECT_LE(place.right, ground.right) << pieces[i].id;
        EXPECT_LE(place.bottom, ground.bottom) << pieces[i].id;
        for (std::size_t k = i + 1; k < pieces.size(); ++k) {
          if (IsFixed(form, pieces[i].id) != IsFixed(form, pieces[k].id)) continue;
          EXPECT_FALSE(Overlap(place, platform::PlaceOf(pieces[k].id)))
              << pieces[i].id << " " << pieces[k].id;
        }
      }
    });
    // No row of any form was left out.
    for (int n = 0; const Form* form = FormAt(n); ++n) {
      for (int i = 0; i < static_cast<int>(form->rows.size()); ++i) {
        EXPECT_TRUE(seen.count({form, i})) << "form " << n << " row " << i;
      }
    }
  }
}

// What is fixed stands below the frame of what scrolls, and what scrolls keeps some height.
TEST_F(EveryForm, KeepsWhatIsFixedBelowWhatScrolls) {
  int met = 0;
  for (const auto& [width, height] : kWindows) {
    SCOPED_TRACE(testing::Message() << width << " by " << height);
    headless::Resize(width, height);
    OnEveryForm([&met](const Form& form, const std::vector<Piece>& pieces) {
      if (!form.sheet) return;
      const Rect frame = platform::PlaceInMainWindow(form.sheet->frame.id);
      for (const Piece& piece : pieces) {
        if (!IsFixed(form, piece.id)) continue;
        const Rect place = platform::PlaceInMainWindow(piece.id);
        EXPECT_GE(place.top, frame.bottom) << piece.id;
        EXPECT_GE(place.left, frame.left) << piece.id;
        EXPECT_GE(RectHeight(frame), 120) << piece.id;
        ++met;
      }
    });
  }
  EXPECT_GE(met, 6);
}

// The toolpath view with its two rows of keys.
std::vector<int> ViewPieces() {
  std::vector<int> pieces;
  for (const int id : headless::AllIds()) {
    const bool key = (id >= kIdViewRefresh && id <= kIdViewLayers) ||
                     (id >= kIdPlayStart && id <= kIdPlayStop) || id == kIdSpeedSlider;
    if ((key || id == kViewToolpath) && platform::IsVisible(id)) pieces.push_back(id);
  }
  return pieces;
}

TEST_F(EveryForm, LeavesTheToolpathViewFree) {
  int met = 0;
  for (const auto& [width, height] : kWindows) {
    SCOPED_TRACE(testing::Message() << width << " by " << height);
    headless::Resize(width, height);
    OnEveryForm([&met](const Form& form, const std::vector<Piece>& pieces) {
      if (headless::OpenDialog() != 0) return;  // it lies over everything
      // What scrolls is seen in the frame alone.
      std::vector<int> ids;
      for (const Piece& piece : pieces) {
        if (!form.sheet || IsFixed(form, piece.id)) ids.push_back(piece.id);
      }
      if (form.sheet) ids.insert(ids.end(), {form.sheet->frame.id, form.sheet->bar.id});
      for (const int view : ViewPieces()) {
        const Rect taken = platform::PlaceInMainWindow(view);
        for (const int id : ids) {
          EXPECT_FALSE(Overlap(platform::PlaceInMainWindow(id), taken)) << id << " " << view;
          ++met;
        }
      }
    });
  }
  EXPECT_GT(met, 100);
}

TEST_F(EveryForm, IsWalkedByTabInTheOrderOfTheScreen) {
  OnEveryForm([](const Form& form, const std::vector<Piece>& pieces) {
    std::set<int> wanted;
    for (const Piece& piece : pieces) {
      if (!piece.label && platform::IsEnabled(piece.id)) wanted.insert(piece.id);
    }
    ASSERT_FALSE(wanted.empty());
    // Once around, from the first control of the form that takes the keyboard.
    const auto first = std::find_if(pieces.begin(), pieces.end(), [&](const Piece& piece) {
      return wanted.count(piece.id) != 0 && headless::Focus(piece.id);
    });
    ASSERT_NE(first, pieces.end());
    std::vector<int> walked;
    for (int steps = 0; steps < 2 * kMaxTabStops; ++steps) {
      const int id = platform::FocusedId();
      if (!walked.empty() && id == walked.front()) break;
      if (wanted.count(id)) walked.push_back(id);
      platform::KeyEvent tab;
      tab.key = platform::kKeyTab;
      headless::PressKey(tab);
    }
    EXPECT_EQ(walked.size(), wanted.size());
    for (std::size_t i = 1; i < walked.size(); ++i) {
      // What is fixed stands below all that scrolls, in pixels of another ground.
      if (IsFixed(form, walked[i]) && !IsFixed(form, walked[i - 1])) continue;
      EXPECT_TRUE(Follow(platform::PlaceOf(walked[i - 1]), platform::PlaceOf(walked[i])))
          << walked[i - 1] << " " << walked[i];
    }
  });
}

bool TakesKeyboard(std::u16string_view kind) {
  return kind != u"label" && kind != u"view" && kind != u"log";
}

TEST_F(EveryForm, NamesEachControlAndNoTwoAlikeInTheWindow) {
  OnEveryForm([](const Form&, const std::vector<Piece>& pieces) {
    for (const Piece& piece : pieces) {
      EXPECT_TRUE(piece.label || !platform::AccessibleName(piece.id).empty()) << piece.id;
    }
    std::map<std::u16string, int> names;
    for (const int id : headless::AllIds()) {
      headless::ControlInfo info;
      if (!headless::Describe(id, info) || !info.visible || info.behind) continue;
      if (!TakesKeyboard(info.kind)) continue;
      EXPECT_EQ(names.count(info.name), 0u)
          << id << " and " << names[info.name] << ": " << platform::ToUtf8(info.name);
      names[info.name] = id;
    }
  });
}

// The panels of builders stand alone, so each field says what it is for. What the drawing surface
// has is told by its hint line.
TEST_F(EveryForm, HelpsWithEveryFieldOfABuilder) {
  int fields = 0;
  for (int n = 0; const Builder* builder = BuilderAt(n); ++n) {
    EXPECT_FALSE(HelpOf(builder->insertKey).empty()) << builder->insertKey;
    if (builder->mode < 0) continue;
    for (const FormRow& row : builder->form->rows) {
      if (!IsField(row.kind) && row.kind != RowKind::Choice) continue;
      EXPECT_NE(row.help[0], 0) << platform::ToUtf8(row.label) << " has no help";
      ++fields;
    }
  }
  EXPECT_GT(fields, 10);
}

TEST_F(EveryForm, HelpsWithTheFieldThatGetsTheKeyboard) {
  SetMode(support::groove::kMode);
  constexpr int kField = support::groove::kFirst + support::groove::kWidth;
  ASSERT_TRUE(headless::Focus(kField));
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"How far the groove reaches along X");
}

// A transfer that waits for the control, or a program that is not saved, is told again.
TEST_F(EveryForm, TellsWhatStandsWhereTheHelpOfAFieldGoes) {
  constexpr int kField = support::groove::kFirst + support::groove::kWidth;
  SetMode(support::groove::kMode);
  const auto before = hooks.tellStanding;
  hooks.tellStanding = [] {
    ShowStatus(u"It stands.");
    return true;
  };
  ASSERT_TRUE(headless::Focus(kField));
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"How far the groove reaches along X");
  SetMode(kModeHome);
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"It stands.");
  hooks.tellStanding = before;
}

TEST_F(EveryForm, TakesTheHelpOfAFieldAwayWithTheKeyboard) {
  constexpr int kField = support::groove::kFirst + support::groove::kWidth;
  SetMode(support::groove::kMode);
  ASSERT_TRUE(headless::Focus(kField));
  SetMode(kModeHome);
  EXPECT_EQ(platform::TextOf(kIdStatusLine), kReadyWords);
  SetMode(support::groove::kMode);
  ASSERT_TRUE(headless::Focus(kField));
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"How far the groove reaches along X");
  ASSERT_TRUE(headless::Focus(kIdPreflight));
  EXPECT_EQ(platform::TextOf(kIdStatusLine), kReadyWords);
}

TEST_F(EveryForm, LeavesWhatWasToldSinceWhenAFieldLosesTheKeyboard) {
  constexpr int kField = support::groove::kFirst + support::groove::kWidth;
  SetMode(support::groove::kMode);
  ASSERT_TRUE(headless::Focus(kField));
  ShowStatus(u"Told.");
  ASSERT_TRUE(headless::Focus(kIdPreflight));
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"Told.");
}

// Calls with every number field that is shown, once a control.
template <typename See>
void EachNumber(const Form& form, const std::vector<Piece>& pieces, See see) {
  for (const Piece& piece : pieces) {
    const int row = piece.label ? -1 : RowOfControl(form, piece.id);
    if (row < 0 || !IsNumber(form.rows[static_cast<std::size_t>(row)])) continue;
    see(piece.id, form.rows[static_cast<std::size_t>(row)]);
  }
}

// A number with as many decimals as the row shows, as text. Small enough to be read as it is.
std::string SeededText(const FormRow& row, std::mt19937& seed) {
  const int decimals = row.kind == RowKind::Count ? 0 : row.decimals;
  const int most = row.kind == RowKind::Count ? 99 : 999;
  std::string text = seed() % 2 && row.kind != RowKind::Count ? "-" : "";
  text += std::to_string(seed() % static_cast<unsigned>(most) + 1);
  if (decimals > 0) text += '.';
  for (int i = 0; i < decimals; ++i) text += static_cast<char>('0' + seed() % 10);
  return text;
}

// A start text by the C library's arithmetic, in the unit that is asked for.
std::string StartBySecondMethod(const FormRow& row, bool metric) {
  const std::string inch = platform::ToUtf8(row.start);
  if (!metric || (row.follows == Follows::Nothing && !row.startMm[0])) return inch;
  if (row.startMm[0]) return platform::ToUtf8(row.startMm);
  const double value = std::strtod(inch.c_str(), nullptr);
  char text[kFieldUnits];
  std::snprintf(text, sizeof text, "%.*f", row.decimals,
                row.follows == Follows::Thread ? 25.4 / value : value * 25.4);
  return text;
}

// Shown from the drawing, with decimals of its own.
// A drawing or plate keeps its numbers; another unit shows them with more decimals.
bool IsOfDrawing(int id) {
  return id == kIdCadDepth || id == kIdCadFeed || id == kIdCadSafeZ || id == kIdCadThicknessValue ||
         (id >= kIdPlateField && id < kIdPlateUnit);
}

bool IsMetricNow(const Form& form) { return form.metric && form.metric(); }

TEST_F(EveryForm, StartsEachNumberWithItsTextInEitherUnit) {
  for (const bool metric : {false, true}) {
    SCOPED_TRACE(metric ? "millimetres" : "inch");
    int numbers = 0;
    headless::Click(kIdSurfaceCad);
    headless::Click(metric ? kIdCadMm : kIdCadInch);
    SetUnits(metric);
    headless::Click(kIdSurfacePlate);
    if (PlateIsMetric() != metric) headless::Click(kIdPlateUnit);
    headless::QueueAnswer(platform::BoxAnswer::No);
    headless::Click(kIdSurfaceCode);
    headless::ClearQueues();
    OnEveryForm([&](const Form& form, const std::vector<Piece>& pieces) {
      EachNumber(form, pieces, [&](int id, const FormRow& row) {
        EXPECT_EQ(row.filled, row.start[0] == 0) << id;
        if (row.filled) return;
        ++numbers;
        const std::string start = platform::ToUtf8(row.start);
        char* end = nullptr;
        std::strtod(start.c_str(), &end);
        EXPECT_TRUE(!start.empty() && *end == '\0') << id << " starts with \"" << start << '"';
        ASSERT_TRUE(!form.metric || IsMetricNow(form) == metric);
        const std::string wanted = StartBySecondMethod(row, IsMetricNow(form));
        const std::string text = platform::ToUtf8(platform::TextOf(id));
        if (IsOfDrawing(id)) {
          EXPECT_EQ(std::strtod(text.c_str(), nullptr), std::strtod(wanted.c_str(), nullptr)) << id;
        } else {
          EXPECT_EQ(text, wanted) << id;
        }
        // Without a number the field counts as its fallback.
        platform::SetText(id, u"");
        EXPECT_EQ(FieldNumber(id), IsMetricNow(form) ? row.fallback.mm : row.fallback.inch) << id;
        platform::SetText(id, platform::FromUtf8(wanted));
      });
    });
    EXPECT_GT(numbers, 60);
  }
}

TEST_F(EveryForm, StartsItsPageAnew) {
  int numbers = 0;
  OnEveryForm([&numbers](const Form& form, const std::vector<Piece>& pieces) {
    std::map<int, std::u16string> texts;
    EachNumber(form, pieces, [&](int id, const FormRow& row) {
      if (row.filled || IsOfDrawing(id)) return;
      texts[id] = platform::TextOf(id);
      platform::SetText(id, u"17");
    });
    StartForm(form, PageOf(form));
    for (const auto& [id, text] : texts) {
      EXPECT_EQ(platform::TextOf(id), text) << id;
    }
    numbers += static_cast<int>(texts.size());
  });
  EXPECT_GT(numbers, 60);
}

TEST_F(EveryForm, ReadsBackWhatIsTyped) {
  std::mt19937 seed(20260722);
  OnEveryForm([&seed](const Form& form, const std::vector<Piece>& pieces) {
    EachNumber(form, pieces, [&](int id, const FormRow& row) {
      for (int i = 0; i < 20; ++i) {
        const std::string text = SeededText(row, seed);
        platform::SetText(id, platform::FromUtf8(text));
        const double expected = std::strtod(text.c_str(), nullptr);
        double strict = 0;
        EXPECT_TRUE(ReadStrictField(id, strict)) << id << " " << text;
        EXPECT_NEAR(strict, expected, 1e-9) << id << " " << text;
        EXPECT_NEAR(FieldNumber(id), expected, 1e-9) << id << " " << text;
        if (row.kind == RowKind::Count) {
          EXPECT_EQ(FieldCount(id), expected) << id << " " << text;
        }
      }
    });
  });
}

// A millimetre text has the decimals of the inch text and is 25.4 times finer, so nothing is lost.
TEST_F(EveryForm, GivesBackItsTextsAfterASwitchToMillimetresAndBack) {
  std::mt19937 seed(7);
  constexpr const char16_t* kThreads[] = {u"20.000", u"8.000", u"40.000", u"4.000", u"10.000"};
  int converted = 0;
  int threads = 0;
  OnEveryForm([&](const Form& form, const std::vector<Piece>& pieces) {
    if (!form.metric) return;
    std::map<int, std::u16string> texts;
    EachNumber(form, pieces, [&](int id, const FormRow& row) {
      if (row.follows == Follows::Length) texts[id] = platform::FromUtf8(SeededText(row, seed));
    });
    // Threads an inch and pitches that have three decimals.
    EachNumber(form, pieces, [&](int id, const FormRow& row) {
      if (row.follows == Follows::Thread) texts[id] = kThreads[seed() % std::size(kThreads)];
    });
    threads += static_cast<int>(std::count_if(texts.begin(), texts.end(), [&](const auto& field) {
      const int row = RowOfControl(form, field.first);
      return form.rows[static_cast<std::size_t>(row)].follows == Follows::Thread;
    }));
    for (const auto& [id, text] : texts) platform::SetText(id, text);
    ConvertForms(form.metric, 25.4);
    for (const auto& [id, text] : texts) EXPECT_NE(platform::TextOf(id), text) << id;
    ConvertForms(form.metric, 1 / 25.4);
    for (const auto& [id, text] : texts) EXPECT_EQ(platform::TextOf(id), text) << id;
    converted += static_cast<int>(texts.size());
  });
  EXPECT_GT(converted, 20);
  EXPECT_GE(threads, 1);
}

}  // namespace
}  // namespace morva
