// What commands say, on the whole application: every key in sight has its row, every chord that a
// menu names does what the menu says.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/commands.h"
#include "app/edit_menu.h"
#include "app/hooks.h"
#include "app/router.h"
#include "cad/model/cad_chords.h"
#include "codetools/codetools_commands.h"
#include "documents/destination.h"
#include "documents/document_commands.h"
#include "platform/listing.h"
#include "simulator/view_commands.h"
#include "support/workbench.h"

namespace morva {
namespace {

using Ids = std::set<int>;

// Keys whose caption says all, so that a tip would only repeat it.
const Ids kWithoutTip = {
    kIdNextMatch,   kIdRuleAdd,     kIdRuleRemove,        kIdRuleUndo,
    kIdRulePreview, kIdRuleApply,   kIdPromptEach,        kIdDoAll,
    kIdIndexClear,  kIdIndexInsert, kIdDestinationInsert, kIdDestinationCancel};
// Keys that say what they stand for: names of programs and drawings, and more states than two.
bool WritesItsOwnCaption(int id) {
  return (id >= kIdTabFirst && id <= kIdTabLast) ||
         (id >= kIdDrawingFirst && id <= kIdDrawingLast) || id == kIdPlay || id == kIdCommandWords;
}

struct CommandRows : support::Workbench {
  static std::vector<headless::ControlInfo> Keys() {
    std::vector<headless::ControlInfo> keys;
    for (const int id : headless::AllIds()) {
      headless::ControlInfo info;
      headless::Describe(id, info);
      if (info.visible && info.kind == u"button") keys.push_back(info);
    }
    return keys;
  }

