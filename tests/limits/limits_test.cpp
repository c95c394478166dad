// Every table of the program is filled, asked for one more, emptied by one and filled again;
// every text is cut where it must be. What the user sees is part of the limit.
//
// The numbers stand here once more, so that no limit moves unseen. A limit that no file
// of this folder names fails the last one.
#include "app/limits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "app/outlets.h"
#include "dnc/serial_profile.h"
#include "dnc/transfer.h"
#include "documents/autosave.h"
#include "documents/companions.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/file_text.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "documents/recent_files.h"
#include "documents/save_state.h"
#include "library/motion_text.h"
#include "platform/clock.h"
#include "platform/editor.h"
#include "platform/limits.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "shell/layout_rects.h"
#include "simulator/feature_lines.h"
#include "simulator/motion_path.h"
#include "simulator/motion_run.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"
#include "support/kinds.h"
#include "support/places.h"
#include "support/workbench.h"
#include "text/code_writer.h"

namespace morva {
namespace {

using Lines = std::vector<std::u16string>;

std::u16string Number(int value) {
  const std::string digits = std::to_string(value);
  return std::u16string(digits.begin(), digits.end());
}

std::u16string UserBlock(int id) {
  return u"(MORVA TEXT " + Number(id) + u")\r\nG1\r\n(MORVA END " + Number(id) + u")\r\n";
}

std::u16string UserBlocks(int count) {
  std::u16string text;
  for (int i = 1; i <= count; ++i) text += UserBlock(i);
  return text;
}

// Points an inch apart, one a line; the origin is the first point of a path.
std::u16string Moves(int count) {
  std::u16string text;
  for (int i = 0; i < count; ++i) text += i % 2 == 0 ? u"G1 X1\r\n" : u"X2\r\n";
  return text;
}

struct Limits : support::Workbench {
  static void Type(std::u16string_view text) {
    ASSERT_TRUE(headless::EditorSetAll(kIdEditor, text));
    headless::Advance(200);
  }
  static std::u16string Hint() { return platform::TextOf(kIdFeatureHint); }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
  // Captions and words of the boxes since the last call.
  static Lines Boxes() {
    Lines lines;
    for (const headless::BoxRecord& box : headless::TakeBoxes()) {
      lines.push_back(box.title + u": " + box.text);
    }
    return lines;
  }
  // Whether the view's read-outs hold the words; a narrow view breaks them into lines.
  static bool ViewShows(std::u16string_view words) {
    std::u16string shown;
    for (const headless::DrawCall& call : headless::PaintOf(kViewToolpath)) {
      if (!call.text.empty()) shown += call.text + u" ";
    }
    return shown.find(words) != std::u16string::npos;
  }
};

const Lines kCouldNotSave = {u"Save Error: Could not save the file."};
const Lines kCouldNotOpen = {u"Open Error: Could not open the selected file."};

TEST_F(Limits, EightPrograms) {
  static_assert(kMaxTabs == 8);
  for (int i = 1; i < kMaxTabs; ++i) ASSERT_TRUE(headless::Click(kIdTabNew));
  EXPECT_EQ(app.tabCount, 8);
  EXPECT_EQ(Boxes(), Lines());
  headless::Click(kIdTabNew);
  EXPECT_EQ(Boxes(),
            Lines{u"MORVA Tabs: The workspace supports up to 8 open programs in this build."});
  EXPECT_EQ(app.tabCount, 8);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdClose);
  EXPECT_EQ(app.tabCount, 7);
  Boxes();
  headless::Click(kIdTabNew);
  EXPECT_EQ(app.tabCount, 8);
  EXPECT_EQ(Boxes(), Lines());
}

TEST_F(Limits, FeaturesFoundInTheText) {
  static_assert(kMaxFeatures == 128 && kMaxFeatureLines == kMaxFeatures);
  const std::u16string full =
      u"Feature browser limit: 128 sections. Split this program to index more.";
  Type(UserBlocks(kMaxFeatures - 1));
  EXPECT_NE(Hint(), full);
  Type(UserBlocks(kMaxFeatures) + u"G9");
  EXPECT_EQ(Hint(), full);
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 128);
  // What is beyond stays as it was typed.
  EXPECT_EQ(Text(), UserBlocks(kMaxFeatures) + u"G9");
  RebuildToolpath();
  EXPECT_EQ(featureLines.count, kMaxFeatureLines);
  EXPECT_EQ(featureLines.rows[127].id, 128);
  Type(UserBlocks(kMaxFeatures - 1) + u"G9");
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 128);
  EXPECT_EQ(Text().substr(UserBlocks(127).size(), 15), u"(MORVA TEXT 128");
  Type(UserBlocks(3));
  RebuildToolpath();
  EXPECT_EQ(featureLines.count, 3);
}

