// Motion against the stock: what must be quiet, and what makes it so. What must be told stands in
// tests/bad/machine.
#include "simulator/control_stock.h"

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "support/places.h"
#include "support/stage.h"
#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;
namespace fs = std::filesystem;

const char* const kPlate = "(STOCK -4 -3 4 3 0 -0.5)\n";
const char* const kMill = "(TOOL 1 0.5 END MILL)\n";
const char* const kDrill = "(TOOL 2 0.25 DRILL)\n";

std::string Found(const std::string& stockAndTools, const std::string& program,
                  bool metric = false) {
  const KnownStock stock = StockIn(stockAndTools);
  return control_test::Found(RunText(support::Wide(program), {.metric = metric, .stock = &stock}));
}

// A job of one tool over the middle of the stock, at .1.
std::string Job(const std::string& piece, int tool = 1) {
  const std::string number = std::to_string(tool);
  return "G20 G17 G40 G49 G80 G90\nT" + number + " M06\nG54 G00 X0. Y0. S3000 M03\nG43 H" + number +
         " Z.1\n" + piece + "G00 Z1.\nG53 G49 Z0. M05\nM30\n";
}
constexpr int kPieceLine = 5;  // 1-based

TEST(ControlStock, IsQuietWhereNoneIsKnown) {
  const std::string crash = "G00 Z-.4\nX3.\nG01 Z-9. F10.\n";
  EXPECT_EQ(Found(kMill, Job(crash)), "");
  EXPECT_EQ(Found(std::string(kPlate) + kMill, Job(crash)),
            "RapidDown 5, RapidInStock 6, CutBelowStock 7");
}

// The way runs in what was cut before, or comes to its rim.
TEST(ControlStock, IsQuietInAPocketThatWasCleared) {
  const std::string stock = std::string(kPlate) + kMill;
  const std::string pocket =
      "G01 Z-.2 F10.\nX1.\nY.25\nX-1.\nY.65\nX1.\nG00 X0. Y.3\nX-1. Y.65\nX1.\nZ.1\nX-1. Y0.\n"
      "X0.\nZ-.15\nG01 Z-.4\nX1.\nG00 X0.\n";
  EXPECT_EQ(Found(stock, Job(pocket)), "");
  // .03 further in Y the tool meets the wall.
  EXPECT_EQ(Found(stock, Job("G01 Z-.2 F10.\nX1.\nG00 Y.03\n")), "");
  EXPECT_EQ(Found(stock, Job("G01 Z-.2 F10.\nX1.\nG00 Y.06\n")), "RapidInStock 7");
}

TEST(ControlStock, IsQuietInTheStrokesOfCycles) {
  const std::string stock = std::string(kPlate) + kMill + kDrill + "(TOOL 3 .5 BORING BAR)\n";
  EXPECT_EQ(Found(stock, Job("G98 G83 X1. Z-.7 R.1 Q.15 F5.\nX2. Y1.\nG80 Z.1\nG98 G73 X3. Z-.7 "
                             "R.1 Q.1 F5.\nG80\n",
                             2)),
            "");
  EXPECT_EQ(Found(stock, Job("G98 G76 X1. Z-.4 R.1 Q.02 F5.\nX2. Y1.\nG80\n", 3)), "");
  // R of a second hole lies in the first one's pocket.
  EXPECT_EQ(Found(stock, Job("G01 Z-.2 F10.\nX1.\nG00 Z.1\nG99 G81 X.5 Z-.4 R-.19 F5.\nG80\n")),
            "");
}

// A steep way takes more away than the line of its axis says.
TEST(ControlStock, IsQuietBehindRampsAndHelices) {
  const std::string stock = std::string(kPlate) + kMill;
  EXPECT_EQ(Found(stock, Job("G01 X.1 Z-.4 F5.\nG00 Z.1\nZ-.39\n")), "");
  EXPECT_EQ(Found(stock, Job("G01 Z0. F9.\nX.2\nG03 I-.2 Z-.2\nI-.2 Z-.4\nI-.2\nG01 X0.\nG00 Z.1\n"
                             "Z-.35\nX.2\n")),
            "");
}

TEST(ControlStock, IsQuietBesideTheStockAndAboveIt) {
  const std::string stock = std::string(kPlate) + kMill;
  EXPECT_EQ(Found(stock, Job("G00 X5.\nZ-.6\nG41 D9 X4.5\nY3.3\nG40 X4.26 Y3.26\nX-4.26\n")),
            "CompNoDiameter 7");
  EXPECT_EQ(Found(stock, Job("G00 Z-.005\nX3.\n")), "");
  EXPECT_EQ(Found("(ROUND STOCK -2 -2 2 2 0 -.5)\n" + std::string(kMill),
                  Job("G00 X-2. Y-2.\nZ-.4\nX-1.7\n")),
            "");
}