  // Every place of the program that has keys, by name.
  void EverywhereDo(const std::function<void(const std::string& where)>& look) {
    const auto at = [&look](const std::string& where) {
      headless::Advance(200);
      SCOPED_TRACE(where);
      look(where);
    };
    at("home");
    for (const int mode : {kModeFind, kModeCodeIndex, kModeSimulator, kModeMacros, kModeTools}) {
      Call(hooks.setMode, mode);
      at("mode " + std::to_string(mode));
    }
    headless::Click(kIdToolAdd);
    at("tool builder");
    headless::Click(kIdToolClose);
    RouteCommand(kIdImport, 0);
    at("import");
    headless::Click(kIdImportCancel);
    headless::Click(kIdNew);
    headless::Click(kIdCommandWords);
    at("command words");
    headless::Click(kIdCompareSecond);
    at("review");
    headless::Click(kIdCompareSecond);
    headless::InDialog([&at] { at("destination"); });
    RunDestinationPicker(kKindSketch);
    Call(hooks.setSurface, static_cast<int>(kSurfaceCad));
    at("CAD");
    for (const int key : {kIdCadCircularPanel, kIdCadGridPanel, kIdCadScale, kIdCadCutData,
                          kIdCadPolygon, kIdCadRevolve, kIdCadDimension, kIdCadThickness}) {
      headless::Click(key);
      at("CAD panel of " + std::to_string(key));
    }
    headless::Click(kIdMm);
    headless::Click(kIdCadSnap);
    headless::Click(kIdCadMm);
    headless::Click(kIdDrawingAdd);
    at("CAD in millimeters");
  }
};

// The numbers of the drawings that the feature keys bear.
TEST_F(CommandRows, GivesTheFeatureKeysTheirIcons) {
  const std::pair<int, int> wanted[] = {
      {kIdFeatureNew, 19}, {kIdFeatureEdit, 20}, {kIdFeatureDelete, 23}, {kIdFeatureInclude, 37}};
  for (const auto& [id, icon] : wanted) {
    ASSERT_TRUE(CommandOf(id)) << id;
    EXPECT_EQ(CommandOf(id)->icon, icon) << id;
  }
}

TEST_F(CommandRows, GiveEveryKeyInSightARowATipAndAName) {
  Ids seen;
  EverywhereDo([&seen](const std::string&) {
    for (const headless::ControlInfo& key : Keys()) {
      seen.insert(key.id);
      EXPECT_NE(CommandOf(key.id), nullptr) << key.id;
      EXPECT_FALSE(key.name.empty()) << key.id;
      const std::u16string tip = headless::ToolTipOf(key.id);
      EXPECT_EQ(tip.empty(), kWithoutTip.count(key.id) == 1) << key.id << platform::ToUtf8(tip);
      const std::u16string help = HelpOf(key.id);
      EXPECT_TRUE(tip == help || tip == help + u"  (on)") << key.id << platform::ToUtf8(tip);
    }
  });
  // The walk came past everything: the main window's 58 keys and one tab, those of the panels and
  // those of the CAD workspace.
  EXPECT_GT(seen.size(), 140u);
  for (const int id : kWithoutTip) EXPECT_EQ(seen.count(id), 1u) << id;
}

TEST_F(CommandRows, WriteEveryCaptionInSight) {
  EverywhereDo([](const std::string&) {
    for (const headless::ControlInfo& key : Keys()) {
      if (WritesItsOwnCaption(key.id)) continue;
      EXPECT_TRUE(key.text == WordsOf(key.id, false) || key.text == WordsOf(key.id, true))
          << key.id << " " << platform::ToUtf8(key.text);
      const Command* row = CommandOf(key.id);
      if (row && row->name[0]) {
        EXPECT_EQ(key.name, row->name) << key.id;
      }
    }
  });
}

TEST_F(CommandRows, DimNoKeyAtHome) {
  Call(hooks.setSurface, static_cast<int>(kSurfaceCode));
  Call(hooks.setMode, static_cast<int>(kModeHome));
  for (const headless::ControlInfo& key : Keys()) {
    EXPECT_EQ(key.enabled, !IsPending(key.id)) << key.id;
  }
}

TEST_F(CommandRows, HoldNoFieldThatAnotherContradicts) {
  for (const Command* row : AllCommands()) {
    EXPECT_TRUE(row->last == 0 || row->last > row->id) << row->id;
    EXPECT_TRUE(row->over == 0 || CommandOf(row->over)) << row->id;
    EXPECT_TRUE(row->hint == Hint::Words || !row->hintWords[0]) << row->id;
    // A hint that is the tip needs one.
    EXPECT_TRUE(row->hint != Hint::Help || HelpOf(row->id)[0]) << row->id;
  }
}

// Chords.

// Whether a control can lie in both places.
bool Overlap(const ChordPlace* a, const ChordPlace* b) {
  if (a == b) return true;
  const auto in = [a, b](const ChordPlace& wanted,
                         std::initializer_list<const ChordPlace*> others) {
    for (const ChordPlace* other : others) {
      if ((a == &wanted && b == other) || (b == &wanted && a == other)) return true;
    }
    return false;
  };
  return in(kEditorChords, {&kProgramChords, &kTextChords, &kToolkitChords, &kReviewChords}) ||
         in(kTextChords, {&kProgramChords, &kToolkitChords, &kCadChords, &kReviewChords}) ||
         in(kToolkitChords, {&kProgramChords, &kCadChords, &kReviewChords}) ||
         in(kProgramChords, {&kCadChords, &kDrawingChords, &kCanvasChords}) ||
         in(kCadChords, {&kDrawingChords, &kCanvasChords}) ||
         in(kDrawingChords, {&kCanvasChords}) || in(kFeatureListChords, {&kFeatureChords});
}

TEST_F(CommandRows, ShareNoChordAtOnePlace) {
  int chords = 0;
  const auto rows = AllCommands();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!rows[i]->chord.place) continue;
    ++chords;
    for (std::size_t k = i + 1; k < rows.size(); ++k) {
      if (!Overlap(rows[i]->chord.place, rows[k]->chord.place)) continue;
      EXPECT_FALSE(SameKey(rows[i]->chord.key, rows[k]->chord.key))
          << rows[i]->id << " and " << rows[k]->id << " share "
          << platform::ToUtf8(ChordWords(rows[i]->chord));
    }
  }
  EXPECT_GE(chords, 20);
}

std::vector<int> routed;
void Record(int id, int) { routed.push_back(id); }