TEST_F(Limits, LinesOfTextsThatAnEditorLaysAside) {
  static_assert(platform::kMaxLinesAside == 3000000);
  const std::u16string third(platform::kMaxLinesAside / 3 - 1,
                             u'\n');  // with the last line a third
  for (const std::uint64_t number : {11, 12, 13}) {
    platform::SetEditorText(kIdEditor, third);
    platform::LayEditorTextAside(kIdEditor, number);
  }
  platform::SetEditorText(kIdEditor, u"G0");
  platform::LayEditorTextAside(kIdEditor, 14);
  std::u16string whole;
  for (std::size_t i = 0; i < third.size(); ++i) whole += u"\r\n";
  EXPECT_FALSE(platform::TakeEditorText(kIdEditor, 11, whole));
  EXPECT_TRUE(platform::TakeEditorText(kIdEditor, 12, whole));
  EXPECT_TRUE(platform::TakeEditorText(kIdEditor, 14, u"G0"));
  platform::DropEditorText(kIdEditor, 0);
}

TEST_F(Limits, FeaturesInserted) {
  support::TakeKind(kKindShape, [](FeatureSettings& record) {
    record.version = 3;
    record.kind = kKindShape;
    return true;
  });
  Type(UserBlocks(kMaxFeatures - 1));
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, u"G0\r\n"));
  const std::u16string full = Text();
  EXPECT_FALSE(InsertFeatureBlock(kKindShape, u"G0\r\n"));
  EXPECT_EQ(Boxes(), Lines{u"Shape limit: This program already has 128 editable blocks. Use "
                           u"another document."});
  EXPECT_EQ(Text(), full);
  Type(full.substr(UserBlock(1).size()));
  EXPECT_TRUE(InsertFeatureBlock(kKindShape, u"G0\r\n"));
  EXPECT_EQ(Boxes(), Lines());
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 128);
}

TEST_F(Limits, ItemsOfARecord) {
  static_assert(kMaxItems == 96);
  const auto record = std::make_unique<FeatureSettings>();
  record->version = 3;
  record->kind = kKindSketch;
  const auto accepted = [&](int count) {
    record->itemCount = std::min(count, kMaxItems);
    std::u16string block = SettingsBlockText(1, u"", *record, u"G0");
    if (count > kMaxItems) {
      // One more by hand: the count in byte 24, the first of the second line, and 48 bytes.
      const std::size_t second = block.find(u"DATA ", block.find(u"DATA ") + 1) + 5;
      block.replace(second, 2, u"61");
      block.insert(block.find(u"(MORVA CODE)"),
                   u"(MORVA DATA " + std::u16string(96, u'0') + u")\r\n");
    }
    ScanProgramText(block);
    return !features.rows[0].needsMarkers;
  };
  EXPECT_TRUE(accepted(kMaxItems));
  EXPECT_EQ(features.rows[0].settings.itemCount, 96);
  EXPECT_FALSE(accepted(kMaxItems + 1));
  EXPECT_TRUE(accepted(kMaxItems - 1));
  EXPECT_TRUE(accepted(kMaxItems));
}

TEST_F(Limits, DrawingsOfAProgram) {
  static_assert(kMaxDrawings == 8);
  const auto store = std::make_unique<CadStore>();
  const auto back = std::make_unique<CadStore>();
  for (Drawing& drawing : store->drawings) {
    drawing.settings.version = 3;
    drawing.settings.kind = kKindSketch;
  }
  std::string bytes;
  for (const std::uint32_t count : {8u, 7u, 8u}) {
    store->count = count;
    WriteCadFile(*store, bytes);
    EXPECT_TRUE(ReadCadFile(bytes, *back));
    EXPECT_EQ(back->count, count);
    bytes[0] = kMaxDrawings + 1;
    EXPECT_FALSE(ReadCadFile(bytes, *back));
    EXPECT_EQ(back->count, count);
  }
  // The program opens without its damaged companion, and nothing is said.
  WriteFile("a.NC", "G0\r\n");
  WriteFile("a.NC.cadmv", bytes);
  Open("a.NC");
  EXPECT_EQ(Boxes(), Lines());
  EXPECT_EQ(ActiveTab()->cadStore, nullptr);
}

