// `call` of what the shape and pattern builders write, and of the counts of a spiral.

#include <span>

#include "builders/shapes/pattern_text.h"
#include "builders/shapes/shape_text.h"
#include "driver/drive_internal.h"
#include "driver/json_text.h"
#include "skim/model/spiral_counts.h"
#include "text/code_writer.h"

namespace drive {
namespace {

std::string Value(std::u16string_view text) {
  return Json('{').Flag("ok", true).Text("value", text).Done();
}

template <typename Values>
std::string Written(const Values& values, std::size_t room,
                    void (*write)(const Values& values, morva::CodeWriter& out)) {
  morva::CodeWriter out;
  out.most = room;
  write(values, out);
  return Value(out.text);
}

std::string Count(int count) {
  std::string json;
  AppendNumber(json, count);
  return Good("value", json);
}

}  // namespace

std::string CallShapeText(const Words& words) {
  std::int64_t kind = 0;
  bool metric = false;
  if (words.size() != 3 + morva::kShapeNumbers ||
      !ReadInteger(words[1], 0, morva::kShapeSaved - 1, kind) || !ReadFlag(words[2], metric)) {
    return Bad(u"expected: call ShapeText KIND true|false \"f1\" ... \"f7\"");
  }
  const int shape = static_cast<int>(kind);
  const morva::ShapeValues values = ShapeOf(
      shape, ReadTyped(morva::ShapeFields(shape), std::span(words).subspan(3), metric), nullptr);
  const morva::BuilderFault fault = CheckShape(values);
  if (fault.field >= 0) return Refused(morva::kShapeTitle, fault.words);
  return Written(values, ShapeRoom(values), morva::WriteShape);
}

std::string CallCircularText(const Words& words) {
  std::int64_t item = 0;
  std::int64_t orientation = 0;
  bool metric = false;
  if (words.size() != 4 + morva::kCircularNumbers || !ReadInteger(words[1], 0, 5, item) ||
      !ReadInteger(words[2], 0, 2, orientation) || !ReadFlag(words[3], metric)) {
    return Bad(u"expected: call CircularText ITEM ORIENTATION true|false \"f1\" ... \"f11\"");
  }
  const morva::CircularValues values = CircularOf(
      {static_cast<morva::ItemShape>(item)}, static_cast<morva::Orientation>(orientation),
      ReadTyped(morva::CircularFields(), std::span(words).subspan(4), metric));
  const morva::BuilderFault fault = CheckCircular(values);
  if (fault.field >= 0) return Refused(morva::kCircularTitle, fault.words);
  return Written(values, CircularRoom(values), morva::WriteCircular);
}

std::string CallRectangularText(const Words& words) {
  std::int64_t item = 0;
  bool metric = false;
  if (words.size() != 3 + morva::kGridNumbers || !ReadInteger(words[1], 0, 5, item) ||
      !ReadFlag(words[2], metric)) {
    return Bad(u"expected: call RectangularText ITEM true|false \"f1\" ... \"f12\"");
  }
  const morva::GridValues values =
      GridOf({static_cast<morva::ItemShape>(item)},
             ReadTyped(morva::GridFields(), std::span(words).subspan(3), metric));
  const morva::BuilderFault fault = CheckGrid(values);
  if (fault.field >= 0) return Refused(morva::kGridTitle, fault.words);
  return Written(values, GridRoom(values), morva::WriteGrid);
}

std::string CallCircleSegments(const Words& words) {
  double radius = 0;
  bool metric = false;
  if (words.size() != 3 || !ReadDecimal(words[1], radius) || !ReadFlag(words[2], metric)) {
    return Bad(u"expected: call CircleSegments RADIUS true|false");
  }
  return Count(morva::CircleSegments(radius, metric));
}

std::string CallSpiralPoints(const Words& words) {
  double radius = 0;
  double step = 0;
  bool metric = false;
  if (words.size() != 4 || !ReadDecimal(words[1], radius) || !ReadDecimal(words[2], step) ||
      !ReadFlag(words[3], metric)) {
    return Bad(u"expected: call SpiralPoints RADIUS STEP true|false");
  }
  return Count(morva::SpiralPoints(radius, step, metric));
}

}  // namespace drive
