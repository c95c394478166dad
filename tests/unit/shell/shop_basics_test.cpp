// What every editor of a shop has: a line by its number, the place of the caret, hits of a search
// in sight, a page of all keys, the menu at OPEN, files that are dropped.

#include <string>
#include <string_view>
#include <vector>

#include "app/commands.h"
#include "app/hooks.h"
#include "app/key_rows.h"
#include "app/panels.h"
#include "codetools/words_view.h"
#include "documents/program_tabs.h"
#include "platform/listing.h"
#include "shell/keys_page.h"
#include "simulator/view.h"
#include "simulator/view_commands.h"
#include "simulator/view_switches.h"
#include "support/workbench.h"

namespace morva {
namespace {

std::u16string NumberedLines(int count) {
  std::u16string text;
  for (int i = 1; i <= count; ++i)
    text += u"N" + platform::FromUtf8(std::to_string(i)) + u" G1 X1\r\n";
  return text;
}

platform::KeyEvent Ctrl(int key, bool shift = false) {
  platform::KeyEvent event;
  event.key = key;
  event.ctrl = true;
  event.shift = shift;
  return event;
}

struct ShopBasics : support::Workbench {
  void SetUp() override {
    Workbench::SetUp();
    headless::Advance(200);
    headless::TakeBoxes();
  }
  static void Load(std::u16string_view text) {
    platform::SetEditorText(kIdEditor, text);
    headless::Focus(kIdEditor);
  }
  static std::u16string Place() { return platform::TextOf(kIdCaretPlace); }
  static int CaretLineNow() {
    return platform::EditorLineOf(kIdEditor, platform::EditorSelection(kIdEditor).to);
  }
  // Types the number into the box of a line and presses Enter.
  static void GoTo(std::u16string_view number) {
    headless::InDialog([number] {
      headless::TypeInto(kIdLineNumber, number);
      headless::PressKey({platform::kKeyEnter});
    });
    headless::PressKey(Ctrl('G'));
  }
  static std::vector<std::vector<int>> Marks() {
    std::vector<std::vector<int>> marks;
    for (const platform::LineMark& mark : headless::EditorMarks(kIdEditor)) {
      marks.push_back({mark.line, mark.from, mark.length});
    }
    return marks;
  }
};

// The lines that the keys of views should have: one for each row, and a row without words stands
// for the key of another one.
std::vector<KeyLine> LinesOfViews() {
  std::vector<KeyLine> lines;
  for (const Handlers& handlers : AllHandlers()) {
    for (const KeyRow& row : handlers.keys) {
      if (!row.words[0]) {
        EXPECT_TRUE(std::ranges::any_of(handlers.keys, [&row](const KeyRow& other) {
          return other.words[0] && other.run == row.run;
        }));
        continue;
      }
      lines.push_back({ChordWords(row.chord), row.words, row.chord.place->words});
    }
  }
  return lines;
}

TEST_F(ShopBasics, TellLineAndColumnOfTheCaret) {
  Load(u"G0 X1\r\nG1 Y2\r\nM30");
  EXPECT_EQ(Place(), u"Line 1   Column 1");
  headless::EditorSelect(kIdEditor, 8, 8);
  EXPECT_EQ(Place(), u"Line 2   Column 3");
  headless::EditorSelect(kIdEditor, 6, 11);
  EXPECT_EQ(Place(), u"Line 2   Column 6   (5 selected)");
  headless::EditorInsert(kIdEditor, u"G4\n");
  EXPECT_EQ(Place(), u"Line 3   Column 1");
}

TEST_F(ShopBasics, TellThePlaceInTheWordsToo) {
  Load(u"G0 X1\r\nG1 Y2\r\nM30");
  headless::EditorSelect(kIdEditor, 8, 8);
  headless::Click(kIdCommandWords);
  ASSERT_TRUE(app.commandWordsActive);
  headless::EditorSelect(kIdWordsEditor, 0, 0);
  EXPECT_EQ(Place(), u"Line 1   Column 1");
}

TEST_F(ShopBasics, GoToALineInTheMiddleOfTheEditor) {
  Load(NumberedLines(1000));
  GoTo(u" 500 ");
  EXPECT_EQ(CaretLineNow(), 499);
  EXPECT_EQ(Place(), u"Line 500   Column 1");
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
  const int first = platform::FirstVisibleLine(kIdEditor);
  const int middle = first + platform::VisibleLineCount(kIdEditor) / 2;
  EXPECT_NEAR(middle, 499, 1);
  GoTo(u"1");
  EXPECT_EQ(CaretLineNow(), 0);
  EXPECT_EQ(platform::FirstVisibleLine(kIdEditor), 0);
  GoTo(u"1001");  // the empty one behind the last line end
  EXPECT_EQ(CaretLineNow(), 1000);
}

TEST_F(ShopBasics, SayWhatIsWrongWithALineNumber) {
  Load(NumberedLines(10));
  for (const std::u16string_view bad : {u"", u"0", u"12", u"-3", u"4.5", u"N5", u"99999999999"}) {
    std::u16string said;
    std::u16string title;
    std::u16string note;
    std::u16string none;
    headless::InDialog([&] {
      title = headless::DialogTitle();
      headless::TypeInto(kIdLineNumber, bad);
      headless::PressKey({platform::kKeyEnter});
      said = platform::TextOf(kIdLineNote);
      EXPECT_EQ(platform::FocusedId(), kIdLineNumber);
      headless::PressKey({platform::kKeyEscape});
    });
    headless::PressKey(Ctrl('G'));
    EXPECT_EQ(title, u"Go to line");
    EXPECT_EQ(said, u"Type a whole number from 1 to 11.");
    EXPECT_EQ(CaretLineNow(), 0);
  }
}

TEST_F(ShopBasics, MarkTheHitsInSightAndNoOthers) {
  Load(NumberedLines(1000));
  headless::PressKey(Ctrl('F'));
  headless::TypeInto(kIdFindText, u"x1");
  const auto marks = Marks();
  const int seen = platform::VisibleLineCount(kIdEditor);
  ASSERT_GE(static_cast<int>(marks.size()), seen);
  EXPECT_LE(static_cast<int>(marks.size()), seen + 2);
  EXPECT_EQ(marks[0], (std::vector<int>{0, 6, 2}));  // N1 G1 X1
  EXPECT_EQ(marks[9], (std::vector<int>{9, 7, 2}));
  platform::ScrollToLine(kIdEditor, 500);
  ASSERT_FALSE(Marks().empty());
  EXPECT_EQ(Marks()[0], (std::vector<int>{500, 8, 2}));
}

TEST_F(ShopBasics, MarkByTheRulesOfTheSearch) {
  Load(u"G1 g1 G10 G1G1\r\nM30");
  headless::PressKey(Ctrl('F'));
  headless::TypeInto(kIdFindText, u"G1");
  EXPECT_EQ(Marks(), (std::vector<std::vector<int>>{
                         {0, 0, 2}, {0, 3, 2}, {0, 6, 2}, {0, 10, 2}, {0, 12, 2}}));
  headless::Click(kIdMatchCase);
  EXPECT_EQ(Marks().size(), 4u);
  headless::Click(kIdWholeToken);
  EXPECT_EQ(Marks(), (std::vector<std::vector<int>>{{0, 0, 2}}));
  headless::TypeInto(kIdFindText, u"");
  EXPECT_TRUE(Marks().empty());
}

TEST_F(ShopBasics, KeepTheMarksWithTheText) {
  Load(u"G1\r\nG0");
  headless::PressKey(Ctrl('F'));
  headless::TypeInto(kIdFindText, u"G1");
  EXPECT_EQ(Marks().size(), 1u);
  headless::EditorSelect(kIdEditor, 0, 0);
  headless::EditorInsert(kIdEditor, u"X");
  EXPECT_EQ(Marks(), (std::vector<std::vector<int>>{{0, 1, 2}}));
  headless::PressKey({platform::kKeyDelete});
  EXPECT_TRUE(Marks().empty());
  headless::EditorUndo(kIdEditor);
  headless::Advance(200);
  EXPECT_EQ(Marks().size(), 1u);
}

TEST_F(ShopBasics, TakeTheMarksAwayWithTheirPane) {
  Load(u"G1\r\nG0");
  headless::PressKey(Ctrl('F'));
  headless::TypeInto(kIdFindText, u"G");
  EXPECT_EQ(Marks().size(), 2u);
  headless::Click(kIdBack);
  EXPECT_TRUE(Marks().empty());
  headless::PressKey(Ctrl('F'));
  headless::Click(kIdFind);
  EXPECT_EQ(Marks().size(), 2u);
}

TEST_F(ShopBasics, ListEveryChordOfTheTable) {
  const std::vector<KeyLine> lines = KeyLines(u"");
  std::size_t chords = 0;
  for (const Command* row : AllCommands()) {
    if (!row->chord.place || row->pending[0]) continue;
    ++chords;
    bool found = false;
    for (const KeyLine& line : lines) {
      found =
          found || (line.chord == ChordWords(row->chord) && line.place == row->chord.place->words);
    }
    EXPECT_TRUE(found) << row->id;
  }
  EXPECT_EQ(lines.size(), chords + LinesOfViews().size());
  EXPECT_GT(chords, 30u);
  for (const KeyLine& line : lines) {
    EXPECT_FALSE(line.words.empty()) << platform::ToUtf8(line.chord);
    EXPECT_FALSE(line.place.empty()) << platform::ToUtf8(line.chord);
    EXPECT_EQ(line.words.find(u"{}"), std::u16string::npos);
  }
}

TEST_F(ShopBasics, ListEveryKeyOfTheViews) {
  const auto listed = [](const char16_t* chord, const char16_t* words, const char16_t* place) {
    return std::ranges::any_of(KeyLines(place), [&](const KeyLine& line) {
      return line.chord == chord && line.words == words && line.place == place;
    });
  };
  for (const KeyLine& line : LinesOfViews()) {
    EXPECT_FALSE(line.words.empty()) << platform::ToUtf8(line.chord);
    EXPECT_TRUE(listed(line.chord.c_str(), line.words.c_str(), line.place.c_str()))
        << platform::ToUtf8(line.chord) << " in " << platform::ToUtf8(line.place);
  }
  // What the guide tells of them.
  EXPECT_TRUE(listed(u"Shift+Left", u"Turn left", u"toolpath view"));
  EXPECT_TRUE(listed(u"Ctrl+Up", u"Shift up", u"toolpath view"));
  EXPECT_TRUE(listed(u"Page Up", u"Zoom in", u"toolpath view"));
  EXPECT_TRUE(listed(u"-", u"Zoom out", u"drawing"));
  EXPECT_TRUE(listed(u"Ctrl+Right", u"Shift right", u"drawing"));
  EXPECT_TRUE(listed(u"Home", u"Slowest", u"speed slider"));
  EXPECT_TRUE(listed(u"Page Down", u"Pick the next feature", u"picture of the plate"));
  EXPECT_TRUE(listed(u"D", u"Pick the next label", u"picture of the plate"));
  EXPECT_TRUE(listed(u"Down", u"Choose from the last ones", u"OPEN"));
  EXPECT_TRUE(listed(u"Down", u"Go to the workspace below", u"list of workspaces"));
  EXPECT_TRUE(listed(u"Enter", u"Open the workspace", u"list of workspaces"));
  EXPECT_TRUE(listed(u"Down", u"Choose from the ways to draw or measure", u"key of a tool"));
  EXPECT_TRUE(listed(u"Ctrl+Space", u"List what completes the word", u"program code"));
  EXPECT_TRUE(listed(u"Tab", u"Take the row", u"list of completions"));
  EXPECT_TRUE(listed(u"Esc", u"Close the list", u"list of completions"));
  EXPECT_TRUE(listed(u"Down", u"Go on in the list", u"search of the code index"));
  EXPECT_TRUE(listed(u"Enter", u"Insert the code of the row", u"search of the code index"));
}

// Each key with each modifier: what the view takes stands in its rows or in those of commands.
TEST_F(ShopBasics, KnowNoKeyOfTheToolpathViewThatThePageHides) {
  Load(u"G21\r\nG1 X10 Y5 F100\r\nX20\r\n");
  switches.measureMode = true;
  const KeyRow* rows = ToolpathKeys().data();
  const std::span all(rows, ToolpathKeys().size());
  int taken = 0;
  for (int k = 0x20; k < platform::kKeyF1 + 12; ++k) {
    if (k >= 0x7f && k < platform::kKeyEnter) continue;
    for (int modifiers = 0; modifiers < 8; ++modifiers) {
      const platform::KeyEvent key{k, (modifiers & 1) != 0, (modifiers & 2) != 0,
                                   (modifiers & 4) != 0};
      if (!ToolpathKey(key)) continue;
      ++taken;
      const platform::KeyEvent plain = WithoutZoomModifiers(key);
      const bool ofView = std::ranges::any_of(
          all, [&plain](const KeyRow& row) { return SameKey(row.chord.key, plain); });
      EXPECT_TRUE(ofView || CommandOfChord(kToolpathChords, key) != 0) << k << " " << modifiers;
    }
  }
  // Five that zoom, with each of 8 sets of modifiers, four that turn, four that shift, Enter, and
  // the commands Space, Home, End, Left and Right.
  EXPECT_EQ(taken, 5 * 8 + 4 + 4 + 1 + 5);
}

TEST_F(ShopBasics, SearchTheKeysByWhatStandsInTheirLines) {
  const auto lines = KeyLines(u"open a PROGRAM");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].chord, u"Ctrl+O");
  EXPECT_EQ(lines[0].words, u"Open a program");
  EXPECT_EQ(lines[0].place, u"program code, drawing, skim");
  EXPECT_EQ(KeyLines(u"ctrl+g").size(), 1u);
  EXPECT_GT(KeyLines(u"toolpath").size(), 3u);
  EXPECT_TRUE(KeyLines(u"no such key").empty());
}

