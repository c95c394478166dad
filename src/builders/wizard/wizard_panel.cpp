#include "builders/wizard/wizard_panel.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/icon_names.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "app/router.h"
#include "builders/wizard/wizard_picture.h"
#include "builders/wizard/wizard_text.h"
#include "documents/builder.h"
#include "library/tools.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

namespace {

constexpr int kRefreshMs = 80;
constexpr unsigned kHolePages = PageBit(kWizardDrill) | PageBit(kWizardPeck) | PageBit(kWizardTap);

// What the status line says of a field, by the pages that say it.
struct FieldHelp {
  int field;
  unsigned pages;
  const char16_t* words;
};
constexpr FieldHelp kHelp[] = {
    {kWizardTool, kEveryPage, u"Number in the tool library; 0 keeps the tool and its offset"},
    {kWizardOffset, kEveryPage, u"Goes into a line of its own as typed, such as G54"},
    {kWizardRpm, kEveryPage, u"Spindle speed in turns a minute, a whole number"},
    {kWizardFeed, PageBit(kWizardTap), u"The feed is the speed times the pitch of this thread"},
    {kWizardFeed, kHolePages, u"Feed into the hole, a minute"},
    {kWizardFeed, kEveryPage, u"Feed along the cut, a minute"},
    {kWizardSafeZ, kHolePages, u"Z above the part; between holes the tool retracts to a fifth"},
    {kWizardSafeZ, kEveryPage, u"Z above the part for rapid moves"},
    {kWizardDepth, kHolePages, u"Z of the bottom of each hole"},
    {kWizardDepth, kEveryPage, u"Z of the cut, at once in one pass"},
    {kWizardX, PageBit(kWizardFace), u"Left side of the face"},
    {kWizardX, PageBit(kWizardSlot), u"X where the cutter goes in"},
    {kWizardX, kEveryPage, u"X of the first hole"},
    {kWizardY, PageBit(kWizardFace), u"Lower side of the face, the first pass"},
    {kWizardY, PageBit(kWizardSlot), u"Y where the cutter goes in"},
    {kWizardY, kEveryPage, u"Y of the row of holes"},
    {kWizardNinth, PageBit(kWizardFace), u"Right side of the face"},
    {kWizardNinth, PageBit(kWizardSlot), u"X where the cut ends"},
    {kWizardNinth, PageBit(kWizardPeck), u"Depth of one peck, above zero"},
    {kWizardNinth, kEveryPage, u"Whole number of holes in the row, 1 to 400"},
    {kWizardTenth, PageBit(kWizardFace), u"Upper side; the last pass is the last whole step"},
    {kWizardTenth, PageBit(kWizardSlot), u"Y where the cut ends"},
    {kWizardTenth, PageBit(kWizardPeck), u"Holes 1 to 400, one inch or 25.4 mm apart"},
    {kWizardTenth, kEveryPage, u"From hole to hole along X; below zero to the left"},
};

const char16_t* HelpOfField(int field, int kind) {
  for (const FieldHelp& help : kHelp) {
    if (help.field == field && (help.pages & PageBit(kind)) != 0) return help.words;
  }
  return u"";
}

// Of what plays in the view.
constexpr const char16_t* kExampleWords[kWizardKinds] = {
    u"Looping G-code example: seven overlapping strokes face a plate.",
    u"Looping G-code example: one pass around a rectangle, one around a circle.",
    u"Looping G-code example: four holes, each drilled at one go.",
    u"Looping G-code example: four deep holes, each in four pecks.",
    u"Looping G-code example: four threads; the spindle turns back on the way out."};

bool SaysTheSame(const FormRow& row, const FormRow& other) {
  using Words = std::u16string_view;
  return row.kind == other.kind && Words(row.label) == other.label &&
         Words(row.labelMm) == other.labelMm && Words(row.help) == other.help &&
         Words(row.start) == other.start && row.fallback.inch == other.fallback.inch &&
         row.follows == other.follows && row.decimals == other.decimals;
}

FormRow RowOf(int field, int kind) {
  const BuilderField& said = WizardFields(kind)[static_cast<std::size_t>(field)];
  FormRow row{.kind = said.kind,
              .id = kIdWizardField + field,
              .label = said.label,
              .labelMm = said.metricLabel,
              .help = HelpOfField(field, kind),
              .start = said.start,
              .fallback = said.fallback,
              .follows = said.follows,
              .decimals = said.decimals,
              .pages = PageBit(kind),
              .enter = kIdWizardInsert,
              .half = true};
  (said.kind == RowKind::Words ? row.words : row.value) = said.kind == RowKind::Words ? 0 : field;
  return row;
}

// One row for the operations that say the same of a field.
void AddField(std::vector<FormRow>& rows, int field) {
  const std::size_t first = rows.size();
  for (int kind = 0; kind < kWizardKinds; ++kind) {
    const FormRow row = RowOf(field, kind);
    std::size_t same = first;
    while (same < rows.size() && !SaysTheSame(rows[same], row)) ++same;
    if (same < rows.size()) {
      rows[same].pages |= PageBit(kind);
    } else {
      rows.push_back(row);
    }
  }
}

const std::vector<FormRow>& WizardRows() {
  static const std::vector<FormRow> kRows = [] {
    constexpr int kCard = kIdWizardKindFirst;
    std::vector<FormRow> rows;
    rows.push_back({.kind = RowKind::Keys, .keys = {kCard, kCard + 1}, .height = 30});
    rows.push_back({.kind = RowKind::Keys,
                    .keys = {kCard + 2, kCard + 3, kCard + 4},
                    .shares = {11, 10, 10},
                    .height = 30});
    rows.push_back({.kind = RowKind::Choice,
                    .id = kIdWizardCombo,
                    .name = u"Operation",
                    .help = u"What the wizard cuts; a change starts its fields anew",
                    .choice = 0,
                    .rows = WizardKinds(),
                    .picks = kWizardKinds,
                    .half = true});
    rows.push_back({.kind = RowKind::Choice,
                    .id = kIdWizardTools,
                    .name = u"Tool of the library",
                    .help = u"Fills in number, speed and feed that nobody has typed",
                    .filled = true,
                    .half = true});
    for (int field = 0; field < kWizardNumbers; ++field) AddField(rows, field);
    rows.push_back({.kind = RowKind::Keys, .keys = {kIdBuilderInch, kIdBuilderMm}});
    for (int kind = 0; kind < kWizardKinds; ++kind) {
      rows.push_back({.kind = RowKind::Note, .label = kExampleWords[kind], .pages = PageBit(kind)});
    }
    rows.push_back({.kind = RowKind::Note,
                    .label = u"INSERT GENERATED CODE opens the guided skim for this operation.",
                    .pages = PageBit(kWizardFace)});
    rows.push_back({.kind = RowKind::View,
                    .id = kViewWizardPicture,
                    .name = u"What the operation cuts",
                    .className = u"MorvaWizardPreview",
                    .least = 92,
                    .fixed = true});
    rows.push_back({.kind = RowKind::Keys, .keys = {kIdWizardInsert}, .fixed = true});
    return rows;
  }();
  return kRows;
}

void SelectToolOfNumber();

bool IsUp() { return app.surface == kSurfaceCode && app.mode == kModeWizard; }

void ShowExampleOfKind() {
  if (IsUp()) Call(hooks.showExample, ChosenWizardKind());
}

// What the user has typed since the operation was chosen, which no tool of the library replaces.
struct Typed {
  bool rpm = false;
  bool feed = false;
};
Typed typed;

// What stood in the fields before a tool of the library filled them in: it comes back with a number
// that the library does not have, as "17" behind its first key is tool 1.
struct Lent {
  bool is = false;
  bool metric = false;
  std::u16string rpm;
  std::u16string feed;
};
Lent lent;

constexpr int Id(WizardNumber field) { return kIdWizardField + field; }

// The rows of the list of tools: the current one, those of the library, and none of them.
void FillWizardTools() {
  platform::Repaint(kViewWizardPicture);  // it shows the diameter of the tool
  if (!platform::Exists(kIdWizardTools)) return;
  platform::HoldListRedraw(kIdWizardTools, true);
  platform::ClearRows(kIdWizardTools);
  platform::AddRow(kIdWizardTools, u"Current tool");
  for (int i = 0; i < toolLibrary.count; ++i) {
    platform::AddRow(kIdWizardTools, ToolNameText(toolLibrary.tools[i]));
  }
  platform::AddRow(kIdWizardTools, u"Not in the library");
  platform::HoldListRedraw(kIdWizardTools, false);
  SelectToolOfNumber();
}

// The list shows which tool the number means.
void SelectToolOfNumber() {
  const std::int32_t number = ParseInteger(
      platform::TextOf(Id(kWizardTool)), static_cast<std::int32_t>(FieldFallback(Id(kWizardTool))));
  const int index = FindTool(number);
  const int unknown = toolLibrary.count + 1;
  platform::SelectRow(kIdWizardTools, number == 0 ? 0 : index < 0 ? unknown : index + 1);
}

// A hole is fed down alone. What a thread is fed by its pitch says.
void TakeRates(const ToolRecord& tool) {
  const int kind = ChosenWizardKind();
  const bool down = kind == kWizardDrill || kind == kWizardPeck;
  const double rate = (down ? tool.plunge : tool.feed) * (UnitsMetric() ? kMmPerInch : 1);
  if (!typed.rpm) platform::SetText(Id(kWizardRpm), IntegerText(tool.maxRpm));
  if (!typed.feed && kind != kWizardTap) {
    platform::SetText(Id(kWizardFeed), NumberText(Id(kWizardFeed), rate));
  }
}

void LendRates(const ToolRecord& tool) {
  if (!lent.is) {
    lent = {true, UnitsMetric(), platform::TextOf(Id(kWizardRpm)),
            platform::TextOf(Id(kWizardFeed))};
  }
  TakeRates(tool);
}

void TakeRatesBack() {
  const Lent before = std::exchange(lent, Lent());
  if (!before.is) return;
  if (!typed.rpm) platform::SetText(Id(kWizardRpm), before.rpm);
  if (typed.feed || ChosenWizardKind() == kWizardTap) return;
  platform::SetText(Id(kWizardFeed), before.feed);
  if (before.metric == UnitsMetric()) return;
  const double rate = FieldNumber(Id(kWizardFeed), 0);
  platform::SetText(
      Id(kWizardFeed),
      NumberText(Id(kWizardFeed), before.metric ? rate / kMmPerInch : rate * kMmPerInch));
}

// A typed number takes the rates of its tool, unless the library has none for it.
void TakeRatesOfRow(int row) {
  if (row > 0 && row <= toolLibrary.count) {
    const ToolRecord& tool = toolLibrary.tools[row - 1];
    if (tool.maxRpm > 0 && tool.feed > 0 && tool.plunge > 0) return LendRates(tool);
  }
  TakeRatesBack();
}

void TakeChosenTool() {
  const int row = platform::SelectedRow(kIdWizardTools);
  if (row == 0) {
    platform::SetText(Id(kWizardTool), u"0");
    TakeRatesBack();
  }
  if (row > 0 && row <= toolLibrary.count) {
    const int index = FindTool(toolLibrary.tools[row - 1].number);
    const ToolRecord& tool = toolLibrary.tools[index];
    if (index != row - 1) ShowStatus(u"Two tools bear this number: the first in the list counts.");
    platform::SetText(Id(kWizardTool), IntegerText(tool.number));
    LendRates(tool);
  }
  SelectToolOfNumber();
  platform::Repaint(kViewWizardPicture);
}

void OnChanged(int id) {
  if (id == kIdWizardTools) return TakeChosenTool();
  if (id == Id(kWizardRpm)) typed.rpm = true;
  if (id == Id(kWizardFeed)) typed.feed = true;
  if (id == kIdWizardCombo) {  // its fields start anew
    typed = Typed();
    lent = Lent();
  }
  if (id == kIdWizardCombo || id == Id(kWizardTool)) SelectToolOfNumber();
  if (id == Id(kWizardTool)) TakeRatesOfRow(platform::SelectedRow(kIdWizardTools));
  if (id == kIdWizardCombo) ShowExampleOfKind();
}

// Lower rows than in other panels: in a small window all fields are in sight at once.
constexpr FormLook kLook = [] {
  FormLook look = kSheetLook;
  look.gap = look.tightGap = 3;
  look.fieldHeight = 24;
  return look;
}();
const Form kForm{.look = &kLook,
                 .sheet = &kBuilderSheet,
                 .rows = WizardRows(),
                 .metric = UnitsMetric,
                 .changed = OnChanged};

bool IsCardOn(int id) { return ChosenWizardKind() == id - kIdWizardKindFirst; }

constexpr Command Card(int kind, const char16_t* words, const char16_t* help, int icon) {
  return {
      .id = kIdWizardKindFirst + kind, .words = words, .help = help, .icon = icon, .on = IsCardOn};
}
constexpr Command kCommands[] = {
    {.id = kIdWizardCombo, .hint = Hint::Quiet},
    {.id = kIdWizardTools, .hint = Hint::Quiet},
    Card(kWizardFace, u"Skim / face", u"Clean a surface to and fro", kIconFace),
    Card(kWizardSlot, u"Profile pass", u"One cut from a start to an end", kIconProfile),
    Card(kWizardDrill, u"Drill holes", u"A row of holes by G81", kIconDrill),
    Card(kWizardPeck, u"Peck drill", u"A row of deep holes by G83", kIconPeck),
    Card(kWizardTap, u"Tap holes", u"A row of threads by G84", kIconTap),
    {kIdWizardInsert, u"INSERT GENERATED CODE", u"Write the operation into the program"},
};

// What a page of the form says.
WizardValues ValuesOf(const FormValues& values) { return WizardOf(values.choices[0], values); }

// Surfaces are cleaned by the guided skim, which has a form of its own.
bool OpenSkim(const FormValues& values) {
  if (ValuesOf(values).kind != kWizardFace) return false;
  Call(hooks.openSkim);
  return true;
}

bool Check(const FormValues& values, Refusal& refusal) {
  const BuilderFault fault = CheckWizard(ValuesOf(values));
  refusal.words = fault.words;
  if (fault.field >= 0) refusal.field = kIdWizardField + fault.field;
  return fault.words[0] == 0;
}

void Write(const FormValues& values, CodeWriter& out) { WriteWizard(ValuesOf(values), out); }

void Draw(const FormValues& values, Picture& picture) {
  const WizardValues said = ValuesOf(values);
  DrawWizard(said, WizardCutter(said), picture);
}

// The code has three decimals: closer holes are cut again and again in one place.
void TellHoles(const FormValues& values) {
  const std::vector<platform::PointF> holes = WizardHoles(ValuesOf(values));
  if (holes.size() < 2 || Printed(holes[1].x - holes[0].x, 3) != 0) return;
  AppendOutput(u"All " + IntegerText(static_cast<std::int64_t>(holes.size())) +
               u" holes lie in one place. Check the X spacing.");
}

// What the library says of the tool, where the code has it otherwise.
void TellTool(const FormValues& values, bool) {
  TellHoles(values);
  Call(hooks.followTools);
  const int number = WholeWithin(values.numbers[kWizardTool], 0, kLastWizardTool);
  const int index = number > 0 ? FindTool(number) : -1;
  const std::u16string tool = u"T" + IntegerText(number);
  // Who keeps no library misses nothing in it.
  if (number > 0 && index < 0 && toolLibrary.count > 0) {
    AppendOutput(tool + u" is not in the tool library.");
  }
  if (index < 0) return;
  const ToolRecord& held = toolLibrary.tools[index];
  const double rpm = values.numbers[kWizardRpm];
  if (held.maxRpm > 0 && rpm > held.maxRpm) {
    AppendOutput(tool + u" turns at " + IntegerText(held.maxRpm) +
                 u" RPM at most by the library; the code has S" + FixedText(rpm, 0) + u".");
  }
  if (held.hOffset == number) return;
  // The code takes the length offset of the tool's own number.
  AppendOutput(u"The library gives " + tool + u" the H offset " + IntegerText(held.hOffset) +
               u"; the code has H" + IntegerText(number) + u".");
}

constexpr ModeKey kModeKeys[] = {{kIdOldModeFirst + 4}};
}  // namespace

