#include "documents/destination.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/wells.h"
#include "documents/feature_blocks.h"
#include "documents/new_program.h"
#include "documents/program_places.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "documents/user_code_split.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/dialog.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::FontRole;
using platform::Rect;

constexpr Rect kPlace{100, 120, 100 + 640, 120 + 528};

// Pages: without and with the check box, which only user code around the caret has.
enum PickerPage : int { kPlain, kWithSplit };

// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Choice, .id = kIdDestinationProgram, .label = u"Destination project"},
    {.kind = RowKind::Count, .id = kIdDestinationPosition, .label = u"Operation number",
     .filled = true, .limit = 0, .width = 140},
    {.kind = RowKind::List, .id = kIdDestinationList, .name = u"Operations of the project",
     .least = 96},
    {.kind = RowKind::Note, .id = kIdDestinationAround, .height = 48},
    {.kind = RowKind::Checks, .pages = PageBit(kWithSplit), .keys = {kIdDestinationSplit},
     .shares = {600}},
    {.kind = RowKind::Log, .id = kIdDestinationHelp, .name = u"Where the code goes",
     .height = 104},
    {.kind = RowKind::Keys, .keys = {kIdDestinationInsert, kIdDestinationCancel},
     .shares = {190, 120}, .above = 1},
};
// clang-format on
constexpr FormLook kLook{.edge = 20,
                         .top = 14,
                         .gap = 10,
                         .keyGap = 10,
                         .tightGap = 10,
                         .inset = 1,
                         .fieldHeight = 28,
                         .keyHeight = 32,
                         .labelHeight = 22,
                         .framesChoices = false,
                         .keysAtEnd = true,
                         .labelFont = FontRole::Body,
                         .keyFont = FontRole::Body,
                         .listFont = FontRole::Small};

void Changed(int id);
constexpr Form kPickerForm{
    .look = &kLook, .parent = kViewDestination, .rows = kRows, .changed = Changed};

constexpr int kAccepted = 1;
// Row data of "+ New project"; no program has this serial.
constexpr std::uint64_t kNewProject = 0;
constexpr char16_t kNewTitle[] = u"New project.NC";

struct Picker {
  std::uint64_t source = 0;       // the program that the insert started from
  std::uint64_t destination = 0;  // the chosen one
  std::int32_t units = 0;         // units word of the code, 0 for none
  int insertPosition = 0;         // operation number, from 1
  int lastPosition = 0;
  bool update = false;       // a block of this kind is under edit in the source
  int ownPosition = 0;       // that block's number
  bool split = false;        // the user code around the caret is to be parted
  bool offersSplit = false;  // there is such code
  int splitLine = 0;         // editor line that its second half begins with
  std::int32_t splitIndex = 0;
  int splitPosition = 0;  // the number that the new operation gets by it
  PlaceAround splitAround;
  PlaceAround chosenAround;  // of the place that is chosen
  std::uint64_t heldSerial =
      0;  // of the program whose text is held: one in the store, or a new one
  bool holds = false;
  std::u16string held;  // with its markers
};
Picker picker;

std::uint64_t ChosenProgram() {
  const int row = platform::SelectedRow(kIdDestinationProgram);
  return static_cast<std::uint64_t>(platform::RowData(kIdDestinationProgram, row));
}

int TypedPosition() { return FieldCount(kIdDestinationPosition); }

bool IsStaged(std::uint64_t serial) { return serial != kNewProject && serial == ActiveSerial(); }

// The text of a program as it will be on the stage; the table describes it. Until the next call.
std::u16string_view ScannedText(std::uint64_t serial) {
  if (IsStaged(serial)) {
    const std::u16string_view text = platform::EditorText(kIdEditor);
    ScanEditorText();
    return text;
  }
  if (!picker.holds || picker.heldSerial != serial) {
    const int index = IndexOfSerial(serial);
    picker.held = serial == kNewProject ? NewProgramText(kNewTitle, app.unitsMetric)
                  : index >= 0          ? tabs[index].text
                                        : std::u16string();
    picker.held = TaggedText(picker.held);
    picker.heldSerial = serial;
    picker.holds = true;
  }
  ScanProgramText(picker.held);
  return picker.held;
}

