#include "cad/panel/sketch_code.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "app/command_ids.h"
#include "app/outlets.h"
#include "app/router.h"
#include "cad/model/cad_form.h"
#include "cad/model/cut_data.h"
#include "cad/model/drawing_blocks.h"
#include "cad/model/drawings.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_record.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/panel/workspace.h"
#include "cad/tools/strict_fields.h"
#include "documents/block_labels.h"
#include "documents/builder.h"
#include "documents/feature_operations.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "forms/form_words.h"
#include "library/motion_text.h"
#include "library/outline.h"
#include "platform/events.h"
#include "platform/message.h"

namespace morva {

namespace {

constexpr int kUnitsOfObject = 2200;  // a circle of the largest numbers is half of it
constexpr int kUsualUnits = 700;      // of a circle: memory for so much is asked for at once
constexpr int kUnitsBeside = 8192;
constexpr double kLeastFeed = 1e-6;

void PutObject(CodeWriter& out, const SketchObject& object, const CutData& cut) {
  const ClosedShape item{ItemShape::Rectangle, object.x,     object.y,
                         object.size,          object.size2, object.angle};
  switch (object.type) {
    case kTypeLine: {
      double endX = 0;
      double endY = 0;
      LineEndPoint(object, endX, endY);
      EmitLine(out, object.x, object.y, endX, endY, cut);
      break;
    }
    case kTypeRectangle:
      EmitClosedShape(out, item, cut);
      break;
    case kTypeCircle:
      EmitCircle(out, item, cut);
      break;
    case kTypeSlot:
      EmitSlot(out, item, cut);
      break;
    default:
      break;
  }
}

std::size_t RoomForCode(const FormValues& /*values*/) {
  return static_cast<std::size_t>(sketch.objectCount * kUnitsOfObject + kUnitsBeside - 1);
}

// The program of the drawing that is sent; its code may go into another one, which then comes up.
struct Sender {
  std::uint64_t serial = 0;
  std::u16string title;
};
Sender sender;

std::u16string ActiveTitle() {
  const ProgramTab* tab = ActiveTab();
  return tab ? tab->title : u"the program";
}

bool Check(const FormValues& values, Refusal& refusal) {
  sender = {ActiveSerial(), ActiveTitle()};
  if (sketch.objectCount < 1) {
    refusal.words = u"Draw at least one object first.";
    refusal.icon = platform::BoxIcon::Information;
    return false;
  }
  if (values.refused >= 0) {
    static std::u16string words;
    words = NoNumberWords(kCadForm.rows[static_cast<std::size_t>(values.refused)]);
    refusal.words = words.c_str();
    return false;
  }
  const CutData cut = CutDataOf(values.numbers);
  refusal.words = u"Enter a positive feed with Safe Z above the cutting depth.";
  return cut.feed > kLeastFeed && cut.safeZ > cut.depth;
}

void Write(const FormValues& values, CodeWriter& out) {
  const CutData cut = CutDataOf(values.numbers);
  out.text.reserve(static_cast<std::size_t>(sketch.objectCount * kUsualUnits));
  PutHead(out, kSketchLabel, values.metric);
  Line(out, u"G00 Z", cut.safeZ, 3);
  for (int i = 0; i < sketch.objectCount; ++i) {
    const SketchObject& object = sketch.objects[i];
    if (object.type > kTypeSlot) continue;
    PutInteger(out, u"(OBJECT ", i + 1);
    Line(out, u")");
    PutObject(out, object, cut);
  }
  Line(out, u"(END CUSTOM SHAPE)");
}

// The log and the feature hint are out of sight here. Without a word a second press would write
// the same cuts once more, and after an update the key makes a new feature.
void TellResult(bool update) {
  std::u16string words = (update ? u"Code updated in " : u"Code added to ") + ActiveTitle();
  if (ActiveSerial() == sender.serial) {
    words += u". After a change press Generate again: it offers to update this feature.";
  } else {
    words +=
        u". The drawing stays in " + sender.title + u": Generate there adds the code once more.";
  }
  SetSketchStatus(words.c_str());
  LogSketchOperation(update ? u"Updated code" : u"Generated code");
}

// An empty field was replaced; the person at the machine has to know.
void TellReading(const FormRow& row, const FormValues& values) {
  double value = 0;
  if (ReadStrictField(row.id, value)) return;
  AppendOutput(ReplacedWords(row, false, SketchNumber(values.numbers[row.value], row.decimals)));
}

void AfterInsertion(const FormValues& values, bool updated) {
  TellResult(updated);
  RememberBlock(SelectedFeatureId());
  // Last, so that it stays on the status line too; there the first field stays longest.
  for (std::size_t i = kCadForm.rows.size(); i-- > 0;) {
    const FormRow& row = kCadForm.rows[i];
    if (IsCutField(row)) TellReading(row, values);
  }
}

constexpr Builder kSketchBuilder{
    .kind = kKindSketch,
    .title = u"Custom Shape Editor",
    .form = &kCadForm,
    .readPage = kPanelCutData,
    .reading = Reading::Strict,
    .insertKey = kIdCadGenerate,
    .asksWhere = true,
    .logged =
        u"Custom Shape Editor geometry inserted into active program. Verify work offset, "
        u"cutter compensation, stock, and clearances.",
    .check = Check,
    .write = Write,
    .room = RoomForCode,
    .storeItems = StoreSketchItems,
    .loadItems = OpenSketchBlock,
    .standsIn = BlockOfLiveDrawing,
    .inserted = AfterInsertion,
    .linked = RefreshCadKeys,
};

}  // namespace

std::u16string SketchCode(const CutData& cut) {
  FormValues values;
  values.metric = sketch.metric;
  PutCutData(cut, values.numbers);
  CodeWriter out;
  out.most = RoomForCode(values);
  Write(values, out);
  return std::move(out.text);
}

void GenerateSketchCode() { InsertFromBuilder(kSketchBuilder); }

void RegisterSketchCode() {
  RegisterBuilder<kSketchBuilder>();
  RegisterCommand(RouterStage::Builder, kIdCadGenerateItem, platform::kNotifyClick,
                  [](int, int) { GenerateSketchCode(); });
}

}  // namespace morva