TEST_F(Limits, PlatesOfAProgram) {
  static_assert(kMaxPlates == 8);
  const auto store = std::make_unique<PlateStore>();
  const auto back = std::make_unique<PlateStore>();
  for (FeatureSettings& plate : store->plates) {
    plate.version = 3;
    plate.kind = kKindPlate;
  }
  std::string bytes;
  for (const std::uint32_t count : {8u, 7u, 8u}) {
    store->count = count;
    WritePlateFile(*store, bytes);
    EXPECT_TRUE(ReadPlateFile(bytes, *back));
    bytes[0] = kMaxPlates + 1;
    EXPECT_FALSE(ReadPlateFile(bytes, *back));
    EXPECT_EQ(back->count, count);
  }
  WriteFile("a.NC", "G0\r\n");
  WriteFile("a.NC.platemv", bytes);
  Open("a.NC");
  EXPECT_EQ(Boxes(), Lines());
  EXPECT_EQ(ActiveTab()->plateStore, nullptr);
}

TEST_F(Limits, PointsOfThePath) {
  static_assert(kMaxMotionPoints == 32768);
  headless::EditorSetAll(kIdEditor, Moves(kMaxMotionPoints - 1));
  headless::Click(kIdPath);
  EXPECT_EQ(path.count, 32768);
  EXPECT_FALSE(ViewShows(u"path shown to line"));
  // The origin is the first point, so the 32,767th move is the last one shown.
  headless::EditorSetAll(kIdEditor, Moves(kMaxMotionPoints));
  headless::Click(kIdPath);
  EXPECT_EQ(path.count, 32768);
  EXPECT_TRUE(ViewShows(u"path shown to line 32767"));
  EXPECT_EQ(Boxes(), Lines());
  headless::EditorSetAll(kIdEditor, Moves(kMaxMotionPoints - 2));
  headless::Click(kIdPath);
  EXPECT_EQ(path.count, 32767);
  AddMotionPoint(9, 9, 9, false, 0);
  EXPECT_EQ(path.count, 32768);
  EXPECT_FALSE(ViewShows(u"path shown to line"));
}

TEST_F(Limits, OwnersOfAPath) {
  static_assert(kMaxPathOwners == 3);
  ASSERT_EQ(OwnedPaths().size(), 3u);
  headless::EditorSetAll(kIdEditor, Moves(3));
  headless::Click(kIdPath);
  // One table is full, the next one beside it is not, and both take the last point.
  ExtractPathOf(PathOwner::Builder, Moves(kMaxMotionPoints), false);
  EXPECT_EQ(OwnedBy(PathOwner::Builder).path.count, 32768);
  EXPECT_EQ(path.count, 4);
  EXPECT_FALSE(ViewShows(u"path shown to line"));
  ShowPathOf(PathOwner::Builder);
  EXPECT_TRUE(ViewShows(u"path shown to line 32767"));
  headless::EditorSetAll(kIdEditor, Moves(kMaxMotionPoints - 1));
  headless::Click(kIdPath);
  EXPECT_EQ(path.count, 32768);
  ShowPathOf(PathOwner::Program);
  EXPECT_FALSE(ViewShows(u"path shown to line"));
}