TEST(ControlStock, IsQuietOfAHoleThatMayHaveBeenThere) {
  // The program itself has cut nothing yet.
  const std::string thread = Job("G00 Z-.4\nG01 X.2 F9.\nG03 I-.2 Z-.35\n");
  for (const char* type : {"THREAD MILL", "Boring Bar", "Tap", "Reamer"}) {
    EXPECT_EQ(Found(std::string(kPlate) + "(TOOL 1 .25 " + type + ")\n", thread), "") << type;
  }
  // An end mill in solid stock is worth a look, once, and only below its top.
  const std::string mill = std::string(kPlate) + kMill;
  EXPECT_EQ(Found(mill, thread), "RapidDown 5");
  EXPECT_EQ(Found(mill, Job("G00 Z-.005\n")), "");
  EXPECT_EQ(Found(mill, Job("G00 Z-.015\n")), "RapidDown 5");
  EXPECT_EQ(Found(mill, Job("G00 X5.\nZ-.4\n")), "");
  EXPECT_EQ(Found(mill, Job("G01 Z-.1 F9.\nG00 Z.1\nX1.\nZ-.05\nZ.1\n")), "RapidInStock 8");
  // Taps and reamers in holes of another program.
  for (const char* type : {"TAP", "REAMER"}) {
    EXPECT_EQ(Found(std::string(kPlate) + "(TOOL 1 .25 " + type + ")\n",
                    Job("G99 G85 X1. Z-.4 R.1 F5.\nX2.\nG80\n")),
              "");
  }
}

TEST(ControlStock, IsQuietWhereAToolThatNobodyDescribedMayHaveCut) {
  const std::string stock = std::string(kPlate) + kMill;
  const std::string other = "T9 M06\nG00 X0. Y0. S900 M03\nG43 H09 Z.1\nG01 Z-.4 F5.\nG00 Z.1\n";
  const std::string mill = "T1 M06\nG00 X1.5 Y0. S900 M03\nG43 H01 Z.1\n";
  EXPECT_EQ(Found(stock, other + mill + "G00 Z-.3\nX1.\nM30\n"), "");
  EXPECT_EQ(Found(stock, other + mill + "X3.5\nG00 Z-.3\nM30\n"), "RapidInStock 10");
  EXPECT_EQ(Found(stock, "T9 M06\nG00 X0. Y0. S900 M03\nG43 H09 Z.1\nG00 Z-.3\nM30\n"), "");
  // Straight down it may be anywhere that nobody knows of.
  EXPECT_EQ(Found(stock,
                  "T1 M06\nG00 X0. Y0. S900 M03\nG43 H01 Z.1\nG01 Z-.2 F9.\nG00 Z1.\n"
                  "T9 M06\nG00 X3. Y0. S900 M03\nG43 H09 Z.1\nZ-.3\nM30\n"),
            "");
  const std::string face = "T3 M06\nG00 X.5 Y0. S900 M03\nG43 H03 Z.1\nG01 Z-.2 F9.\nM30\n";
  EXPECT_EQ(Found(stock + "(TOOL 3 2 FACE MILL)\n", other + face), "");
}

TEST(ControlStock, TakesAwayWhatEachToolCuts) {
  const std::string stock = std::string(kPlate) + kMill + "(TOOL 4 2 END MILL)\n";
  const auto with = [](int tool, const std::string& piece) {
    const std::string number = std::to_string(tool);
    return "T" + number + " M06\nG00 X0. Y0. S900 M03\nG43 H" + number + " Z.1\n" + piece +
           "G00 Z1.\n";
  };
  const std::string end = "M30\n";
  // The wide one in its own slot, behind the narrow one.
  EXPECT_EQ(
      Found(stock, with(1, "G01 Z-.1 F9.\nX-1.\n") + with(4, "G01 Z-.2 F9.\nX2.\nG00 X0.\n") + end),
      "");
  // A rapid takes nothing away.
  const std::string crash = "G01 Z-.1 F9.\nG00 X2.\n";
  EXPECT_EQ(Found(stock, with(1, crash) + with(1, crash) + end), "RapidInStock 5, RapidInStock 11");
  // An unknown tool clears its own way below the top, and none above it.
  EXPECT_EQ(Found(stock, with(9, "G01 Z-.1 F9.\nX1.\nG00 X2.\n") + end), "");
  EXPECT_EQ(Found(stock, with(9, "G01 Z.05 F9.\nX2.\n") + with(1, crash) + end), "RapidInStock 11");
}

