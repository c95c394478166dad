// Law: a bound of a table or of a count stands where all bounds stand.
//
// The rule is in the names. kMax... bounds a count and stands in app/limits.h, or for the
// platforms, which lie below it, in platform/limits.h. A name with Most bounds a measure and may
// stay with its file, so it is never the size of an array and never compared with a count.

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>
#include <vector>

#include "house/sources.h"

namespace {

using namespace house;

bool DefinesAMax(const std::string& code) {
  static const std::regex pattern(R"(\bconstexpr\b[^={]*\bkMax[A-Z]\w*\s*[={(])");
  static const std::regex other(
      R"(\b(enum\b[^;]*[{,]|static const \w+|#\s*define)\s*kMax[A-Z]\w*)");
  return std::regex_search(code, pattern) || std::regex_search(code, other);
}

// Sizes that bound nothing that fills up: as many as there are of something.
const std::set<std::string> kOneForEach = {
    "kAscii",           // characters
    "kBitWords",        // of what the limits let in
    "kBoth",            // sides of the review
    "kCodeItems",       // rows of the code table
    "kCodes",           // G codes of the control
    "kCommons",         // global variables
    "kCompanionCount",  // drawings, plates, excluded code
    "kCoverageCells",   // along a side of a grid
    "kDiamondLines",    // four
    "kEntries",         // words of the code table
    "kFeatureKinds",    // of blocks
    "kFindings",        // kinds of findings
    "kFlyoutMethods",   // of one tool
    "kGNumbers",        // G codes of two digits
    "kHighestM",        // M codes
    "kLeadArrows",      // of one dimension
    "kLeadLines",       // of one dimension
    "kLocals",          // local variables of a call
    "kMacroFields",     // of a built-in macro
    "kOutlinePoints",   // of one outline
    "kRuns",            // of one outline
    "kSettingsBytes",   // of one record
    "kSlotSteps",       // of one slot
    "kFontRoles",       // of the toolkit's fonts
    "kHashSlots",       // twice what the limits let in
    "kPathNotes",       // kinds of lines that are not shown
    "kPatternPanels",   // circular and rectangular
    "kPlateValues",     // numbers of a plate
    "kSides",           // of a rectangle
    "kSkimFields",      // of the skim's form
    "kToolNumbers",     // lengths and diameters of the control
    "kWorkRows",        // work offsets of the control
    "kWorkers",         // kinds of threads
};

// What the size of an array is: a limit, the units of a text, or one for each of something.
bool IsASize(const std::string& size) {
  static const std::regex kLimit(R"(\bk(Max[A-Z]\w*|\w*Units)\b)");
  if (std::regex_search(size, kLimit)) return true;
  static const std::regex kName(R"(\bk[A-Z]\w*\b)");
  std::smatch match;
  return std::regex_search(size, match, kName) && kOneForEach.count(match.str()) > 0;
}

// Arrays of the code that can fill up, as "name[size]": those that last and are not const, the
// records among the members, and texts.
std::vector<std::string> ArraysWithoutALimit(const std::string& code) {
  static const std::regex kText(R"(\b(const )?char16_t\s+(\(&)?(\w+)\)?\s*\[\s*(\d+)\s*\])");
  static const std::regex kArray(R"((\w+)\s*\[([^\]]+)\])");
  static const std::regex kStatic(R"(\bstatic\s+(?!const)[^;(={]*\[[^;]*)");
  static const std::regex kRecord(R"(^(\w+\s+)*([A-Z]\w*|[\w:]+::[A-Z]\w*)(<.*>)?\s+\w+\s*\[)");
  std::vector<std::string> found;
  const auto look = [&](const std::string& declaration) {
    const std::string head = declaration.substr(0, declaration.find_first_of("={"));
    for (std::sregex_iterator it(head.begin(), head.end(), kArray), end; it != end; ++it) {
      if (!IsASize((*it)[2])) found.push_back((*it).str());
    }
  };
  for (std::sregex_iterator it(code.begin(), code.end(), kText), end; it != end; ++it) {
    if ((*it)[1].length() == 0) found.push_back((*it)[3].str() + "[" + (*it)[4].str() + "]");
  }
  for (std::sregex_iterator it(code.begin(), code.end(), kStatic), end; it != end; ++it) {
    look(it->str());
  }
  std::string scopes = "n";  // namespace, record, or anything else
  std::string statement;
  for (const char c : code) {
    if (c == '{') {
      const bool function = statement.find('(') != std::string::npos;
      const bool names = statement.find("namespace") != std::string::npos;
      static const std::regex kRecordScope(R"(\b(struct|class|union)\b)");
      const bool record = !function && std::regex_search(statement, kRecordScope);
      scopes += names ? 'n' : record ? 'r' : 'x';
      if (names || record) statement.clear();
      continue;
    }
    if (c == '}') {
      if (scopes.size() > 1) {
        if (scopes.back() == 'x' && statement.find('(') == std::string::npos) {
          // An initialiser: the declaration goes on.
        } else {
          statement.clear();
        }
        scopes.pop_back();
      }
      continue;
    }
    if (scopes.back() == 'x') continue;
    if (c != ';') {
      statement += c == '\n' ? ' ' : c;
      continue;
    }
    statement.erase(0, statement.find_first_not_of(' '));
    static const std::regex kConst(R"(\b(constexpr|const|using|typedef|extern)\b)");
    const bool open = !std::regex_search(statement, kConst) &&
                      statement.substr(0, statement.find('=')).find('(') == std::string::npos;
    if (open && statement.rfind("static", 0) != 0 &&
        (scopes.back() == 'n' || std::regex_search(statement, kRecord))) {
      look(statement);
    }
    statement.clear();
  }
  return found;
}

bool BoundsACountByMost(const std::string& code) {
  static const std::regex size(R"(\[[^\]]*\bk[A-Za-z]*Most(?![a-z])\w*[^\]]*\])");
  static const std::regex most(R"(\bk([A-Z][a-z]+)*Most(?![a-z])\w*)");
  static const std::regex width(R"(\bkTabMost\b)");  // pixels of a tab
  static const std::regex count(R"(\w*[cC]ount\b|\bsize\(\))");
  if (std::regex_search(code, size)) return true;
  return std::regex_search(code, most) && std::regex_search(code, count) &&
         !std::regex_search(code, width);
}

TEST(LimitsLaw, TellsABoundOfACountFromTheMostOfAMeasure) {
  EXPECT_TRUE(DefinesAMax("inline constexpr int kMaxTabs = 8;"));
  EXPECT_TRUE(DefinesAMax("  static constexpr std::size_t kMaxRows = 8;"));
  EXPECT_TRUE(DefinesAMax("constexpr int kMaxRows{8};"));
  EXPECT_TRUE(DefinesAMax("constexpr int kMaxRows(8);"));
  EXPECT_TRUE(DefinesAMax("enum { kMaxRows = 8 };"));
  EXPECT_FALSE(DefinesAMax("constexpr int kRows{2 * kMaxTabs};"));
  EXPECT_FALSE(DefinesAMax("constexpr double kMostZoom = 50;"));
  EXPECT_FALSE(DefinesAMax("constexpr int kRows = 2 * kMaxTabs;"));
  EXPECT_TRUE(BoundsACountByMost("  int rows[kMostRows];"));
  EXPECT_TRUE(BoundsACountByMost("  int rows[2 * kMostRows + 1];"));
  EXPECT_TRUE(BoundsACountByMost("  int rows[kRowsMost];"));
  EXPECT_TRUE(BoundsACountByMost("  if (rowCount < kMostRows) return;"));
  EXPECT_TRUE(BoundsACountByMost("  if (wanted.size() > kStatusMost) return;"));
  EXPECT_TRUE(BoundsACountByMost("  while (list.count != kMostRows) {"));
  EXPECT_TRUE(BoundsACountByMost("  if (found.size() > kMost) return;"));
  EXPECT_FALSE(BoundsACountByMost("  zoom = std::min(zoom, kMostZoom);"));
  EXPECT_FALSE(BoundsACountByMost("  if (countdown < kMostSeconds) return;"));
}

TEST(LimitsLaw, TellsATableWithoutALimit) {
  const auto count = [](const char* code) { return ArraysWithoutALimit(code).size(); };
  EXPECT_EQ(count("namespace morva {\nRow rows[24];\n}"), 1u);
  EXPECT_EQ(count("Row rows[24] = {{1, 2}, {3, 4}};"), 1u);
  EXPECT_EQ(count("Row rows[kRows];"), 1u);
  EXPECT_EQ(count("int counts[3], more[4];"), 2u);
  EXPECT_EQ(count("void F() {\n  static Row rows[24];\n}"), 1u);
  EXPECT_EQ(count("struct Table {\n  int count = 0;\n  Row rows[24];\n};"), 1u);
  EXPECT_EQ(count("struct Table {\n  Row rows[24] = {};\n};"), 1u);
  EXPECT_EQ(count("void F() {\n  char16_t text[64];\n}"), 1u);
  EXPECT_EQ(count("bool F(char16_t (&text)[200]);"), 1u);
  EXPECT_EQ(count("namespace {\nRow rows[kMaxRows];\nRow both[2 * kMaxRows + 1];\n}"), 0u);
  EXPECT_EQ(count("SettingsWriter writers[kFeatureKinds];"), 0u);
  EXPECT_EQ(count("constexpr Row kRows[] = {{1}, {2}};\nconst Row kMore[2] = {};"), 0u);
  EXPECT_EQ(count("void F() {\n  Row corners[8];\n  char16_t text[kTextUnits];\n}"), 0u);
  EXPECT_EQ(count("struct Point {\n  double x[3] = {};\n};"), 0u);
  EXPECT_EQ(count("extern Row rows[kMaxRows];\nint At(const Row* rows, int i);"), 0u);
}

TEST(LimitsLaw, EveryTableThatFillsUpHasALimit) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    for (const std::string& array : ArraysWithoutALimit(CodeOf(ReadText(path)))) {
      ADD_FAILURE() << NameInSource(path) << ": " << array;
    }
  }
}