// The longest read-out has thirteen parts, a dash among each two; the narrowest view shows all.
TEST_F(Limits, LinesOfAReadOut) {
  static_assert(kMaxReadOutLines == 16);
  headless::EditorSetAll(kIdEditor, u"G28\r\nM30\r\n/G0 X12.5 Y3.25 Z1.5\r\n");
  headless::Click(kIdPath);
  platform::ReplaceSelection(kIdEditor, u"G1 X1", true);
  switches.showExtents = true;
  measure.a = 0;
  measure.b = path.count - 1;
  path.fullAtLine = 32766;
  platform::SetPlace(kViewToolpath, {700, 100, 700 + 24, 100 + 455});
  for (const char16_t* part :
       {u"PATH EXTENTS (in)", u"X 12.5000", u"Y 3.2500", u"Z 1.5000", u"MEASURE", u"dX 12.5000",
        u"dY 3.2500", u"dZ 1.5000", u"distance", u"XY grid Z0", u"spacing",
        u"text changed, press PATH", u"path shown to line", u"1 line not shown, first 1",
        u"1 line behind M30, first 3", u"1 line with /, first 3"}) {
    EXPECT_TRUE(ViewShows(part)) << platform::ToUtf8(part);
  }
}

// The finest grid is a twelfth of the larger span, halved six times: never full.
TEST_F(Limits, LinesOfTheGrid) {
  static_assert(kMaxGridLines == 4096);
  for (const char16_t* move : {u"G0 X2.4 Y2.4", u"G0 X2.41", u"G0 X6", u"G0 Y0.6 X0.1"}) {
    headless::EditorSetAll(kIdEditor, move);
    headless::Click(kIdPath);
    view.gridScale = -6;
    const double span = path.points[1].x > path.points[1].y ? path.points[1].x : path.points[1].y;
    EXPECT_GE(GridSpacing() * 12 * 64, span * 0.999);
    EXPECT_LT(span / GridSpacing() + 3, kMaxGridLines / 4);
  }
}

TEST_F(Limits, HomesOfAProgramNeverSaved) {
  static_assert(kMaxProgramHomes == 1000);
  const std::filesystem::path projects = home_ / "Documents/MORVA/Projects";
  const std::uint64_t now = platform::TickMilliseconds();
  for (std::uint64_t tick = now; tick < now + 1000; ++tick) {
    const auto folder = projects / ("Untitled-1.NC-" + std::to_string(tick));
    std::filesystem::create_directory(folder);
    std::ofstream(folder / "Untitled-1.NC") << "G0";
  }
  MarkModified();
  RunAutosave();
  EXPECT_EQ(Status(), u"Autosave failed: project directory unavailable.");
  EXPECT_EQ(app.activePath[0], 0);
  const auto last = projects / ("Untitled-1.NC-" + std::to_string(now + 999));
  std::filesystem::remove(last / "Untitled-1.NC");
  RunAutosave();
  EXPECT_EQ(platform::ToUtf8(app.activePath), (last / "Untitled-1.NC").string());
}

TEST_F(Limits, NamesOfBlocksThatTheUserGives) {
  static_assert(kGivenNameUnits == 80);
  EXPECT_TRUE(IsFeatureName(std::u16string(kGivenNameUnits, u'a')));
  EXPECT_FALSE(IsFeatureName(std::u16string(kGivenNameUnits + 1, u'a')));
}

TEST_F(Limits, NamesOfCompanionsThatGiveWay) {
  static_assert(kMaxKeptCompanions == 1000);
  WriteFile("a.NC", "G0\r\n");
  WriteFile("a.NC.features", "damaged");
  WriteFile("a.NC.features.kept", "");
  for (int i = 2; i < kMaxKeptCompanions; ++i)
    WriteFile("a.NC.features.kept" + std::to_string(i), "");
  Open("a.NC");
  headless::EditorSetAll(kIdEditor, u"G1\r\n");
  EXPECT_TRUE(SaveProgramCommand());
  EXPECT_EQ(ReadFile("a.NC.features.kept1000"), "damaged");
  // With all names taken nothing is written over the one more.
  WriteFile("a.NC.features", "damaged too");
  CloseProgram();
  Open("a.NC");
  headless::EditorSetAll(kIdEditor, u"G2\r\n");
  headless::TakeBoxes();
  SaveProgramCommand();
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(ReadFile("a.NC.features"), "damaged too");
}

