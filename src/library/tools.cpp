#include "library/tools.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>

#include "app/app_state.h"
#include "app/join_table.h"
#include "app/profile_keys.h"
#include "app/stop.h"
#include "documents/little_endian.h"
#include "library/file_marks.h"
#include "library/kept_text.h"
#include "library/mirror.h"
#include "library/saved_section.h"
#include "platform/profile.h"
#include "text/code_writer.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

ToolLibrary toolLibrary;

namespace {

constexpr char16_t kTable[] = u"ToolLibrary";
void (*fills[kMaxToolLists])() = {};
JoinTable listFill{u"lists of tools", kMaxToolLists};
FileMarks marks;
SavedSection<ToolRecord> saved[kMaxTools];
constexpr int kStoredDecimals = 4;
constexpr int kLengthDecimals = 3;
constexpr int kFeedDecimals = 2;
constexpr double kPointSlope = 0.6;  // of a drill and a chamfer mill: height for each unit outwards

// Places in the mirror.
constexpr std::size_t kNameAt = 4;
constexpr std::size_t kTypeAt = 132;
constexpr std::size_t kNotesAt = 268;
static_assert(kNameAt + 2 * kToolNameUnits == kTypeAt);
static_assert(kNotesAt + 2 * kToolNotesUnits + 4 == kToolMirrorBytes);

constexpr const char16_t* kTypes[] = {u"End Mill",  u"Face Mill",    u"Drill",  u"Tap",
                                      u"Ball Nose", u"Chamfer Mill", u"Reamer", u"Custom"};

std::u16string SectionOf(int index) { return u"Tool" + IntegerText(index); }

// The keys of one section, each read with a default of its own.
struct Keys {
  std::u16string section;
  void Text(const char16_t* key, const char16_t* usual, char16_t* dest, int units) const {
    CopyBounded(dest, units, KeptText(platform::ReadProfile(section, key, usual), units));
  }
  std::int32_t Integer(const char16_t* key, std::int32_t usual) const {
    return ProfileReadInteger(section.c_str(), key, usual);
  }
  double Decimal(const char16_t* key, double usual) const {
    return ProfileReadDecimal(section.c_str(), key, usual);
  }
  void Put(const char16_t* key, const char16_t* text) const {
    platform::WriteProfile(section, key, text);
  }
  void Put(const char16_t* key, std::int32_t value) const {
    platform::WriteProfile(section, key, IntegerText(value));
  }
  void Put(const char16_t* key, double value) const {
    platform::WriteProfile(section, key, FixedText(value, kStoredDecimals));
  }
};

void LoadTool(int index, ToolRecord& tool) {
  const Keys keys{SectionOf(index)};
  tool.number = keys.Integer(u"Number", index + 1);
  keys.Text(u"Name", u"Custom Tool", tool.name, kToolNameUnits);
  keys.Text(u"Type", kTypes[0], tool.type, kToolTypeUnits);
  tool.diameter = keys.Decimal(u"Diameter", 0.5);
  tool.flutes = keys.Integer(u"Flutes", 4);
  tool.gaugeLength = keys.Decimal(u"GaugeLength", 3.0);
  tool.stickout = keys.Decimal(u"Stickout", 1.5);
  tool.hOffset = keys.Integer(u"HOffset", tool.number);
  tool.dOffset = keys.Integer(u"DOffset", tool.number);
  tool.maxRpm = keys.Integer(u"MaxRPM", 5000);
  tool.feed = keys.Decimal(u"Feed", 12.0);
  tool.plunge = keys.Decimal(u"Plunge", 5.0);
  tool.coolant = keys.Integer(u"Coolant", 1);
  keys.Text(u"Notes", u"", tool.notes, kToolNotesUnits);
}

void WriteTool(const std::u16string& section, const ToolRecord& tool) {
  const Keys keys{section};
  keys.Put(u"Number", tool.number);
  keys.Put(u"Name", tool.name);
  keys.Put(u"Type", tool.type);
  keys.Put(u"Diameter", tool.diameter);
  keys.Put(u"Flutes", tool.flutes);
  keys.Put(u"GaugeLength", tool.gaugeLength);
  keys.Put(u"Stickout", tool.stickout);
  keys.Put(u"HOffset", tool.hOffset);
  keys.Put(u"DOffset", tool.dOffset);
  keys.Put(u"MaxRPM", tool.maxRpm);
  keys.Put(u"Feed", tool.feed);
  keys.Put(u"Plunge", tool.plunge);
  keys.Put(u"Coolant", tool.coolant);
  keys.Put(u"Notes", tool.notes);
}

// A record as the library keeps it: texts that come back from the settings file as they went.
ToolRecord Kept(const ToolRecord& tool) {
  ToolRecord kept = tool;
  CopyBounded(kept.name, kToolNameUnits, KeptText(tool.name, kToolNameUnits));
  CopyBounded(kept.type, kToolTypeUnits, KeptText(tool.type, kToolTypeUnits));
  CopyBounded(kept.notes, kToolNotesUnits, KeptText(tool.notes, kToolNotesUnits));
  return kept;
}

void StoreTool(const ToolRecord& tool, unsigned char* at) {
  StoreInteger(at, tool.number);
  StoreText(at + kNameAt, kToolNameUnits, tool.name);
  StoreText(at + kTypeAt, kToolTypeUnits, tool.type);
  StoreReal(at + 200, tool.diameter);
  StoreInteger(at + 208, tool.flutes);
  StoreReal(at + 216, tool.gaugeLength);
  StoreReal(at + 224, tool.stickout);
  StoreInteger(at + 232, tool.hOffset);
  StoreInteger(at + 236, tool.dOffset);
  StoreInteger(at + 240, tool.maxRpm);
  StoreReal(at + 248, tool.feed);
  StoreReal(at + 256, tool.plunge);
  StoreInteger(at + 264, tool.coolant);
  StoreText(at + kNotesAt, kToolNotesUnits, tool.notes);
}

// As the settings file gives it back.
ToolRecord AsInFile(const ToolRecord& tool) {
  ToolRecord kept = tool;
  for (double* number :
       {&kept.diameter, &kept.gaugeLength, &kept.stickout, &kept.feed, &kept.plunge}) {
    *number = ParseDecimal(FixedText(*number, kStoredDecimals), 0);
  }
  return kept;
}

std::string StateOf(const ToolRecord& tool) {
  std::string bytes(kToolMirrorBytes, '\0');
  StoreTool(AsInFile(tool), reinterpret_cast<unsigned char*>(bytes.data()));
  return bytes;
}

std::string StateOf(const ToolLibrary& library) {
  std::string states;
  for (int i = 0; i < library.count; ++i) AddState(states, HashBytes(StateOf(library.tools[i])));
  return states;
}

constexpr RecordWriter<ToolRecord> kWriter{WriteTool, StateOf};

// False: the file has no such library, or cannot be read.
bool ReadTools(ToolLibrary& library) {
  library = ToolLibrary();
  platform::BeginProfileChange();  // one reading of the file for all keys
  const bool there = !platform::ReadProfile(kTable, u"Count", u"").empty();
  library.count = std::clamp(ProfileReadInteger(kTable, u"Count", 0), 0, kMaxTools);
  for (int i = 0; i < library.count; ++i) LoadTool(i, library.tools[i]);
  platform::EndProfileChange();
  return there;
}

bool IsTool(int index) { return index >= 0 && index < toolLibrary.count; }

// At least two digits, as T and H words have them in lists and blocks.
std::u16string TwoDigits(std::int32_t number) {
  return (number < 10 ? u"0" : u"") + IntegerText(number);
}

}  // namespace

