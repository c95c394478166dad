// Jobs on the CAD workspace by chance, through the driver: every byte picks what the user does.
//
// After each line the sketch must keep its limits, at the end it must make a record that can be
// stored, and undoing everything must come to an end.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>

#include "app/app_state.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_record.h"
#include "cad/model/tool_state.h"
#include "driver/drive.h"
#include "fuzz/driver_jobs.h"
#include "fuzz/fuzz.h"

namespace {

using fuzz::Check;

// "^" is a key, method or field of the workspace, "#" a place of the canvas or a small number,
// "%" a number as a user types one. Drawing stands more often than the rest.
constexpr const char* kPhrases[] = {
    "mouse MorvaCustomShapeCanvas press # # left",
    "mouse MorvaCustomShapeCanvas press # # left",
    "mouse MorvaCustomShapeCanvas press # # left",
    "mouse MorvaCustomShapeCanvas move # #",
    "mouse MorvaCustomShapeCanvas move # #",
    "mouse MorvaCustomShapeCanvas release # # left",
    "mouse MorvaCustomShapeCanvas release # # left",
    "mouse MorvaCustomShapeCanvas press # # left ctrl",
    "mouse MorvaCustomShapeCanvas press # # left alt",
    "mouse MorvaCustomShapeCanvas press # # middle",
    "mouse MorvaCustomShapeCanvas release # # middle",
    "mouse MorvaCustomShapeCanvas release # # right",
    "mouse MorvaCustomShapeCanvas double # # left",
    "mouse MorvaCustomShapeCanvas wheel # # 1",
    "mouse MorvaCustomShapeCanvas wheel # # -3",
    "mouse MorvaCadScroll press 8 # left",
    "mouse MorvaCadScroll release 8 # left",
    "mouse MorvaCadForm wheel 10 10 -2",
    "get paint MorvaCustomShapeCanvas",
    "click ^",
    "click ^",
    "click ^",
    "click ^",
    "command ^",
    "pick ^",
    "focus ^",
    "focus 20011",
    "type ^ \"%\"",
    "type ^ \"%\"",
    "select 3400 #",
    "double 3400 #",
    "menu 3400 #",
    "key \"Tab\"",
    "key \"Enter\"",
    "key \"Esc\"",
    "key \"F8\"",
    "key \"Delete\"",
    "key \"Space\"",
    "key \"Down\"",
    "key \"Ctrl+C\"",
    "key \"Ctrl+X\"",
    "key \"Ctrl+V\"",
    "key \"Ctrl+Z\"",
    "wait 20",
    "wait 500",
    "resize 1200 800",
    "resize 1560 940",
    "click \"NEW\"",
    "click 800",
    "click 1200",
    "click 1201",
    "click 1033",
    "command 909",
    "command 911",
    "command 903",
    "select 760 #",
    "click 772",
    "click 793",
    "click 1213",
    "get paint MorvaPatternPreview",
    "click 1012",
    "click 1012",
    "click 2982",
    "click 2983",
    "type 3601 \"1\"",
    "select 3600 1",
};

constexpr int kControls[] = {
    1000,  1001,  1002,  1003,  1004,  0x3ED, 0x3EE, 0x3EF, 0x3F0, 0x3F1, 0x3F2, 0x3F3, 0x3F4,
    0x3F5, 0x3F6, 0x3F7, 0x3F8, 1020,  1021,  1022,  1023,  1024,  1025,  1026,  1027,  1028,
    1029,  1030,  1031,  1032,  1033,  0x4E3, 0x4E4, 0x4E5, 1254,  0x4ED, 0x4EE, 0x4EF, 0x4F0,
    1500,  0x5DD, 0x5DE, 0x5DF, 0x5E0, 0x5E1, 0x5E4, 1510,  0x5E7, 0x5E8, 0x60C, 0x60E, 0x60F,
    0x618, 0x619, 0x61A, 0x61B, 0x61C, 0x622, 0x623, 0x624, 0x62C, 0x62D, 0x636, 0x637, 0x640,
    0x73A, 0x73B, 0x741, 0x742, 0x743, 0xB2E, 0xB2F, 0xB30, 0xB31, 0xBA6, 0xBA7, 0xC21, 0xC23,
    0xC26, 3404,  3405,  3406,  3407,  3408,  3409,  3410,  3411,  3412,  3413,  3414,  3415,
    3416,  3419,  3420,  3421,  3422,  3423,  3424,  3425,  3426,  3427,  3428,  3429,  3430,
    3431,  3434,  3438,  3439,  3440,  3442,  3450,  3451,  3454,  3455,  3458,  760,   772,
    773,   3463,  3468,  3470,  780,   793,   3476,  3477,  3600,  3601,  639,   641,   653,
    654,   655,   1713,  1714,  1716,  1717};

constexpr const char* kNumbers[] = {"0",    "1",     "2.5",    "-.5", "90",      "6",   "64",
                                    "1e9",  "abc",   "999999", "",    "1000001", "3",   "0.0000001",
                                    "-360", "36001", "12.7.1", "96",  "4.0001",  "25.4"};

std::string PickedLine(fuzz::Bytes& bytes) {
  return fuzz::PickedLine(bytes, kPhrases, [&bytes](char c, std::string& line) {
    if (c == '^') {
      line += std::to_string(kControls[bytes.Next() % std::size(kControls)]);
    } else if (c == '#') {
      line += std::to_string(bytes.Next() * 5 / 2);
    } else if (c == '%') {
      line += kNumbers[bytes.Next() % std::size(kNumbers)];
    } else {
      return false;
    }
    return true;
  });
}

bool Below(double value, double limit) { return std::fabs(value) < limit; }

void CheckObject(const morva::SketchObject& object) {
  Check(object.type >= 0 && object.type <= 5, "the type of an object");
  Check(object.group >= 0, "a group is 0 or above");
  Check(Below(object.x, morva::kSketchLimit) && Below(object.y, morva::kSketchLimit),
        "an anchor lies within the limit");
  Check(object.size >= 0 && object.size < morva::kSketchLimit, "a size within its bounds");
  Check(object.size2 >= 0 && object.size2 < morva::kSketchLimit, "a second size in its bounds");
  Check(std::isfinite(object.angle), "an angle is a number");
}

void CheckSketch() {
  const morva::LiveSketch& sketch = morva::sketch;
  Check(sketch.objectCount >= 0 && sketch.objectCount <= 96, "at most 96 objects");
  Check(sketch.selected >= -1 && sketch.selected < sketch.objectCount, "the selection exists");
  Check(sketch.undoDepth >= 0 && sketch.undoDepth <= 24, "at most 24 undo steps");
  Check(!sketch.trimPreviewing, "a dry run ends with its event");
  for (int i = 0; i < sketch.objectCount; ++i) CheckObject(sketch.objects[i]);
  const morva::ToolState& tools = morva::tools;
  Check(tools.dragTool >= 0 && tools.dragTool <= 6, "the drag tool");
  Check(tools.geometryTool >= 0 && tools.geometryTool <= 6, "the geometry tool");
  Check(tools.constructionClicks >= 0 && tools.constructionClicks <= 3, "the picked points");
  Check(morva::canvasView.zoom >= 0.1 && morva::canvasView.zoom <= 40, "the zoom");
}

// A drawing can always be stored, and every step back leads somewhere.
void CheckEnd() {
  morva::FeatureSettings record;
  morva::StartSketchRecord(record, morva::sketch.metric);
  Check(morva::StoreSketchItems(record), "the drawing makes a record");
  for (int i = 0; i < 40; ++i) {
    morva::SketchUndo();
    CheckSketch();
  }
  Check(morva::sketch.undoDepth == 0, "undo comes to an end");
}

fuzz::Bytes* source = nullptr;

// Says the next line; also what a dialog that stands open is worked with.
bool SayNext() {
  if (!source->Any()) return false;
  const std::string line = PickedLine(*source);
  if (std::getenv("MORVA_SHOW_LINES")) std::fprintf(stderr, "%s\n", line.c_str());
  drive::AnswerLine(line);
  CheckSketch();
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::filesystem::path home = fuzz::NewHome();
  drive::KeepFilesAtHome();
  drive::Machine machine;
  machine.home = home.u16string();
  Check(drive::Begin(machine), "the application starts");
  drive::AnswerLine("click 1201");
  fuzz::Bytes bytes(data, size < 2000 ? size : 2000);
  source = &bytes;
  drive::ReadOnInDialogs({nullptr, SayNext});
  while (SayNext()) {
  }
  CheckEnd();
  drive::End();
  std::filesystem::remove_all(home);
  return 0;
}
