// The tool library in the settings file and in its mirror, its rows and its program text. Files are
// written out by hand.

#include "library/tools.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <string>

#include "platform/common/faults.h"
#include "platform/profile.h"
#include "support/stage.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace morva {
namespace {

ToolRecord Cutter(const char16_t* name, std::int32_t number = 1) {
  ToolRecord tool;
  tool.number = number;
  CopyBounded(tool.name, kToolNameUnits, name);
  CopyBounded(tool.type, kToolTypeUnits, u"Drill");
  tool.diameter = 0.375;
  tool.flutes = 2;
  tool.gaugeLength = 4.25;
  tool.stickout = 2;
  tool.hOffset = number;
  tool.dOffset = number + 20;
  tool.maxRpm = 3000;
  tool.feed = 8;
  tool.plunge = 4;
  tool.coolant = 1;
  return tool;
}

bool SameTool(const ToolRecord& a, const ToolRecord& b) {
  std::string bytes[2];
  const ToolRecord* tools[] = {&a, &b};
  for (int i = 0; i < 2; ++i) {
    ToolLibrary library;
    library.count = 1;
    library.tools[0] = *tools[i];
    WriteToolMirror(library, bytes[i]);
  }
  return bytes[0] == bytes[1];
}

struct Tools : support::Stage {
  void SetUp() override { ResetToolLibrary(); }
  void TearDown() override { ResetToolLibrary(); }
  void PutIni(std::string_view bytes) const { Put("bin/MORVA.ini", bytes); }
  std::string Ini() const { return Raw("bin/MORVA.ini"); }
  void ReadyDataDirectory() const {
    support::fs::create_directories(folder / "data" / "Tool Library");
    CopyBounded(app.dataDir, kPathUnits, PathOf("data"));
    app.dataDirReady = true;
  }
};

TEST_F(Tools, AreNoneWithoutASettingsFile) {
  AppendTool(Cutter(u"Old"));
  LoadToolLibrary();
  EXPECT_EQ(toolLibrary.count, 0);
}

TEST_F(Tools, LoadWithTheDefaultsOfMissingKeys) {
  PutIni(
      "[ToolLibrary]\r\nCount=3\r\n[Tool1]\r\nNumber=17\r\nCoolant=2\r\nNotes= \"two words\" \r\n");
  LoadToolLibrary();
  ASSERT_EQ(toolLibrary.count, 3);
  const ToolRecord& first = toolLibrary.tools[0];
  EXPECT_EQ(first.number, 1);
  EXPECT_EQ(std::u16string(first.name), u"Custom Tool");
  EXPECT_EQ(std::u16string(first.type), u"End Mill");
  EXPECT_EQ(first.diameter, 0.5);
  EXPECT_EQ(first.flutes, 4);
  EXPECT_EQ(first.gaugeLength, 3);
  EXPECT_EQ(first.stickout, 1.5);
  EXPECT_EQ(first.hOffset, 1);
  EXPECT_EQ(first.dOffset, 1);
  EXPECT_EQ(first.maxRpm, 5000);
  EXPECT_EQ(first.feed, 12);
  EXPECT_EQ(first.plunge, 5);
  EXPECT_EQ(first.coolant, 1);
  EXPECT_EQ(std::u16string(first.notes), u"");
  const ToolRecord& second = toolLibrary.tools[1];
  EXPECT_EQ(second.number, 17);
  EXPECT_EQ(second.hOffset, 17) << "the offsets follow the number just read";
  EXPECT_EQ(second.dOffset, 17);
  EXPECT_EQ(second.coolant, 2);
  EXPECT_EQ(std::u16string(second.notes), u"two words");
  EXPECT_EQ(toolLibrary.tools[2].number, 3);
}

TEST_F(Tools, CountNoDigitOrANegativeValueAsNoneAndMoreThan64As64) {
  const struct {
    const char* text;
    int count;
  } rows[] = {{"Count=abc", 0}, {"Count=", 0},    {"Count=-3", 0},  {"Other=9", 0},
              {"Count=64", 64}, {"Count=65", 64}, {"Count=100", 64}};
  for (const auto& row : rows) {
    PutIni(std::string("[ToolLibrary]\r\n") + row.text + "\r\n");
    LoadToolLibrary();
    EXPECT_EQ(toolLibrary.count, row.count) << row.text;
  }
}

TEST_F(Tools, CutTheirTexts) {
  PutIni("[ToolLibrary]\r\nCount=1\r\n[Tool0]\r\nName=" + std::string(90, 'n') +
         "\r\nType=" + std::string(90, 't') + "\r\nNotes=" + std::string(190, 'o') + "\r\n");
  LoadToolLibrary();
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].name), std::u16string(63, u'n'));
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].type), std::u16string(31, u't'));
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].notes), std::u16string(127, u'o'));
}

