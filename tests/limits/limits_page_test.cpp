// The page of limits for users tells the numbers that the program has, and no others.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <string>

#include "app/limits.h"
#include "support/places.h"

namespace morva {
namespace {

constexpr int kMiB = 1048576;

// By the first column of the page; a text has room for its terminator where the type says units.
const std::map<std::string, int> kNumbers = {
    {"programs open at a time", kMaxTabs},
    {"size of a file", kMaxReadBytes / kMiB},
    {"features of a program", kMaxFeatures},
    {"characters of a feature's name that you type", kGivenNameUnits},
    {"excluded stretches of code", kMaxDisabledEntries},
    {"characters of a stretch of code that is excluded", kMaxDisabledUnits},
    {"copies of one program in `MORVA/Recovery` that its opening names", kMaxKeptCopies},
    {"programs that COMPARE looks through", kMaxCompareLines},
    {"rules of a replacement", kMaxRules},
    {"what the rules may write", kMaxRuleOutput},
    {"characters of a text to find", kFindUnits - 1},
    {"size of a program with colours", kMaxColouredUnits},
    {"characters of a line that bear colours", kMaxColouredLine},
    {"points of the path", kMaxMotionPoints},
    {"points of the machine's motion", kMaxControlPoints},
    {"stretches of a program with one tool that have a time", kMaxOperations},
    {"findings of the machine check", kMaxFindings},
    {"drawings of a program", kMaxDrawings},
    {"objects of a drawing", kMaxItems},
    {"steps of undo in a drawing", kMaxSketchUndo},
    {"saved shapes", kMaxShapes},
    {"objects of a saved shape", kMaxShapeObjects},
    {"sides of a polygon", kMaxPolygonSides},
    {"copies of a revolve", kMaxRevolveCopies},
    {"plates of a program", kMaxPlates},
    {"columns, and rows, of a plate", kMaxPlateLines},
    {"features on a plate's circle", kMaxPlateCircle},
    {"tools of the library", kMaxTools},
    {"flutes of a tool", kMaxFlutes},
    {"macros of your own", kMaxMacros},
    {"characters of such a macro", kMaxMacroCode},
    {"holes of a row of the machining wizard", kMaxWizardHoles},
    {"items of a circular pattern", kMaxCircularItems},
    {"items of a grid", kMaxGridItems},
    {"passes in depth of a guided skim", kMaxSkimPasses},
    {"rows of one pass", kMaxSkimRasterRows},
    {"rows of all passes together", kMaxSkimRows},
    {"lines of a drawn centerline", kMaxSkimSegments},
    {"size of a received program", kMaxReceivedBytes / kMiB},
    {"characters of a port's name", kPortNameUnits - 1},
};

// The first number of a column, with its commas passed over; -1 where there is none.
int FirstNumber(const std::string& column) {
  std::string digits;
  for (const char c : column) {
    if (std::isdigit(static_cast<unsigned char>(c))) {
      digits += c;
    } else if (!digits.empty() && c != ',') {
      break;
    }
  }
  return digits.empty() ? -1 : std::stoi(digits);
}

// What the rows of the page say: the first column with the number of the second.
std::map<std::string, int> RowsOfThePage() {
  std::map<std::string, int> rows;
  std::ifstream page(std::string(support::SourceDir()) + "/docs/limits.md");
  for (std::string line; std::getline(page, line);) {
    if (!line.starts_with("| ") || line.starts_with("| What ")) continue;
    const std::size_t middle = line.find(" | ");
    const std::size_t end = line.find(" | ", middle + 3);
    if (end == std::string::npos) continue;
    rows[line.substr(2, middle - 2)] = FirstNumber(line.substr(middle + 3, end - middle - 3));
  }
  return rows;
}

TEST(PageOfLimits, TellsTheNumbersOfTheProgram) {
  const std::map<std::string, int> rows = RowsOfThePage();
  for (const auto& [what, number] : rows) {
    const auto known = kNumbers.find(what);
    if (known == kNumbers.end()) {
      ADD_FAILURE() << what << " is compared with nothing";
    } else {
      EXPECT_EQ(number, known->second) << what;
    }
  }
  for (const auto& [what, number] : kNumbers) EXPECT_TRUE(rows.contains(what)) << what;
}

TEST(PageOfLimits, IsReadAsItIsWritten) {
  EXPECT_EQ(FirstNumber("32,768 lines"), 32768);
  EXPECT_EQ(FirstNumber("2 MiB"), 2);
  EXPECT_EQ(FirstNumber("many"), -1);
}

}  // namespace
}  // namespace morva