// The table describes the program on the stage again.
void ScanStage() { ScanEditorText(); }

// 1 plus the blocks that end before the caret. The table describes the text.
int PositionByCaret(std::u16string_view text) {
  const std::int32_t caret = TextIndexOf(text, CaretPosition());
  int position = 1;
  for (int i = 0; i < features.count; ++i) position += features.rows[i].end <= caret ? 1 : 0;
  return position;
}

void FindSplitOfSource(std::u16string_view text) {
  const SplitPlace split = FindSplit(text, CodeCaret(text));
  picker.offersSplit = split.row >= 0 && !picker.update && features.count + 2 <= kMaxFeatures;
  if (!picker.offersSplit) return;
  picker.splitLine = platform::EditorLineOf(kIdEditor, MapTextOffset(text, split.at));
  picker.splitPosition = split.row + (split.before ? 2 : 1);
  picker.splitIndex = SplitIndex(split);
  picker.splitAround = LookAround(text, picker.splitIndex);
}

// Where a block of this number begins; the table describes the text.
std::int32_t IndexOfPosition(std::u16string_view text, int position) {
  if (position <= features.count) return features.rows[position - 1].start;
  if (features.count > 0) return features.rows[features.count - 1].end;
  return static_cast<std::int32_t>(text.size());
}

PlaceAround AroundPosition(std::u16string_view text, int position) {
  if (position < 1 || position > picker.lastPosition) return {};
  return LookAround(text, IndexOfPosition(text, position));
}

std::u16string RowWords(int row) {
  std::u16string words = u"#" + IntegerText(row + 1) + u"  ";
  if (row == features.count) return words + u"(behind the last operation)";
  const FeatureRecord& record = features.rows[row];
  return words + (record.name[0] ? record.name : KindWords(record.settings.kind));
}

void FillOperations() {
  platform::HoldListRedraw(kIdDestinationList, true);
  platform::ClearRows(kIdDestinationList);
  for (int i = 0; i <= features.count; ++i) platform::AddRow(kIdDestinationList, RowWords(i), i);
  platform::HoldListRedraw(kIdDestinationList, false);
}

std::u16string HelpWords(bool update, int position) {
  std::u16string help = update ? u"Update code in \u201C" : u"Add code to \u201C";
  const std::uint64_t chosen = ChosenProgram();
  const int row = platform::SelectedRow(kIdDestinationProgram);
  help += chosen == kNewProject ? u"New project" : platform::RowText(kIdDestinationProgram, row);
  help += u"\u201D at operation " + IntegerText(position);
  help += u"\r\nAvailable positions: 1\u2013" + IntegerText(picker.lastPosition);
  help += u". Later operations move down.";
  if (chosen != picker.source) {
    help += u"\r\nThe source drawing remains in its original project.";
  }
  return help;
}

// What the user did last; it rules over what stood there.
enum class By { Program, Number, Row, Box };

// The box is ticked by itself where code at the number would not be run as it is meant to, and code
// at the caret would.
void ShowSplit(By by, bool offers, const PlaceAround& around) {
  platform::SetEnabled(kIdDestinationSplit, offers);
  if (by != By::Box || !offers) {
    platform::SetChecked(kIdDestinationSplit,
                         offers && !IsRun(around) && IsRun(picker.splitAround));
  }
  picker.split = offers && platform::IsChecked(kIdDestinationSplit);
}

void ShowPlace(By by, bool update, int position, const PlaceAround& around) {
  ShowSplit(by, picker.offersSplit && ChosenProgram() == picker.source, around);
  const bool known = position >= 1 && position <= picker.lastPosition;
  platform::SelectRow(kIdDestinationList, known ? position - 1 : -1);
  PlaceAround shown = picker.split ? picker.splitAround : around;
  if (update && IsRun(shown)) {
    shown.words = u"In the place of operation " + IntegerText(position) + u"; the others stay";
  }
  picker.chosenAround = update ? PlaceAround() : shown;
  platform::SetText(kIdDestinationAround, shown.words);
  // No form: a form colours its words once and for all, these warn.
  const platform::Colour colour = IsRun(shown) ? kMainText : kWarningText;
  platform::SetColours(kIdDestinationAround, {colour, kPanelBackground, true});
  platform::SetText(kIdDestinationHelp,
                    HelpWords(update, picker.split ? picker.splitPosition : position));
}

