#include "simulator/control_settings.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/outlets.h"
#include "app/profile_keys.h"
#include "library/tools.h"
#include "library/units.h"
#include "platform/file.h"
#include "platform/profile.h"
#include "text/codetext.h"
#include "text/strict_number.h"

namespace morva {

namespace {

constexpr char16_t kMachineSection[] = u"Simulator";
constexpr char16_t kOffsetSection[] = u"Offsets";
constexpr char16_t kCheckSection[] = u"Check";

struct NumberKey {
  const char16_t* key;
  double ControlTable::*field;
  double least;
  double most;
};
constexpr NumberKey kNumbers[] = {
    {u"RapidRate", &ControlTable::rapidRate, 1, 10000},
    {u"Acceleration", &ControlTable::acceleration, 0.1, 10000},
    {u"ToolChangeSeconds", &ControlTable::toolChangeSeconds, 0, 600},
    {u"SpindleSeconds", &ControlTable::spindleSeconds, 0, 600},
    {u"ReversalSeconds", &ControlTable::reversalSeconds, 0, 10},
    {u"BlockSeconds", &ControlTable::leastBlockSeconds, 0, 10},
    {u"TimeFactor", &ControlTable::timeFactor, 0.1, 10},
    {u"SpindleSpeed", &ControlTable::mostSpeed, 1, 100000},
    {u"PeckRetract", &ControlTable::peckRetract, 0, 10},
    {u"RetractAboveR", &ControlTable::retractAboveR, 0, 10},
};

struct SwitchKey {
  const char16_t* key;
  bool ControlTable::*field;
};
constexpr SwitchKey kSwitches[] = {
    {u"WholeLengths", &ControlTable::wholeLengths},
    {u"WholeFeeds", &ControlTable::wholeFeeds},
    {u"BlockDelete", &ControlTable::blockDelete},
    {u"OptionalStop", &ControlTable::optionalStop},
    {u"DrillsInPlace", &ControlTable::drillsInPlace},
};

constexpr const char16_t* kTravelKeys[3] = {u"TravelX", u"TravelY", u"TravelZ"};
constexpr char16_t kShiftKey[] = u"ShiftDirection";
constexpr char16_t kUnitKey[] = u"Unit";
constexpr double kMostDirection = 3;
constexpr double kLeastTravel = 1;    // inches
constexpr double kMostLength = 1000;  // inches, of travel and offsets
constexpr int kOffsetNumbers = 4;     // of an offset's line

// Of G54 and on.
std::u16string WorkKey(int row) { return u"G" + IntegerText(54 + row); }

std::u16string FurtherWorkKey(int number) { return u"G154P" + IntegerText(number); }
std::u16string ToolKey(int number) { return u"T" + IntegerText(number); }

// What the present reading refuses, and what the last one did: that is not told again.
std::vector<std::u16string> refused;
std::vector<std::u16string> refusedBefore;

constexpr std::u16string_view kNotTaken =
    u" in the settings is no value in its range; it counts as not set.";
constexpr std::u16string_view kNotRead = u" in the settings is no key that is read.";

void Refuse(std::u16string_view section, std::u16string_view key, std::u16string_view value,
            std::u16string_view why = kNotTaken) {
  refused.push_back(u"[" + std::u16string(section) + u"] " + std::u16string(key) + u"=" +
                    std::u16string(value));
  const auto end = refusedBefore.end();
  if (std::find(refusedBefore.begin(), end, refused.back()) != end) return;
  AppendOutput(refused.back() + std::u16string(why));
}

std::u16string ValueOf(const char16_t* section, std::u16string_view key) {
  return platform::ReadProfile(section, key, u"");
}

void ReadNumber(const char16_t* key, double& field, double least, double most) {
  const std::u16string text = ValueOf(kMachineSection, key);
  if (text.empty()) return;
  double value = 0;
  if (ReadStrictNumber(text, value) && value >= least && value <= most) {
    field = value;
  } else {
    Refuse(kMachineSection, key, text);
  }
}

// 0 or 1.
bool IsSwitch(std::u16string_view text, bool& on) {
  double value = 0;
  if (!ReadStrictNumber(text, value) || (value != 0 && value != 1)) return false;
  on = value != 0;
  return true;
}

void ReadSwitch(const char16_t* section, const char16_t* key, bool& field) {
  const std::u16string text = ValueOf(section, key);
  if (!text.empty() && !IsSwitch(text, field)) Refuse(section, key, text);
}

// A whole number.
void ReadDirection(int& direction) {
  double value = direction;
  ReadNumber(kShiftKey, value, 0, kMostDirection);
  if (value == static_cast<int>(value)) {
    direction = static_cast<int>(value);
  } else {
    Refuse(kMachineSection, kShiftKey, ValueOf(kMachineSection, kShiftKey));
  }
}

// Inches of a number of the section's.
double OffsetUnit() {
  const std::u16string text = ValueOf(kOffsetSection, kUnitKey);
  if (SameFolded(text, u"mm")) return kInchPerMm;
  if (!text.empty() && !SameFolded(text, u"in")) Refuse(kOffsetSection, kUnitKey, text);
  return 1;
}

// Numbers with commas between; `count` of them are wanted. Missing ones at the end are 0.
bool ReadNumbers(std::u16string_view text, int count, double factor, double (&numbers)[4]) {
  std::fill(std::begin(numbers), std::end(numbers), 0.0);
  for (int i = 0; i < count; ++i) {
    const std::size_t end = std::min(text.find(u','), text.size());
    std::u16string_view part = text.substr(0, end);
    while (!part.empty() && part.front() == u' ') part.remove_prefix(1);
    while (!part.empty() && part.back() == u' ') part.remove_suffix(1);
    double value = 0;
    if (!ReadStrictNumber(part, value) || value * factor > kMostLength ||
        value * factor < -kMostLength) {
      return false;
    }
    numbers[i] = value * factor;
    if (end == text.size()) return true;
    text.remove_prefix(end + 1);
  }
  return false;  // more than there should be
}

void ReadOffset(const std::u16string& key, int count, double factor, double* fields) {
  const std::u16string text = ValueOf(kOffsetSection, key);
  if (text.empty()) return;
  double numbers[kOffsetNumbers];
  if (!ReadNumbers(text, count, factor, numbers)) return Refuse(kOffsetSection, key, text);
  std::copy_n(numbers, count, fields);
}

void ReadOffsets(ControlTable& table) {
  const double factor = OffsetUnit();
  for (int i = 0; i < kFurtherWorkRow - kFirstWorkRow; ++i) {
    ReadOffset(WorkKey(i), 3, factor, table.work[kFirstWorkRow + i]);
  }
  for (int i = 0; i < kFurtherWorkRows; ++i) {
    ReadOffset(FurtherWorkKey(i + 1), 3, factor, table.work[kFurtherWorkRow + i]);
  }
  for (int i = 1; i <= kControlTools; ++i) {
    ToolOffset& tool = table.tools[i];
    double fields[kOffsetNumbers] = {};
    ReadOffset(ToolKey(i), kOffsetNumbers, factor, fields);
    const std::u16string text = ValueOf(kOffsetSection, ToolKey(i));
    const bool said = std::ranges::count(text, u',') >= 2;
    tool = {fields[0], fields[1], fields[2], fields[3], !text.empty(), said};
  }
}

bool IsOffsetKey(std::u16string_view key) {
  if (SameFolded(key, kUnitKey)) return true;
  for (int i = 0; i < kFurtherWorkRow - kFirstWorkRow; ++i) {
    if (SameFolded(key, WorkKey(i))) return true;
  }
  for (int i = 1; i <= kFurtherWorkRows; ++i) {
    if (SameFolded(key, FurtherWorkKey(i))) return true;
  }
  for (int i = 1; i <= kControlTools; ++i) {
    if (SameFolded(key, ToolKey(i))) return true;
  }
  return false;
}

bool IsCheckKey(std::u16string_view key) {
  for (int i = 0; i < kFindings; ++i) {
    if (SameFolded(key, NameOf(static_cast<Finding>(i)))) return true;
  }
  return false;
}

std::u16string_view Trimmed(std::u16string_view text) {
  while (!text.empty() && text.front() <= u' ') text.remove_prefix(1);
  while (!text.empty() && text.back() <= u' ') text.remove_suffix(1);
  return text;
}

// A key that is misspelled would leave an offset unset without a word.
void TellStrayKeys(const char16_t* section, bool (*isKey)(std::u16string_view key)) {
  const std::u16string text = platform::FromUtf8(platform::ProfileSection(section));
  for (std::u16string_view rest = text; !rest.empty();) {
    const std::size_t end = std::min(rest.find(u'\n'), rest.size());
    const std::u16string_view line = Trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const std::size_t equals = line.find(u'=');
    if (equals == line.npos || line.front() == u';' || line.front() == u'#') continue;
    const std::u16string_view key = Trimmed(line.substr(0, equals));
    if (!isKey(key)) Refuse(section, key, Trimmed(line.substr(equals + 1)), kNotRead);
  }
}

// Without zeros at the end that say nothing.
std::u16string NumberText(double number) {
  std::u16string text = FixedText(number, 4);
  while (text.back() == u'0') text.pop_back();
  if (text.back() == u'.') text.pop_back();
  return text;
}

void WriteMissing(const char16_t* section, std::u16string_view key, std::u16string_view value) {
  constexpr std::u16string_view kNone = u"\x1";
  if (platform::ReadProfile(section, key, kNone) == kNone) {
    platform::WriteProfile(section, key, value);
  }
}

}  // namespace

std::vector<ControlKey> ControlKeys() {
  const ControlTable table;
  std::vector<ControlKey> keys;
  for (const NumberKey& row : kNumbers) {
    keys.push_back({row.key, table.*row.field, row.least, row.most});
  }
  for (const SwitchKey& row : kSwitches) {
    keys.push_back({row.key, static_cast<double>(table.*row.field), 0, 1});
  }
  for (int axis = 0; axis < 3; ++axis) {
    keys.push_back({kTravelKeys[axis], table.travel[axis], kLeastTravel, kMostLength});
  }
  keys.push_back({kShiftKey, static_cast<double>(table.shiftDirection), 0, kMostDirection});
  return keys;
}

void ReadControlSettings(ControlTable& table) {
  // Inside the pair the file is read once.
  platform::BeginProfileChange();
  for (const NumberKey& row : kNumbers) ReadNumber(row.key, table.*row.field, row.least, row.most);
  for (const SwitchKey& row : kSwitches) {
    ReadSwitch(kMachineSection, row.key, table.*row.field);
  }
  for (int axis = 0; axis < 3; ++axis) {
    ReadNumber(kTravelKeys[axis], table.travel[axis], kLeastTravel, kMostLength);
  }
  ReadDirection(table.shiftDirection);
  ReadOffsets(table);
  for (int i = 0; i < kFindings; ++i) {
    bool told = true;
    ReadSwitch(kCheckSection, NameOf(static_cast<Finding>(i)), told);
  }
  TellStrayKeys(kOffsetSection, IsOffsetKey);
  TellStrayKeys(kCheckSection, IsCheckKey);
  refusedBefore = std::exchange(refused, {});
  (void)platform::EndProfileChange();
}

void WriteMissingControlSettings() {
  platform::BeginProfileChange();
  for (const ControlKey& key : ControlKeys()) {
    WriteMissing(kMachineSection, key.key, NumberText(key.fallback));
  }
  WriteMissing(kOffsetSection, kUnitKey, u"in");
  for (int i = 0; i < kFurtherWorkRow - kFirstWorkRow; ++i) {
    WriteMissing(kOffsetSection, WorkKey(i), u"0,0,0");
  }
  (void)platform::EndProfileChange();
}

void FillDiameters(ControlTable& table) {
  const int count = std::clamp(toolLibrary.count, 0, kMaxTools);
  for (int i = 0; i < count; ++i) {
    const ToolRecord& tool = toolLibrary.tools[i];
    if (tool.dOffset < 1 || tool.dOffset > kControlTools) continue;
    ToolOffset& offset = table.tools[tool.dOffset];
    if (offset.diameter == 0 && !offset.diameterSaid) offset.diameter = tool.diameter;
  }
}

void DropUnwanted(Findings& findings) {
  platform::BeginProfileChange();
  for (int i = 0; i < kFindings; ++i) {
    const Finding kind = static_cast<Finding>(i);
    if (findings.ofKind[i] == 0) continue;
    bool told = true;
    if (IsSwitch(ValueOf(kCheckSection, NameOf(kind)), told) && !told) {
      DropFindings(findings, kind);
    }
  }
  (void)platform::EndProfileChange();
}

}  // namespace morva
