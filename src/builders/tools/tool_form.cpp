#include "builders/tools/tool_form.h"

#include <iterator>
#include <string>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "builders/tools/tool_list.h"
#include "builders/tools/tool_picture.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "forms/picture.h"
#include "forms/sheet.h"
#include "library/tool_fields.h"
#include "library/tools.h"
#include "library/unit_commands.h"
#include "library/units.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::Rect;

constexpr int kGap = 6;
constexpr int kTopHeight = 54;  // of the heading and the line below it
constexpr int kKeysHeight = 62;
constexpr int kFieldsLeast = 262;  // width of the fields
constexpr int kFieldsMost = 340;
constexpr int kPicturesBeside = 400;  // width from which the pictures stand side by side

int underEdit = -1;  // record of the library, -1: a new tool
bool open = false;
bool edited = false;
// In the form of a new tool the offsets follow its number until they are typed.
constexpr ToolField kOffsets[] = {ToolField::HOffset, ToolField::DOffset};
bool follows[std::size(kOffsets)] = {};
bool following = false;  // their fields are being written

constexpr int IdOf(ToolField field) { return kIdToolField + static_cast<int>(field); }

void OnTyped(int id);

// The groups of fields. Labels come from the library, so the rows are made at start-up.
struct Group {
  const char16_t* head;  // empty: none
  ToolField last;
};
constexpr Group kGroups[] = {{u"BASIC IDENTITY", ToolField::Type},
                             {u"Geometry / offsets", ToolField::DOffset},
                             {u"CUTTING DEFAULTS", ToolField::Coolant},
                             {u"", ToolField::Notes}};
struct FieldSpec {
  RowKind kind = RowKind::Number;
  const char16_t* help = u"";
  Follows follows = Follows::Nothing;
  int decimals = 3;
  int units = kFieldUnits;
};
constexpr FieldSpec kSpecs[] = {
    {RowKind::Count, u"Number of the T word, 1 to 999"},
    {.kind = RowKind::Words, .help = u"What the lists call the tool", .units = kToolNameUnits},
    {RowKind::Choice, u"What kind of cutter it is"},
    {RowKind::Number, u"Diameter that cuts", Follows::Length},
    {RowKind::Count, u"Cutting edges, 1 to 64"},
    {RowKind::Number, u"From the spindle's face to the tip", Follows::Length},
    {RowKind::Number, u"From the holder's nose to the tip", Follows::Length},
    {RowKind::Count, u"Number of the H word"},
    {RowKind::Count, u"Number of the D word"},
    {RowKind::Count, u"Spindle speed of the S word"},
    {RowKind::Number, u"Feed of a cut, a minute", Follows::Length, 2},
    {RowKind::Number, u"Feed down into the stock, a minute", Follows::Length, 2},
    {RowKind::Choice, u"What the tool's block switches on"},
    {.kind = RowKind::Words, .help = u"Anything worth knowing", .units = kToolNotesUnits}};
static_assert(std::size(kSpecs) == kToolFields);

const std::vector<FormRow>& FieldRows() {
  static const std::vector<FormRow> kRows = [] {
    std::vector<FormRow> rows;
    int field = 0;
    for (const Group& group : kGroups) {
      if (group.head[0]) rows.push_back({.kind = RowKind::Head, .label = group.head});
      for (; field <= static_cast<int>(group.last); ++field) {
        const FieldSpec& spec = kSpecs[field];
        rows.push_back({.kind = spec.kind,
                        .id = kIdToolField + field,
                        .label = ToolFieldLabel(static_cast<ToolField>(field)),
                        .help = spec.help,
                        .filled = true,
                        .follows = spec.follows,
                        .decimals = spec.decimals,
                        .enter = spec.kind == RowKind::Choice ? 0 : kIdToolSave,
                        .limit = spec.units - 1});
      }
    }
    return rows;
  }();
  return kRows;
}

