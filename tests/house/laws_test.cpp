// The laws of the house, tested on the sources and on the built archives.

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "house/sources.h"

namespace {

using namespace house;

bool IsToolkitHeader(const std::string& name) {
  const std::size_t slash = name.find_last_of('/');
  const std::string bare = slash == std::string::npos ? name : name.substr(slash + 1);
  if (name.rfind("Qt", 0) == 0) return true;
  return bare.size() > 1 && bare[0] == 'Q' && bare[1] >= 'A' && bare[1] <= 'Z';
}

TEST(House, KnowsItsOwnSources) { EXPECT_GT(SourcesBelow(kSource / "src").size(), 40u); }

TEST(House, IncludesTheToolkitNowhereButInItsRoom) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (Below(path, "src/platform/qt")) continue;
    for (const std::string& line : Lines(ReadText(path))) {
      EXPECT_FALSE(IsToolkitHeader(Included(line))) << path << ": " << line;
    }
  }
}

TEST(House, TellsAToolkitHeaderFromOthers) {
  EXPECT_TRUE(IsToolkitHeader("QWidget"));
  EXPECT_TRUE(IsToolkitHeader("QtWidgets/QWidget"));
  EXPECT_TRUE(IsToolkitHeader("QtGlobal"));
  EXPECT_FALSE(IsToolkitHeader("platform/window.h"));
  EXPECT_FALSE(IsToolkitHeader("string"));
  EXPECT_FALSE(IsToolkitHeader("Queue.h"));
}

TEST(House, RefersToNoToolkitSymbolInTheCore) {
  const fs::path archive = kBinary / "libmorva_core.a";
  ASSERT_TRUE(fs::exists(archive)) << archive;
  const std::string command = "nm -u " + archive.string() + " 2>&1";
  FILE* pipe = popen(command.c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  std::size_t symbols = 0;
  char line[4096];
  while (std::fgets(line, sizeof line, pipe)) {
    const std::string text = line;
    ++symbols;
    // Mangled names of the toolkit's classes: a length, then Q and a capital.
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
      const bool afterLength = text[i - 1] >= '0' && text[i - 1] <= '9';
      const bool capital = text[i + 1] >= 'A' && text[i + 1] <= 'Z';
      EXPECT_FALSE(afterLength && text[i] == 'Q' && capital) << text;
    }
    EXPECT_EQ(text.find("qt_"), std::string::npos) << text;
  }
  EXPECT_EQ(pclose(pipe), 0);
  EXPECT_GT(symbols, 100u);
}

TEST(House, AsksForASystemOnlyInThePlatformRoom) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (Below(path, "src/platform")) continue;
    for (const std::string& line : Lines(ReadText(path))) {
      EXPECT_NE(line.rfind("#if", 0), 0u) << path << ": " << line;
    }
  }
}

// Rooms by height; a room includes itself and lower ones.
const std::map<std::string, int> kHeights = {
    {"platform", 0}, {"text", 1},      {"app", 2},       {"forms", 3}, {"documents", 4},
    {"library", 5},  {"cad", 6},       {"plate", 6},     {"skim", 6},  {"builders", 7},
    {"dnc", 6},      {"codetools", 6}, {"simulator", 6}, {"shell", 8}, {"main.cpp", 9}};

// What is wrong with an include of the file with this name, "cad/model/sketch.h"; empty for
// nothing. What stands in quotes is ours and begins with its room.
std::string FaultOfInclude(const std::string& name, const std::string& line) {
  if (!IsInclude(line)) return "";
  const std::string included = Included(line);
  if (included.empty()) return "includes no name";
  const auto own = kHeights.find(name.substr(0, name.find('/')));
  if (own == kHeights.end()) return "lies in no known room";
  const std::string first = included.substr(0, included.find('/'));
  const auto other = kHeights.find(first);
  if (other == kHeights.end()) {
    return line.find('"') == std::string::npos ? "" : "includes from no known room";
  }
  if (included.find("/.") != std::string::npos) return "goes a way around";
  if (other->first != own->first && other->second >= own->second) return "points its arrow up";
  return "";
}

TEST(House, TellsAnArrowDownFromOthers) {
  EXPECT_EQ(FaultOfInclude("cad/model/a.h", "#include \"app/limits.h\""), "");
  EXPECT_EQ(FaultOfInclude("cad/model/a.h", "#include \"cad/panel/b.h\""), "");
  EXPECT_EQ(FaultOfInclude("cad/model/a.h", "#include <vector>"), "");
  EXPECT_EQ(FaultOfInclude("platform/posix/a.cpp", "#include <sys/stat.h>"), "");
  for (const char* line :
       {"#include \"shell/modes.h\"", "# include \"shell/modes.h\"", "  #\tinclude <shell/modes.h>",
        "#include \"dnc/transfer.h\"", "#include \"../shell/modes.h\"", "#include \"b.h\"",
        "#include \"./b.h\"", "#include \"attic/b.h\"", "#include \"app/../shell/modes.h\"",
        "#include HEADER"}) {
    EXPECT_NE(FaultOfInclude("cad/model/a.h", line), "") << line;
  }
  EXPECT_NE(FaultOfInclude("attic/a.h", "#include <vector>"), "");
  EXPECT_NE(FaultOfInclude("plate/code/a.h", "#include \"cad/model/sketch.h\""), "");
}