TEST_F(Limits, CopiesThatAnOpeningNames) {
  static_assert(kMaxKeptCopies == 9);
  WriteFile("a.NC", "G0\r\n");
  const auto copies = [this] {
    int count = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(home_ / "Documents/MORVA/Recovery"))
      count += entry.path().extension() == ".NC" &&
               entry.path().filename().string().find("-of-") != std::string::npos;
    return count;
  };
  const auto told = [] {
    const std::u16string log = platform::TextOf(kIdOutputLog);
    int count = 0;
    for (std::size_t at = log.find(u"never saved"); at != log.npos;
         at = log.find(u"never saved", at + 1)) {
      ++count;
    }
    return count;
  };
  for (int i = 1; i <= kMaxKeptCopies + 1; ++i) {
    Open("a.NC");
    MarkModified();
    WriteFile("a.NC", "G" + std::to_string(i) + "\r\n");
    RunAutosave();
    EXPECT_EQ(copies(), std::min(i, kMaxKeptCopies));
    headless::QueueAnswer(platform::BoxAnswer::No);
    CloseProgram();
  }
  ClearOutput();
  Open("a.NC");
  EXPECT_EQ(told(), kMaxKeptCopies);
}

TEST_F(Limits, GhostPointsOfExcludedCode) {
  AddDisabledCode(ActiveTab()->disabledCode, Moves(20000));
  AddDisabledCode(ActiveTab()->disabledCode, Moves(20000));
  const std::u16string one = u"(MORVA TEXT 1)\r\n(MORVA DISABLED 1)\r\n(MORVA END 1)\r\n";
  const std::u16string two = u"(MORVA TEXT 2)\r\n(MORVA DISABLED 2)\r\n(MORVA END 2)\r\n";
  for (const bool both : {true, false, true}) {
    Type(both ? one + two : one);
    headless::Click(kIdPath);
    EXPECT_EQ(ghostPath.count, both ? kMaxMotionPoints : 20001);
  }
  EXPECT_EQ(Boxes(), Lines());
}

TEST_F(Limits, HiddenAndLockedIds) {
  static_assert(kMaxIdList == 128);
  for (auto* list : {&ActiveTab()->hiddenIds, &ActiveTab()->lockedIds}) {
    for (int id = 1; id <= kMaxIdList; ++id) ToggleListId(id, *list);
    EXPECT_TRUE(IdListHolds(*list, 128));
    ToggleListId(129, *list);
    EXPECT_FALSE(IdListHolds(*list, 129));
    ToggleListId(64, *list);
    EXPECT_FALSE(IdListHolds(*list, 64));
    ToggleListId(129, *list);
    EXPECT_TRUE(IdListHolds(*list, 129));
    ToggleListId(130, *list);
    EXPECT_FALSE(IdListHolds(*list, 130));
  }
}

TEST_F(Limits, StoredCodeOfExcludedBlocks) {
  static_assert(kMaxDisabledEntries == 10000 && kMaxDisabledUnits == 8000000);
  DisabledCodeEntry*& list = ActiveTab()->disabledCode;
  for (int i = 1; i <= kMaxDisabledEntries; ++i) ASSERT_EQ(AddDisabledCode(list, u""), i);
  EXPECT_EQ(AddDisabledCode(list, u""), 0);
  std::string bytes;
  ASSERT_TRUE(WriteDisabledCode(list, bytes));
  // An entry goes with its program only.
  FreeDisabledCode(list);
  ASSERT_TRUE(ReadDisabledCode(bytes, list));
  FreeDisabledCode(list);
  bytes += std::string("\x7F\x7F\x7F\0\0\0\0\0", 8);
  bytes[4] = static_cast<char>(10001 & 255);
  EXPECT_FALSE(ReadDisabledCode(bytes, list));
  EXPECT_EQ(list, nullptr);
  std::u16string text(kMaxDisabledUnits + 1, u'G');
  EXPECT_EQ(AddDisabledCode(list, text), 0);
  text.pop_back();
  EXPECT_EQ(AddDisabledCode(list, text), 1);
  EXPECT_EQ(Boxes(), Lines());
}

