#include "documents/builder.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "app/stop.h"
#include "documents/block_text.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/generated_code.h"
#include "documents/insertion.h"
#include "documents/program_changed.h"
#include "documents/tab_table.h"
#include "forms/form_words.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kRecordDecimals = 6;  // of numbers that come from a record
// Pixels that a form keeps above the toolpath view; where there is less, it scrolls.
constexpr int kHeightAboveView = 400;

static_assert(kMaxFormNumbers >= kSettingsValues && kMaxFormChoices >= kSettingsChoices);

// What the form says, in its own unit.
FormValues ReadBuilder(const Builder& builder, const Reading& reading) {
  FormValues values;
  ReadForm(*builder.form, ReadPage(builder), reading, values);
  return values;
}

// In the unit of code and record.
FormValues ReadForCode(const Builder& builder, const Reading& reading) {
  FormValues values = ReadBuilder(builder, reading);
  if (builder.metric) ConvertValues(*builder.form, ReadPage(builder), builder.metric(), values);
  return values;
}

void Refuse(const Builder& builder, const Refusal& refusal) {
  if (refusal.words[0]) {
    const char16_t* title = refusal.title[0] ? refusal.title : builder.title;
    platform::ShowBox(title, refusal.words, platform::BoxButtons::Ok, refusal.icon);
  }
  if (refusal.field == 0) return;
  platform::SetFocusTo(refusal.field);
  platform::SelectAllText(refusal.field);
}

// Calls with every number of the page that is read whose text is no number by the strict rule.
template <typename Take>
void EachMisread(const Builder& builder, const FormValues& values, Take take) {
  const unsigned page = PageBit(ReadPage(builder));
  for (const FormRow& row : builder.form->rows) {
    const bool number = row.kind == RowKind::Number || row.kind == RowKind::Count;
    if (!number || row.value < 0 || (row.pages & page) == 0) continue;
    if (values.misread[row.value] != Misread::None) take(row, values.misread[row.value]);
  }
}

// Whether a part of what stands in the field would be taken for the whole, or a size for nothing.
bool IsHalf(const FormRow& row, Misread why) {
  if (why == Misread::Empty) return false;
  const std::u16string text = platform::TextOf(row.id);
  return row.kind == RowKind::Number || std::any_of(text.begin(), text.end(), IsDigit);
}

const FormRow* HalfNumber(const Builder& builder, const FormValues& values) {
  const FormRow* half = nullptr;  // the first
  EachMisread(builder, values, [&half](const FormRow& row, Misread why) {
    if (!half && IsHalf(row, why)) half = &row;
  });
  return half;
}

// What counts in place of a text: the person at the machine has to know.
void TellReplaced(const Builder& builder, const FormValues& values) {
  EachMisread(builder, values, [&values](const FormRow& row, Misread) {
    const int decimals = row.kind == RowKind::Count ? 0 : row.decimals;
    AppendOutput(ReplacedWords(row, values.metric, FixedText(values.numbers[row.value], decimals)));
  });
}

bool Passes(const Builder& builder, const FormValues& values) {
  if (const FormRow* half = builder.wholeNumbers ? HalfNumber(builder, values) : nullptr) {
    const std::u16string words = NoNumberWords(*half, values.metric);
    Refuse(builder, {.words = words.c_str(), .field = half->id});
    return false;
  }
  Refusal refusal;
  const int unread = values.refused;
  if (unread >= 0) refusal.field = builder.form->rows[static_cast<std::size_t>(unread)].id;
  if (builder.check ? builder.check(values, refusal) : unread < 0) return true;
  Refuse(builder, refusal);
  return false;
}

// A part of a program must not stand for the whole.
bool IsWhole(const Builder& builder, const CodeWriter& out) {
  if (!out.full) return true;
  const std::u16string words = u"The code is larger than " +
                               IntegerText(static_cast<std::int64_t>(out.most)) +
                               u" characters. Nothing was inserted.";
  Refuse(builder, {.words = words.c_str()});
  return false;
}

// Links the builder to the block that holds already what would be inserted, if the user wants that
// one updated. False: nothing is to be inserted.
bool SettleTwin(const Builder& builder) {
  const std::int32_t twin =
      builder.standsIn && editLink.kind != builder.kind ? builder.standsIn() : 0;
  if (twin == 0) return true;
  const std::uint64_t serial = ActiveSerial();
  const TwinAnswer answer = AskAboutTwin(builder.title, twin);
  if (answer == TwinAnswer::Nothing || ActiveSerial() != serial) return false;
  return answer == TwinAnswer::Another || LinkFeature(twin);
}

bool PutIntoProgram(const Builder& builder, const std::u16string& code) {
  if (builder.kind != 0) return InsertFeatureBlock(builder.kind, code, builder.asksWhere);
  return InsertTextAsBlock(code);
}

