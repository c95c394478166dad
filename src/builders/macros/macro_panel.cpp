#include "builders/macros/macro_panel.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "app/router.h"
#include "documents/builder.h"
#include "documents/insertion.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "library/macro_templates.h"
#include "library/macros.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/message.h"
#include "text/codetext.h"
#include "text/strict_number.h"

namespace morva {

namespace {

constexpr int kRefreshMs = 70;

// The form's pages are the templates. Their fields come from the library, so the rows are made at
// start-up.
std::span<const char16_t* const> Names() {
  static const auto kNames = [] {
    std::array<const char16_t*, kMacroTemplates> names{};
    for (std::size_t kind = 0; kind < names.size(); ++kind)
      names[kind] = MacroTemplates()[kind].name;
    return names;
  }();
  return kNames;
}

void AddFields(std::vector<FormRow>& rows, int kind) {
  for (int i = 0; i < kMacroFields; ++i) {
    const MacroField& field = MacroTemplates()[static_cast<std::size_t>(kind)].fields[i];
    if (!field.label[0]) continue;
    rows.push_back({.kind = RowKind::Words,
                    .id = kIdMacroField + i,
                    .label = field.label,
                    .help = u"Goes into the program as typed",
                    .start = field.start,
                    .words = i,
                    .pages = PageBit(kind),
                    .enter = kIdMacroInsert,
                    .limit = 0});
  }
}

const std::vector<FormRow>& MacroRows() {
  static const std::vector<FormRow> kRows = [] {
    std::vector<FormRow> rows;
    rows.push_back({.kind = RowKind::Note,
                    .label = u"Insert a template, or save the current program as a reusable macro "
                             u"below."});
    rows.push_back({.kind = RowKind::Choice,
                    .id = kIdMacroCombo,
                    .name = u"Macro",
                    .help = u"What the template writes",
                    .choice = 0,
                    .rows = Names(),
                    .picks = kMacroTemplates});
    for (int kind = 0; kind < kMacroTemplates; ++kind) AddFields(rows, kind);
    rows.push_back({.kind = RowKind::Keys, .keys = {kIdMacroInsert}});
    rows.push_back({.kind = RowKind::Head, .label = u"CUSTOM MACROS"});
    rows.push_back({.kind = RowKind::List,
                    .id = kIdMacroList,
                    .name = u"CUSTOM MACROS",
                    .filled = true,
                    .least = 96});
    rows.push_back({.kind = RowKind::Words,
                    .id = kIdMacroName,
                    .name = u"Macro name",
                    .help = u"Name of the macro to save or to rename",
                    .filled = true,
                    .limit = kMacroNameUnits - 1,
                    .wide = true});
    rows.push_back({.kind = RowKind::Keys, .keys = {kIdMacroSave, kIdMacroInsertCustom}});
    rows.push_back(
        {.kind = RowKind::Keys, .keys = {kIdMacroDuplicate, kIdMacroRename, kIdMacroDelete}});
    return rows;
  }();
  return kRows;
}

void OnChanged(int id) {
  // The row of an empty list takes no typed name away.
  if (id == kIdMacroList && macroLibrary.count > 0) ShowMacroName();
}

const Form kForm{
    .sheet = &kBuilderSheet, .rows = MacroRows(), .metric = UnitsMetric, .changed = OnChanged};

constexpr Command kCommands[] = {
    {.id = kIdMacroCombo, .hint = Hint::Quiet},
    {kIdMacroInsert, u"INSERT BUILT-IN MACRO", u"Write the template into the program"},
    {.id = kIdMacroList, .hint = Hint::Quiet},
    {kIdMacroSave, u"SAVE CURRENT", u"Keep the program as a macro"},
    {.id = kIdMacroInsertCustom,
     .words = u"INSERT",
     .help = u"Write the selected macro into the program",
     .name = u"Insert macro"},
    {kIdMacroDuplicate, u"DUPLICATE", u"Copy the selected macro"},
    {.id = kIdMacroRename,
     .words = u"RENAME",
     .help = u"Give the selected macro the name in the box",
     .name = u"Rename macro"},
    {.id = kIdMacroDelete,
     .words = u"DELETE",
     .help = u"Remove the selected macro",
     .name = u"Delete macro"},
};

// Half of "0,5" or "1/2" must not place a hole. A text without a digit counts as its fallback.
bool IsHalfNumber(const std::u16string& text, bool placesHoles) {
  if (text.find(u',') != text.npos) return true;
  double number = 0;
  return placesHoles && std::any_of(text.begin(), text.end(), IsDigit) &&
         ReadStrict(text, {.blanksBehind = true}, number) != Misread::None;
}

// "+4" and 4.7 are numbers, but the row would have one hole and four.
bool IsWholeCount(const std::u16string& text) {
  return std::none_of(text.begin(), text.end(), IsDigit) ||
         ParseDecimal(text, 0) == static_cast<double>(ParseInteger(text, 0));
}

// The rows of holes alone compute with their fields; the other templates write them as typed.
bool Check(const FormValues& values, Refusal& refusal) {
  if (!IsHoleRow(values.choices[0])) return true;
  refusal.words =
      u"Only a part of this field is a number. Write 0.5, not 0,5 or 1/2. Nothing was inserted.";
  for (int i = 0; i < kMacroFields; ++i) {
    refusal.field = kIdMacroField + i;
    if (IsHalfNumber(values.words[i], i < kHoleRowPlaces)) return false;
    if (i == kHoleRowCount && !IsWholeCount(values.words[i])) {
      refusal.words = u"The hole count is a whole number of digits alone. Nothing was inserted.";
      return false;
    }
  }
  return true;
}

void Write(const FormValues& values, CodeWriter& out) {
  WriteMacro(values.choices[0],
             std::span<const std::u16string, kMacroFields>(values.words, kMacroFields),
             values.metric, out);
}

constexpr ModeKey kModeKeys[] = {{kIdOldModeFirst + 1}};
}  // namespace

const ModeRow kMacrosMode = {.mode = kModeMacros,
                             .place = 7,
                             .words = u"Macro library",
                             .header = u"MACRO LIBRARY",
                             .icon = kIconMacros,
                             .keys = kModeKeys,
                             .fill = FillMacroList};

namespace {

constexpr Builder kMacroBuilder{
    .title = u"Macro Builder",
    .form = &kForm,
    .mode = kModeMacros,
    .row = &kMacrosMode,
    .insertKey = kIdMacroInsert,
    .commands = kCommands,
    .logged = u"Macro Builder inserted a multi-line block. Verify all values before machining.",
    .check = Check,
    .write = Write,
    .room = [](const FormValues&) -> std::size_t { return kMacroTextUnits - 1; }};

void TellStored(bool stored) {
  if (stored) return;
  constexpr char16_t kWords[] =
      u"MORVA.ini could not be written \u2014 the macro library lasts for this run only.";
  AppendOutput(kWords);
  ShowStatus(kWords);
}

void TellSaved(bool saved) {
  if (saved) return AppendOutput(u"Current program saved to Custom Macros.");
  TellStored(false);
}

void Store(int selected, void (*told)(bool saved)) {
  SaveMacroLibrary(told);
  FillMacroList();
  platform::SelectRow(kIdMacroList, std::min(selected, macroLibrary.count - 1));
  ShowMacroName();
}

// Whether something stands in the way; then a box says what.
bool IsRefused(const MacroRefusal& refusal) {
  if (!refusal.words[0]) return false;
  platform::ShowBox(refusal.title, refusal.words, platform::BoxButtons::Ok, refusal.icon);
  return true;
}

// The selected macro; without one the user is told.
int MacroToWorkOn() {
  const int index = SelectedMacro();
  if (index < 0) ShowStatus(u"Select a macro first.");
  return index;
}

// Where another program has changed the library, the macro's new index; -1: it is gone or another.
int FollowMacro(int index) {
  const MacroRecord before = macroLibrary.macros[index];
  const std::u16string typed = platform::TextOf(kIdMacroName);
  if (!FollowMacroFile()) return index;
  FillMacroList();
  const int now = FindSameMacro(before);
  platform::SelectRow(kIdMacroList, now);
  platform::SetText(kIdMacroName, typed);
  return now;
}

std::u16string NameToSave() {
  std::u16string name = platform::TextOf(kIdMacroName);
  if (!name.empty()) return name;
  name = ActiveTab() ? std::u16string(ActiveTab()->title) : u"Custom Macro";
  platform::SetText(kIdMacroName, name);
  return name;
}

}  // namespace

int SelectedMacro() {
  const int row = platform::SelectedRow(kIdMacroList);
  return row < macroLibrary.count ? row : -1;
}

void FillMacroList() {
  if (!platform::Exists(kIdMacroList)) return;
  const int before = platform::SelectedRow(kIdMacroList);
  platform::HoldListRedraw(kIdMacroList, true);
  platform::ClearRows(kIdMacroList);
  for (int i = 0; i < macroLibrary.count; ++i) {
    platform::AddRow(kIdMacroList, macroLibrary.macros[i].name, i);
  }
  if (macroLibrary.count == 0) {
    platform::AddRow(kIdMacroList, u"No macros yet", -1);
    platform::SetRowDim(kIdMacroList, 0, true);
  }
  platform::HoldListRedraw(kIdMacroList, false);
  platform::SelectRow(kIdMacroList, before);
}

void ShowMacroName() {
  const int index = SelectedMacro();
  platform::SetText(kIdMacroName, index >= 0 ? macroLibrary.macros[index].name : u"");
}

void SaveProgramAsMacro() {
  const std::u16string name = NameToSave();
  SyncActiveTab();
  // A copy: behind the question below the program may get markers.
  const std::u16string code = ActiveTab() ? ActiveTab()->text : std::u16string();
  // The list stays with its macro, and the rows may have moved.
  if (const int selected = SelectedMacro(); selected >= 0) {
    FollowMacro(selected);
  } else if (FollowMacroFile()) {
    FillMacroList();
  }
  if (IsRefused(CheckMacro(name, code))) return;
  if (FindMacro(name) >= 0 &&
      !Confirmed(kSaveMacroTitle, u"A custom macro with this name already exists. Replace it?")) {
    return;
  }
  Store(PutMacro(name, code), TellSaved);
}

void InsertCustomMacro() {
  int index = MacroToWorkOn();
  if (index < 0) return;
  // Another window may have stored other code of it since.
  const std::u16string name = macroLibrary.macros[index].name;
  index = FollowMacro(index);
  if (index < 0) index = FindMacro(name);
  if (index < 0) return;
  bool lacksCode = false;
  const bool lacksEnd = !macroLibrary.macros[index].longLine.empty();
  const std::u16string code = MacroToInsert(macroLibrary.macros[index].code, lacksCode);
  if (IsBlankCode(code)) return ShowStatus(u"The macro is blank. Nothing was inserted.");
  const std::int32_t unitBefore = UnitsWhereTextGoes();
  if (!InsertTextAsBlock(code)) return;
  ProgramChanged({.autosave = true,
                  .refreshMs = kRefreshMs,
                  .rebuildPath = true,
                  .logged = u"Custom macro inserted into active program."});
  TellOtherUnit(unitBefore, code);
  if (lacksCode)
    AppendOutput(u"Code that was excluded when the macro was saved is not part of it.");
  if (lacksEnd) AppendOutput(u"The end of the macro was not inserted: MORVA.ini holds more of it.");
}

void DuplicateCustomMacro() {
  int index = MacroToWorkOn();
  if (index >= 0) index = FollowMacro(index);
  if (index < 0 || IsRefused(CheckMacroRoom())) return;
  Store(DuplicateMacro(index), TellStored);
}

void RenameCustomMacro() {
  int index = MacroToWorkOn();
  if (index >= 0) index = FollowMacro(index);
  if (index < 0) return;
  const std::u16string name = platform::TextOf(kIdMacroName);
  if (IsRefused(CheckMacroName(index, name))) return;
  RenameMacro(index, name);
  Store(index, TellStored);
}

void DeleteCustomMacro() {
  int index = MacroToWorkOn();
  if (index < 0 || !Confirmed(u"Custom Macros", u"Delete the selected custom macro?")) return;
  index = FollowMacro(index);
  if (!RemoveMacro(index)) return;
  Store(index, TellStored);
}

void RegisterMacros() {
  static_assert(kMacroFields <= kMaxFormWords);
  RegisterBuilder<kMacroBuilder>();
  using platform::kNotifyClick;
  const RouterStage click = RouterStage::Click;
  RegisterCommand(RouterStage::Notified, kIdMacroList, platform::kNotifyListDouble,
                  [](int, int) { InsertCustomMacro(); });
  RegisterCommand(click, kIdMacroSave, kNotifyClick, [](int, int) { SaveProgramAsMacro(); });
  RegisterCommand(click, kIdMacroInsertCustom, kNotifyClick, [](int, int) { InsertCustomMacro(); });
  RegisterCommand(click, kIdMacroDuplicate, kNotifyClick, [](int, int) { DuplicateCustomMacro(); });
  RegisterCommand(click, kIdMacroRename, kNotifyClick, [](int, int) { RenameCustomMacro(); });
  RegisterCommand(click, kIdMacroDelete, kNotifyClick, [](int, int) { DeleteCustomMacro(); });
}

}  // namespace morva