TEST(ControlStock, IsQuietBehindMotionThatIsNotFollowed) {
  const std::string stock = std::string(kPlate) + kMill;
  const std::string crash = "G01 Z-.2 F9.\nG00 X2.\n";
  EXPECT_EQ(Found(stock, Job(crash)), "RapidInStock 6");
  EXPECT_EQ(Found(stock, Job("G65 P9810 Z-.2\n" + crash)), "NotFollowed 5");
  EXPECT_EQ(Found(stock, Job("M98 P77\n" + crash)), "ProgramMissing 5");
  EXPECT_EQ(Found(stock, Job("G92 X1.\n" + crash)), "");
  EXPECT_EQ(Found(stock, Job("G52 Y1.\n" + crash)), "");
  EXPECT_EQ(Found(stock, Job("G55 X0.\nG01 Z-.1 F9.\nG54 X0.\n" + crash)), "");
  EXPECT_EQ(Found(stock, Job("G52 X2.\nG01 X0. Z-.1 F9.\nG52 X0.\nG00 Z.1\nX0.\n" + crash)), "");
  EXPECT_EQ(Found(stock, Job("G98 G77 X1. Z-.2 R-.6 Q.1 F9.\nG80 Z.1\nX0.\n" + crash)), "");
  // Whose the stock is, nobody knows: what was told is taken back.
  EXPECT_EQ(Found(stock, Job(crash + "Z.1\nG55 X0.\nG01 Z-.1\n")), "");
}

// Places of the machine come first; the offset that the stock lies in is named behind them.
TEST(ControlStock, LiesInTheOffsetBehindPlacesOfTheMachine) {
  ControlTable table;
  double* const place = table.work[kFirstWorkRow + 1];
  place[0] = -10;
  place[1] = -5;
  place[2] = -12;
  const KnownStock stock = StockIn(std::string(kPlate) + kMill);
  const ReadMotionOptions options{.table = &table, .stock = &stock};
  const std::u16string head = u"T1 M06\nG53 G00 X-10. Y-5. Z-11.5\nG55 S900 M03\nG43 H1\n";
  // From .5 above the middle: aslant through the plate, or over it.
  EXPECT_EQ(control_test::Found(RunText(head + u"X5. Y0. Z-.4\nM30\n", options)), "RapidInStock 5");
  EXPECT_EQ(control_test::Found(RunText(head + u"X5. Y0. Z.1\nM30\n", options)), "");
  EXPECT_EQ(control_test::Found(RunText(head + u"Z.1\nZ-.4\nX3.\nM30\n", options)),
            "RapidDown 6, RapidInStock 7");
  // From above the rim aslant to beside the plate, in one stretch.
  const std::u16string rim = u"T1 M06\nG53 G00 X-6.5 Y-5. Z-11.7\nG55 S900 M03\nG43 H1\n";
  EXPECT_EQ(control_test::Found(RunText(rim + u"X4.3 Z-.5\nM30\n", options)), "RapidInStock 5");
}

TEST(ControlStock, LetsAHoleGoBelowTheStock) {
  const std::string stock = std::string(kPlate) + kMill + kDrill;
  EXPECT_EQ(Found(stock, Job("G99 G81 Z-.99 R.1 F5.\nG80\n")), "");
  EXPECT_EQ(Found(stock, Job("G99 G81 Z-1.01 R.1 F5.\nG80\n")), "CutBelowStock 5");
  // The drill's tip besides.
  EXPECT_EQ(Found(stock, Job("G99 G81 Z-1.06 R.1 F5.\nG80\n", 2)), "");
  EXPECT_EQ(Found(stock, Job("G99 G81 Z-1.1 R.1 F5.\nG80\n", 2)), "CutBelowStock 5");
  EXPECT_EQ(Found(stock, Job("G01 Z-.74 F9.\nX1.\n")), "");
  EXPECT_EQ(Found(stock, Job("G01 Z-.76 F9.\nX1.\n")), "CutBelowStock 6");
  // Beside the stock it may be any depth.
  EXPECT_EQ(Found(stock, Job("G00 X4.3\nG01 Z-3. F9.\nY1.\n")), "");
}