TEST(LimitsLaw, EveryMaxStandsAmongTheLimits) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    const std::string name = NameInSource(path);
    if (name == "app/limits.h" || name == "platform/limits.h") continue;
    for (const std::string& line : Lines(CodeOf(ReadText(path)))) {
      EXPECT_FALSE(DefinesAMax(line)) << name << ": " << line;
    }
  }
}

TEST(LimitsLaw, NoMostBoundsATableOrACount) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    for (const std::string& line : Lines(CodeOf(ReadText(path)))) {
      EXPECT_FALSE(BoundsACountByMost(line)) << NameInSource(path) << ": " << line;
    }
  }
}

// A row that is added only while there is room, or that is left out where there is none.
bool DropsSilently(const std::string& code) {
  static const std::regex kWhileRoom(
      R"(\bif\s*\([^;{}]*<\s*[^;{}()]*(kMax\w+|\bcapacity\b)[^;{}]*\)\s*\{?\s*)"
      R"([^;{}]*\[[^\]]*\+\+\s*\])");
  static const std::regex kNoRoom(
      R"(\bif\s*\([^;{}]*>=?\s*[^;{}()]*(kMax\w+|\bcapacity\b)\s*\)\s*\{?\s*return\s*;)");
  return std::regex_search(code, kWhileRoom) || std::regex_search(code, kNoRoom);
}

