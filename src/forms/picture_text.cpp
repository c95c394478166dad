// A picture as text, one record a line.

#include <cmath>

#include "forms/picture_parts.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kDecimals = 4;
constexpr double kRoundsToZero = 0.00005;

constexpr const char16_t* kKinds[] = {u"path", u"loop", u"fill", u"arc", u"disc", u"cross"};
constexpr const char16_t* kSides[] = {u"on", u"above", u"right", u"below", u"left"};
constexpr const char16_t* kWays[] = {u"across", u"upright", u"along", u"diameter", u"radius"};

std::u16string Number(double value) {
  return FixedText(std::fabs(value) < kRoundsToZero ? 0 : value, kDecimals);
}

void PutPair(std::u16string& text, double x, double y) {
  text += u' ';
  text += Number(x);
  text += u',';
  text += Number(y);
}

void PutWord(std::u16string& text, const char16_t* word) {
  text += u' ';
  text += word;
}

void PutNumber(std::u16string& text, const char16_t* word, double value) {
  PutWord(text, word);
  text += u' ';
  text += Number(value);
}

void PutInk(std::u16string& text, Ink ink, int part) {
  PutWord(text, StyleOf(ink).name);
  if (part == kNoPart) return;
  PutWord(text, u"part ");
  text += IntegerText(part);
}

void PutArc(std::u16string& text, const PictureArc& arc, bool filled) {
  PutPair(text, arc.x, arc.y);
  PutNumber(text, u"radius", arc.radiusX);
  if (arc.radiusY != arc.radiusX) text += u',' + Number(arc.radiusY);
  if (filled || IsWhole(arc)) return;
  PutNumber(text, u"from", arc.start);
  PutNumber(text, u"by", arc.sweep);
}

void PutMark(std::u16string& text, const Picture& picture, const PictureMark& mark) {
  if (mark.kind == MarkKind::Layer) {
    text += u"layer\n";
    return;
  }
  text += kKinds[static_cast<std::size_t>(mark.kind)];
  PutInk(text, mark.ink, mark.part);
  for (std::int32_t i = mark.first; i < mark.first + mark.count; ++i) {
    if (mark.kind == MarkKind::Arc || mark.kind == MarkKind::Disc) {
      PutArc(text, picture.arcs[static_cast<std::size_t>(i)], IsFilled(mark));
      continue;
    }
    const PicturePoint& point = picture.points[static_cast<std::size_t>(i)];
    PutPair(text, point.x, point.y);
    if (point.bulge != 0) PutNumber(text, u"bulge", point.bulge);
  }
  text += u'\n';
}

void PutDimension(std::u16string& text, const PictureDimension& d) {
  PutPair(text, d.x0, d.y0);
  if (d.way == DimensionWay::Diameter || d.way == DimensionWay::Radius) {
    PutNumber(text, u"radius", d.radius);
    PutNumber(text, u"leader", d.leader);
    return;
  }
  PutPair(text, d.x1, d.y1);
  PutWord(text, u"row ");
  text += IntegerText(d.row);
  if (d.outside) PutWord(text, u"outside");
}

void PutLabel(std::u16string& text, const Picture& picture, const PictureLabel& label) {
  const LabelSpec& spec = label.spec;
  text += label.dimension < 0 ? u"label" : u"dimension";
  if (label.dimension < 0) {
    PutInk(text, spec.ink, spec.part);
    PutPair(text, label.x, label.y);
    PutWord(text, kSides[static_cast<std::size_t>(spec.side)]);
    if (spec.clear != 0) PutNumber(text, u"clear", spec.clear);
  } else {
    const PictureDimension& d = picture.dimensions[static_cast<std::size_t>(label.dimension)];
    PutWord(text, kWays[static_cast<std::size_t>(d.way)]);
    PutInk(text, spec.ink, spec.part);
    PutDimension(text, d);
  }
  if (spec.place >= 0) {
    PutWord(text, u"place ");
    text += IntegerText(spec.place);
  }
  if (spec.shiftX != 0 || spec.shiftY != 0) {
    PutWord(text, u"shift");
    PutPair(text, spec.shiftX, spec.shiftY);
  }
  text += u": ";
  text += label.words;
  text += u'\n';
}

}  // namespace

std::u16string PictureText(const Picture& picture) {
  std::u16string text = picture.metric ? u"picture mm\n" : u"picture inch\n";
  for (const PictureMark& mark : picture.marks) PutMark(text, picture, mark);
  for (const PictureLabel& label : picture.labels) PutLabel(text, picture, label);
  if (picture.full) text += u"full\n";
  if (picture.unsound) text += u"unsound\n";
  return text;
}

}  // namespace morva