constexpr Sheet kToolSheet{.frame = {kViewToolForm, u"HaasToolBuilderWnd", u"Tool geometry"},
                           .paper = {kViewToolPaper, u"MorvaToolPaper", u"Tool fields"},
                           .bar = {kViewToolBar, u"MorvaToolBar", u"Scroll the tool's fields"},
                           .parent = platform::kMainWindow};
constexpr FormLook kFieldsLook{.edge = 8,
                               .headAbove = 6,
                               .headGap = 2,
                               .fieldPercent = 56,
                               .headLines = true,
                               .selectsAfterEnter = true,
                               .labels = Labels::Beside};
const Form kFieldsForm{.look = &kFieldsLook,
                       .sheet = &kToolSheet,
                       .rows = FieldRows(),
                       .metric = UnitsMetric,
                       .changed = OnTyped,
                       .escape = kIdToolClose};

// What stands around the fields: heading, keys below, pictures at the right.
enum Part : int { kTop, kFoot, kSide, kEnd };

// clang-format off
constexpr FormRow kFrameRows[] = {
    {.kind = RowKind::Head, .label = u"Tool geometry / cutting data", .pages = PageBit(kTop),
     .height = 22},
    {.kind = RowKind::Note,
     .label = u"Save the cutter once, then reuse its offsets and cutting defaults from the "
              u"editor.",
     .pages = PageBit(kTop)},
    {.kind = RowKind::Keys, .pages = PageBit(kFoot), .keys = {kIdToolSave, kIdToolRevert}},
    {.kind = RowKind::Keys, .pages = PageBit(kFoot),
     .keys = {kIdToolFormInch, kIdToolFormMm, kIdToolClose}, .shares = {2, 2, 3}},
    {.kind = RowKind::Note, .label = u"ISOMETRIC CUTTER / LIVE GEOMETRY",
     .pages = PageBit(kSide), .height = 20},
    {.kind = RowKind::View, .id = kViewToolPicture, .name = u"Picture of the tool",
     .className = u"MorvaToolPicture", .pages = PageBit(kSide), .least = 60},
    {.kind = RowKind::Note, .label = u"CUTTING END / FLUTES", .pages = PageBit(kEnd),
     .height = 20},
    {.kind = RowKind::View, .id = kViewToolEnd, .name = u"Picture of the cutting end",
     .className = u"MorvaToolEnd", .pages = PageBit(kEnd), .least = 60},
};
// clang-format on
constexpr FormLook kFrameLook{.headGap = 2, .labels = Labels::None, .noteColour = kMainText};
constexpr Form kFrameForm{.look = &kFrameLook, .rows = kFrameRows, .escape = kIdToolClose};

constexpr Command kCommands[] = {
    {kIdToolSave, u"SAVE TOOL", u"Check the tool and keep it in the library"},
    {kIdToolRevert, u"REVERT", u"Show the stored tool again"},
    {kIdToolClose, u"BACK TO CODE", u"Close the tool builder"},
    InchKey(kIdToolFormInch, u"Inch of the tool builder"),
    MmKey(kIdToolFormMm, u"Millimeter of the tool builder"),
};

bool BuilderShown() {
  return open && app.surface == kSurfaceCode && app.mode == kModeTools && !app.compareActive;
}

ToolTexts TypedTexts() {
  ToolTexts texts;
  for (int i = 0; i < kToolFields; ++i) {
    if (kSpecs[i].kind != RowKind::Choice) texts.texts[i] = platform::TextOf(kIdToolField + i);
  }
  texts.typeRow = platform::SelectedRow(IdOf(ToolField::Type));
  texts.coolantRow = platform::SelectedRow(IdOf(ToolField::Coolant));
  return texts;
}