const ModeRow kWizardMode = {.mode = kModeWizard,
                             .place = 4,
                             .words = u"Machining wizard",
                             .header = u"MACHINING WIZARD",
                             .icon = kIconWizard,
                             .remembers = true,
                             .keys = kModeKeys};

constexpr Builder kWizardBuilder{
    .title = kWizardTitle,
    .form = &kForm,
    .mode = kModeWizard,
    .row = &kWizardMode,
    .showsPath = true,
    .reading = {.rule = {.blanksBehind = true}},
    .wholeNumbers = true,
    .enter = ShowExampleOfKind,
    .left = [] { Call(hooks.leaveExample); },
    .insertKey = kIdWizardInsert,
    .commands = kCommands,
    .logged =
        u"Wizard block inserted. Verify tool, offset, workholding, and Graphics mode before "
        u"running.",
    .refreshMs = kRefreshMs,
    .instead = OpenSkim,
    .check = Check,
    .write = Write,
    .draw = Draw,
    .room = [](const FormValues&) { return WizardRoom(); },
    .inserted = TellTool};

int ChosenWizardKind() {
  const int row = platform::SelectedRow(kIdWizardCombo);
  return row >= 0 && row < kWizardKinds ? row : kWizardFace;
}

void ChooseWizardKind(int kind) {
  if (kind == ChosenWizardKind()) return;
  platform::SelectRow(kIdWizardCombo, kind);
  FormNotified(kIdWizardCombo, platform::kNotifyComboSelect);
}

void RegisterWizard() {
  RegisterBuilder<kWizardBuilder>();
  for (int id = kIdWizardKindFirst; id <= kIdWizardKindLast; ++id) {
    RegisterCommand(RouterStage::Builder, id, platform::kNotifyClick,
                    [](int card, int) { ChooseWizardKind(card - kIdWizardKindFirst); });
  }
  typed = Typed();
  lent = Lent();
  AddToolList(FillWizardTools);
}

}  // namespace morva
