#include "builders/tools/tool_panel.h"

#include <cstdint>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "builders/tools/tool_form.h"
#include "builders/tools/tool_list.h"
#include "documents/insertion.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "library/tools.h"
#include "library/unit_commands.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::Rect;

constexpr int kRefreshMs = 70;
constexpr int kNumberWidth = 48;  // pixels of the box beside the tools at Home
constexpr int kNumberGap = 4;

// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::List, .id = kIdToolList, .name = u"Tool list", .filled = true, .least = 72},
    {.kind = RowKind::Keys, .keys = {kIdToolAdd, kIdToolEdit}},
    {.kind = RowKind::Keys, .keys = {kIdToolDelete, kIdToolInsert}},
    {.kind = RowKind::Keys, .keys = {kIdToolInch, kIdToolMm}},
    {.kind = RowKind::Note,
     .label = u"Custom tools are saved in MORVA.ini. Select a tool to edit its geometry and "
              u"defaults."},
};
// clang-format on
constexpr FormLook kLook{.gap = 6, .keyHeight = 28, .labels = Labels::None};
constexpr Form kToolsForm{
    .look = &kLook, .rows = kRows, .metric = UnitsMetric, .escape = kIdToolClose};

// At Home: the tools and the number of the chosen one.
enum HomePart : int { kTools, kNumber };
// clang-format off
constexpr FormRow kHomeRows[] = {
    {.kind = RowKind::Choice, .id = kIdHomeTool, .name = u"Home tool",
     .help = u"Look up the number of a tool", .filled = true, .pages = PageBit(kTools)},
    {.kind = RowKind::Words, .id = kIdHomeToolNumber, .name = u"Number of the tool",
     .filled = true, .pages = PageBit(kNumber), .height = 26, .readOnly = true},
};
// clang-format on
constexpr FormLook kHomeLook{.inset = 1, .labels = Labels::None};
constexpr Form kHomeForm{.look = &kHomeLook, .rows = kHomeRows};

constexpr Command kCommands[] = {
    {.id = kIdToolList, .hint = Hint::Quiet},
    {kIdToolAdd, u"+ ADD TOOL", u"Describe a new cutter"},
    {kIdToolEdit, u"EDIT TOOL", u"Open the selected tool"},
    {.id = kIdToolDelete,
     .words = u"DELETE",
     .help = u"Remove the selected tool",
     .name = u"Delete tool"},
    {kIdToolInsert, u"INSERT CODE", u"Write the tool change into the program"},
    InchKey(kIdToolInch, u"Inch of the tool library"),
    MmKey(kIdToolMm, u"Millimeter of the tool library"),
    {.id = kIdHomeTool, .hint = Hint::Quiet},
};

void PlaceHome(const Rect& area) {
  const int split = area.right - kNumberWidth;
  const FormPart parts[] = {{{area.left, area.top, split - kNumberGap, area.bottom}, kTools},
                            {{split, area.top, area.right, area.bottom}, kNumber}};
  PlaceForm(kHomeForm, parts);
}

bool HomeShown() {
  return app.surface == kSurfaceCode && app.mode == kModeHome && toolLibrary.count > 0;
}

void ShowHomeNumber() {
  const int row = platform::SelectedRow(kIdHomeTool);
  const bool held = row >= 0 && row < toolLibrary.count;
  platform::SetText(kIdHomeToolNumber, held ? IntegerText(toolLibrary.tools[row].number) : u"");
}

void RebuildHomeTools() {
  if (!platform::Exists(kIdHomeTool)) return;
  const bool wasEmpty = platform::RowCount(kIdHomeTool) == 0;
  FillTools(kIdHomeTool, ToolNameText);  // there is no room for more
  ShowHomeNumber();
  // Without tools there is no list.
  if (wasEmpty != (toolLibrary.count == 0)) RelayPanels();
}

// A selection shows the tool; two presses, or Enter, go on in its form. What was typed stays.
void OnList(int, int notification) {
  const bool opens = notification == platform::kNotifyListDouble;
  if (SelectedTool() < 0) return;
  if (IsToolFormEdited()) {
    ShowStatus(u"The tool in the form is not saved yet. EDIT TOOL shows the selected one.");
    return;
  }
  OpenToolBuilder(SelectedTool(), opens);
}

void TellNoTool() { ShowStatus(u"Select a tool first."); }

void EditTool() {
  if (SelectedTool() < 0) return TellNoTool();
  OpenToolBuilder(SelectedTool(), true);
}

