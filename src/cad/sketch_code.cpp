#include "cad/sketch_code.h"

#include <cstdint>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/router.h"
#include "cad/drawings.h"
#include "cad/sketch.h"
#include "documents/autosave.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "library/motion_text.h"
#include "library/outline.h"
#include "platform/control.h"
#include "platform/events.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr char16_t kTitle[] = u"Custom Shape Editor";
constexpr int kUnitsOfObject = 2200;  // a circle of the largest numbers is half of it
constexpr int kUnitsBeside = 8192;
constexpr double kLeastFeed = 1e-6;
constexpr int kRefreshMs = 60;

// What a Cut Z that is no number means, in either unit; a new drawing starts at another depth.
constexpr double kNoDepth = -2.5;

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

std::u16string BuildText(const CutData& cut) {
  CodeWriter out;
  out.most = static_cast<std::size_t>(sketch.objectCount * kUnitsOfObject + kUnitsBeside - 1);
  Line(out, u"");
  Line(out, u"(CUSTOM SHAPE EDITOR)");
  Line(out, sketch.metric ? u"G21 (MM)" : u"G20 (INCH)");
  Line(out, u"G90 G17 G94");
  Put(out, u"G00 Z", cut.safeZ, 3);
  Line(out, u"");
  for (int i = 0; i < sketch.objectCount; ++i) {
    const SketchObject& object = sketch.objects[i];
    if (object.type > kTypeSlot) continue;
    PutInteger(out, u"(OBJECT ", i + 1);
    Line(out, u")");
    PutObject(out, object, cut);
  }
  Line(out, u"(END CUSTOM SHAPE)");
  return std::move(out.text);
}

// The log and the feature hint are out of sight here. Without a word a second press would write
// the same cuts once more, and after an update the key makes a new feature.
void TellResult(bool update) {
  const ProgramTab* tab = ActiveTab();
  std::u16string words = update ? u"Code updated in " : u"Code added to ";
  words += tab ? std::u16string_view(tab->title) : std::u16string_view(u"the program");
  words += u". To change it, double-click its feature in the code; Generate adds another.";
  SetSketchStatus(words.c_str());
  LogSketchOperation(update ? u"Updated code" : u"Generated code");
}

// A field that is not wholly a number was read as far as it goes or replaced; the person at the
// machine has to know.
void TellReading(int id, const char16_t* caption, double used, int decimals) {
  double value = 0;
  if (ReadStrictField(id, value)) return;
  AppendOutput(caption + (u" is not a number: " + SketchNumber(used, decimals)) +
               u" was used. Check the code before you run it.");
}

}  // namespace

std::u16string SketchCode(double depth, double feed, double safeZ) {
  return BuildText({depth, feed, safeZ});
}

void GenerateSketchCode() {
  if (sketch.objectCount < 1) {
    platform::ShowBox(kTitle, u"Draw at least one object first.", platform::BoxButtons::Ok,
                      platform::BoxIcon::Information);
    return;
  }
  CutData cut;
  cut.depth = SketchField(kIdCadDepth, kNoDepth);
  cut.feed = SketchField(kIdCadFeed, BySketchUnit(10, 250));
  cut.safeZ = SketchField(kIdCadSafeZ, BySketchUnit(0.5, 12.7));
  if (!(cut.feed > kLeastFeed) || !(cut.safeZ > cut.depth)) {
    platform::ShowBox(kTitle, u"Enter a positive feed with Safe Z above the cutting depth.",
                      platform::BoxButtons::Ok, platform::BoxIcon::Warning);
    return;
  }
  const std::u16string text = BuildText(cut);
  // In another program the block under edit becomes a new one.
  const std::uint64_t source = ActiveSerial();
  const bool linked = editLink.kind == kKindSketch && editLink.tab == app.activeTab;
  if (!InsertFeatureBlock(kKindSketch, text)) return;
  MarkModified();
  ScheduleAutosave();
  ArmTextRefresh(kRefreshMs);
  Call(hooks.rebuildToolpath);
  AppendOutput(
      u"Custom Shape Editor geometry inserted into active program. Verify work offset, cutter "
      u"compensation, stock, and clearances.");
  TellResult(linked && ActiveSerial() == source);
  // Last, so that it stays on the status line too.
  TellReading(kIdCadSafeZ, u"Safe Z", cut.safeZ, 3);
  TellReading(kIdCadFeed, u"Cut feed", cut.feed, 2);
  TellReading(kIdCadDepth, u"Cut Z", cut.depth, 3);
}

void RegisterSketchCode() {
  for (const int id : {kIdCadGenerate, kIdCadGenerateItem}) {
    RegisterCommand(RouterStage::Builder, id, platform::kNotifyClick,
                    [](int, int) { GenerateSketchCode(); });
  }
}

}  // namespace morva