TEST(House, PointsItsArrowsDown) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    const std::string name = NameInSource(path);
    EXPECT_TRUE(kHeights.count(name.substr(0, name.find('/')))) << name;
    for (const std::string& line : Lines(ReadText(path))) {
      EXPECT_EQ(FaultOfInclude(name, line), "") << name << ": " << line;
    }
  }
}

// The shell knows a workspace by the record that it registers; only the joining of rooms names it.
TEST(House, NamesAWorkspaceInTheShellOnlyWhereItJoins) {
  int joined = 0;
  for (const fs::path& path : SourcesBelow(kSource / "src" / "shell")) {
    for (const std::string& line : Lines(ReadText(path))) {
      const std::string name = Included(line);
      for (const char* room : {"cad/", "plate/", "skim/", "builders/"}) {
        if (name.rfind(room, 0) != 0) continue;
        ++joined;
        EXPECT_EQ(path.filename(), "start_up.cpp") << path << ": " << line;
      }
    }
  }
  EXPECT_GT(joined, 0);
}

// Nor does it know them, or the panels of other rooms, by their modes or by the ids of their
// controls. The rows of what is still to come name some.
std::set<std::string> NamesOfOtherRooms() {
  std::set<std::string> names = {"kIdCad",          "kViewCad", "kIdDrawing", "kIdSurfaceCad",
                                 "kIdSurfacePlate", "kIdPlate", "kIdSkim",    "kIdIndex",
                                 "kIdReview",       "kIdWords"};
  static const std::regex kNumber(R"(\bk(Mode|Surface)[A-Z]\w*)");
  const std::string state = CodeOf(ReadText(kSource / "src/app/app_state.h"));
  for (std::sregex_iterator it(state.begin(), state.end(), kNumber), end; it != end; ++it)
    names.insert(it->str());
  for (const char* own : {"kModeHome", "kModeSimulator", "kSurfaceCode"}) names.erase(own);
  return names;
}

std::string NameOfAnotherRoom(const std::string& code) {
  static const std::set<std::string> kNames = NamesOfOtherRooms();
  for (const std::string& word : kNames) {
    if (code.find(word) != std::string::npos) return word;
  }
  return "";
}

TEST(House, NamesNoModeAndNoControlOfAnotherRoomInTheShell) {
  for (const fs::path& path : SourcesBelow(kSource / "src" / "shell")) {
    EXPECT_EQ(NameOfAnotherRoom(CodeOf(ReadText(path))), "") << path;
  }
  EXPECT_EQ(NameOfAnotherRoom("if (mode == kModeSlot) return;"), "kModeSlot");
  EXPECT_EQ(NameOfAnotherRoom("if (mode == kModeHome) return;"), "");
  EXPECT_GT(NamesOfOtherRooms().size(), 20u);
}

TEST(House, IncludesNoPlatformImplementationFromTheRooms) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (Below(path, "src/platform")) continue;
    for (const std::string& line : Lines(ReadText(path))) {
      const std::string name = Included(line);
      for (const char* inner : {"platform/qt/", "platform/headless/", "platform/posix/"}) {
        EXPECT_NE(name.rfind(inner, 0), 0u) << path << ": " << line;
      }
    }
  }
}

TEST(House, KeepsEveryFileToOneSubject) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    EXPECT_LE(Lines(ReadText(path)).size(), 900u) << path;
  }
}

TEST(House, ThrowsNothingAndDerivesNothingInTheCore) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (Below(path, "src/platform/qt")) continue;
    for (const std::string& line : Lines(ReadText(path))) {
      const std::string code = line.substr(0, line.find("//"));
      for (const char* word : {"throw ", "virtual ", " try {"}) {
        EXPECT_EQ(code.find(word), std::string::npos) << path << ": " << line;
      }
    }
  }
}

// A registration that finds its table full stops the program; nobody can overlook an answer that
// is not there.
bool RegistersWithAnAnswer(const std::string& code) {
  static const std::regex kAnswer(R"(\b(?!void\b|return\b|else\b)[\w:]+[&*]*\s+Register\w*\s*\()");
  return std::regex_search(code, kAnswer);
}

TEST(House, TellsARegistrationWithAnAnswer) {
  EXPECT_TRUE(RegistersWithAnAnswer("bool RegisterMode(const ModeRow& row);"));
  EXPECT_TRUE(RegistersWithAnAnswer("[[nodiscard]] int RegisterSurface(const Surface& surface) {"));
  EXPECT_FALSE(RegistersWithAnAnswer("void RegisterMode(const ModeRow& row);"));
  EXPECT_FALSE(RegistersWithAnAnswer("  if (known) return RegisterHandlers(view);"));
}

TEST(House, RegistersWithoutAnAnswer) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    if (Below(path, "src/platform")) continue;
    for (const std::string& line : Lines(CodeOf(ReadText(path)))) {
      EXPECT_FALSE(RegistersWithAnAnswer(line)) << path << ": " << line;
    }
  }
}

TEST(House, TellsCodeFromWords) {
  EXPECT_EQ(CodeOf("a // b\nc"), "a     \nc");
  EXPECT_EQ(CodeOf("a /* b\nc */ d"), "a     \n     d");
  EXPECT_EQ(CodeOf("f(\"x\\\"y\", 'z', 1'000);"), "f(      ,    , 1'000);");
  EXPECT_EQ(CodeOf("c == '\\'' || d"), "c ==      || d");
}

}  // namespace
