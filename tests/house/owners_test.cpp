// A table of the program is written only by its owner; everybody else reads it, or asks the owner.
//
// A table is what a header of the rooms offers as `extern` or `inline` and not const. The check
// reads the code of each file that can see the table (writes.h tells what counts as a write). Rows
// that are reached through a pointer or a reference are followed by their type.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "house/sources.h"
#include "house/writes.h"

namespace {

using namespace house;

using Files = std::set<std::string>;

struct Table {
  const char* name;
  Files owners = {};  // room and file; they write all of it
  // Fields that another file writes, and no further one.
  std::map<std::string, Files> fields = {};
  const char* row = "";     // type of a row that pointers and references lead to
  const char* member = "";  // its name in an OwnedPath
  // Each room sets fields of its own: every field is written by one file.
  bool shared = false;
};

const std::vector<Table>& Tables() {
  static const std::vector<Table> kTables = {
      {.name = "app",
       .owners = {"app/app_state.cpp"},
       .fields = {{"activeTab", {"documents/program_tabs.cpp"}},
                  {"tabCount", {"documents/program_tabs.cpp"}},
                  {"activePath", {"documents/tab_table.cpp"}},
                  {"editorDirty", {"documents/tab_table.cpp"}},
                  {"leftPanelWidth", {"shell/layout.cpp"}},
                  {"surface", {"shell/modes.cpp"}},
                  {"mode", {"shell/modes.cpp"}},
                  {"compareActive", {"codetools/review_work.cpp"}},
                  {"commandWordsActive", {"codetools/words_view.cpp"}},
                  {"dataDir", {"app/data_dir.cpp"}},
                  {"dataDirReady", {"app/data_dir.cpp"}},
                  {"suppressChange", {"app/change_guard.cpp"}},
                  {"insertingText", {"app/change_guard.cpp"}},
                  {"statusText", {"app/outlets.cpp"}},
                  {"unitsMetric", {"library/units.cpp"}}}},
      {.name = "hooks", .owners = {"shell/start_up.cpp"}, .shared = true},
      {.name = "cadHooks", .owners = {"cad/cad_room.cpp"}, .shared = true},
      {.name = "tabs",
       .owners = {"documents/program_tabs.cpp", "documents/tab_table.cpp"},
       .fields = {{"cadSettings", {"documents/tab_models.cpp", "cad/drawings.cpp"}},
                  {"plateSettings", {"documents/tab_models.cpp", "plate/plate_drawings.cpp"}},
                  {"plateStore", {"documents/tab_models.cpp"}},
                  {"cadStore", {"documents/tab_models.cpp", "cad/drawings.cpp"}},
                  {"disabledCode", {"documents/tab_models.cpp"}},
                  {"unusable", {"documents/tab_models.cpp"}},
                  {"save", {"documents/save_state.cpp"}},
                  {"sketchHidden", {"documents/tab_models.cpp", "cad/drawings.cpp"}},
                  {"sketchLocked", {"documents/tab_models.cpp", "cad/drawings.cpp"}},
                  {"hiddenIds", {"documents/feature_marks.cpp"}},
                  {"lockedIds", {"documents/feature_marks.cpp"}},
                  {"isolatedId", {"documents/feature_marks.cpp"}}},
       .row = "ProgramTab"},
      {.name = "features", .owners = {"documents/feature_blocks.cpp"}, .row = "FeatureRecord"},
      {.name = "editLink", .owners = {"documents/edit_link.cpp"}},
      {.name = "liveModels", .owners = {"documents/tab_models.cpp"}, .shared = true},
      {.name = "completionApplying", .owners = {"documents/editor_changes.cpp"}},
      {.name = "shapeLibrary", .owners = {"library/shapes.cpp"}},
      {.name = "macroLibrary", .owners = {"library/macros.cpp"}},
      {.name = "toolLibrary", .owners = {"library/tools.cpp"}},
      {.name = "sketch", .owners = {"cad/sketch.cpp"}},
      {.name = "tools", .owners = {"cad/tool_state.cpp"}},
      {.name = "plateEditor", .owners = {"plate/plate_editor.cpp"}},
      {.name = "plate",
       .owners = {"plate/plate.cpp", "plate/plate_record.cpp"},
       .row = "PlateRecord"},
      {.name = "canvasView",
       .owners = {"cad/canvas_view.cpp"},
       .fields = {{"modelView", {"cad/canvas_model.cpp"}},
                  {"modelYaw", {"cad/canvas_model.cpp"}},
                  {"modelPitch", {"cad/canvas_model.cpp"}},
                  {"modelRoll", {"cad/canvas_model.cpp"}},
                  {"modelViewTouched", {"cad/canvas_model.cpp"}},
                  {"panTool", {"cad/canvas_model.cpp"}},
                  {"cursorX", {"cad/canvas_pointer.cpp"}},
                  {"cursorY", {"cad/canvas_pointer.cpp"}}}},
      {.name = "skimWizard", .owners = {"skim/wizard_state.cpp"}},
      {.name = "skimPlan", .owners = {"skim/plan.cpp"}},
      {.name = "serialProfile", .owners = {"dnc/serial_profile.cpp"}},
      {.name = "dncState", .owners = {"dnc/serial_profile.cpp"}},
      {.name = "setupPanel", .owners = {"dnc/serial_profile.cpp", "dnc/setup_panel.cpp"}},
      // The window's side fills in the job, the worker's side what came of it.
      {.name = "transfer",
       .owners = {"dnc/transfer.cpp"},
       .fields = {{"receivedData", {"dnc/transfer_worker.cpp"}}}},
      {.name = "worker",
       .owners = {"dnc/transfer.cpp"},
       .fields = {{"problem", {"dnc/transfer_worker.cpp"}},
                  {"stop", {"dnc/transfer_worker.cpp"}},
                  {"lineErrors", {"dnc/transfer_worker.cpp"}},
                  {"advice", {"dnc/transfer_worker.cpp"}}}},
      {.name = "ruleQueue", .owners = {"codetools/find_rules.cpp"}},
      {.name = "compareResult", .owners = {"codetools/compare.cpp"}},
      // The run under way writes into a path, an extraction empties one.
      {.name = "path",
       .owners = {"simulator/motion_path.cpp", "simulator/motion_run.cpp", "simulator/motion_run.h",
                  "simulator/extract.cpp", "simulator/control_emit.cpp",
                  "simulator/machine_path.cpp"},
       .row = "MotionPath",
       .member = "path"},
      // Written by the functions that work on any path.
      {.name = "ghostPath"},
      {.name = "machinePath"},
      {.name = "machineProgrammed", .owners = {"simulator/machine_path.cpp"}},
      {.name = "machineSeconds", .owners = {"simulator/machine_path.cpp"}},
      {.name = "machineTrack",
       .owners = {"simulator/machine_path.cpp", "simulator/machine_motion.cpp"}},
      {.name = "motionRun",
       .owners = {"simulator/motion_run.cpp", "simulator/motion_scan.cpp",
                  "simulator/extract.cpp"}},
      {.name = "featureLines", .owners = {"simulator/feature_lines.cpp"}},
      {.name = "stockEnvelope",
       .owners = {"simulator/stock_envelope.cpp", "simulator/shown_path.cpp"},
       .member = "stock"},
      {.name = "previewState",
       .owners = {"simulator/preview_state.cpp", "simulator/preview.cpp"}},
      {.name = "switches", .owners = {"simulator/view_switches.cpp"}},
      {.name = "playback",
       .owners = {"simulator/playback.cpp", "simulator/shown_path.cpp"},
       .row = "Playback",
       .member = "play"},
      {.name = "measure",
       .owners = {"simulator/playback.cpp", "simulator/shown_path.cpp"},
       .row = "MeasurePicks",
       .member = "picks"},
      {.name = "view",
       .owners = {"simulator/view_state.cpp", "simulator/view_mouse.cpp"},
       .row = "ViewState",
       .member = "view"},
      {.name = "viewCube", .owners = {"simulator/view_state.cpp", "simulator/view_mouse.cpp"}},
      // Set for tests alone.
      {.name = "fileFault", .owners = {"platform/machine.cpp"}},
      {.name = "pacePseudoTerminals"},
      // Of a class that counts its own.
      {.name = "depth", .owners = {"platform/qt_internal.h"}},
  };
  return kTables;
}

struct Source {
  std::string name;   // "cad/sketch.cpp"
  std::string owner;  // room and file, without folders between
  std::string code;
  std::set<std::string> includes;
};

std::string WithoutFolders(const std::string& name) {
  return name.substr(0, name.find('/')) + name.substr(name.rfind('/'));
}

const std::vector<Source>& Sources() {
  static const std::vector<Source> kSources = [] {
    std::vector<Source> sources;
    for (const fs::path& path : SourcesBelow(kSource / "src")) {
      const std::string name = NameInSource(path);
      if (name.find('/') == std::string::npos) continue;
      const std::string text = ReadText(path);
      Source source{name, WithoutFolders(name), CodeOf(text), {}};
      for (const std::string& line : Lines(text)) {
        if (!Included(line).empty()) source.includes.insert(Included(line));
      }
      sources.push_back(std::move(source));
    }
    return sources;
  }();
  return kSources;
}

// The name of the table that a line offers, empty for none: what is extern or inline and neither a
// function nor const. A pointer is const where the word stands behind its star.
std::string OfferedBy(const std::string& line) {
  static const std::regex kLead("^\\s*((extern|inline|static|thread_local|constinit)\\s+)+");
  static const std::regex kFunction("\\(\\s*\\*\\s*(\\w+)\\s*\\)\\s*\\(");
  static const std::regex kConst("\\b(const|constexpr)\\b");
  static const std::regex kName("(\\w+)\\s*(\\[[^\\]]*\\]\\s*)*$");
  std::smatch match;
  if (!std::regex_search(line, match, kLead)) return "";
  const std::string lead = match.str();
  if (lead.find("extern") == lead.npos && lead.find("inline") == lead.npos) return "";
  std::string rest = match.suffix();
  if (rest.rfind("namespace", 0) == 0 || rest.rfind("constexpr", 0) == 0) return "";
  rest = rest.substr(0, rest.find_first_of(";={"));
  if (std::regex_search(rest, match, kFunction)) {
    const std::string type = rest.substr(0, static_cast<std::size_t>(match.position()));
    if (type.find('(') != std::string::npos) return "";
    return type.find("const ") == std::string::npos ? match[1] : std::string();
  }
  if (rest.find('(') != std::string::npos || !std::regex_search(rest, match, kName)) return "";
  const std::string type = rest.substr(0, static_cast<std::size_t>(match.position()));
  if (type.find_first_not_of(' ') == std::string::npos) return "";
  const std::size_t star = type.rfind('*');
  const std::string looked = star == std::string::npos ? type : type.substr(star);
  return std::regex_search(looked, kConst) ? std::string() : match[1].str();
}

// The header that offers each table, by the table's name.
std::map<std::string, std::string> OfferedTables() {
  std::map<std::string, std::string> offered;
  for (const Source& source : Sources()) {
    const bool header = source.name.ends_with(".h");
    for (const std::string& line : Lines(source.code)) {
      if (!header && line.rfind("extern ", 0) != 0) continue;
      const std::string name = OfferedBy(line);
      if (name.empty()) continue;
      EXPECT_TRUE(offered.emplace(name, source.name).second) << "A second table is called " << name;
    }
  }
  return offered;
}

// Functions that hand out a row to write, by name: the type of the row and the header.
struct Giver {
  std::string type;
  std::string header;
};
bool HandsOut(const std::string& line, std::string& function, std::string& type) {
  static const std::regex kForm(
      "^(inline |static )*(?!const\\b)([\\w:]+(?:<[^()]*>)?)[&*]\\s*(\\w+)\\(");
  std::smatch match;
  if (!std::regex_search(line, match, kForm)) return false;
  type = match[2];
  function = match[3];
  return true;
}
std::map<std::string, Giver> Givers() {
  std::map<std::string, Giver> givers;
  for (const Source& source : Sources()) {
    if (!source.name.ends_with(".h") || source.name.rfind("platform/", 0) == 0) continue;
    for (const std::string& line : Lines(source.code)) {
      std::string function;
      std::string type;
      if (HandsOut(line, function, type)) givers[function] = {type, source.name};
    }
  }
  return givers;
}

// Who writes through a function whose row belongs to no table above.
const std::map<std::string, Files> kWritersThrough = {
    {"StateOf", {"forms/form_table.cpp", "forms/form_place.cpp"}}};

// The code with `f(a, b)` as `f()`, its line breaks behind it.
std::string WithoutArguments(const std::string& code, const std::string& function) {
  std::string left;
  std::size_t from = 0;
  for (std::size_t at = code.find(function + "("); at != std::string::npos;
       at = code.find(function + "(", from)) {
    std::size_t end = at + function.size();
    int depth = 0;
    do {
      depth += code[end] == '(' ? 1 : code[end] == ')' ? -1 : 0;
      ++end;
    } while (depth > 0 && end < code.size());
    left += code.substr(from, at - from) + function + "()";
    left.append(
        static_cast<std::size_t>(std::count(code.begin() + static_cast<std::ptrdiff_t>(at),
                                            code.begin() + static_cast<std::ptrdiff_t>(end), '\n')),
        '\n');
    from = end;
  }
  return left + code.substr(from);
}

// Everything that a source sees through its includes.
std::map<std::string, std::set<std::string>> Seen() {
  std::map<std::string, const Source*> byName;
  for (const Source& source : Sources()) byName[source.name] = &source;
  std::map<std::string, std::set<std::string>> seen;
  for (const Source& source : Sources()) {
    std::set<std::string>& names = seen[source.name];
    std::vector<std::string> open = {source.name};
    while (!open.empty()) {
      const std::string name = open.back();
      open.pop_back();
      if (!byName.count(name) || !names.insert(name).second) continue;
      open.insert(open.end(), byName[name]->includes.begin(), byName[name]->includes.end());
    }
  }
  return seen;
}

std::vector<Write> WritesIn(const Source& source, const Table& table,
                            const ChangingParameters& known) {
  static const std::map<std::string, Giver> kGivers = Givers();
  std::vector<Write> writes = WritesTo(table.name, source.code, known);
  const auto add = [&](const std::string& name, bool wholeToo) {
    for (const Write& write : WritesTo(name, source.code, known)) {
      // A handle that is set to another row writes nothing.
      if (wholeToo || !write.field.empty()) writes.push_back(write);
    }
  };
  const std::string row = table.row;
  if (!row.empty()) {
    for (const std::string& name : HandlesOf(row, source.code)) {
      if (name != table.name) add(name, false);
    }
    for (const auto& [function, giver] : kGivers) {
      if (giver.type != row || source.code.find(function + "(") == std::string::npos) continue;
      const std::string code = WithoutArguments(source.code, function);
      for (const Write& write : WritesTo(function + "()", code, known)) {
        if (!write.field.empty()) writes.push_back(write);
      }
    }
  }
  const std::string member = table.member;
  if (!member.empty()) {
    std::set<std::string> paths = HandlesOf("OwnedPath", source.code, true);
    paths.insert("ShownPath()");
    for (const std::string& path : paths) add(path + "." + member, true);
  }
  return writes;
}

bool MayWrite(const Table& table, const std::string& file, const std::string& field) {
  if (table.owners.count(file)) return true;
  const auto found = table.fields.find(field);
  return found != table.fields.end() && found->second.count(file) > 0;
}

ChangingParameters KnownParameters() {
  std::set<std::string> handles;
  for (const Table& table : Tables()) {
    if (*table.row) handles.insert(table.row);
  }
  ChangingParameters known = StandardParameters();
  for (const Source& source : Sources()) LearnParameters(source.code, handles, known);
  return known;
}

TEST(Owners, AreAskedOfEveryTableThatIsOffered) {
  for (const char* line : {"extern Row table[kMaxRows];", "extern int table;", "inline Row table;",
                           "inline Row table{};", "inline std::array<Row, 8> table = {};",
                           "inline Row* table = nullptr;", "  static inline Row table;",
                           "inline static Row table[2 * kRows] = {};",
                           "inline const Row* table = kRows;", "extern bool (*table)(int);",
                           "inline thread_local Row table;", "inline int table[2][3];"}) {
    EXPECT_EQ(OfferedBy(line), "table") << line;
  }
  for (const char* line :
       {"extern const Row table[kRows];", "inline const Row& table = rows[0];",
        "inline constexpr int kTable = 3;", "inline Row Find(int id) {", "inline Row* Find() {",
        "extern Row Find(int id);", "inline namespace v1 {", "Row table;", "static Row table;",
        "inline const Row* const table = kRows;", "extern       {",
        "inline int Call(int (*hook)(int)) {"}) {
    EXPECT_EQ(OfferedBy(line), "") << line;
  }
}

TEST(Owners, AreAskedOfRowsThatAreHandedOut) {
  std::string function;
  std::string type;
  EXPECT_TRUE(HandsOut("RowState& StateOf(const FormEntry& entry, int row);", function, type));
  EXPECT_EQ(function + " " + type, "StateOf RowState");
  EXPECT_TRUE(HandsOut("inline Row* Find(int id) {", function, type));
  EXPECT_FALSE(HandsOut("const Row& Find(int id);", function, type));
  EXPECT_FALSE(HandsOut("void Find(Row& row);", function, type));
  EXPECT_EQ(WithoutArguments("F(a, G(b)).x = 1; F(\n).y", "F"), "F().x = 1; F()\n.y");
  const ChangingParameters none;
  EXPECT_EQ(WritesTo("F()", WithoutArguments("F(a, i).x = 1;", "F"), none).size(), 1u);
  EXPECT_EQ(WritesTo("F()", WithoutArguments("Row& row = F(a, i);", "F"), none).size(), 1u);
  EXPECT_EQ(WritesTo("F()", WithoutArguments("if (F(a, i).x) return;", "F"), none).size(), 0u);

  std::set<std::string> rows;
  for (const Table& table : Tables()) rows.insert(table.row);
  for (const auto& [name, giver] : Givers()) {
    EXPECT_TRUE(rows.count(giver.type) || kWritersThrough.count(name))
        << name << " of " << giver.header << " hands out what nobody watches";
  }
}

TEST(Owners, WriteThroughAFunctionOnlyWhereItIsTold) {
  const ChangingParameters known = KnownParameters();
  const std::map<std::string, std::set<std::string>> seen = Seen();
  const std::map<std::string, Giver> givers = Givers();
  for (const auto& [function, files] : kWritersThrough) {
    ASSERT_TRUE(givers.count(function)) << function;
    Files writers;
    for (const Source& source : Sources()) {
      if (!seen.at(source.name).count(givers.at(function).header)) continue;
      const std::string code = WithoutArguments(source.code, function);
      if (!WritesTo(function + "()", code, known).empty()) writers.insert(source.owner);
    }
    EXPECT_EQ(writers, files) << function;
  }
}

// The list of owners names a file without the folders inside its room.
TEST(Owners, AreToldByNamesThatStandOnceInARoom) {
  std::map<std::string, std::string> names;
  for (const Source& source : Sources()) {
    if (source.name.rfind("platform/", 0) == 0) continue;
    EXPECT_TRUE(names.emplace(source.owner, source.name).second)
        << source.name << " and " << names[source.owner];
  }
}

TEST(Owners, AreKnownForEveryTable) {
  std::set<std::string> known;
  for (const Table& table : Tables()) known.insert(table.name);
  const std::map<std::string, std::string> offered = OfferedTables();
  for (const auto& [name, header] : offered) {
    EXPECT_TRUE(known.count(name)) << name << " of " << header << " has no owner";
  }
  for (const std::string& name : known) EXPECT_TRUE(offered.count(name)) << name;
}

TEST(Owners, AloneWriteTheirTables) {
  const ChangingParameters known = KnownParameters();
  const std::map<std::string, std::string> offered = OfferedTables();
  const std::map<std::string, std::set<std::string>> seen = Seen();
  for (const Table& table : Tables()) {
    const auto header = offered.find(table.name);
    if (header == offered.end()) continue;
    std::map<std::string, Files> writers;  // by field
    for (const Source& source : Sources()) {
      if (!seen.at(source.name).count(header->second)) continue;
      for (const Write& write : WritesIn(source, table, known)) {
        writers[write.field].insert(source.owner);
        EXPECT_TRUE(table.shared || MayWrite(table, source.owner, write.field))
            << source.name << ":" << write.line << " writes " << table.name << "." << write.field;
      }
    }
    Files seenWriting;
    for (const auto& [field, files] : writers) {
      seenWriting.insert(files.begin(), files.end());
      if (table.shared && !field.empty()) {
        EXPECT_EQ(files.size(), 1u) << table.name << "." << field;
      }
    }
    // Who writes no more is no owner any more.
    for (const std::string& file : table.owners) {
      EXPECT_TRUE(seenWriting.count(file)) << file << " does not write " << table.name;
    }
    for (const auto& [field, files] : table.fields) {
      for (const std::string& file : files) {
        EXPECT_TRUE(writers[field].count(file))
            << file << " does not write " << table.name << "." << field;
      }
    }
    if (table.shared) {
      for (const std::string& file : writers[""]) EXPECT_TRUE(table.owners.count(file)) << file;
    }
  }
}

}  // namespace