// Four entries of 7,999,997 units with their heads are 64,000,016 bytes, eight units too many.
TEST_F(Limits, BytesOfTheFileOfExcludedCode) {
  static_assert(kMaxFeaturesFileBytes == 64000000);
  WriteFile("a.NC", "G0\r\n");
  Open("a.NC");
  DisabledCodeEntry*& list = ActiveTab()->disabledCode;
  const std::u16string text(7999997, u'G');
  for (int i = 0; i < 4; ++i) ASSERT_NE(AddDisabledCode(list, text), 0);
  // What the text does not name would be left out.
  headless::EditorSetAll(kIdEditor,
                         u"(MORVA DISABLED 1)(MORVA DISABLED 2)(MORVA DISABLED 3)"
                         u"(MORVA DISABLED 4)\r\n");
  EXPECT_FALSE(SaveProgramCommand());
  EXPECT_EQ(Boxes(), kCouldNotSave);
  EXPECT_EQ(ReadFile("a.NC"), "G0\r\n");
  EXPECT_TRUE(app.editorDirty);
  list->text.resize(text.size() - 8);
  EXPECT_TRUE(SaveProgramCommand());
  EXPECT_EQ(Boxes(), Lines());
  EXPECT_EQ(std::filesystem::file_size(home_ / "a.NC.features"), 64000000u);
}

// A short program in front of filling, so that the limit of the read is met and not the wait.
TEST_F(Limits, BytesOfAFileThatIsOpened) {
  static_assert(kMaxReadBytes == 33554432);
  std::string bytes = "G0 X1\r\n";
  bytes.resize(kMaxReadBytes + 1, '\0');
  WriteFile("a.NC", bytes);
  Open("a.NC");
  EXPECT_EQ(Boxes(), kCouldNotOpen);
  EXPECT_EQ(app.tabCount, 1);
  bytes.pop_back();
  WriteFile("a.NC", bytes);
  Open("a.NC");
  EXPECT_EQ(Boxes(), Lines());
  EXPECT_EQ(Text(), u"G0 X1\r\n");
}

TEST_F(Limits, BytesReceived) {
  static_assert(kMaxReceivedBytes == 2097152);
  headless::SetPort(u"COM1", headless::PortState::Present);
  const auto receive = [](int count) {
    headless::Click(kIdReceive);
    headless::Advance(0);
    headless::PeerSend(std::string(static_cast<std::size_t>(count), 'X'));
    headless::Advance(120000);
  };
  receive(kMaxReceivedBytes);
  EXPECT_TRUE(OutputHas(
      u"TRANSFER ERROR: serial port failed, receive was aborted, or the 2 MB receive limit was "
      u"reached. Incomplete data was not opened."));
  EXPECT_EQ(Status(), u"DNC transfer error \u2014 check COM port, cable, and matching settings.");
  EXPECT_EQ(app.tabCount, 1);
  receive(kMaxReceivedBytes - 1);
  EXPECT_EQ(app.tabCount, 2);
  EXPECT_NE(Text().find(std::u16string(2097151, u'X')), std::u16string::npos);
}

TEST_F(Limits, TextsOfAProgramsRecord) {
  static_assert(kPathUnits == 520 && kTitleUnits == 96);
  const int index = OpenTab(std::u16string(600, u'p'), u"G0", u"");
  EXPECT_EQ(std::u16string(tabs[index].path), std::u16string(519, u'p'));
  EXPECT_EQ(std::u16string(tabs[index].title), std::u16string(95, u'p'));
  SwitchTab(index);
  EXPECT_EQ(std::u16string(app.activePath), std::u16string(519, u'p'));
  // The label's parts never fill it: "> [C] ", the title and " *".
  static_assert(kTabLabelUnits == 128 && 6 + (kTitleUnits - 1) + 2 < kTabLabelUnits);
  tabs[index].compareSelected = tabs[index].dirty = true;
  RefreshTabButtons();
  EXPECT_EQ(platform::TextOf(kIdTabFirst + index), u"> [C] " + std::u16string(95, u'p') + u" *");
}

TEST_F(Limits, TheWindowsTitle) {
  // Program, separator, file name and mark never fill it.
  static_assert(kWindowTitleUnits == 700 && kCaptionFileUnits == 301);
  static_assert(13 + 5 + (kCaptionFileUnits - 1) + 3 < kWindowTitleUnits);
  for (const std::size_t length : {299u, 300u, 301u, 519u}) {
    const std::u16string name(length, u'n');
    name.copy(app.activePath, length);
    app.activePath[length] = 0;
    app.editorDirty = true;
    UpdateTitle();
    EXPECT_EQ(platform::WindowTitle(),
              u"MORVA v4.20.0  \u2014  " + name.substr(0, 300) + u"  \u2022");
  }
}