void ShowTexts(const ToolTexts& texts) {
  for (int i = 0; i < kToolFields; ++i) {
    const int id = kIdToolField + i;
    // A text that stands there already keeps its caret.
    if (kSpecs[i].kind == RowKind::Choice || platform::TextOf(id) == texts.texts[i]) continue;
    platform::SetText(id, texts.texts[i]);
  }
  platform::SelectRow(IdOf(ToolField::Type), texts.typeRow);
  platform::SelectRow(IdOf(ToolField::Coolant), texts.coolantRow);
}

void RepaintPictures() {
  platform::Repaint(kViewToolPicture);
  platform::Repaint(kViewToolEnd);
}

void BeginFollowing(const ToolTexts& texts, bool isNew) {
  for (int i = 0; i < 2; ++i) follows[i] = isNew && texts[kOffsets[i]] == texts[ToolField::Number];
}

void FollowNumber(int id) {
  if (following) return;
  for (int i = 0; i < 2; ++i) follows[i] = follows[i] && id != IdOf(kOffsets[i]);
  // While the field is empty they wait.
  const std::int32_t number = ParseInteger(platform::TextOf(IdOf(ToolField::Number)), 0);
  if (id != IdOf(ToolField::Number) || number <= 0) return;
  following = true;
  for (int i = 0; i < 2; ++i) {
    if (follows[i]) platform::SetText(IdOf(kOffsets[i]), IntegerText(number));
  }
  following = false;
}

// In the log of a new tool, whose form began with another number.
void TellFollowed(const ToolRecord& tool, bool isNew) {
  if (!isNew || NewToolTexts(UnitsMetric())[ToolField::Number] == IntegerText(tool.number)) return;
  std::u16string words;
  if (follows[0]) words = u" H" + IntegerText(tool.hOffset);
  if (follows[1]) words += (follows[0] ? u" and D" : u" D") + IntegerText(tool.dOffset);
  if (!words.empty())
    AppendOutput(u"T" + IntegerText(tool.number) + u" takes" + words + u", as its number says.");
}

void OnTyped(int id) {
  FollowNumber(id);
  edited = true;
  RepaintPictures();
}

// As typed. What is no number counts as 0, which has no picture; so does one with a comma, which
// will be refused.
ToolRecord DrawnTool() {
  const ToolTexts texts = TypedTexts();
  const auto inches = [&texts](ToolField field) {
    if (texts[field].find(u',') != texts[field].npos) return 0.0;
    return FieldNumber(IdOf(field), 0) / (UnitsMetric() ? kMmPerInch : 1);
  };
  ToolRecord tool = ToolOfTexts(texts, UnitsMetric());
  tool.diameter = inches(ToolField::Diameter);
  tool.gaugeLength = inches(ToolField::GaugeLength);
  tool.stickout = inches(ToolField::Stickout);
  tool.flutes = FieldCount(IdOf(ToolField::Flutes));
  return tool;
}

using Draw = void (*)(const ToolRecord& tool, bool metric, Picture& picture);

void PaintTool(platform::Canvas& canvas, Draw draw, const char16_t* otherwise) {
  static Picture picture;
  const Rect area = platform::CanvasArea(canvas);
  platform::FillArea(canvas, area, kOutputBackground);
  const ToolRecord tool = DrawnTool();
  if (!HasToolPicture(tool)) {
    const Rect words{area.left + kGap, area.top + kGap, area.right - kGap, area.bottom - kGap};
    platform::PaintText(canvas, words, otherwise, platform::FontRole::Small, kMainText,
                        platform::kTextWrap);
    return;
  }
  ClearPicture(picture, UnitsMetric());
  draw(tool, UnitsMetric(), picture);
  PaintPicture(canvas, picture, FitPicture(picture, area));
}

void PaintSide(platform::Canvas& canvas) { PaintTool(canvas, DrawTool, kNoToolPicture); }
void PaintEnd(platform::Canvas& canvas) { PaintTool(canvas, DrawToolEnd, u""); }

void MakeBuilder() {
  MakeForm(kFieldsForm);
  MakeForm(kFrameForm);
  for (const char16_t* type : ToolTypes()) platform::AddRow(IdOf(ToolField::Type), type);
  for (const char16_t* row : CoolantRows()) platform::AddRow(IdOf(ToolField::Coolant), row);
}