TEST(LimitsLaw, TellsARowThatIsDroppedInSilence) {
  EXPECT_TRUE(DropsSilently("if (count < kMaxRows) rows[count++] = row;"));
  EXPECT_TRUE(DropsSilently("if (t.count < 2 * kMaxRows) {\n  t.rows[t.count++] = row;\n}"));
  EXPECT_TRUE(DropsSilently("if (count >= kMaxRows) return;\nrows[count++] = row;"));
  EXPECT_TRUE(DropsSilently("if (id != 0 && count < capacity) ids[count++] = id;"));
  EXPECT_TRUE(DropsSilently("if (count == 0 || count >= capacity) return;"));
  EXPECT_FALSE(DropsSilently("if (count >= kMaxRows) return false;"));
  EXPECT_FALSE(DropsSilently("if (count >= kMaxRows) StopFull(u, kMaxRows);"));
  EXPECT_FALSE(DropsSilently("while (count < kMaxRows) rows[count++] = row;"));
}

// What is left out there is told in app/limits.h, beside the limit.
TEST(LimitsLaw, DropsNoRowInSilence) {
  const std::set<std::string> told = {
      "cad/geometry/trim_cuts.cpp",  // further places do not cut
      "cad/model/tool_state.cpp",    // further lines of a preview are not shown
      "codetools/find_marks.cpp",    // further hits are not marked
      "library/code_index.cpp",      // its table is smaller than what callers hold
      "text/codetext.cpp",           // texts are cut
  };
  std::set<std::string> found;
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    const std::string name = NameInSource(path);
    if (!DropsSilently(CodeOf(ReadText(path)))) continue;
    found.insert(name);
    EXPECT_TRUE(told.count(name)) << name;
  }
  EXPECT_EQ(found, told);
}

// tests/limits says the same of app/limits.h.
TEST(LimitsLaw, EveryLimitOfThePlatformsHasATest) {
  std::string tests;
  for (const fs::path& path : SourcesBelow(kSource / "tests")) {
    if (Below(path, "tests/house")) continue;
    tests += ReadText(path);
  }
  static const std::regex name(R"(\bkMax[A-Z]\w*)");
  int found = 0;
  for (const std::string& line : Lines(CodeOf(ReadText(kSource / "src/platform/limits.h")))) {
    std::smatch match;
    if (!std::regex_search(line, match, name)) continue;
    ++found;
    EXPECT_NE(tests.find("platform::" + match.str()), std::string::npos) << match.str();
  }
  EXPECT_GE(found, 5);
}

}  // namespace