TEST_F(Tools, AreWrittenAsTheirKeysInOrder) {
  PutIni("; mine\r\n[DNC]\r\nPort=COM3\r\n");
  AppendTool(Cutter(u"3/8 DRILL", 7));
  EXPECT_TRUE(SaveToolLibrary());
  EXPECT_EQ(Ini(),
            "; mine\r\n[DNC]\r\nPort=COM3\r\n"
            "[ToolLibrary]\r\nCount=1\r\n"
            "[Tool0]\r\nNumber=7\r\nName=3/8 DRILL\r\nType=Drill\r\nDiameter=0.3750\r\nFlutes=2\r\n"
            "GaugeLength=4.2500\r\nStickout=2.0000\r\nHOffset=7\r\nDOffset=27\r\nMaxRPM=3000\r\n"
            "Feed=8.0000\r\nPlunge=4.0000\r\nCoolant=1\r\nNotes=\r\n");
}

TEST_F(Tools, LeaveTheSectionsOfDeletedOnesInTheFile) {
  AppendTool(Cutter(u"Only"));
  ASSERT_TRUE(SaveToolLibrary());
  ASSERT_TRUE(RemoveTool(0));
  ASSERT_TRUE(SaveToolLibrary());
  EXPECT_EQ(Ini().rfind("[ToolLibrary]\r\nCount=0\r\n[Tool0]\r\nNumber=1\r\nName=Only\r\n", 0), 0u);
  LoadToolLibrary();
  EXPECT_EQ(toolLibrary.count, 0);
}

TEST_F(Tools, ComeBackAsTheyWere) {
  std::mt19937 random(64);
  const std::u16string pieces[] = {u"\u00D8", u" ", u"\"", u"=", u"[x]", u";", u"\U0001F529", u"a"};
  const auto number = [&random](int most) { return static_cast<int>(random() % most); };
  const auto words = [&] {
    std::u16string text;
    for (int n = number(12); n > 0; --n) text += pieces[number(8)];
    return text;
  };
  const auto real = [&] { return number(9999999) / 10000.0; };
  for (int i = 0; i < kMaxTools; ++i) {
    ToolRecord tool = Cutter(words().c_str(), number(999) + 1);
    CopyBounded(tool.notes, kToolNotesUnits, words());
    tool.diameter = real();
    tool.feed = real();
    tool.hOffset = number(99) - 9;
    ASSERT_EQ(AppendTool(tool), i);
  }
  EXPECT_EQ(AppendTool(Cutter(u"One more")), -1);
  const ToolLibrary before = toolLibrary;
  ASSERT_TRUE(SaveToolLibrary());
  const std::string file = Ini();
  LoadToolLibrary();
  ASSERT_EQ(toolLibrary.count, kMaxTools);
  // A decimal is read by summing its digits, so its last bits may differ; its text does not.
  ASSERT_TRUE(SaveToolLibrary());
  EXPECT_EQ(Ini(), file);
  for (int i = 0; i < kMaxTools; ++i) {
    EXPECT_EQ(std::u16string(toolLibrary.tools[i].name), before.tools[i].name) << i;
    EXPECT_EQ(std::u16string(toolLibrary.tools[i].notes), before.tools[i].notes) << i;
    EXPECT_EQ(toolLibrary.tools[i].hOffset, before.tools[i].hOffset) << i;
    EXPECT_NEAR(toolLibrary.tools[i].diameter, before.tools[i].diameter, 1e-9) << i;
  }
}

TEST_F(Tools, AreWrittenInOneStep) {
  for (int i = 0; i < kMaxTools; ++i) AppendTool(Cutter(u"Many", i + 1));
  static int flushes;
  static int reads;
  flushes = reads = 0;
  platform::fileFault = [](std::string_view kind) {
    flushes += kind == "flush";
    reads += kind == "read";
    return false;
  };
  EXPECT_TRUE(SaveToolLibrary());
  platform::fileFault = nullptr;
  EXPECT_EQ(flushes, 1);
  EXPECT_LE(reads, 1);
}

