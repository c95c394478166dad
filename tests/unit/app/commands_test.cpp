#include "app/commands.h"

#include <gtest/gtest.h>

#include "platform/control.h"
#include "support/stage.h"

namespace morva {
namespace {

constexpr ChordPlace kDrawingChords = {u"drawing"};
constexpr ChordPlace kEditorChords = {u"editor"};
constexpr ChordPlace kTextChords = {u"text"};
constexpr ChordPlace kReviewChords = {u"review"};
constexpr int kIdCut = 41001;
constexpr int kIdTurn = 41002;
constexpr int kIdBare = 41003;
constexpr int kIdLater = 41004;
constexpr int kIdEye = 41005;
constexpr int kIdLabel = 41006;
constexpr int kIdMill = 41007;
constexpr int kIdRowFirst = 41010;
constexpr int kIdRowLast = 41017;
bool spindleTurns = true;
constexpr Command kRows[] = {
    {.id = kIdTurn,
     .words = u"TURN",
     .help = u"Turn it round",
     .wordsOn = u"TURNED",
     .hint = Hint::Help,
     .chord = CtrlKey(kDrawingChords, 'T')},
    {.id = kIdCut,
     .words = u"CUT",
     .help = u"Cut it off",
     .name = u"Cut the part off",
     .menuWords = u"Cut...",
     .hintWords = u"Cut it where it is thin.",
     .chord = PlainKey(kDrawingChords, platform::kKeyDelete)},
    {kIdBare, u"BARE"},
    {.id = kIdLater, .words = u"LATER", .help = u"Later perhaps", .pending = u"Later"},
    {.id = kIdEye, .words = u"Look at it", .icon = 21},
    {.id = kIdLabel, .hint = Hint::Quiet},
    {.id = kIdMill,
     .words = u"MILL",
     .help = u"Mill it",
     .hint = Hint::Help,
     .barred = [](int) { return spindleTurns ? nullptr : u"The spindle stands."; }},
    {.id = kIdRowFirst, .help = u"One of eight", .last = kIdRowLast},
};

platform::KeyEvent Pressed(int key, bool ctrl = false) { return {key, ctrl}; }

struct Commands : public support::Stage {
  Commands() { ResetCommandWords(); }
  ~Commands() override { ResetCommandWords(); }
};

TEST_F(Commands, KnowNoIdBeforeARoomHandsInItsRows) { EXPECT_EQ(CommandOf(kIdCut), nullptr); }

TEST_F(Commands, AreFoundByIdWhateverTheirOrder) {
  AddCommands(kRows);
  for (const Command& row : kRows) EXPECT_EQ(CommandOf(row.id), &row);
  EXPECT_EQ(CommandOf(kIdCut - 1), nullptr);
  EXPECT_EQ(CommandOf(kIdRowLast + 1), nullptr);
}

TEST_F(Commands, CountOnceWhenARoomJoinsAgain) {
  for (int i = 0; i < 1000; ++i) AddCommands(kRows);
  for (const Command& row : kRows) EXPECT_EQ(CommandOf(row.id), &row);
}

TEST_F(Commands, MakeAKeyWithCaptionNameAndTip) {
  AddCommands(kRows);
  ASSERT_TRUE(MakeCommandKey(kIdCut, platform::kMainWindow, platform::FontRole::Small, false));
  EXPECT_EQ(platform::TextOf(kIdCut), u"CUT");
  EXPECT_EQ(platform::AccessibleName(kIdCut), u"Cut the part off");
  EXPECT_EQ(headless::ToolTipOf(kIdCut), u"Cut it off");
  EXPECT_TRUE(platform::IsEnabled(kIdCut));
}

TEST_F(Commands, NameAKeyByItsCaptionWhereThatSaysEnough) {
  AddCommands(kRows);
  ASSERT_TRUE(MakeCommandKey(kIdTurn, platform::kMainWindow, platform::FontRole::Small, true));
  EXPECT_EQ(platform::AccessibleName(kIdTurn), u"TURN");
  EXPECT_FALSE(platform::IsVisible(kIdTurn));
}

TEST_F(Commands, GiveNoTipWhereTheCaptionSaysAll) {
  AddCommands(kRows);
  ASSERT_TRUE(MakeCommandKey(kIdBare, platform::kMainWindow, platform::FontRole::Small, false));
  EXPECT_EQ(headless::ToolTipOf(kIdBare), u"");
}

TEST_F(Commands, MakeNoKeyWithoutARow) {
  EXPECT_FALSE(MakeCommandKey(kIdCut, platform::kMainWindow, platform::FontRole::Small, false));
  EXPECT_FALSE(platform::Exists(kIdCut));
}

TEST_F(Commands, DimAKeyThatIsStillToCome) {
  AddCommands(kRows);
  ASSERT_TRUE(MakeCommandKey(kIdLater, platform::kMainWindow, platform::FontRole::Body, false));
  EXPECT_FALSE(platform::IsEnabled(kIdLater));
  EXPECT_TRUE(IsPending(kIdLater));
  EXPECT_FALSE(IsPending(kIdCut));
  EXPECT_FALSE(IsPending(kIdCut - 1));
}

TEST_F(Commands, ShareARowWithinARangeOfIds) {
  AddCommands(kRows);
  for (int id = kIdRowFirst; id <= kIdRowLast; ++id)
    EXPECT_EQ(std::u16string(HelpOf(id)), u"One of eight");
  EXPECT_EQ(CommandOf(kIdRowFirst - 1), nullptr);
  EXPECT_EQ(CommandOf(kIdRowLast + 1), nullptr);
}

TEST_F(Commands, TakeTheWordsForATipWhereAnIconHidesThem) {
  AddCommands(kRows);
  EXPECT_EQ(std::u16string(HelpOf(kIdEye)), u"Look at it");
  EXPECT_EQ(std::u16string(HelpOf(kIdBare)), u"");
}

TEST_F(Commands, ChangeTheCaptionWithTheirState) {
  AddCommands(kRows);
  MakeCommandKey(kIdTurn, platform::kMainWindow, platform::FontRole::Body, false);
  ShowWords(kIdTurn, true);
  EXPECT_EQ(platform::TextOf(kIdTurn), u"TURNED");
  ShowWords(kIdTurn, false);
  EXPECT_EQ(platform::TextOf(kIdTurn), u"TURN");
  // One caption for both states.
  EXPECT_EQ(std::u16string(WordsOf(kIdBare, true)), u"BARE");
}

TEST_F(Commands, HintAtWhatIsWrittenOrWhatTheRowSays) {
  AddCommands(kRows);
  for (const int id : {kIdTurn, kIdCut, kIdBare, kIdEye}) {
    MakeCommandKey(id, platform::kMainWindow, platform::FontRole::Body, false);
  }
  EXPECT_EQ(HintOf(kIdTurn), u"Turn it round");
  EXPECT_EQ(HintOf(kIdCut), u"Cut it where it is thin.");
  platform::SetText(kIdBare, std::u16string(300, u'x'));
  EXPECT_EQ(HintOf(kIdBare), std::u16string(279, u'x'));
  platform::SetText(kIdOutputLog, u"Ready.");
  EXPECT_EQ(HintOf(kIdOutputLog), u"");  // what a field holds is no help
  EXPECT_EQ(HintOf(kIdLabel), u"");
}

TEST_F(Commands, AreFoundByTheirChordWhereItHolds) {
  AddCommands(kRows);
  EXPECT_EQ(CommandOfChord(kDrawingChords, Pressed('T', true)), kIdTurn);
  EXPECT_EQ(CommandOfChord(kDrawingChords, Pressed('T')), 0);
  EXPECT_EQ(CommandOfChord(kEditorChords, Pressed('T', true)), 0);
  platform::KeyEvent shifted = Pressed('T', true);
  shifted.shift = true;
  EXPECT_EQ(CommandOfChord(kDrawingChords, shifted), 0);
  // Rows without a chord are no rows of some place.
  EXPECT_EQ(CommandOfChord(kDrawingChords, platform::KeyEvent()), 0);
}

TEST_F(Commands, TellTheirStateAsTheirRowSays) {
  static bool lit;
  lit = false;
  constexpr auto kLit = [](int) { return lit; };
  constexpr Command kLamps[] = {{.id = 41100,
                                 .words = u"DARK",
                                 .help = u"Lamp",
                                 .wordsOn = u"LIT",
                                 .on = kLit,
                                 .told = kToldInTip},
                                {.id = 41101,
                                 .words = u"DARK",
                                 .help = u"Lamp",
                                 .wordsOn = u"LIT",
                                 .on = kLit,
                                 .told = kToldChecked | kToldInWords},
                                {.id = 41102, .words = u"NEITHER"}};
  AddCommands(kLamps);
  EXPECT_TRUE(HasState(41100));
  EXPECT_FALSE(HasState(41102));
  EXPECT_FALSE(IsOn(41102));
  RefreshKeyStates();  // before there is a key
  for (const Command& row : kLamps) {
    MakeCommandKey(row.id, platform::kMainWindow, platform::FontRole::Body, false);
  }
  lit = true;
  RefreshKeyStates();
  EXPECT_TRUE(IsOn(41100));
  EXPECT_EQ(headless::ToolTipOf(41100), u"Lamp  (on)");
  EXPECT_EQ(platform::TextOf(41100), u"DARK");
  EXPECT_FALSE(platform::IsChecked(41100));
  EXPECT_EQ(headless::ToolTipOf(41101), u"Lamp");
  EXPECT_EQ(platform::TextOf(41101), u"LIT");
  EXPECT_TRUE(platform::IsChecked(41101));
  lit = false;
  RefreshKeyStates();
  EXPECT_EQ(headless::ToolTipOf(41100), u"Lamp");
  EXPECT_EQ(platform::TextOf(41101), u"DARK");
  EXPECT_FALSE(platform::IsChecked(41101));
}

TEST_F(Commands, DimAKeyThatDoesNothingNowAndSayWhy) {
  AddCommands(kRows);
  spindleTurns = false;
  ASSERT_TRUE(MakeCommandKey(kIdMill, platform::kMainWindow, platform::FontRole::Small, false));
  EXPECT_FALSE(platform::IsEnabled(kIdMill));
  EXPECT_EQ(headless::ToolTipOf(kIdMill), u"The spindle stands.\nMill it");
  spindleTurns = true;
  RefreshKeyStates();
  EXPECT_TRUE(platform::IsEnabled(kIdMill));
  EXPECT_EQ(headless::ToolTipOf(kIdMill), u"Mill it");
  EXPECT_EQ(HintOf(kIdMill), u"Mill it");
  spindleTurns = false;
  RefreshKeyStates();
  EXPECT_FALSE(platform::IsEnabled(kIdMill));
  EXPECT_EQ(HintOf(kIdMill), u"The spindle stands.\nMill it");
  spindleTurns = true;
}

TEST_F(Commands, RunByTheirChord) {
  AddCommands(kRows);
  EXPECT_FALSE(RouteChord(kDrawingChords, Pressed('T', true)));
  static int routed;
  routed = 0;
  RegisterCommand(RouterStage::Click, kIdTurn, 0, [](int id, int) { routed = id; });
  EXPECT_TRUE(RouteChord(kDrawingChords, Pressed('T', true)));
  EXPECT_EQ(routed, kIdTurn);
}

TEST_F(Commands, PutTheChordBehindATabInAMenu) {
  AddCommands(kRows);
  EXPECT_EQ(MenuText(kIdTurn), u"TURN\tCtrl+T");
  EXPECT_EQ(MenuText(kIdTurn, true), u"TURNED\tCtrl+T");
  EXPECT_EQ(MenuText(kIdCut), u"Cut...\tDelete");
  EXPECT_EQ(MenuText(kIdBare), u"BARE");
  EXPECT_EQ(MenuText(kIdCut - 1), u"");
  // The name of the key is not said twice.
  constexpr Command kDelete[] = {{.id = kIdCut + 100,
                                  .words = u"Delete",
                                  .chord = PlainKey(kDrawingChords, platform::kKeyDelete)}};
  AddCommands(kDelete);
  EXPECT_EQ(MenuText(kIdCut + 100), u"Delete");
}

TEST_F(Commands, SayTheirCaptionsInAMenuThatAsksForThem) {
  AddCommands(kRows);
  EXPECT_EQ(MenuText(kIdTurn, false, MenuStyle::Captions), u"TURN        Ctrl+T");
  EXPECT_EQ(MenuText(kIdCut, false, MenuStyle::Captions),
            std::u16string(WordsOf(kIdCut)) + u"        Delete");
}

TEST_F(Commands, NameAChordInTheTipWhereItsMarkStands) {
  constexpr Command kTips[] = {{.id = 31000,
                                .help = u"Halve it ({}; twice: quarters)",
                                .chord = AltKey(kDrawingChords, 'H')},
                               {.id = 31001, .help = u"More ({})", .chordOf = 31000}};
  AddCommands(kTips);
  EXPECT_EQ(HelpOf(31000), u"Halve it (Alt+H; twice: quarters)");
  EXPECT_EQ(HelpOf(31001), u"More (Alt+H)");
}

TEST_F(Commands, AreChosenFromAMenu) {
  AddCommands(kRows);
  headless::QueuePick(kIdBare);
  constexpr MenuRow kMenu[] = {
      {kIdCut, false}, {}, {.id = kIdBare, .checked = true}, {.id = kIdTurn, .on = true}};
  EXPECT_EQ(ShowCommandMenu(kMenu, 10, 20), kIdBare);
  const std::vector<headless::MenuRecord> menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  ASSERT_EQ(menus[0].items.size(), 4u);
  EXPECT_EQ(menus[0].items[0].text, u"Cut...\tDelete");
  EXPECT_FALSE(menus[0].items[0].enabled);
  EXPECT_EQ(menus[0].items[1].id, 0);
  EXPECT_TRUE(menus[0].items[2].checked);
  EXPECT_EQ(menus[0].items[3].text, u"TURNED\tCtrl+T");
  EXPECT_EQ(ShowCommandMenu(kMenu, 10, 20), 0);  // nothing picked
}

TEST(ChordWords, NameTheKeysAsTheyStandOnThem) {
  EXPECT_EQ(ChordWords(Chord()), u"");
  EXPECT_EQ(ChordWords(CtrlKey(kDrawingChords, 'Z')), u"Ctrl+Z");
  EXPECT_EQ(ChordWords(AltKey(kTextChords, 'C')), u"Alt+C");
  EXPECT_EQ(ChordWords(PlainKey(kEditorChords, platform::kKeyF1 + 4)), u"F5");
  EXPECT_EQ(ChordWords(PlainKey(kEditorChords, platform::kKeyF1 + 11)), u"F12");
  EXPECT_EQ(ChordWords(PlainKey(kReviewChords, platform::kKeyEscape)), u"Esc");
  const Chord all{&kEditorChords, {platform::kKeyPageUp, true, true, true}};
  EXPECT_EQ(ChordWords(all), u"Ctrl+Alt+Shift+Page Up");
}

}  // namespace
}  // namespace morva