constexpr ModeKey kModeKeys[] = {{kIdOldModeFirst + 3}};
}  // namespace

const ModeRow kToolsMode = {.mode = kModeTools,
                            .place = 6,
                            .words = u"Tool library",
                            .header = u"TOOL LIBRARY",
                            .icon = kIconTools,
                            .remembers = true,
                            .keys = kModeKeys,
                            .fill = RebuildToolList};

namespace {

void RegisterPanels() {
  Panel panel;
  panel.spot = PanelSpot::RightBody;
  panel.mode = kModeTools;
  panel.row = &kToolsMode;
  panel.make = [] { MakeForm(kToolsForm); };
  panel.place = [](const Rect& area) { PlaceForm(kToolsForm, area); };
  panel.hide = [] { HideForm(kToolsForm); };
  RegisterPanel(panel);
  RegisterForm(kToolsForm);
  Panel home;
  home.spot = PanelSpot::OutputHead;
  home.active = HomeShown;
  home.make = [] { MakeForm(kHomeForm); };
  home.place = PlaceHome;
  home.hide = [] { HideForm(kHomeForm); };
  home.tabStops = [](int* ids, int capacity) { return FormOrder(kHomeForm, ids, capacity); };
  RegisterPanel(home);
  RegisterForm(kHomeForm);
}

}  // namespace

void DeleteSelectedTool() {
  int index = SelectedTool();
  if (index < 0) return TellNoTool();
  if (!Confirmed(u"Tool Library", u"Delete the selected custom tool from the library?")) return;
  FollowTools(index);
  if (!RemoveTool(index)) return;
  ForgetTool(index);
  StoreTools(index, false);
}

namespace {

// The block stands before the user's own moves, which would run in its unit: 50 mm as 50 inches.
bool MaySwitchUnit() {
  const std::int32_t before = UnitsWhereTextGoes();
  const std::uint64_t serial = ActiveSerial();
  return MaySwitchUnits(
             before, UnitsMetric() ? 21 : 20, u"Tool Library",
             before == 21 ? u"MM above keeps its unit." : u"INCH above keeps its unit.") &&
         ActiveSerial() == serial;
}

}  // namespace

void InsertToolBlock() {
  int index = SelectedTool();
  if (index < 0) return TellNoTool();
  // Another window may have stored another offset of it since.
  const std::int32_t number = toolLibrary.tools[index].number;
  FollowTools(index);
  if (index < 0) index = FindTool(number);
  if (index < 0) return TellNoTool();
  CodeWriter out;
  out.most = kToolBlockUnits - 1;
  WriteToolBlock(toolLibrary.tools[index], UnitsMetric(), out);
  if (!MaySwitchUnit() || !InsertTextAsBlock(out.text)) return;
  ProgramChanged({.autosave = true,
                  .refreshMs = kRefreshMs,
                  .rebuildPath = true,
                  .logged = u"Tool block inserted from Tool Library."});
  if (IsToolFormEdited())
    AppendOutput(u"What is typed in the tool form is not saved; the block holds the stored tool.");
  // What was inserted is to be seen.
  if (IsToolBuilderOpen() && !IsToolFormEdited()) CloseToolBuilder();
}

void RegisterTools() {
  RegisterToolLibrary();
  RegisterPanels();
  RegisterToolForm();
  AddCommands(kCommands);
  AddToolList(RebuildToolList);
  AddToolList(RebuildHomeTools);
  RegisterUnitKeys(kIdToolInch, kIdToolMm);
  using platform::kNotifyClick;
  const RouterStage click = RouterStage::Click;
  RegisterCommand(RouterStage::HomeToolCombo, kIdHomeTool, platform::kNotifyComboSelect,
                  [](int, int) { ShowHomeNumber(); });
  RegisterCommand(RouterStage::Notified, kIdToolList, kNotifyBelowThree, OnList);
  RegisterCommand(click, kIdToolAdd, kNotifyClick, [](int, int) { OpenToolBuilder(-1, true); });
  RegisterCommand(click, kIdToolEdit, kNotifyClick, [](int, int) { EditTool(); });
  RegisterCommand(click, kIdToolDelete, kNotifyClick, [](int, int) { DeleteSelectedTool(); });
  RegisterCommand(click, kIdToolInsert, kNotifyClick, [](int, int) { InsertToolBlock(); });
}

void ResetTools() {
  ResetToolForm();
  ResetToolLibrary();
}

}  // namespace morva
