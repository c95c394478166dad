#include "codetools/editor_keys.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "codetools/preflight_log.h"
#include "codetools/renumber.h"
#include "codetools/validator.h"
#include "documents/program_tabs.h"
#include "platform/timer.h"
#include "support/program_stage.h"

namespace morva {
namespace {

using headless::DrawCall;

struct CodeTools : support::ProgramStage {
  CodeTools() {
    RegisterCodeToolCommands();
    static platform::Events events;
    events = support::ProgramEvents();
    events.paint = [](int id, platform::Canvas& canvas) {
      if (id == kViewGutter) PaintGutter(canvas);
    };
    events.key = EditorKey;
    platform::ListenTo(&events);
    platform::MakeView({kViewGutter, u"CodeGutter", u"Line numbers", 0, false});
    platform::SetPlace(kViewGutter, {0, 0, 52, 105});
    platform::SetPlace(kIdEditor, {52, 0, 500, 105});
  }
  static void Load(std::u16string_view text) { platform::SetEditorText(kIdEditor, text); }
  static bool Press(int key, bool ctrl = false, bool shift = false, bool alt = false) {
    platform::KeyEvent event;
    event.key = key;
    event.ctrl = ctrl;
    event.shift = shift;
    event.alt = alt;
    return EditorKey(kIdEditor, event);
  }
};

struct Gutter : CodeTools {
  static std::vector<DrawCall> Numbers() {
    std::vector<DrawCall> found;
    for (const DrawCall& call : headless::PaintOf(kViewGutter)) {
      if (call.name == "PaintText") found.push_back(call);
    }
    return found;
  }
};

// 105 pixels: rows at 4, 24, 44, 64 and 84; the fifth would end at 104 and still fits.
TEST_F(Gutter, NumbersRowsTwentyPixelsApartFromFourOn) {
  Load(u"a\r\nb\r\nc\r\nd\r\ne\r\nf\r\ng");
  const auto rows = Numbers();
  ASSERT_EQ(rows.size(), 5u);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].text, std::u16string(1, static_cast<char16_t>(u'1' + i)));
    EXPECT_EQ(rows[i].numbers.at(1), 4 + 20 * static_cast<int>(i));
    EXPECT_EQ(rows[i].numbers.at(2), 52 - 8);
    // The caret's line is told from the others.
    EXPECT_EQ(rows[i].colours.at(0), i == 0 ? 0xDEE9F2u : 0x91AAC4u);
  }
}

TEST_F(Gutter, LeavesOutARowThatWouldFallOutside) {
  Load(u"a\r\nb\r\nc\r\nd\r\ne\r\nf\r\ng");
  platform::SetPlace(kViewGutter, {0, 0, 52, 104});
  EXPECT_EQ(Numbers().size(), 5u);
  platform::SetPlace(kViewGutter, {0, 0, 52, 103});
  EXPECT_EQ(Numbers().size(), 4u);
}

TEST_F(Gutter, StopsAtTheLastLine) {
  Load(u"a\r\nb");
  EXPECT_EQ(Numbers().size(), 2u);
  Load(u"");
  EXPECT_EQ(Numbers().size(), 1u);
}

TEST_F(Gutter, BeginsWithTheFirstVisibleLine) {
  std::u16string text;
  for (int i = 0; i < 40; ++i) text += u"G0\r\n";
  Load(text);
  platform::ScrollToLine(kIdEditor, 20);
  ASSERT_EQ(platform::FirstVisibleLine(kIdEditor), 20);
  const auto rows = Numbers();
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows[0].text, u"21");
}

TEST_F(Gutter, FollowsTheCommandWordsWhileTheyAreShown) {
  platform::EditorSpec words;
  words.id = kIdWordsEditor;
  words.accessibleName = u"Command words";
  platform::MakeEditor(words);
  platform::SetEditorText(kIdWordsEditor, u"a\r\nb\r\nc");
  Load(u"G0");
  EXPECT_EQ(Numbers().size(), 1u);
  app.commandWordsActive = true;
  EXPECT_EQ(Numbers().size(), 3u);
}

TEST_F(CodeTools, ValidateByF5AndByEveryKeyOfTheirs) {
  Load(u"");
  const std::u16string report = PreflightReport(u"");
  AppendOutput(u"before");
  EXPECT_TRUE(Press(platform::kKeyF1 + 4));
  EXPECT_EQ(Output(), report);
  for (const int id : {kIdValidate, kIdPreflight, kIdValidateSecond}) {
    AppendOutput(u"before");
    EXPECT_TRUE(RouteCommand(id, 0)) << id;
    EXPECT_EQ(Output(), report) << id;
  }
  EXPECT_EQ(Text(), u"");
}