TEST(ControlStock, TellsHowMuchTooDeepInTheUnitOfTheProgram) {
  const KnownStock stock = StockIn("(STOCK -100 -75 100 75 0 -12)\n(TOOL 1 12 END MILL)\n");
  const ControlTrack& track =
      RunText(u"G21\nT1 M6\nG0 X0. Y0. S900 M3\nG43 H1 Z5.\nG1 Z-30. F9.\nM30\n",
              {.metric = true, .stock = &stock});
  ASSERT_EQ(control_test::Found(track), "CutBelowStock 5");
  EXPECT_EQ(WordsOf(track.findings.found[0]), u"Line 5: The cut is 18 mm deeper than the stock.");
}

TEST(ControlStock, IsQuietOfADepthThatNobodySaid) {
  KnownStock stock = StockIn(std::string(kPlate) + kMill);
  stock.box.depthSaid = false;
  EXPECT_EQ(control_test::Found(RunText(support::Wide(Job("G01 Z-2. F9.\n")), {.stock = &stock})),
            "");
}

TEST(ControlStock, LetsAFaceMillDownBesideTheStockAndIntoWhatIsOpen) {
  const std::string stock = std::string(kPlate) + kMill + "(TOOL 3 2 Face Mill)\n";
  EXPECT_EQ(Found(stock, Job("G00 X-5.2\nG01 Z-.1 F9.\nX5.2\n", 3)), "");
  EXPECT_EQ(Found(stock, Job("G01 X3. Z-.1 F9.\nX5.2\n", 3)), "");
  EXPECT_EQ(Found(stock,
                  "T1 M06\nG00 X0. Y0. S900 M03\nG43 H01 Z.1\nG01 Z-.2 F9.\nX1.\nG00 Z.1\n"
                  "T3 M06\nG00 X.5 Y0. S900 M03\nG43 H03 Z.1\nG01 Z-.2 F9.\nM30\n"),
            "");
}

TEST(ControlStock, KnowsHowToolsCutByTheirTypes) {
  EXPECT_EQ(CutOfTool(u"Face Mill"), ToolCut::Rim);
  EXPECT_EQ(CutOfTool(u"3 in shell mill"), ToolCut::Rim);
  EXPECT_EQ(CutOfTool(u"Tap"), ToolCut::Hole);
  EXPECT_EQ(CutOfTool(u"Reamer"), ToolCut::Hole);
  EXPECT_EQ(CutOfTool(u"Thread Mill"), ToolCut::Hole);
  EXPECT_EQ(CutOfTool(u"Boring bar"), ToolCut::Hole);
  for (const char16_t* type :
       {u"End Mill", u"Drill", u"Ball Nose", u"Chamfer Mill", u"Custom", u"Tapered End Mill"}) {
    EXPECT_EQ(CutOfTool(type), ToolCut::Centre);
  }
}

// Programs of a shop, as the jobs have them, over stock that they are made for.
TEST(ControlStock, KeepsQuietOnWorkingPrograms) {
  const std::string tools =
      "(TOOL 1 0.5 END MILL)\n(TOOL 2 0.201 DRILL)\n(TOOL 3 0.5 THREAD MILL)\n"
      "(TOOL 4 0.5 SPOT DRILL)\n(TOOL 5 0.266 DRILL)\n";
  const struct {
    const char* name;
    const char* stock;
  } jobs[] = {{"machine_vise_job", "(STOCK 0 0 3 2 0 -.75)\n"},
              {"machine_bolt_pattern", "(ROUND STOCK -2 -2 2 2 0 -.5)\n"},
              {"machine_macro_pocket", "(STOCK -2 -1.5 2 1.5 0 -1)\n"},
              {"machine_thread_mill", "(STOCK 0 0 2 2 0 -1)\n"},
              {"machine_two_offsets", "(STOCK -.5 -.5 2 1.5 0 -.5)\n"}};
  for (const auto& job : jobs) {
    SCOPED_TRACE(job.name);
    const std::string text = support::ReadRaw(fs::path(support::SourceDir()) / "tests/jobs" /
                                              (std::string(job.name) + ".job"));
    const std::size_t from = text.find('%', text.find("@file parts/"));
    const std::size_t to = text.find("@end", from);
    ASSERT_NE(to, text.npos);
    const std::string program = text.substr(from, to - from);
    EXPECT_EQ(Found(job.stock + tools, program), Found("", program));
    EXPECT_GT(RunText(support::Wide(program)).path.count, 9);
  }
}