TEST_F(Tools, TakeOverWhatAnotherProgramWroteAndNothingElse) {
  PutIni("[ToolLibrary]\r\nCount=1\r\n[Tool0]\r\nName=Mine\r\nDiameter=0.12345\r\n");
  LoadToolLibrary();
  EXPECT_FALSE(FollowToolFile());
  ToolRecord tool = Cutter(u"Third", 3);
  tool.diameter = 1.0 / 3;  // the file holds four decimals of it
  AppendTool(tool);
  SaveToolLibrary();
  EXPECT_FALSE(FollowToolFile()) << "its own save";
  EXPECT_EQ(FindSameTool(tool), 1);
  std::string ini = Ini();
  ini.replace(ini.find("Name=Mine"), 9, "Name=Hers");
  PutIni(ini);
  EXPECT_TRUE(FollowToolFile());
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].name), u"Hers");
  EXPECT_EQ(FindSameTool(tool), 1);
  EXPECT_FALSE(FollowToolFile());
  std::filesystem::remove(folder / "bin" / "MORVA.ini");
  EXPECT_FALSE(FollowToolFile()) << "what is gone is written anew";
  EXPECT_EQ(toolLibrary.count, 2);
}

TEST_F(Tools, OutliveAWriteThatFailsAndAReadingThatFails) {
  PutIni("[ToolLibrary]\r\nCount=1\r\n[Tool0]\r\nName=Mine\r\n");
  platform::fileFault = [](std::string_view kind) { return kind == "read"; };
  LoadToolLibrary();
  platform::fileFault = nullptr;
  ASSERT_EQ(toolLibrary.count, 0);
  EXPECT_TRUE(FollowToolFile()) << "the file can be read now";
  ASSERT_EQ(toolLibrary.count, 1);
  AppendTool(Cutter(u"Kept for this run"));
  platform::fileFault = [](std::string_view kind) { return kind == "write"; };
  EXPECT_FALSE(SaveToolLibrary());
  platform::fileFault = nullptr;
  EXPECT_FALSE(FollowToolFile());
  EXPECT_EQ(toolLibrary.count, 2);
}

TEST_F(Tools, TakeOverWhatAnotherWindowPutsBack) {
  const std::string first = "[ToolLibrary]\r\nCount=1\r\n[Tool0]\r\nName=Mine\r\n";
  PutIni(first);
  LoadToolLibrary();
  ASSERT_EQ(toolLibrary.count, 1);
  RemoveTool(0);
  ASSERT_TRUE(SaveToolLibrary());
  EXPECT_FALSE(FollowToolFile());
  const std::string second = Ini();
  PutIni(first);
  EXPECT_TRUE(FollowToolFile());
  EXPECT_EQ(toolLibrary.count, 1);
  PutIni(second);
  EXPECT_TRUE(FollowToolFile()) << "nor is a state that was its own before";
  EXPECT_EQ(toolLibrary.count, 0);
}

TEST_F(Tools, KnowTheSaveBeforeOneThatFails) {
  static std::vector<std::string> handed;
  handed.clear();
  platform::SetProfileWriter([](std::u16string, std::shared_ptr<const std::string> bytes,
                                std::uint32_t) { handed.push_back(*bytes); });
  LoadToolLibrary();
  AppendTool(Cutter(u"First"));
  EXPECT_TRUE(SaveToolLibrary());
  AppendTool(Cutter(u"Second"));
  EXPECT_TRUE(SaveToolLibrary());
  ASSERT_EQ(handed.size(), 2u);
  PutIni(handed[0]);
  platform::ProfileWritten(1, true);
  platform::ProfileWritten(2, false);
  EXPECT_FALSE(FollowToolFile());
  EXPECT_EQ(toolLibrary.count, 2) << "what was not written stays in this run";
  platform::SetProfileWriter(nullptr);
}

TEST_F(Tools, TellWhenTheSettingsCannotBeWritten) {
  AppendTool(Cutter(u"Only"));
  platform::fileFault = [](std::string_view kind) { return kind == "write"; };
  EXPECT_FALSE(SaveToolLibrary());
  platform::fileFault = nullptr;
}

double RealAt(const std::string& bytes, std::size_t at) {
  double value = 0;
  std::memcpy(&value, bytes.data() + at, sizeof value);
  return value;
}
std::int32_t IntegerAt(const std::string& bytes, std::size_t at) {
  std::int32_t value = 0;
  std::memcpy(&value, bytes.data() + at, sizeof value);
  return value;
}