TEST_F(ShopBasics, ShowTheKeysWithF1FromEverywhere) {
  for (const int surface : {kSurfaceCode, kSurfaceCad, kSurfacePlate}) {
    Call(hooks.setSurface, surface);
    if (surface == kSurfaceCode) headless::Focus(kIdFeatureList);
    int rows = 0;
    int fewer = 0;
    std::u16string title;
    std::u16string note;
    std::u16string none;
    headless::InDialog([&] {
      title = headless::DialogTitle();
      EXPECT_EQ(platform::FocusedId(), kIdKeysSearch);
      rows = platform::RowCount(kIdKeysList);
      headless::TypeInto(kIdKeysSearch, u"Ctrl+P");
      fewer = platform::RowCount(kIdKeysList);
      note = platform::TextOf(kIdKeysNote);
      headless::TypeInto(kIdKeysSearch, u"no such key");
      none = platform::TextOf(kIdKeysNote);
      headless::PressKey({platform::kKeyEscape});
    });
    platform::KeyEvent f1;
    f1.key = platform::kKeyF1;
    headless::PressKey(f1);
    EXPECT_EQ(title, u"Keys") << surface;
    EXPECT_GT(rows, 30);
    EXPECT_EQ(fewer, 1);
    EXPECT_TRUE(note.starts_with(u"A key holds where its line says."));
    EXPECT_EQ(none, u"Neither a key nor what it does holds these letters.");
  }
}