void LoadToolLibrary() {
  ReadTools(toolLibrary);
  ReadState(marks, StateOf(toolLibrary));
}

bool FollowToolFile() {
  ToolLibrary now;
  if (!ReadTools(now) || KnowsState(marks, StateOf(now))) return false;
  toolLibrary = now;
  ReadState(marks, StateOf(now));
  TellReadAgain(u"tool library");
  return true;
}

bool SaveToolLibrary(void (*told)(bool saved)) {
  platform::BeginProfileChange();
  platform::WriteProfile(kTable, u"Count", IntegerText(toolLibrary.count));
  std::string states;
  for (int i = 0; i < toolLibrary.count; ++i) {
    AddState(states, SaveSection(saved[i], SectionOf(i), toolLibrary.tools[i], kWriter));
  }
  HandedState(marks, states);
  const bool handed = EndLibraryChange(told, [](bool written) { WrittenState(marks, written); });
  if (app.dataDirReady) {
    std::string bytes;
    WriteToolMirror(toolLibrary, bytes);
    SaveMirror(u"Tool Library", u"Library.tools", std::move(bytes));
  }
  return handed;
}

void AddToolList(void (*fill)()) {
  if (!fill) StopProgram(u"MORVA cannot start. A list of tools is filled by nobody.");
  fills[NextRow(listFill)] = fill;
}

void RefreshToolLists() {
  for (int i = 0; i < listFill.count; ++i) fills[i]();
}

void RegisterToolLibrary() { listFill.count = 0; }