TEST_F(Tools, HaveAMirrorOf528BytesEach) {
  ReadyDataDirectory();
  AppendTool(Cutter(u"A"));
  ToolRecord tool = Cutter(u"\u00D8B", 300);
  CopyBounded(tool.notes, kToolNotesUnits, u"n");
  tool.notes[5] = u'x';  // behind the text's end
  AppendTool(tool);
  ASSERT_TRUE(SaveToolLibrary());
  const std::string bytes = Raw("data/Tool Library/Library.tools");
  ASSERT_EQ(bytes.size(), 2u * 528);
  const std::string second = bytes.substr(528);
  EXPECT_EQ(IntegerAt(second, 0), 300);
  EXPECT_EQ(second.substr(4, 6), std::string("\xD8\0B\0\0\0", 6));
  EXPECT_EQ(second.substr(132, 12), std::string("D\0r\0i\0l\0l\0\0\0", 12));
  EXPECT_EQ(IntegerAt(second, 196), 0);
  EXPECT_EQ(RealAt(second, 200), 0.375);
  EXPECT_EQ(IntegerAt(second, 208), 2);
  EXPECT_EQ(RealAt(second, 216), 4.25);
  EXPECT_EQ(RealAt(second, 224), 2);
  EXPECT_EQ(IntegerAt(second, 232), 300);
  EXPECT_EQ(IntegerAt(second, 236), 320);
  EXPECT_EQ(IntegerAt(second, 240), 3000);
  EXPECT_EQ(RealAt(second, 248), 8);
  EXPECT_EQ(RealAt(second, 256), 4);
  EXPECT_EQ(IntegerAt(second, 264), 1);
  EXPECT_EQ(second.substr(268, 12), std::string("n\0\0\0\0\0\0\0\0\0\0\0", 12));
  EXPECT_EQ(second.substr(524), std::string(4, '\0'));
}

// A mirror that waited for the disk would double what a save costs.
TEST_F(Tools, AreFlushedInTheSettingsAndNotInTheirFolderNorInTheMirror) {
  ReadyDataDirectory();
  AppendTool(Cutter(u"A"));
  static int files;
  static int folders;
  files = folders = 0;
  platform::fileFault = [](std::string_view kind) {
    files += kind == "flush";
    folders += kind == "flushfolder";
    return false;
  };
  ASSERT_TRUE(SaveToolLibrary());
  platform::fileFault = nullptr;
  EXPECT_EQ(files, 1);
  EXPECT_EQ(folders, 0);
  EXPECT_EQ(Raw("data/Tool Library/Library.tools").size(), 528u);
  EXPECT_EQ(support::NamesIn(folder / "data" / "Tool Library"),
            std::vector<std::string>{"Library.tools"});
}

TEST_F(Tools, HaveNoMirrorWithoutADataDirectory) {
  AppendTool(Cutter(u"A"));
  support::fs::create_directories(folder / "data" / "Tool Library");
  CopyBounded(app.dataDir, kPathUnits, PathOf("data"));
  ASSERT_TRUE(SaveToolLibrary());
  EXPECT_TRUE(support::NamesIn(folder / "data" / "Tool Library").empty());
}

TEST_F(Tools, MayShareANumberAndTheFirstIsMeant) {
  AppendTool(Cutter(u"A", 4));
  AppendTool(Cutter(u"B", 5));
  AppendTool(Cutter(u"C", 5));
  EXPECT_EQ(toolLibrary.count, 3);
  EXPECT_EQ(FindTool(5), 1);
  EXPECT_EQ(FindTool(6), -1);
  EXPECT_FALSE(RemoveTool(3));
  EXPECT_FALSE(RemoveTool(-1));
  EXPECT_TRUE(RemoveTool(0));
  EXPECT_EQ(std::u16string(toolLibrary.tools[0].name), u"B");
  EXPECT_TRUE(SameTool(toolLibrary.tools[1], Cutter(u"C", 5)));
  EXPECT_TRUE(SameTool(toolLibrary.tools[2], ToolRecord()));
  EXPECT_FALSE(ReplaceTool(2, Cutter(u"D")));
  EXPECT_TRUE(ReplaceTool(1, Cutter(u"D")));
  EXPECT_EQ(std::u16string(toolLibrary.tools[1].name), u"D");
}

