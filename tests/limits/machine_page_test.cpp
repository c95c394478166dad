// The page of the machine's motion names the codes, variables, settings, findings and bounds that
// the program has, and no others.

#include <cctype>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "app/limits.h"
#include "simulator/control_codes.h"
#include "simulator/control_settings.h"
#include "support/places.h"
#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;

std::string Narrow(const char16_t* text) {
  std::string narrow;
  for (; *text; ++text) narrow += static_cast<char>(*text);
  return narrow;
}

const std::vector<std::string>& Lines() {
  static const std::vector<std::string> lines = [] {
    std::vector<std::string> read;
    std::ifstream page(std::string(support::SourceDir()) + "/docs/machine-motion.md");
    for (std::string line; std::getline(page, line);) read.push_back(line);
    return read;
  }();
  return lines;
}

// The lines below a heading, up to the next one.
std::vector<std::string> Section(const std::string& heading) {
  std::vector<std::string> found;
  bool inside = false;
  for (const std::string& line : Lines()) {
    if (line.rfind("## ", 0) == 0) inside = line == "## " + heading;
    if (inside) found.push_back(line);
  }
  EXPECT_FALSE(found.empty()) << heading;
  return found;
}

using Columns = std::vector<std::string>;

// The columns of a row of a table, empty for another line and for what is below the head.
Columns ColumnsOf(const std::string& line) {
  Columns columns;
  if (line.rfind("| ", 0) != 0) return columns;
  std::size_t at = 1;
  for (std::size_t end; (end = line.find('|', at)) != line.npos; at = end + 1) {
    std::string column = line.substr(at, end - at);
    column.erase(0, column.find_first_not_of(' '));
    column.erase(column.find_last_not_of(' ') + 1);
    columns.push_back(column);
  }
  return columns;
}

std::vector<Columns> Rows(const std::vector<std::string>& lines) {
  std::vector<Columns> rows;
  for (const std::string& line : lines) {
    Columns columns = ColumnsOf(line);
    if (!columns.empty()) rows.push_back(columns);
  }
  return rows;
}

// The numbers of "`G54` to `G59`, `G154`", for letter G; from the table's left column or a list.
std::set<int> NumbersIn(const std::string& text, const std::string& letter) {
  static const std::map<std::string, std::regex> kForms = [] {
    std::map<std::string, std::regex> forms;
    for (const std::string& of : {std::string("G"), std::string("M"), std::string("#")}) {
      forms[of] = std::regex("`" + of + "(\\d+)`(?:\\s+to\\s+`" + of + "(\\d+)`)?");
    }
    return forms;
  }();
  std::set<int> numbers;
  const std::regex& form = kForms.at(letter);
  for (auto it = std::sregex_iterator(text.begin(), text.end(), form); it != std::sregex_iterator();
       ++it) {
    const int first = std::stoi((*it)[1]);
    const int last = (*it)[2].matched ? std::stoi((*it)[2]) : first;
    for (int number = first; number <= last; ++number) numbers.insert(number);
  }
  return numbers;
}

// The text from a line that begins so, up to the next empty one.
std::string Paragraph(const std::vector<std::string>& lines, const std::string& begin) {
  std::string text;
  bool inside = false;
  for (const std::string& line : lines) {
    inside = (inside && !line.empty()) || line.rfind(begin, 0) == 0;
    if (inside) text += line + " ";
  }
  EXPECT_FALSE(text.empty()) << begin;
  return text;
}

std::set<int> LeftColumn(const std::vector<std::string>& lines, const std::string& letter) {
  std::set<int> numbers;
  for (const Columns& row : Rows(lines)) numbers.merge(NumbersIn(row[0], letter));
  return numbers;
}

TEST(PageOfTheMachine, IsReadAsItIsWritten) {
  EXPECT_EQ(NumbersIn("`G54` to `G56`, `G9` and G80", "G"), (std::set<int>{9, 54, 55, 56}));
  EXPECT_EQ(ColumnsOf("| a | b c | |"), (Columns{"a", "b c", ""}));
  EXPECT_TRUE(ColumnsOf("|---|---|").empty());
}

TEST(PageOfTheMachine, NamesEachGCodeByWhatIsDoneWithIt) {
  std::set<int> followed, passed, lathe;
  for (int code = 0; code < 1000; ++code) {
    switch (CodeOf(code * 10).action) {
      case CodeAction::Unknown:
        break;
      case CodeAction::NotFollowed:
        passed.insert(code);
        break;
      case CodeAction::Lathe:
        lathe.insert(code);
        break;
      default:
        followed.insert(code);
    }
  }
  const auto section = Section("G codes");
  EXPECT_EQ(LeftColumn(section, "G"), followed);
  EXPECT_EQ(NumbersIn(Paragraph(section, "Accepted"), "G"), passed);
  EXPECT_EQ(NumbersIn(Paragraph(section, "Of turning"), "G"), lathe);
}

TEST(PageOfTheMachine, TellsTheGroupOfEachGCode) {
  for (const Columns& row : Rows(Section("G codes"))) {
    if (row[0] == "Code") continue;
    for (const int code : NumbersIn(row[0], "G")) {
      EXPECT_EQ(std::stoi(row[1]), CodeOf(code * 10).group) << row[0];
    }
  }
}