TEST_F(ShopBasics, OpenTheMenuAtOpenByItsArrowKeysAndRightButton) {
  const auto comes = [](const char* how) {
    const auto menus = headless::TakeMenus();
    ASSERT_EQ(menus.size(), 1u) << how;
    EXPECT_EQ(menus[0].items.at(0).text, u"No program opened yet") << how;
    EXPECT_EQ(menus[0].items.at(2).text, u"Print\u2026\tCtrl+P") << how;
    EXPECT_EQ(menus[0].items.at(3).text, u"All keys\tF1") << how;
  };
  headless::ClickAt(kIdOpen, 72 - 3);
  comes("arrow");
  headless::ContextMenu(kIdOpen, -1);
  comes("right button");
  headless::Focus(kIdOpen);
  headless::PressKey({platform::kKeyDown});
  comes("Down");
  headless::Focus(kIdEditor);
  headless::PressKey(Ctrl('O', true));
  comes("chord");
  EXPECT_TRUE(headless::TakeFilePicks().empty());
  headless::ClickAt(kIdOpen, 20);
  headless::Focus(kIdOpen);
  headless::PressKey({platform::kKeyEnter});
  EXPECT_EQ(headless::TakeFilePicks().size(), 2u);
  EXPECT_TRUE(headless::TakeMenus().empty());
}

TEST_F(ShopBasics, OpenWhatIsDroppedOnTheWindow) {
  WriteFile("a.NC", "G0 X1\r\n");
  WriteFile("b.NC", "G0 X2\r\n");
  ASSERT_TRUE(headless::DropFiles({Path("a.NC"), Path("b.NC")}));
  EXPECT_EQ(app.tabCount, 3);
  EXPECT_EQ(Text(), u"G0 X2\r\n");
  EXPECT_TRUE(OutputHas(u"Opened program in a new workspace tab.  " + Path("a.NC")));
  EXPECT_TRUE(OutputHas(u"Opened program in a new workspace tab.  " + Path("b.NC")));
}

TEST_F(ShopBasics, PrintFromTheKeys) {
  Load(u"G0 X1");
  headless::QueuePrinter({2480, 3508, 300, 300});
  headless::PressKey(Ctrl('P'));
  const auto jobs = headless::TakePrinted();
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_TRUE(jobs[0].ended);
}

}  // namespace
}  // namespace morva