// The block of another kind that is under edit.
EditLink OtherLink(const Builder& builder) {
  return editLink.kind != builder.kind ? editLink : EditLink();
}

// An insertion ends the edit of its own block alone: a block of another kind stays under edit in
// its program, or the next press of its key would add it a second time.
void KeepOther(EditLink other, std::uint64_t program) {
  if (other.kind == 0 || ActiveSerial() != program) return;
  other.tab = app.activeTab;
  const int kind = other.kind;
  SetEditLink(std::move(other));
  ShowBuilderKeys(kind);
}

void OnInsertKey(int id, int) {
  for (int i = 0; const Builder* builder = BuilderAt(i); ++i) {
    if (builder->insertKey != id) continue;
    InsertFromBuilder(*builder);
    return;
  }
}

void JoinPanel(const Builder& builder, const BuilderCalls& calls) {
  for (int i = 0; i < PanelCount(); ++i) {
    const Panel& other = PanelAt(i);
    if (other.spot != PanelSpot::RightBody || other.mode != builder.mode) continue;
    StopProgram(u"MORVA cannot start. Two panels stand in mode " + IntegerText(builder.mode) +
                u".");
  }
  Panel panel;
  panel.spot = PanelSpot::RightBody;
  panel.mode = builder.mode;
  panel.row = builder.row;
  panel.moreModes = builder.moreModes;
  panel.make = calls.make;
  panel.heightAboveView = builder.showsPath ? kHeightAboveView : 0;
  panel.place = calls.place;
  panel.hide = calls.hide;
  panel.enter = builder.enter;
  panel.left = builder.left;
  panel.helpBelow = builder.helpBelow;
  RegisterPanel(panel);
}

void JoinViews(const Builder& builder, const BuilderCalls& calls) {
  Handlers view;
  view.paint = calls.paint;
  if (builder.pressed) view.pointer = calls.pointer;
  view.id = builder.pictureView;
  if (view.id != 0) return RegisterHandlers(view);
  for (const FormRow& row : builder.form->rows) {
    if (row.kind != RowKind::View) continue;
    view.id = row.id;
    RegisterHandlers(view);
  }
}

Picture picture;  // of the builder that was drawn last

// What the fields say now, fitted into the area.
PictureView DrawBuilder(const Builder& builder, const platform::Rect& area) {
  const FormValues values = ReadBuilder(builder, Reading::Lax);
  ClearPicture(picture, values.metric);
  builder.draw(values, picture);
  return FitPicture(picture, area);
}

// The view that shows the picture, 0 for none.
int PictureOf(const Builder& builder) {
  if (builder.pictureView != 0) return builder.pictureView;
  for (const FormRow& row : builder.form->rows) {
    if (row.kind == RowKind::View && platform::IsVisible(row.id)) return row.id;
  }
  return 0;
}

}  // namespace

int ReadPage(const Builder& builder) {
  return builder.readPage >= 0 ? builder.readPage : PageOf(*builder.form);
}

void JoinBuilder(const Builder& builder, const BuilderCalls& calls) {
  AddBuilder(builder);
  AddCommands(builder.commands);
  RegisterForm(*builder.form);
  if (builder.form->sheet == &kBuilderSheet) RegisterSheet<kBuilderSheet>();
  RegisterCommand(RouterStage::Builder, builder.insertKey, platform::kNotifyClick, OnInsertKey);
  if (builder.kind != 0) {
    SetSettingsWriter(builder.kind, calls.store);
    SetBuilderOpener(builder.kind, calls.open);
  }
  if (builder.mode >= 0) JoinPanel(builder, calls);
  if (builder.draw) JoinViews(builder, calls);
}

// What the log says: of a block that was updated not that it was inserted.
std::u16string LoggedWords(const Builder& builder, bool updated) {
  constexpr std::u16string_view kInserted = u" inserted";
  std::u16string words = builder.logged;
  const std::size_t at = words.find(kInserted);
  if (updated && at != words.npos) words.replace(at, kInserted.size(), u" updated");
  return words;
}

// A press of INSERT adds a block each time, also one that is like another: told, as both are cut.
void TellSameBlocks(const Builder& builder, std::u16string_view code) {
  if (builder.kind == 0) return;
  const std::u16string_view text = platform::EditorText(kIdEditor);
  const std::uint32_t hash = CodeHash(code);
  std::u16string numbers;
  int count = 0;
  for (int i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    if (row.settings.kind != builder.kind || row.settings.codeHash != hash) continue;
    if (!IsGeneratedCode(row.settings, GeneratedCode(text, row))) continue;
    numbers += (count++ > 0 ? u", #" : u"#") + IntegerText(i + 1);
  }
  if (count > 1) AppendOutput(u"Blocks " + numbers + u" hold the same code; each of them is cut.");
}