TEST_F(Limits, TheStatusLine) {
  static_assert(kStatusUnits == 1024);
  for (const std::size_t length : {1022u, 1023u, 1024u, 5000u}) {
    const std::u16string text(length, u's');
    ShowStatus(text);
    EXPECT_EQ(Status(), text.substr(0, 1023));
  }
}

TEST_F(Limits, NamesOfFeatures) {
  static_assert(kFeatureNameUnits == 96);
  for (const std::size_t length : {94u, 95u, 96u, 300u}) {
    const std::u16string name(length, u'n');
    Type(u"(MORVA TEXT 1)\r\n(MORVA NAME " + name + u")\r\nG0\r\n(MORVA END 1)");
    EXPECT_EQ(platform::RowText(kIdFeatureList, 0), u"#1  " + name.substr(0, 95));
  }
}

// The suffixes count: with ".features" a path of 491 units is the longest that can be saved.
TEST_F(Limits, ALineOfMotion) {
  static_assert(kMotionLineUnits == 220);
  for (const std::size_t length : {218u, 219u, 220u, 400u}) {
    const std::u16string word(length, u'G');
    CodeWriter out;
    out.most = 1000;
    EmitMotion(out, word, 1, 2, 0, false);
    EXPECT_EQ(out.text.size(), 219u);
    EXPECT_EQ(out.text.substr(0, 218), std::u16string(218, u'G'));
  }
}

TEST_F(Limits, BytesOfACompanionsName) {
  static_assert(kMaxNameBytes == 255);
  const std::u16string longest(255 - 9, u'n');
  EXPECT_EQ(CompanionPath(longest, u".features"), longest + u".features");
  EXPECT_EQ(CompanionPath(longest + u"n", u".features").size(), 255u);
  // The longest name that a file system takes is opened and saved.
  const std::string name = std::string(252, 'n') + ".NC";
  WriteFile(name, "G0\r\n");
  Open(name);
  headless::EditorSetAll(kIdEditor, u"G1\r\n");
  EXPECT_TRUE(SaveProgramCommand());
  EXPECT_EQ(Boxes(), Lines());
  EXPECT_NE(ReadFile(name).find("G1"), std::string::npos);
}

TEST_F(Limits, PathsThatCanBeSaved) {
  static_assert(kSavePathUnits == 500 && kCompanionPathUnits == 600);
  static_assert(kSavePathUnits + 9 < kCompanionPathUnits && kPathUnits < kCompanionPathUnits);
  std::u16string folder = platform::FromUtf8(home_.string());
  while (folder.size() < 400) folder += u"/.";
  folder += u"/";
  const auto save = [&](std::size_t length) {
    headless::QueueFile(folder + std::u16string(length - folder.size() - 3, u'a') + u".NC");
    return SaveProgramAs();
  };
  EXPECT_FALSE(save(501));
  EXPECT_EQ(Boxes(), kCouldNotSave);
  EXPECT_FALSE(save(492));
  EXPECT_EQ(Boxes(), kCouldNotSave);
  EXPECT_EQ(app.activePath[0], 0);
  EXPECT_TRUE(save(491));
  EXPECT_EQ(Boxes(), Lines());
  EXPECT_TRUE(SaveFileAtomic(folder + std::u16string(500 - folder.size(), u'b'), "x"));
  EXPECT_FALSE(SaveFileAtomic(folder + std::u16string(501 - folder.size(), u'b'), "x"));
}

int portsFound = 0;

TEST_F(Limits, PortsOfTheScan) {
  static_assert(kMaxComPorts == 64);
  setupPanel.exists = [] { return true; };
  setupPanel.fillPorts = [](const platform::SerialName*, int count) { portsFound = count; };
  const auto scan = [] {
    ScanComPorts();
    return portsFound;
  };
  headless::SetPort(u"COM65", headless::PortState::Present);
  EXPECT_EQ(scan(), 0);
  EXPECT_TRUE(OutputHas(u"No COM ports detected. Check the USB/RS-232 adapter and driver."));
  for (int i = 1; i <= kMaxComPorts; ++i) {
    headless::SetPort(u"COM" + Number(i), headless::PortState::Present);
  }
  EXPECT_EQ(scan(), 64);
  headless::SetPort(u"COM7", headless::PortState::Absent);
  EXPECT_EQ(scan(), 63);
  headless::SetPort(u"COM7", headless::PortState::Present);
  EXPECT_EQ(scan(), 64);
}