// Brings up the place of a chord and gives it the keyboard.
void GoTo(const ChordPlace& place) {
  const auto in = [&place](std::initializer_list<const ChordPlace*> places) {
    return std::find(places.begin(), places.end(), &place) != places.end();
  };
  const bool drawing = in({&kCadChords, &kDrawingChords, &kCanvasChords});
  Call(hooks.setSurface, static_cast<int>(drawing ? kSurfaceCad : kSurfaceCode));
  if (drawing) {
    ASSERT_TRUE(headless::Focus(kViewCadCanvas));
  } else if (in({&kFeatureListChords, &kFeatureChords})) {
    ASSERT_TRUE(headless::Focus(kIdFeatureList));
  } else if (in({&kReviewChords})) {
    if (!app.compareActive) headless::Click(kIdCompareSecond);
    ASSERT_TRUE(headless::Focus(kIdReviewPrograms));
  } else if (in({&kToolpathChords})) {
    ASSERT_TRUE(headless::Focus(kViewToolpath));
  } else {
    ASSERT_TRUE(headless::Focus(kIdEditor));
  }
}

bool BelongsToText(const Command& row) {
  return row.chord.place == &kTextChords || row.chord.place == &kToolkitChords;
}

TEST_F(CommandRows, RunTheirCommandWhenTheChordIsPressed) {
  // The recorder stands before every other handler of these ids.
  std::vector<const Command*> rows;
  for (const Command* row : AllCommands()) {
    if (!row->chord.place || BelongsToText(*row)) continue;
    rows.push_back(row);
    RegisterCommand(RouterStage::HomeToolCombo, row->id, platform::kNotifyClick, Record);
  }
  ASSERT_GE(rows.size(), 15u);
  for (const Command* row : rows) {
    SCOPED_TRACE(platform::ToUtf8(ChordWords(row->chord)) + " of " + std::to_string(row->id));
    GoTo(*row->chord.place);
    routed.clear();
    headless::PressKey(row->chord.key);
    EXPECT_EQ(routed, std::vector<int>{row->id});
    if (app.compareActive) headless::Click(kIdCompareSecond);
  }
}

TEST_F(CommandRows, RunTheProgramsChordsFromTheDrawingToo) {
  for (const Command* row : AllCommands()) {
    if (row->chord.place != &kProgramChords) continue;
    RegisterCommand(RouterStage::HomeToolCombo, row->id, platform::kNotifyClick, Record);
    GoTo(kDrawingChords);
    routed.clear();
    headless::PressKey(row->chord.key);
    EXPECT_EQ(routed, std::vector<int>{row->id});
  }
}

TEST_F(CommandRows, EditATextByTheChordsOfItsMenu) {
  int chords = 0;
  for (const Command* row : AllCommands()) chords += BelongsToText(*row) ? 1 : 0;
  ASSERT_EQ(chords, 5);
  const auto press = [](int id) { return headless::PressKey(CommandOf(id)->chord.key); };
  // The application takes these itself; the control has keys of its own for the same.
  const auto taken = [](int id) {
    return platform::Listener().key(kIdEditor, CommandOf(id)->chord.key);
  };
  headless::EditorSetAll(kIdEditor, u"G0 X1");
  headless::Focus(kIdEditor);
  press(kIdEditSelectAll);
  const platform::EditorRange all = platform::EditorSelection(kIdEditor);
  EXPECT_EQ(all.to - all.from, 5);
  headless::EditorSelect(kIdEditor, 0, 2);
  EXPECT_TRUE(taken(kIdEditCopy));
  EXPECT_EQ(headless::ClipboardText(), u"G0");
  headless::EditorSelect(kIdEditor, 5, 5);
  EXPECT_TRUE(taken(kIdEditPaste));
  EXPECT_EQ(Text(), u"G0 X1G0");
  EXPECT_TRUE(taken(kIdEditUndo));
  EXPECT_EQ(Text(), u"G0 X1");
  headless::EditorSelect(kIdEditor, 3, 5);
  press(kIdEditCut);
  EXPECT_EQ(Text(), u"G0 ");
  EXPECT_EQ(headless::ClipboardText(), u"X1");
}