bool InsertFromBuilder(const Builder& builder) {
  const FormValues values = ReadForCode(builder, builder.reading);
  if (builder.instead && builder.instead(values)) return false;
  if (!Passes(builder, values)) return false;
  CodeWriter out;
  out.most = builder.room ? builder.room(values) : kMaxBuilderText;
  builder.write(values, out);
  if (!IsWhole(builder, out)) return false;
  const bool linkedBefore = editLink.kind != 0;
  const EditLink other = OtherLink(builder);
  const std::uint64_t source = ActiveSerial();
  if (!SettleTwin(builder)) return false;
  // If the picker chose another program, the block is new, not an update.
  const bool linked =
      builder.kind != 0 && editLink.kind == builder.kind && editLink.tab == app.activeTab;
  const std::int32_t unitBefore = Call(hooks.lastUnitsCode, platform::EditorText(kIdEditor));
  if (!PutIntoProgram(builder, out.text)) {
    if (!linkedBefore) DropEditLink();
    KeepOther(other, source);
    return false;
  }
  const bool updated = linked && ActiveSerial() == source;
  const std::u16string logged = LoggedWords(builder, updated);
  ProgramChanged(
      {.autosave = true, .refreshMs = builder.refreshMs, .rebuildPath = true, .logged = logged});
  if (builder.inserted) builder.inserted(values, updated);
  KeepOther(other, source);
  if (!updated) TellSameBlocks(builder, out.text);
  if (ActiveSerial() == source) TellOtherUnit(unitBefore, out.text);
  if (builder.wholeNumbers) TellReplaced(builder, values);
  return true;
}

bool StoreBuilder(const Builder& builder, FeatureSettings& record) {
  const FormValues values = ReadForCode(builder, Reading::Lax);
  record = FeatureSettings();
  record.version = kSettingsVersion;
  record.kind = builder.kind;
  record.metric = values.metric ? 1 : 0;
  record.a = values.choices[0];
  record.b = values.choices[1];
  record.c = values.choices[2];
  for (int i = 0; i < kSettingsValues; ++i) record.values[i] = values.numbers[i];
  return !builder.storeItems || builder.storeItems(record);
}

bool OpenBuilder(const Builder& builder, const FeatureSettings& record) {
  FormValues values;
  values.metric = record.metric != 0;
  // The unit comes first: it converts what the room and the fields hold.
  const auto takeUnit = builder.takeUnit ? builder.takeUnit : builder.form->takeUnit;
  const auto metric = builder.metric ? builder.metric : builder.form->metric;
  const bool before = metric && metric();
  if (takeUnit) takeUnit(values.metric);
  if (builder.loadItems && !builder.loadItems(record)) {
    if (takeUnit) takeUnit(before);
    return false;
  }
  const std::int32_t choices[] = {record.a, record.b, record.c};
  for (int i = 0; i < kSettingsChoices; ++i) values.choices[i] = choices[i];
  const int mode = builder.modeOf ? builder.modeOf(values) : builder.mode;
  if (mode >= 0) Call(hooks.setMode, mode);
  for (int i = 0; i < kSettingsValues; ++i) values.numbers[i] = record.values[i];
  // A list may choose the page, which must stand before its numbers are shown.
  ShowChoices(*builder.form, ReadPage(builder), values);
  if (builder.mode >= 0) RelayPanels();
  if (builder.metric) {
    const Form& form = *builder.form;
    ConvertValues(form, ReadPage(builder), form.metric && form.metric(), values);
  }
  ShowForm(*builder.form, ReadPage(builder), values, kRecordDecimals);
  if (const int picture = PictureOf(builder); picture != 0) platform::Repaint(picture);
  return true;
}

void PlaceBuilder(const Builder& builder, const platform::Rect& area) {
  PlaceForm(*builder.form, area);
}

void PaintBuilder(const Builder& builder, platform::Canvas& canvas) {
  const platform::Rect area = platform::CanvasArea(canvas);
  platform::FillArea(canvas, area, kOutputBackground);
  const PictureView view = DrawBuilder(builder, area);
  PaintPicture(canvas, picture, view);
}

bool PressBuilder(const Builder& builder, const platform::PointerEvent& event) {
  if (event.action != platform::PointerAction::Press ||
      event.button != platform::PointerButton::Left) {
    return false;
  }
  const int id = PictureOf(builder);
  const platform::Rect place = platform::PlaceOf(id);
  const PictureView view = DrawBuilder(builder, {0, 0, RectWidth(place), RectHeight(place)});
  builder.pressed(PartAt(picture, view, event.x, event.y));
  platform::Repaint(id);
  return true;
}

}  // namespace morva