void PlaceBuilder(const Rect& area) {
  int fields = RectWidth(area) / 2;
  if (fields < kFieldsLeast) fields = kFieldsLeast;
  if (fields > kFieldsMost) fields = kFieldsMost;
  const int middle = area.left + fields;
  const int top = area.top + kTopHeight;
  const int foot = area.bottom - kKeysHeight;
  PlaceForm(kFieldsForm, {area.left, top, middle, foot - kGap}, 0);
  // The pictures stand side by side where both are wide enough, else the end below the side.
  const int left = middle + kGap;
  Rect side{left, top, area.right, area.bottom};
  Rect end = side;
  if (RectWidth(side) >= kPicturesBeside) {
    side.right = left + RectWidth(side) * 3 / 5;
    end.left = side.right + kGap;
  } else {
    side.bottom = top + RectHeight(side) * 3 / 5;
    end.top = side.bottom + kGap;
  }
  const FormPart parts[] = {{{area.left, area.top, area.right, top}, kTop},
                            {{area.left, foot, middle, area.bottom}, kFoot},
                            {side, kSide},
                            {end, kEnd}};
  PlaceForm(kFrameForm, parts);
}

void HideBuilder() {
  HideForm(kFieldsForm);
  HideForm(kFrameForm);
}

void Refuse(const ToolRefusal& refusal) {
  platform::ShowBox(refusal.title, refusal.words, platform::BoxButtons::Ok, refusal.icon);
  platform::SetFocusTo(IdOf(refusal.field));
  platform::SelectAllText(IdOf(refusal.field));
}

constexpr char16_t kLoseTitle[] = u"Tool geometry";

bool MayLoseTyped() {
  return !edited || ConfirmedNoFirst(kLoseTitle, u"Close the form without saving the tool?");
}

// MORVA is to close. What is asked about comes up where it is to stay.
bool MayEnd() {
  if (!open || !edited) return true;
  if (ConfirmedNoFirst(kLoseTitle, u"A tool is typed and not saved. Close MORVA without it?")) {
    return true;
  }
  Call(hooks.setMode, static_cast<int>(kModeTools));
  return false;
}

bool BackFromBuilder() {
  CloseToolBuilder();
  return true;
}

}  // namespace

void LoadToolForm(int index) {
  const bool held = index >= 0 && index < toolLibrary.count;
  underEdit = held ? index : -1;
  const ToolTexts texts =
      held ? TextsOfTool(toolLibrary.tools[index], UnitsMetric()) : NewToolTexts(UnitsMetric());
  ShowTexts(texts);
  BeginFollowing(texts, !held);
  edited = false;
  RepaintPictures();
}

void OpenToolBuilder(int index, bool keyboard) {
  if (!open && !MayTakeWork()) return;
  if (!MayLoseTyped()) return;
  LoadToolForm(index);
  open = true;
  RelayPanels();
  if (!keyboard) return;
  platform::SetFocusTo(IdOf(ToolField::Number));
  platform::SelectAllText(IdOf(ToolField::Number));
}

