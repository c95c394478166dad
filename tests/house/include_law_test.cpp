// Laws of includes: the folders inside a room point down, and no two modules include each other.
//
// A module is foo.h with foo.cpp beside it, or one of the two alone.

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "house/sources.h"

namespace {

using namespace house;

using Heights = std::map<std::string, int>;
using Includes = std::map<std::string, std::set<std::string>>;  // module to modules

// Folders of a room by height; a file includes its own folder and lower ones, but no other of the
// same height. A workspace to come has those of the one that stands; the builders have what they
// share and a folder each.
const Heights kWorkspace = {
    {"model", 0}, {"geometry", 1}, {"tools", 2}, {"canvas", 3}, {"panel", 4}};
const std::map<std::string, Heights> kInnerRooms = {
    {"cad", kWorkspace},
    {"plate", kWorkspace},
    {"skim", kWorkspace},
    {"builders",
     {{"common", 0}, {"wizard", 1}, {"shapes", 1}, {"slots", 1}, {"tools", 1}, {"macros", 1}}}};

// The folder of "cad/model/sketch.h" inside its room; empty for a file that lies in no folder.
std::string InnerFolder(const std::string& name) {
  const std::size_t from = name.find('/');
  const std::size_t to = from == std::string::npos ? from : name.find('/', from + 1);
  return to == std::string::npos ? "" : name.substr(from + 1, to - from - 1);
}

bool PointsDown(const Heights& heights, const std::string& name, const std::string& included) {
  const auto own = heights.find(InnerFolder(name));
  const auto other = heights.find(InnerFolder(included));
  if (own == heights.end() || other == heights.end()) return false;
  return other->first == own->first || other->second < own->second;
}

std::string ModuleOf(const std::string& name) { return name.substr(0, name.rfind('.')); }

Includes IncludesBelow(const fs::path& folder) {
  Includes modules;
  for (const fs::path& path : SourcesBelow(folder)) {
    const std::string name = fs::relative(path, folder).generic_string();
    std::set<std::string>& included = modules[ModuleOf(name)];
    for (const std::string& line : Lines(ReadText(path))) {
      const std::string other = Included(line);
      if (!other.empty() && ModuleOf(other) != ModuleOf(name)) included.insert(ModuleOf(other));
    }
  }
  return modules;
}

enum class Visit { New, Open, Done };

// Follows the includes from a module. `way` holds the modules from the start to this one; a circle
// is told by its modules, "a b a".
void FollowIncludes(const Includes& modules, const std::string& module,
                    std::map<std::string, Visit>& visits, std::vector<std::string>& way,
                    std::vector<std::string>& circles) {
  visits[module] = Visit::Open;
  way.push_back(module);
  for (const std::string& next : modules.at(module)) {
    if (!modules.count(next)) continue;  // of the system or of a library
    if (visits[next] == Visit::New) FollowIncludes(modules, next, visits, way, circles);
    if (visits[next] != Visit::Open) continue;
    std::string circle = next;
    for (std::size_t i = way.size(); way[i - 1] != next; --i) circle = way[i - 1] + " " + circle;
    circles.push_back(next + " " + circle);
  }
  way.pop_back();
  visits[module] = Visit::Done;
}

std::vector<std::string> CirclesIn(const Includes& modules) {
  std::vector<std::string> circles;
  std::map<std::string, Visit> visits;
  std::vector<std::string> way;
  for (const auto& [module, included] : modules) {
    if (visits[module] == Visit::New) FollowIncludes(modules, module, visits, way, circles);
  }
  return circles;
}

TEST(IncludeLaw, TellsAnArrowUpFromOneDown) {
  const Heights& cad = kInnerRooms.at("cad");
  EXPECT_TRUE(PointsDown(cad, "cad/tools/trim.cpp", "cad/model/sketch.h"));
  EXPECT_TRUE(PointsDown(cad, "cad/tools/trim.cpp", "cad/tools/trim.h"));
  EXPECT_FALSE(PointsDown(cad, "cad/tools/trim.cpp", "cad/canvas/canvas.h"));
  EXPECT_FALSE(PointsDown(cad, "cad/tools/trim.cpp", "cad/sketch.h"));
  EXPECT_FALSE(PointsDown(cad, "cad/attic/old.cpp", "cad/model/sketch.h"));
  const Heights& builders = kInnerRooms.at("builders");
  EXPECT_TRUE(PointsDown(builders, "builders/slots/slot.cpp", "builders/common/cut.h"));
  EXPECT_FALSE(PointsDown(builders, "builders/slots/slot.cpp", "builders/wizard/wizard.h"));
}

TEST(IncludeLaw, InnerRoomsPointTheirArrowsDown) {
  for (const auto& [room, heights] : kInnerRooms) {
    if (!fs::exists(kSource / "src" / room)) continue;  // still to come
    int arrows = 0;
    for (const fs::path& path : SourcesBelow(kSource / "src" / room)) {
      const std::string name = NameInSource(path);
      EXPECT_TRUE(heights.count(InnerFolder(name)))
          << name << " lies in no inner room: its folder is missing in kInnerRooms above";
      for (const std::string& line : Lines(ReadText(path))) {
        const std::string included = Included(line);
        if (included.rfind(room + "/", 0) != 0) continue;
        ++arrows;
        EXPECT_TRUE(PointsDown(heights, name, included)) << name << ": " << line;
      }
    }
    EXPECT_GT(arrows, room == "cad" ? 100 : 0) << room;
  }
}

// Every room that has folders has them by height. The implementations of the platforms see each
// other no more than they need; that is a law of its own.
TEST(IncludeLaw, KnowsTheFoldersOfEveryRoom) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    const std::string name = NameInSource(path);
    const std::string room = name.substr(0, name.find('/'));
    if (InnerFolder(name).empty() || room == "platform") continue;
    EXPECT_TRUE(kInnerRooms.count(room)) << name;
  }
}

TEST(IncludeLaw, FindsCirclesOfAnyLength) {
  EXPECT_TRUE(CirclesIn({{"a", {"b", "c", "system"}}, {"b", {"c"}}, {"c", {}}}).empty());
  EXPECT_EQ(CirclesIn({{"a", {"b"}}, {"b", {"a"}}}), std::vector<std::string>{"a b a"});
  EXPECT_EQ(CirclesIn({{"a", {"b"}}, {"b", {"c"}}, {"c", {"d"}}, {"d", {"b"}}}),
            std::vector<std::string>{"b c d b"});
}

TEST(IncludeLaw, NoModulesIncludeEachOther) {
  const Includes modules = IncludesBelow(kSource / "src");
  EXPECT_GT(modules.size(), 100u);
  for (const std::string& circle : CirclesIn(modules)) ADD_FAILURE() << circle;
}

}  // namespace