TEST(PageOfTheMachine, NamesEachMCode) {
  const auto section = Section("M codes");
  std::set<int> named = LeftColumn(section, "M");
  named.merge(NumbersIn(Paragraph(section, "Known"), "M"));
  std::set<int> known;
  for (int code = 0; code < 1000; ++code) {
    if (IsKnownM(code)) known.insert(code);
  }
  EXPECT_EQ(named, known);
}

TEST(PageOfTheMachine, NamesEachFindingWithItsStrength) {
  const char* const kStrengths[] = {"Alarm", "Hit", "Look", "Unknown"};
  std::map<std::string, std::string> named;
  for (const Columns& row : Rows(Section("Findings"))) {
    if (row[0] == "Name") continue;
    ASSERT_GE(row.size(), 3u) << row[0];
    named[row[0]] = row[1];
    EXPECT_FALSE(row[2].empty()) << row[0];
  }
  std::map<std::string, std::string> known;
  for (int i = 0; i < kFindings; ++i) {
    const auto kind = static_cast<Finding>(i);
    known["`" + Narrow(NameOf(kind)) + "`"] = kStrengths[static_cast<int>(StrengthOf(kind))];
  }
  EXPECT_EQ(named, known);
}

TEST(PageOfTheMachine, NamesEachSettingWithDefaultAndRange) {
  std::map<std::string, std::vector<double>> named;
  for (const Columns& row : Rows(Section("Settings"))) {
    if (row.size() != 6 || row[0].rfind("Key", 0) == 0) continue;
    named[row[0]] = {std::stod(row[2]), std::stod(row[3]), std::stod(row[4])};
  }
  // Of the view, whose settings stand in the same section.
  std::map<std::string, std::vector<double>> known = {{"`MachineMotion`", {0, 0, 1}},
                                                      {"`PlayByTime`", {0, 0, 1}}};
  for (const ControlKey& key : ControlKeys()) {
    known["`" + Narrow(key.key) + "`"] = {key.fallback, key.least, key.most};
  }
  EXPECT_EQ(named, known);
}

// What the run of a text says of its variable, in the words of the page.
std::string AnswerOf(const std::string& text) {
  const std::u16string wide(text.begin(), text.end());
  const std::string found = Found(RunText(wide));
  if (found.find("BadVariable") != std::string::npos) return "no";
  return found.find("NotFollowed") != std::string::npos ? "not followed" : "yes";
}

TEST(PageOfTheMachine, NamesEachVariableAndWhetherItCanBeReadAndWritten) {
  std::map<int, std::string> reading, writing;
  for (const Columns& row : Rows(Section("Macros"))) {
    if (row.size() != 4 || row[0] == "Variable") continue;
    std::set<int> numbers = NumbersIn(row[0], "#");
    // "and on in steps of 20 to": every row between is meant.
    for (const int axis : {7001, 7004}) {
      if (!numbers.contains(axis)) continue;
      for (int first = axis; first <= axis + 380; first += 20) {
        for (int i = 0; i < 3; ++i) numbers.insert(first + i);
      }
    }
    for (const int number : numbers) {
      EXPECT_FALSE(reading.contains(number)) << "two rows of #" << number;
      reading[number] = row[1];
      writing[number] = row[2];
    }
  }
  for (int number = 0; number < 8000; ++number) {
    const std::string of = "#" + std::to_string(number);
    const bool told = reading.contains(number);
    EXPECT_EQ(AnswerOf("#100=" + of), told ? reading[number] : "no") << "reading " << of;
    EXPECT_EQ(AnswerOf(of + "=1"), told ? writing[number] : "no") << "writing " << of;
  }
}

TEST(PageOfTheMachine, NamesTheFunctionsAndOperators) {
  std::string named;
  for (const Columns& row : Rows(Section("Macros"))) {
    if (row.size() == 2) named += row[0] + " ";
  }
  for (const char* name :
       {"SIN", "COS", "TAN", "ASIN", "ACOS", "ATAN", "SQRT", "ABS", "ROUND", "FIX",
        "MOD", "AND", "OR",  "XOR",  "EQ",   "NE",   "GT",   "LT",  "GE",    "LE"}) {
    EXPECT_NE(named.find("`" + std::string(name) + "`"), named.npos) << name;
  }
}

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

TEST(PageOfTheMachine, TellsTheBoundsOfTheProgram) {
  const std::map<std::string, int> kBounds = {
      {"points of the path", kMaxControlPoints},
      {"points of the lines as written beside compensation", kMaxControlPoints},
      {"operations", kMaxOperations},
      {"G codes of a block", kMaxBlockCodes},
      {"M codes of a block", kMaxBlockMs},
      {"calls within calls", kMaxCalls},
      {"loops within loops", kMaxLoops},
      {"programs that are looked for beside the text", kMaxProgramsSought},
      {"moves along Z alone at a compensated corner", kMaxHeldMoves},
      {"points of an outline of G150", kMaxGroundPoints},
      {"rows at a depth of G150", kMaxGroundRows},
      {"strokes at a depth of G150", kMaxGroundStrokes},
      {"characters that DPRNT writes", kMaxPrintedUnits},
      {"findings", kMaxFindings},
  };
  std::map<std::string, int> named;
  for (const Columns& row : Rows(Section("Bounds"))) named[row[0]] = FirstNumber(row[1]);
  for (const auto& [what, bound] : kBounds) {
    ASSERT_TRUE(named.contains(what)) << what;
    EXPECT_EQ(named[what], bound) << what;
  }
}

}  // namespace