TEST_F(Limits, TheNameOfAPort) {
  static_assert(kPortNameUnits == 32);
  for (const int length : {30, 31, 32, 70}) {
    const std::string name(static_cast<std::size_t>(length), 'p');
    std::filesystem::create_directories(home_ / "bin");
    WriteFile("bin/MORVA.ini", "[DNC]\r\nPort=" + name + "\r\n");
    LoadSerialProfile();
    EXPECT_EQ(std::u16string(serialProfile.port),
              std::u16string(static_cast<std::size_t>(std::min(length, 31)), u'p'));
  }
}

TEST_F(Limits, PlacesOfALayout) {
  static_assert(kMaxPlacements == 96);
  LayoutInput in;
  in.width = 1560;
  in.height = 905;
  in.tabCount = kMaxTabs;
  static constexpr KeyWidth kKeys[] = {
      {kIdSurfaceCode, 64}, {kIdSurfaceCad, 64}, {kIdSurfacePlate, 64}};
  in.surfaceKeys = kKeys;
  for (in.mode = kModeHome; in.mode <= kModeFind; ++in.mode) {
    in.rightPanel = !in.rightPanel;
    EXPECT_LT(PlanLayout(in).count, kMaxPlacements) << in.mode;
    in.rightPanel = !in.rightPanel;
    EXPECT_LT(PlanLayout(in).count, kMaxPlacements) << in.mode;
  }
}

TEST_F(Limits, ProgramsOpenedLast) {
  static_assert(kMaxRecentFiles == 8);
  EXPECT_EQ(kIdRecentLast - kIdRecentFirst + 1, kMaxRecentFiles);
  for (int i = 0; i <= kMaxRecentFiles; ++i) NoteRecentFile(u"/jobs/" + Number(i));
  EXPECT_EQ(RecentFileCount(), 8);
  EXPECT_EQ(RecentFile(7), u"/jobs/1");
  DropRecentFile(0);
  EXPECT_EQ(RecentFileCount(), 7);
  NoteRecentFile(u"/jobs/0");
  NoteRecentFile(u"/jobs/9");
  EXPECT_EQ(RecentFileCount(), 8);
}

TEST_F(Limits, TheSplitter) {
  static_assert(kLeftPanelLeast == 190 && kLeftPanelMost == 430);
  headless::Resize(1560, 905);
  DragSplitter(10);
  EXPECT_EQ(app.leftPanelWidth, 190);
  DragSplitter(1000);
  EXPECT_EQ(app.leftPanelWidth, 430);
  DragSplitter(429);
  EXPECT_EQ(app.leftPanelWidth, 429);
}

// No form of numbers exists yet; the size that they will read with stands already.
static_assert(kFieldUnits == 80);

// Every word that begins as a constant does, from the first `lead` in its line on.
void AddNames(const std::string& text, const std::string& lead, std::set<std::string>& names) {
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    std::size_t at = line.find(lead);
    if (at == line.npos) continue;
    std::string word;
    for (; at <= line.size(); ++at) {
      const auto c = static_cast<unsigned char>(at < line.size() ? line[at] : ' ');
      if (std::isalnum(c)) {
        word += static_cast<char>(c);
        continue;
      }
      if (word.size() > 2 && word[0] == 'k' && std::isupper(static_cast<unsigned char>(word[1])))
        names.insert(word);
      word.clear();
    }
  }
}

std::string SourceText(const std::string& name) {
  std::ifstream in(std::filesystem::path(support::SourceDir()) / name, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST(EveryLimit, HasATestHere) {
  std::set<std::string> limits;
  AddNames(SourceText("src/app/limits.h"), "constexpr int ", limits);
  std::set<std::string> tested;
  const std::filesystem::path folder = std::filesystem::path(support::SourceDir()) / "tests/limits";
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    AddNames(SourceText("tests/limits/" + file.path().filename().string()), "", tested);
  }
  EXPECT_GT(limits.size(), 30u);
  for (const std::string& name : limits) EXPECT_EQ(tested.count(name), 1u) << name;
}

}  // namespace
}  // namespace morva