TEST_F(CodeTools, ValidateNothingWithoutAnEditor) {
  AppendOutput(u"before");
  platform::Destroy(kIdEditor);
  ValidateProgram();
  RenumberProgram();
  EXPECT_EQ(Output(), u"before\r\n");
}

TEST_F(CodeTools, AnswerTheKeysOfPrograms) {
  EXPECT_TRUE(Press('N', true));
  EXPECT_EQ(app.tabCount, 2);
  Put("a.NC", "G0\r\n");
  headless::QueueFile(PathOf("a.NC"));
  EXPECT_TRUE(Press('O', true));
  EXPECT_EQ(app.tabCount, 3);
  headless::EditorInsert(kIdEditor, u"M8");
  ASSERT_TRUE(app.editorDirty);
  EXPECT_TRUE(Press('S', true));
  EXPECT_FALSE(app.editorDirty);
  EXPECT_NE(Raw("a.NC").find("M8"), std::string::npos);
  EXPECT_TRUE(Press('W', true));
  EXPECT_EQ(app.tabCount, 2);
  static int finds;
  finds = 0;
  RegisterCommand(RouterStage::Click, kIdFind, 0, [](int, int) { ++finds; });
  EXPECT_TRUE(Press('F', true));
  EXPECT_EQ(finds, 1);
}

TEST_F(CodeTools, LeaveOtherKeysToTheEditor) {
  for (const int key : {'A', 'C', 'V', 'X', 'Z'}) EXPECT_FALSE(Press(key, true)) << key;
  for (const int key : {'N', 'O', 'S', 'F', 'W'}) {
    EXPECT_FALSE(Press(key)) << key;
    EXPECT_EQ(Press(key, true, true), key == 'O') << key;  // the last programs
    EXPECT_FALSE(Press(key, true, false, true)) << key;    // AltGr is Ctrl and Alt
  }
  platform::KeyEvent f5;
  f5.key = platform::kKeyF1 + 4;
  EXPECT_FALSE(EditorKey(kIdFeatureName, f5));
  EXPECT_EQ(app.tabCount, 1);
}

TEST_F(CodeTools, RenumberInOneUndoStepWithAllThatFollows) {
  static std::vector<std::string> trail;
  trail.clear();
  hooks.rebuildToolpath = [] { trail.push_back("path"); };
  hooks.wordsFromEditor = [] { trail.push_back("words"); };
  Load(u"%\r\nG0\r\nG1");
  app.editorDirty = tabs[0].dirty = false;
  AppendOutput(u"before");
  trail.clear();
  EXPECT_TRUE(RouteCommand(kIdRenumber, 0));
  EXPECT_EQ(Text(), u"%\r\nN10 G0\r\nN20 G1\r\n");
  EXPECT_EQ(Output(), u"before\r\nProgram renumbered N10, N20, N30...\r\n");
  EXPECT_TRUE(app.editorDirty);
  EXPECT_TRUE(tabs[0].dirty);
  EXPECT_NE(platform::WindowTitle().find(u"\u2022"), std::u16string::npos);
  EXPECT_EQ(trail, std::vector<std::string>{"path"});
  // The refresh comes 50 milliseconds later, not after the 150 of a typed change.
  headless::Advance(49);
  EXPECT_EQ(Text().find(u"(MORVA"), std::u16string::npos);
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  EXPECT_EQ(Text(), u"%\r\nG0\r\nG1");
  RenumberProgram();
  headless::Advance(51);
  EXPECT_NE(Text().find(u"(MORVA"), std::u16string::npos);
}

TEST_F(CodeTools, RenumberIsNoUndoStepWhereItChangesNothing) {
  // A last line without its end stays so.
  for (const char16_t* program : {u"%\r\nN10 G0\r\nN20 G1\r\n", u"N10 G0\r\nN20 M30\r\n%"}) {
    Load(program);
    app.editorDirty = tabs[0].dirty = false;
    ClearOutput();
    AppendOutput(u"before");
    RenumberProgram();
    EXPECT_EQ(Output(), u"before\r\nProgram is numbered N10, N20, N30... already.\r\n");
    EXPECT_EQ(Text(), program);
    EXPECT_FALSE(app.editorDirty);
    EXPECT_FALSE(platform::UndoEditor(kIdEditor));
  }
}

TEST_F(CodeTools, RenumberShowsTheCommandWordsAnew) {
  static int rebuilt;
  hooks.wordsFromEditor = [] { ++rebuilt; };
  Load(u"G0");
  app.commandWordsActive = true;
  rebuilt = 0;
  RenumberProgram();
  EXPECT_GE(rebuilt, 1);
}

TEST_F(CodeTools, RenumberKeepsAnEmptyProgramEmpty) {
  Load(u"");
  RenumberProgram();
  EXPECT_EQ(Text(), u"");
  EXPECT_TRUE(app.editorDirty);
}

}  // namespace
}  // namespace morva