TEST(ToolTypes, AreFoundInsideATextInTheirOrder) {
  EXPECT_EQ(ToolTypes().size(), 8u);
  EXPECT_EQ(ToolTypeRow(u"Carbide Ball Nose Long"), 4);
  EXPECT_EQ(ToolTypeRow(u"END MILL"), 0);
  EXPECT_EQ(ToolTypeRow(u"tapered drill"), 2) << "the first name that occurs, not the first place";
  EXPECT_EQ(ToolTypeRow(u"custom tap"), 3);
  EXPECT_EQ(ToolTypeRow(u"Burr"), 0);
  EXPECT_EQ(ToolTypeRow(u""), 0);
}

TEST(ToolTypes, GiveTheSimulatorItsCutter) {
  EXPECT_EQ(ShapeOfTool(u"Ball Nose"), ToolShape::Ball);
  EXPECT_EQ(ShapeOfTool(u"spot drill"), ToolShape::Drill);
  EXPECT_EQ(ShapeOfTool(u"Chamfer Mill"), ToolShape::Chamfer);
  EXPECT_EQ(ShapeOfTool(u"Tap"), ToolShape::Flat);
  EXPECT_EQ(ShapeOfTool(u"drill ball"), ToolShape::Ball);
  EXPECT_EQ(ToolTipHeight(ToolShape::Ball, 5, 3), 1);
  EXPECT_EQ(ToolTipHeight(ToolShape::Ball, 5, 5), 5);
  EXPECT_DOUBLE_EQ(ToolTipHeight(ToolShape::Drill, 5, 3), 1.8);
  EXPECT_EQ(ToolTipHeight(ToolShape::Flat, 5, 3), 0);
}

TEST(ToolRow, ShowsNumberNameTypeAndDiameter) {
  ToolRecord tool = Cutter(u"1/2 END MILL", 1);
  CopyBounded(tool.type, kToolTypeUnits, u"End Mill");
  tool.diameter = 0.5;
  EXPECT_EQ(ToolRowText(tool, false), u"T01  1/2 END MILL  \u2022  End Mill  \u00D80.500 in");
  tool.number = 12;
  EXPECT_EQ(ToolRowText(tool, true), u"T12  1/2 END MILL  \u2022  End Mill  \u00D812.700 mm");
  tool.number = 123;
  EXPECT_EQ(ToolRowText(tool, false).substr(0, 6), u"T123  ");
}

std::u16string Block(const ToolRecord& tool, bool metric) {
  CodeWriter out;
  out.most = kToolBlockUnits - 1;
  WriteToolBlock(tool, metric, out);
  EXPECT_FALSE(out.full);
  return out.text;
}

TEST(ToolBlock, ChangesToTheTool) {
  EXPECT_EQ(support::Narrow(Block(Cutter(u"3/8 DRILL", 7), false)),
            "\r\n(TOOL LIBRARY: T7 - 3/8 DRILL)\r\nT7 M06\r\nS3000 M03\r\nG20\r\n"
            "G00 G43 H07 Z0.500\r\nM08\r\n(DIA 0.375  DEFAULT F8.00  PLUNGE F4.00)\r\n");
}

TEST(ToolBlock, IsInTheUsersUnitWithTheToolsCoolant) {
  ToolRecord tool = Cutter(u"X", 123);
  tool.coolant = 2;
  EXPECT_EQ(support::Narrow(Block(tool, true)),
            "\r\n(TOOL LIBRARY: T123 - X)\r\nT123 M06\r\nS3000 M03\r\nG21\r\n"
            "G00 G43 H123 Z12.700\r\nM07\r\n(DIA 9.525  DEFAULT F203.20  PLUNGE F101.60)\r\n");
  for (const std::int32_t none : {0, 3, -1}) {
    tool.coolant = none;
    EXPECT_NE(Block(tool, true).find(u"Z12.700\r\n(DIA"), std::u16string::npos) << none;
  }
}

TEST(ToolBlock, LeavesOutBracketsThatWouldEndItsComment) {
  EXPECT_EQ(support::Narrow(Block(Cutter(u"MILL (LONG)", 1), false)).substr(0, 37),
            "\r\n(TOOL LIBRARY: T1 - MILL LONG)\r\nT1 ");
}

TEST(ToolBlock, HoldsTheLongestTool) {
  ToolRecord tool = Cutter(std::u16string(63, u'w').c_str(), -2147483647);
  tool.maxRpm = tool.hOffset = -2147483647;
  tool.diameter = tool.feed = tool.plunge = 1e300;
  EXPECT_LT(Block(tool, true).size(), 400u);
}

}  // namespace
}  // namespace morva