void ResetToolLibrary() {
  toolLibrary = ToolLibrary();
  marks = FileMarks();
  std::ranges::fill(saved, SavedSection<ToolRecord>());
  listFill.count = 0;
}

int AppendTool(const ToolRecord& tool) {
  if (toolLibrary.count >= kMaxTools) return -1;
  const int index = toolLibrary.count++;
  toolLibrary.tools[index] = Kept(tool);
  return index;
}

bool ReplaceTool(int index, const ToolRecord& tool) {
  if (!IsTool(index)) return false;
  toolLibrary.tools[index] = Kept(tool);
  return true;
}

bool RemoveTool(int index) {
  if (!IsTool(index)) return false;
  for (int i = index; i + 1 < toolLibrary.count; ++i) {
    toolLibrary.tools[i] = toolLibrary.tools[i + 1];
  }
  toolLibrary.tools[--toolLibrary.count] = ToolRecord();
  return true;
}

int FindSameTool(const ToolRecord& tool) {
  const std::string wanted = StateOf(tool);
  for (int i = 0; i < toolLibrary.count; ++i) {
    if (StateOf(toolLibrary.tools[i]) == wanted) return i;
  }
  return -1;
}

int FindTool(std::int32_t number) {
  for (int i = 0; i < toolLibrary.count; ++i) {
    if (toolLibrary.tools[i].number == number) return i;
  }
  return -1;
}

void WriteToolMirror(const ToolLibrary& library, std::string& bytes) {
  bytes.assign(static_cast<std::size_t>(library.count) * kToolMirrorBytes, '\0');
  auto* at = reinterpret_cast<unsigned char*>(bytes.data());
  for (int i = 0; i < library.count; ++i, at += kToolMirrorBytes) StoreTool(library.tools[i], at);
}

std::span<const char16_t* const> ToolTypes() { return kTypes; }

int ToolTypeRow(std::u16string_view type) {
  for (std::size_t i = 0; i < std::size(kTypes); ++i) {
    if (HoldsFolded(type, kTypes[i])) return static_cast<int>(i);
  }
  return 0;
}

ToolShape ShapeOfTool(std::u16string_view type) {
  if (HoldsFolded(type, u"BALL")) return ToolShape::Ball;
  if (HoldsFolded(type, u"DRILL")) return ToolShape::Drill;
  if (HoldsFolded(type, u"CHAMFER")) return ToolShape::Chamfer;
  return ToolShape::Flat;
}

double ToolTipHeight(ToolShape shape, double radius, double distance) {
  switch (shape) {
    case ToolShape::Ball:
      return radius - std::sqrt(std::max(radius * radius - distance * distance, 0.0));
    case ToolShape::Drill:
    case ToolShape::Chamfer:
      return kPointSlope * distance;
    default:
      return 0;
  }
}

std::u16string ToolNameText(const ToolRecord& tool) {
  return u"T" + TwoDigits(tool.number) + u"  " + tool.name;
}

std::u16string ToolRowText(const ToolRecord& tool, bool metric) {
  std::u16string row = ToolNameText(tool);
  row += u"  \u2022  ";
  row += tool.type;
  row += u"  \u00D8" + FixedText(tool.diameter * (metric ? kMmPerInch : 1), kLengthDecimals);
  row += metric ? u" mm" : u" in";
  return row;
}

void WriteToolBlock(const ToolRecord& tool, bool metric, CodeWriter& out) {
  const double unit = metric ? kMmPerInch : 1;
  Line(out, u"");
  PutInteger(out, u"(TOOL LIBRARY: T", tool.number);
  Put(out, u" - ");
  Put(out, NameInComment(tool.name));
  Line(out, u")");
  PutInteger(out, u"T", tool.number);
  Line(out, u" M06");
  PutInteger(out, u"S", tool.maxRpm);
  Line(out, u" M03");
  Line(out, metric ? u"G21" : u"G20");
  Put(out, u"G00 G43 H");
  Put(out, TwoDigits(tool.hOffset));
  Line(out, metric ? u" Z12.700" : u" Z0.500");
  if (tool.coolant == static_cast<std::int32_t>(Coolant::Flood)) Line(out, u"M08");
  if (tool.coolant == static_cast<std::int32_t>(Coolant::Shower)) Line(out, u"M07");
  Put(out, u"(DIA ", tool.diameter * unit, kLengthDecimals);
  Put(out, u"  DEFAULT F", tool.feed * unit, kFeedDecimals);
  Put(out, u"  PLUNGE F", tool.plunge * unit, kFeedDecimals);
  Line(out, u")");
}

}  // namespace morva