// What a menu says behind its caption: after a tab, or in the save menu after eight blanks.
std::u16string ShortcutIn(const std::u16string& text) {
  for (const std::u16string_view gap : {u"\t", u"        "}) {
    const std::size_t at = text.find(gap);
    if (at != text.npos) return text.substr(at + gap.size());
  }
  return {};
}

TEST_F(CommandRows, NameInEveryMenuTheChordThatDoesIt) {
  for (const int id : {kIdEditor, kIdOutputLog, kIdTabFirst, kIdModeList}) {
    headless::ContextMenu(id, -1);
  }
  headless::Click(kIdFeatureNew);
  headless::Advance(1000);
  platform::SelectRow(kIdFeatureList, 0);
  headless::ContextMenu(kIdFeatureList, 0);
  for (const int id : {kIdSaveMenu, kIdViewMenu, kIdViewGridMenu, kIdViewLayers}) {
    headless::Click(id);
  }
  Call(hooks.setSurface, static_cast<int>(kSurfaceCad));
  headless::ContextMenu(kViewCadCanvas, -1);
  for (const int id : {kIdCadLine, kIdCadRectangle, kIdCadCircle, kIdCadSlot, kIdCadDimension}) {
    headless::Focus(id);
    headless::PressKey({platform::kKeyDown});
  }
  const std::vector<headless::MenuRecord> menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 15u);
  int named = 0;
  for (const headless::MenuRecord& menu : menus) {
    for (const headless::MenuItemRecord& item : menu.items) {
      if (item.id == 0) continue;
      const Command* row = CommandOf(item.id);
      ASSERT_NE(row, nullptr) << item.id << " " << platform::ToUtf8(item.text);
      const std::u16string shortcut = ShortcutIn(item.text);
      named += shortcut.empty() ? 0 : 1;
      // No chord is left out but one that the caption names already.
      const std::u16string chord = ChordWords(row->chord);
      EXPECT_EQ(shortcut.empty() ? item.text : shortcut, chord.empty() ? item.text : chord)
          << item.id;
    }
  }
  // Five of each text's menu, Save in two menus, and four of the drawing's.
  EXPECT_EQ(named, 5 + 5 + 2 + 4);
}

// "New program (Ctrl+N)": the words in the last parentheses, up to a semicolon.
std::u16string ChordNamedIn(std::u16string_view tip) {
  const std::size_t open = tip.rfind(u'(');
  if (open == tip.npos || tip.back() != u')') return {};
  const std::u16string_view inside = tip.substr(open + 1, tip.size() - open - 2);
  return std::u16string(inside.substr(0, inside.find(u';')));
}

TEST_F(CommandRows, NameInATipTheChordThatDoesIt) {
  std::set<std::u16string> chords;
  for (const Command* row : AllCommands()) chords.insert(ChordWords(row->chord));
  chords.erase(u"");
  int named = 0;
  for (const Command* row : AllCommands()) {
    // Nobody types the words of a chord.
    EXPECT_EQ(chords.count(ChordNamedIn(row->help)), 0u) << row->id;
    if (std::u16string_view(row->help).find(u"{}") == std::u16string_view::npos) continue;
    ++named;
    const Command* meant = row->chordOf != 0 ? CommandOf(row->chordOf) : row;
    ASSERT_NE(meant, nullptr) << row->id;
    EXPECT_EQ(chords.count(ChordWords(meant->chord)), 1u) << row->id;
    EXPECT_EQ(ChordNamedIn(HelpOf(row->id)), ChordWords(meant->chord)) << row->id;
  }
  EXPECT_GE(named, 12);
  EXPECT_EQ(HelpOf(kIdNew), u"New program (Ctrl+N)");
  EXPECT_EQ(HelpOf(kIdSaveMenu), u"Save, Save As, Save All (Ctrl+S)");
  EXPECT_EQ(HelpOf(kIdPreflight), u"Check the program (F5)");
  EXPECT_EQ(HelpOf(kIdCadSnap), u"Snap to geometry and grid (F8; hold Alt to bypass)");
  EXPECT_EQ(HelpOf(kIdCadReturnTo2D), u"Back to drawing (Esc)");
}

}  // namespace
}  // namespace morva
