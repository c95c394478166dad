// Programs and companions that must be refused, or kept as text: a file a case in tests/bad.
//
// The first line says what is expected, the rest is the file:
//   *.nc                     "text N": the whole program becomes one user-code block N;
//                            "taken K": it is one block of kind K; "nothing", or the only
//                            finding of the preflight, word for word
//   *.features.hex and kin   "ignored" or "taken", then bytes in hex and "zeros COUNT"
//   *.open.hex               what the user is told at OPEN
// Each kind has a good file, so that a flaw is the only reason for a refusal.
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "codetools/validator.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "support/places.h"
#include "support/program_stage.h"

namespace morva {
namespace {

namespace fs = std::filesystem;

struct Case {
  std::string name;
  std::string expected;
  std::string rest;
};

std::vector<Case> CasesOf(const std::string& ending) {
  std::vector<Case> cases;
  const fs::path folder = fs::path(support::SourceDir()) / "tests/bad";
  for (const std::string& name : support::NamesIn(folder)) {
    if (!name.ends_with(ending)) continue;
    const std::string whole = support::ReadRaw(folder / name);
    const std::size_t line = whole.find('\n');
    cases.push_back({name, whole.substr(0, line), whole.substr(line + 1)});
  }
  return cases;
}

std::string BytesOf(const std::string& hex) {
  std::string bytes;
  std::istringstream words(hex);
  for (std::string word; words >> word;) {
    if (word == "zeros") {
      std::size_t count = 0;
      words >> count;
      bytes.append(count, '\0');
      continue;
    }
    for (std::size_t i = 0; i + 1 < word.size(); i += 2) {
      bytes += static_cast<char>(std::stoi(word.substr(i, 2), nullptr, 16));
    }
  }
  return bytes;
}

struct BadFiles : support::OfflineProgramStage {
  static void ExpectText(const Case& c, int id) {
    const std::u16string text = support::Wide(c.rest.substr(0, c.rest.find_last_not_of('\n') + 1));
    ScanProgramText(text);
    ASSERT_EQ(features.count, 1) << c.name;
    const FeatureRecord& row = features.rows[0];
    EXPECT_EQ(row.id, id) << c.name;
    EXPECT_TRUE(row.needsMarkers) << c.name;
    EXPECT_EQ(row.settings.kind, kKindUserCode) << c.name;
    EXPECT_EQ(row.start, 0) << c.name;
    EXPECT_EQ(row.end, static_cast<std::int32_t>(text.size())) << c.name;
    platform::SetEditorText(kIdEditor, text);
    const std::u16string before = Text();
    AutoTagBlocks();
    const std::u16string number = support::Wide(std::to_string(id));
    EXPECT_EQ(Text(), u"(MORVA TEXT " + number + u")\r\n(MORVA NAME User code)\r\n" + before +
                          u"\r\n(MORVA END " + number + u")")
        << c.name;
  }
  static void ExpectBlock(const Case& c, int kind) {
    ScanProgramText(support::Wide(c.rest));
    ASSERT_EQ(features.count, 1) << c.name;
    EXPECT_FALSE(features.rows[0].needsMarkers) << c.name;
    EXPECT_EQ(features.rows[0].settings.kind, kind) << c.name;
  }
  static void ExpectFinding(const Case& c) {
    std::istringstream report(support::Narrow(PreflightReport(support::Wide(c.rest))));
    std::string found;
    for (std::string line; std::getline(report, line);) {
      if (line.rfind("ERROR: ", 0) != 0 && line.rfind("WARNING: ", 0) != 0) continue;
      found += (found.empty() ? "" : " / ") + line.substr(0, line.find('\r'));
    }
    EXPECT_EQ(found.empty() ? "nothing" : found, c.expected) << c.name;
  }
};

TEST_F(BadFiles, ProgramsBecomeTextOrOneFinding) {
  int cases = 0;
  for (const Case& c : CasesOf(".nc")) {
    ++cases;
    if (c.expected.rfind("text ", 0) == 0) {
      ExpectText(c, std::stoi(c.expected.substr(5)));
    } else if (c.expected.rfind("taken ", 0) == 0) {
      ExpectBlock(c, std::stoi(c.expected.substr(6)));
    } else {
      ExpectFinding(c);
    }
  }
  EXPECT_GT(cases, 30);
}

bool Taken(const std::string& suffix, const ProgramTab& tab) {
  if (suffix == ".features") return tab.disabledCode != nullptr;
  if (suffix == ".cadmv") return tab.cadStore != nullptr && tab.cadSettings != nullptr;
  return tab.plateSettings != nullptr;
}

// Whether the file has a size that is read, so that its flaw lies elsewhere.
bool RightSize(const std::string& suffix, std::size_t size) {
  if (suffix == ".features") return true;
  if (suffix == ".cadmv") return size == kCadFileBytes;
  return size == kPlateFileBytes || size == kOldPlateFileBytes;
}

TEST_F(BadFiles, CompanionsAreIgnoredWithoutAWord) {
  Put("a.NC", "G0\r\n");
  std::map<std::string, int> taken;
  for (const std::string suffix : {".features", ".cadmv", ".platemv"}) {
    const std::vector<Case> cases = CasesOf(suffix + ".hex");
    EXPECT_GT(cases.size(), 8u);
    for (const Case& c : cases) {
      const std::string bytes = BytesOf(c.rest);
      const bool size = c.name.rfind("one_byte_", 0) != 0;
      EXPECT_EQ(RightSize(suffix, bytes.size()), size) << c.name << " " << bytes.size();
      Put("a.NC" + suffix, bytes);
      OpenFile("a.NC");
      ASSERT_EQ(app.tabCount, 2) << c.name;
      EXPECT_EQ(Taken(suffix, *ActiveTab()), c.expected == "taken") << c.name;
      EXPECT_EQ(Text(), u"G0\r\n");
      EXPECT_TRUE(headless::TakeBoxes().empty()) << c.name;
      taken[suffix] += c.expected == "taken" ? 1 : 0;
      app.editorDirty = false;
      CloseProgram();
      fs::remove(folder / ("a.NC" + suffix));
    }
    EXPECT_GE(taken[suffix], 1) << suffix;
  }
}

TEST_F(BadFiles, FilesAtTheOpenKeyAreToldInTheseWords) {
  const std::vector<Case> cases = CasesOf(".open.hex");
  EXPECT_GE(cases.size(), 2u);
  for (const Case& c : cases) {
    const std::string bytes = BytesOf(c.rest);
    Put("a.NC", bytes);
    platform::SetText(kIdOutputLog, u"");
    OpenFile("a.NC");
    std::string told = support::Narrow(Output());
    for (const headless::BoxRecord& box : headless::TakeBoxes()) {
      told += support::Narrow(box.title + u": " + box.text);
    }
    EXPECT_NE(told.find(c.expected), std::string::npos) << c.name << " said " << told;
    EXPECT_EQ(Raw("a.NC"), bytes) << c.name;
  }
}

}  // namespace
}  // namespace morva