void Refresh(By by) {
  const std::uint64_t chosen = ChosenProgram();
  const bool update = picker.update && chosen == picker.source;
  const std::u16string_view text = ScannedText(chosen);
  picker.lastPosition = features.count + 1;
  if (by == By::Program) {
    FillOperations();
    platform::SetText(kIdDestinationPosition,
                      IntegerText(update ? picker.ownPosition : picker.lastPosition));
    platform::SetEnabled(kIdDestinationPosition, !update);
    platform::SetEnabled(kIdDestinationList, !update);
  } else if (by == By::Row) {
    const int row = platform::SelectedRow(kIdDestinationList);
    platform::SetText(kIdDestinationPosition, IntegerText(row + 1));
  }
  const int position = TypedPosition();
  ShowPlace(by, update, position, AroundPosition(text, position));
  if (!IsStaged(chosen)) ScanStage();
}

constexpr char16_t kInsertTitle[] = u"Insert code";

// What the line above the keys tells has to be answered where it does harm: Enter alone must not
// put code where no control runs it, or millimeters before inches. An update stays in its place.
bool WantsItThere(int position) {
  const std::uint64_t chosen = ChosenProgram();
  if (picker.update && chosen == picker.source) return true;
  const std::u16string_view text = ScannedText(chosen);
  const std::int32_t index = picker.split ? picker.splitIndex : IndexOfPosition(text, position);
  const std::int32_t before = UnitsAt(text, index);
  if (!IsStaged(chosen)) ScanStage();
  if (picker.chosenAround.behindEnd && !WantsItNeverRun(picker.chosenAround)) return false;
  return MaySwitchUnits(before, picker.units, kInsertTitle,
                        u"The unit keys of the workspace convert it.");
}

void Accept() {
  Refresh(By::Box);
  const int position = TypedPosition();
  const bool known = picker.split || (position >= 1 && position <= picker.lastPosition);
  if (!known) {
    platform::ShowBox(kInsertTitle, u"Choose an operation position within the displayed range.",
                      platform::BoxButtons::Ok, platform::BoxIcon::None);
  }
  if (!known || !WantsItThere(position)) {
    platform::SetFocusTo(kIdDestinationPosition);
    platform::SelectAllText(kIdDestinationPosition);
    return;
  }
  picker.insertPosition = position;
  picker.destination = ChosenProgram();
  platform::EndDialog(kViewDestination, kAccepted);
}

void Changed(int id) {
  if (id == kIdDestinationProgram) Refresh(By::Program);
  if (id == kIdDestinationPosition) Refresh(By::Number);
  if (id == kIdDestinationList) Refresh(By::Row);
}

void OnPickerCommand(int id, int notification) {
  FormNotified(id, notification);
  if (id == kIdDestinationList && notification == platform::kNotifyListDouble) Accept();
  if (id == kIdDestinationSplit && notification == platform::kNotifyClick) Refresh(By::Box);
  if (id == kIdDestinationInsert && notification == platform::kNotifyClick) {
    Accept();
  } else if (id == kIdDestinationCancel && notification == platform::kNotifyClick) {
    platform::EndDialog(kViewDestination, 0);
  }
}

void PaintPicker(platform::Canvas& canvas) {
  FillArea(canvas, platform::CanvasArea(canvas), kPanelBackground);
  PaintForms(canvas, kViewDestination);
  // The button that Enter presses.
  FrameWell(canvas, platform::PlaceOf(kIdDestinationInsert),
            platform::FocusedId() == kIdDestinationInsert, kAccent);
}