bool SaveToolForm() {
  const ToolTexts texts = TypedTexts();
  int index = underEdit;
  const bool wasHeld = underEdit >= 0;
  FollowTools(index);
  const ToolRefusal refusal = CheckTool(texts, underEdit < 0, UnitsMetric());
  if (refusal.words[0]) {
    Refuse(refusal);
    return false;
  }
  if (wasHeld && underEdit < 0) AppendOutput(u"The tool in the form is kept as a further one.");
  const ToolRecord* before = underEdit < 0 ? nullptr : &toolLibrary.tools[underEdit];
  const ToolRecord tool = ToolOfTexts(texts, UnitsMetric(), before);
  TellFollowed(tool, underEdit < 0);
  if (underEdit < 0) {
    underEdit = AppendTool(tool);
  } else {
    ReplaceTool(underEdit, tool);
  }
  StoreTools(underEdit, true);
  // The fields say what is kept.
  const ToolTexts kept = TextsOfTool(toolLibrary.tools[underEdit], UnitsMetric());
  ShowTexts(kept);
  edited = false;
  BeginFollowing(kept, false);
  RepaintPictures();
  const std::u16string part = PartlyRead(texts, kept);
  if (!part.empty()) {
    const std::u16string words = u"Only a part of what was typed is a number. Kept: " + part + u".";
    AppendOutput(words);
    platform::ShowBox(u"Tool Library", words, platform::BoxButtons::Ok, platform::BoxIcon::Warning);
  }
  // The length of another tool is a crash at the machine.
  if (tool.hOffset != tool.number) {
    AppendOutput(u"T" + IntegerText(tool.number) + u" has H offset " + IntegerText(tool.hOffset) +
                 u". Check it: the control takes the length that stands there.");
  }
  return true;
}

bool CloseToolBuilder() {
  if (!open) return true;
  if (!MayLoseTyped()) return false;
  open = false;
  edited = false;
  RelayPanels();
  platform::SetFocusTo(ShownEditor());
  return true;
}

bool IsToolBuilderOpen() { return open; }
bool IsToolFormEdited() { return open && edited; }

bool FollowTools(int& index) {
  const int indices[] = {underEdit, index};
  ToolRecord before[2];
  for (int i = 0; i < 2; ++i) {
    if (indices[i] >= 0) before[i] = toolLibrary.tools[indices[i]];
  }
  const int row = SelectedTool();
  const ToolRecord chosen = row >= 0 ? toolLibrary.tools[row] : ToolRecord();
  if (!FollowToolFile()) return false;
  underEdit = indices[0] < 0 ? -1 : FindSameTool(before[0]);
  index = indices[1] < 0 ? -1 : FindSameTool(before[1]);
  RefreshToolLists();
  // The list stays with its tool, and has no row where that is gone.
  if (row >= 0) {
    const int same = FindSameTool(chosen);
    SelectTool(same >= 0 ? same : FindTool(chosen.number));
  }
  return true;
}

void ForgetTool(int index) {
  if (underEdit == index) {
    underEdit = -1;
  } else if (underEdit > index) {
    --underEdit;
  }
}

void RegisterToolForm() {
  Panel panel;
  panel.spot = PanelSpot::Work;
  panel.active = BuilderShown;
  panel.make = MakeBuilder;
  panel.place = PlaceBuilder;
  panel.hide = HideBuilder;
  panel.back = BackFromBuilder;
  panel.mayEnd = MayEnd;
  RegisterPanel(panel);
  RegisterForm(kFieldsForm);
  RegisterForm(kFrameForm);
  RegisterSheet<kToolSheet>();
  Handlers picture;
  picture.id = kViewToolPicture;
  picture.paint = PaintSide;
  RegisterHandlers(picture);
  picture.id = kViewToolEnd;
  picture.paint = PaintEnd;
  RegisterHandlers(picture);
  AddCommands(kCommands);
  RegisterUnitKeys(kIdToolFormInch, kIdToolFormMm);
  // The pictures show sizes in the active unit.
  AddToolList(RepaintPictures);
  hooks.followTools = [] {
    int none = -1;
    FollowTools(none);
  };
  const RouterStage click = RouterStage::Click;
  RegisterCommand(click, kIdToolSave, platform::kNotifyClick, [](int, int) { SaveToolForm(); });
  RegisterCommand(click, kIdToolRevert, platform::kNotifyClick,
                  [](int, int) { LoadToolForm(underEdit); });
  RegisterCommand(click, kIdToolClose, platform::kNotifyClick,
                  [](int, int) { CloseToolBuilder(); });
}

void ResetToolForm() {
  underEdit = -1;
  open = false;
  edited = false;
}

}  // namespace morva