// What the builders and the guided skim write, over a plate that is large enough.
TEST(ControlStock, KeepsQuietOnWhatIsWrittenHere) {
  int programs = 0;
  for (const char* folder : {"plates", "builders", "skim"}) {
    const fs::path golden = fs::path(support::SourceDir()) / "tests/golden" / folder;
    for (const auto& entry : fs::recursive_directory_iterator(golden)) {
      if (!entry.is_regular_file() || entry.path().filename() == "fields.txt") continue;
      const std::string program = support::ReadRaw(entry.path());
      const bool metric = program.find("G21") != program.npos;
      KnownStock stock = StockIn(metric ? "(STOCK -102 -77 102 77 0 -13)" : kPlate);
      while (stock.toolCount < 30) {
        stock.tools[stock.toolCount] = {stock.toolCount, ToolShape::Flat, metric ? 6.35 : .25,
                                        ToolCut::Centre};
        ++stock.toolCount;
      }
      SCOPED_TRACE(entry.path().string());
      ++programs;
      const std::u16string text = support::Wide(program);
      const std::string without = control_test::Found(RunText(text, {.metric = metric}));
      EXPECT_EQ(control_test::Found(RunText(text, {.metric = metric, .stock = &stock})), without);
    }
  }
  EXPECT_GE(programs, 30);
}

// A pocket cleared by rows, and rapids from one to the other of its places: of the tool that cut it
// none meets anything, of a wider one those at the rim do.
TEST(ControlStock, KnowsWhatRandomRowsHaveCleared) {
  int told = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 dice(seed);
    const auto between = [&dice](double least, double most) {
      return least + (most - least) * static_cast<double>(dice() % 1000) / 1000;
    };
    const double width = between(.5, 3);
    const double height = between(.5, 2);
    const double depth = between(.05, .45);
    char line[120];
    std::string rows;
    const auto add = [&](const char* form, double a, double b) {
      std::snprintf(line, sizeof line, form, a, b);
      rows += line;
    };
    add("G00 X%.4f Y%.4f\n", -width, -height);
    add("G01 Z-%.4f F%.1f\n", depth, 9);
    for (double y = -height; y < height + .4; y += .4) {
      add("X%.4f Y%.4f\n", -width, std::min(y, height));
      add("X%.4f Y%.4f\n", width, std::min(y, height));
    }
    std::string rapids = "G00\n";
    for (int i = 0; i < 8; ++i) {
      // Between the rows the wall is scalloped.
      add("X%.4f Y%.4f\n", between(.15 - width, width - .15), between(-height, height));
      rapids += line;
      rows.resize(rows.size() - std::string(line).size());
    }
    EXPECT_EQ(Found(std::string(kPlate) + kMill, Job(rows + rapids)), "");
    add("G00 X%.4f Y%.4f\n", width + .1, height);
    told += Found(std::string(kPlate) + kMill, Job(rows)) != "";
  }
  EXPECT_EQ(told, 40);
}

TEST(ControlStock, TakesWaysThatLeadFarAway) {
  const std::string stock = std::string(kPlate) + kMill;
  const std::string job = "T9 M06\nG00 X-99999. Y0. S900 M03\nG43 H09 Z-.1\n";
  EXPECT_EQ(Found(stock, job + "X99999.\nM30\n"), "RapidBelowTop 4");
  EXPECT_EQ(Found(stock, job + "X9999999999999.\nM30\n"), "");
  EXPECT_EQ(Found(stock, Job("G00 X-99999.\nZ-.1\nX99999.\n")), "RapidInStock 7");
}

// What is drawn no more can still crash.
TEST(ControlStock, LooksBehindAPathThatIsFull) {
  const std::string moves =
      "#1=0\nWHILE [#1 LT 66000] DO1\nG01 X-5.01 F99.\nX-5.\nX-5.01\nX-5.\n#1=#1+1\nEND1\n";
  const std::string stock = std::string(kPlate) + kMill;
  EXPECT_EQ(Found(stock, Job("G00 X-5.\n" + moves + "X3. Z.1\n")), "PathFull 9");
  EXPECT_EQ(Found(stock, Job("G00 X-5.\n" + moves + "G00 X-5. Z-.4\nX0.\n")),
            "PathFull 9, RapidInStock 15");
}

// The bound of what is looked at ends the check and nothing else.
TEST(ControlStock, EndsItsLooksInAProgramWithoutEnd) {
  std::string rows =
      "#1=0\nG01 Z-.1 F99.\nWHILE [#1 LT 9000] DO1\nX3. Y2.\nX-3. Y2.\nX-3. Y-2.\n"
      "X3. Y-2.\n#1=#1+1\nEND1\n";
  const std::string stock = std::string(kPlate) + "(TOOL 1 3 END MILL)\n";
  EXPECT_EQ(Found(stock, Job(rows + "G00 X0. Y0.\n")), "");
  EXPECT_EQ(Found(stock, Job("G01 Z-.1 F99.\nG00 X0. Y2.\n")), "RapidInStock 6");
}

}  // namespace