bool MakePicker() {
  platform::DialogSpec dialog;
  dialog.id = kViewDestination;
  dialog.className = u"MorvaDestination";
  dialog.title = u"Insert code into project";
  dialog.place = kPlace;
  dialog.background = kPanelBackground;
  dialog.defaultButton = kIdDestinationInsert;
  dialog.cancelButton = kIdDestinationCancel;
  dialog.command = OnPickerCommand;
  if (!platform::MakeDialog(dialog)) return false;
  PlaceForm(kPickerForm, {0, 0, RectWidth(kPlace), RectHeight(kPlace) - kLook.top},
            picker.offersSplit ? kWithSplit : kPlain);
  return true;
}

void FillPicker() {
  for (int i = 0; i < app.tabCount; ++i) {
    platform::AddRow(kIdDestinationProgram, NameOfTab(i),
                     static_cast<std::int64_t>(tabs[i].serial));
  }
  if (app.tabCount < kMaxTabs) {
    platform::AddRow(kIdDestinationProgram, u"+ New project",
                     static_cast<std::int64_t>(kNewProject));
  }
  platform::SelectRow(kIdDestinationProgram, app.activeTab);
  platform::SetText(kIdDestinationSplit,
                    u"Split the user code at line " + IntegerText(picker.splitLine + 1));
  Refresh(By::Program);
  platform::SetText(kIdDestinationPosition, IntegerText(picker.ownPosition));
  Refresh(By::Number);
  platform::SetFocusTo(picker.update ? kIdDestinationProgram : kIdDestinationPosition);
  if (!picker.update) platform::SelectAllText(kIdDestinationPosition);
}

// The chosen program on the stage. False: it could not be opened, or is gone.
bool BringUpDestination() {
  if (picker.destination != kNewProject) return ReturnToTab(picker.destination);
  const int index = OpenTab(u"", u"", kNewTitle);
  if (index < 0) return false;
  SwitchTab(index);
  return true;
}

// The caret at the start of the line where the chosen block begins, or where the user code is to be
// parted; behind the last block, or the text, for the position after them.
Destination PlaceCaret() {
  const std::u16string text(platform::EditorText(kIdEditor));
  ScanProgramText(text);
  const bool before = picker.insertPosition <= features.count;
  int position =
      MapTextOffset(text, picker.split ? 0 : IndexOfPosition(text, picker.insertPosition));
  const int line = picker.split ? picker.splitLine : platform::EditorLineOf(kIdEditor, position);
  if (before || picker.split) position = platform::EditorLineStart(kIdEditor, line);
  platform::SetEditorSelection(kIdEditor, {position, position});
  if (app.commandWordsActive && platform::Exists(kIdWordsEditor)) {
    Call(hooks.wordsFromEditor);
    const int start = platform::EditorLineStart(kIdWordsEditor, line);
    platform::SetEditorSelection(kIdWordsEditor, {start, start});
  }
  if (picker.split) return Destination::Split;
  return before ? Destination::Placed : Destination::Caret;
}

}  // namespace

Destination RunDestinationPicker(int kind, std::int32_t units) {
  if (platform::Exists(kViewDestination)) return Destination::Cancelled;
  picker = Picker();
  picker.source = ActiveSerial();
  picker.units = units;
  picker.update = editLink.kind == kind && editLink.tab == app.activeTab;
  const std::u16string_view text = ScannedText(picker.source);
  picker.ownPosition = PositionByCaret(text);
  if (picker.update && FindFeature(editLink.id) >= 0) {
    picker.ownPosition = FindFeature(editLink.id) + 1;
  }
  FindSplitOfSource(text);
  EditLink link = editLink;
  if (!MakePicker()) return Destination::Cancelled;
  FillPicker();
  if (platform::RunDialog(kViewDestination) != kAccepted || !BringUpDestination()) {
    return Destination::Cancelled;
  }
  AutoTagBlocks();
  if (picker.update && picker.destination == picker.source) {
    // Another program may have been on the stage meanwhile, which forgets the link.
    link.tab = app.activeTab;
    SetEditLink(link);
    return Destination::Caret;
  }
  DropEditLink();
  return PlaceCaret();
}

void RegisterDestinationPicker() {
  SetDestinationPicker(RunDestinationPicker);
  RegisterForm(kPickerForm);
  Handlers handlers;
  handlers.id = kViewDestination;
  handlers.paint = PaintPicker;
  RegisterHandlers(handlers);
}

}  // namespace morva
