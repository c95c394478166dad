// The builders of short jobs take any numbers, what passes their checks or not: texts stay within
// their room and pictures within their tables, and what passes is written whole.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "builders/shapes/pattern_text.h"
#include "builders/shapes/shape_text.h"
#include "builders/wizard/wizard_picture.h"
#include "builders/wizard/wizard_text.h"
#include "fuzz/fuzz.h"
#include "library/macro_templates.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace {

using namespace morva;
using fuzz::Check;

// The input, byte by byte; zeros behind its end.
struct Input {
  const std::uint8_t* data;
  std::size_t left;
  int Byte() {
    if (left == 0) return 0;
    --left;
    return *data++;
  }
  // A number as a field could hold it, or any bits.
  double Number() {
    const int kind = Byte();
    if (kind % 4 == 0) {
      std::uint64_t bits = 0;
      for (int i = 0; i < 8; ++i) bits = bits << 8 | static_cast<unsigned>(Byte());
      double value = 0;
      std::memcpy(&value, &bits, sizeof value);
      return value;
    }
    const double value = (Byte() * 256 + Byte()) / (kind % 4 == 1 ? 1000.0 : 1.0);
    return kind % 4 == 2 ? -value : value;
  }
};

bool Plain(double value) { return std::fabs(value) < 1e9; }

template <typename Numbers>
bool AllPlain(const Numbers& numbers) {
  return std::all_of(std::begin(numbers), std::end(numbers), Plain);
}

void CheckText(const CodeWriter& out, bool whole) {
  Check(out.text.size() <= out.most, "a text stays within its room");
  Check(!whole || !out.full, "what passes is written whole");
}

void RunWizard(Input& input) {
  WizardValues values;
  values.kind = input.Byte() % kWizardKinds;
  values.metric = input.Byte() % 2 == 1;
  for (double& number : values.numbers) number = input.Number();
  const bool passes = CheckWizard(values).words[0] == 0;
  CodeWriter out;
  out.most = WizardRoom();
  WriteWizard(values, out);
  CheckText(out, passes && AllPlain(values.numbers));
  Picture picture;
  DrawWizard(values, input.Number(), picture);
  DrawWizard(values, WizardCutter(values), picture);
  Check(!picture.full, "a job's picture fits");
}

SavedShape Shape(Input& input) {
  SavedShape shape;
  shape.count = input.Byte() % (kMaxShapeObjects + 1);
  for (int i = 0; i < std::min(shape.count, 6); ++i) {
    SketchObject& object = shape.objects[i];
    object.type = input.Byte() % 8 - 1;
    for (double* number : {&object.x, &object.y, &object.size, &object.size2, &object.angle}) {
      *number = input.Number();
    }
  }
  return shape;
}

void RunShape(Input& input) {
  ShapeValues values;
  values.kind = input.Byte() % kShapeKinds;
  values.metric = input.Byte() % 2 == 1;
  for (double& number : values.numbers) number = input.Number();
  const SavedShape saved = Shape(input);
  if (input.Byte() % 8 != 0) values.saved = &saved;
  const bool passes = CheckShape(values).words[0] == 0;
  CodeWriter out;
  out.most = ShapeRoom(values);
  WriteShape(values, out);
  CheckText(out, passes);
  Picture picture;
  DrawShape(values, picture);
  Check(!picture.full, "a shape's picture fits");
}

void RunPatterns(Input& input) {
  const SavedShape saved = Shape(input);
  PatternItem item;
  item.shape = static_cast<ItemShape>(input.Byte() % 6);
  if (input.Byte() % 2 == 0) item.saved = &saved;
  CircularValues circle{
      item, static_cast<Orientation>(input.Byte() % 3), input.Byte() % 2 == 1, {}};
  for (double& number : circle.numbers) number = input.Number();
  GridValues grid{item, circle.metric, {}};
  for (double& number : grid.numbers) number = input.Number();
  CodeWriter out;
  out.most = CircularRoom(circle);
  WriteCircular(circle, out);
  CheckText(out, CheckCircular(circle).words[0] == 0);
  CodeWriter rows;
  rows.most = GridRoom(grid);
  WriteGrid(grid, rows);
  CheckText(rows, CheckGrid(grid).words[0] == 0);
  Picture picture;
  DrawCircular(circle, picture);
  Check(!picture.full, "a circle's picture fits");
  ClearPicture(picture, grid.metric);
  DrawGrid(grid, picture);
  Check(!picture.full, "a grid's picture fits");
}

void RunMacro(Input& input) {
  std::u16string texts[kMacroFields];
  const int kind = input.Byte() % 9 - 1;
  for (int i = 0; i < kMacroFields; ++i) {
    const auto units = std::min<std::size_t>(static_cast<std::size_t>(input.Byte()), input.left);
    texts[i] = fuzz::TextOf(input.data, units);
    input.data += units;
    input.left -= units;
  }
  CodeWriter out;
  out.most = kMacroTextUnits - 1;
  WriteMacro(kind, texts, input.Byte() % 2 == 1, out);
  CheckText(out, false);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input{data, size};
  switch (input.Byte() % 4) {
    case 0:
      RunWizard(input);
      break;
    case 1:
      RunShape(input);
      break;
    case 2:
      RunPatterns(input);
      break;
    default:
      RunMacro(input);
  }
  return 0;
}
