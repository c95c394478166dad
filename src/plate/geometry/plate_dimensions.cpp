// Dimensions and labels of a plate's picture. A label's part is the section or the feature whose
// editor a click on it opens.

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "plate/geometry/plate_layout.h"
#include "plate/geometry/plate_picture.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

namespace {

using platform::PointF;

constexpr char16_t kDiameterWords[] = u"Diameter";
constexpr char16_t kDiameterSign[] = u" Ø ";
// Numbers stand at all features up to here; of more, at those that are unlike the others.
constexpr int kNumberedFeatures = 60;
constexpr double kNoteRow = 0.15;   // of half of the longer side: a row of words where all is seen
constexpr int kUprightRow = 2;      // of upright lines, across which the words lie, beside a part
constexpr double kUpperRight = 45;  // degrees, of a leader
constexpr double kUpperLeft = 135;

constexpr const char16_t* kSectionTitles[kPlateSections] = {
    u"Length  X",      u"Width  Y",
    u"Edge radius  R", u"Diameter / width",
    u"Slot length",    u"Count X",
    u"Count Y",        u"Edge X",
    u"Edge Y",         u"Pattern diameter",
    u"Cut depth",      u"Feed",
    u"Safe Z",         u"Depth and plate thickness"};

struct Sheet {
  const PlateRecord& record;
  const PlateNumbers& n;
  Picture& picture;
};

std::u16string Words(const Sheet& sheet, std::u16string_view before, double length) {
  std::u16string words(before);
  return words.append(DimensionText(length, sheet.n.metric));
}

LabelSpec SpecOf(const Sheet& sheet, int part, int place) {
  LabelSpec spec;
  spec.part = part;
  spec.place = place;
  const PlateLabel& kept = sheet.record.dimensionLabels[place];
  if (kept.set) {
    spec.shiftX = kept.x;
    spec.shiftY = kept.y;
  }
  return spec;
}

void Add(const Sheet& sheet, const PictureDimension& dimension, int section,
         std::u16string_view words) {
  AddDimension(sheet.picture, dimension, SpecOf(sheet, section, section), words);
}

void AddSizes(const Sheet& sheet) {
  const PlateNumbers& n = sheet.n;
  const PointF half = PlateHalves(n);
  if (n.shape == PlateShape::Round) {
    Add(sheet, {.way = DimensionWay::Diameter, .radius = half.x, .leader = kUpperLeft},
        kPlateLength, Words(sheet, std::u16string(kDiameterWords) + kDiameterSign, n.length));
    return;
  }
  Add(sheet,
      {.way = DimensionWay::Across,
       .x0 = -half.x,
       .y0 = -half.y,
       .x1 = half.x,
       .y1 = -half.y,
       .row = -2,
       .outside = true},
      kPlateLength, Words(sheet, u"Width (X) ", n.length));
  Add(sheet,
      {.way = DimensionWay::Upright,
       .x0 = -half.x,
       .y0 = -half.y,
       .x1 = -half.x,
       .y1 = half.y,
       .row = -3,  // the words lie across the line, clear of the plate
       .outside = true},
      kPlateWidth, Words(sheet, u"Length (Y) ", n.width));
  const double radius = CornerRadius(n);
  if (n.shape == PlateShape::Rectangle && radius > 0) {
    Add(sheet,
        {.way = DimensionWay::Radius,
         .x0 = half.x - radius,
         .y0 = half.y - radius,
         .radius = radius,
         .leader = kUpperRight},
        kPlateEdgeRadius, Words(sheet, u"Corner radius ", radius));
  }
}

bool IsSeen(const PlateFeature& feature) { return !feature.deleted && !feature.hidden; }

// Whether the form alone says where and how the feature is.
bool FollowsForm(const PlateFeature& feature) {
  return IsSeen(feature) && !feature.placed && feature.shape.count == 0;
}

// The first that has the form's size, -1 for none; with `slot` the first slot or the first hole.
int FirstOfForm(const Sheet& sheet, bool slot, int& count) {
  int first = -1;
  count = 0;
  for (int k = 0; k < FeatureCount(sheet.n); ++k) {
    const PlateFeature& feature = sheet.record.features[k];
    if (!IsSeen(feature) || feature.shape.count > 0) continue;
    if ((PlainFeature(sheet.n, k, {}).shape == ItemShape::Slot) != slot) continue;
    if (first < 0) first = k;
    ++count;
  }
  return first;
}

void AddHoleSize(const Sheet& sheet) {
  int count = 0;
  const int k = FirstOfForm(sheet, false, count);
  if (k < 0) return;
  const PointF at = FeaturePlace(sheet.n, sheet.record.features[k], k);
  std::u16string words = count > 1 ? IntegerText(count) + u"×" : std::u16string();
  Add(sheet,
      {.way = DimensionWay::Diameter,
       .x0 = at.x,
       .y0 = at.y,
       .radius = sheet.n.size / 2,
       .leader = kUpperRight},
      kPlateSize, Words(sheet, words.append(kDiameterSign), sheet.n.size));
}

void AddSlotSize(const Sheet& sheet) {
  int count = 0;
  const int k = FirstOfForm(sheet, true, count);
  if (k < 0) return;
  const PointF at = FeaturePlace(sheet.n, sheet.record.features[k], k);
  const ClosedShape slot = PlainFeature(sheet.n, k, at);
  const bool upright = slot.angle != 0;
  const PointF along = upright ? PointF{0, slot.width / 2} : PointF{slot.width / 2, 0};
  const PointF across = upright ? PointF{slot.height / 2, 0} : PointF{0, slot.height / 2};
  std::u16string words = count > 1 ? IntegerText(count) + u"× " : std::u16string();
  const DimensionWay way = upright ? DimensionWay::Upright : DimensionWay::Across;
  const DimensionWay other = upright ? DimensionWay::Across : DimensionWay::Upright;
  Add(sheet,
      {.way = way,
       .x0 = at.x - along.x,
       .y0 = at.y - along.y,
       .x1 = at.x + along.x,
       .y1 = at.y + along.y,
       .row = upright ? kUprightRow : 1},
      kPlateSlotLength, Words(sheet, words, slot.width));
  if (sheet.n.type == PlateFeatureType::Mixed) return;  // the hole shows the width
  Add(sheet,
      {.way = other,
       .x0 = at.x - across.x,
       .y0 = at.y - across.y,
       .x1 = at.x + across.x,
       .y1 = at.y + across.y,
       .row = upright ? 1 : kUprightRow},
      kPlateSize, Words(sheet, words, slot.height));
}

// From the plate's sides to the outer features.
void AddEdges(const Sheet& sheet) {
  const PlateNumbers& n = sheet.n;
  if (n.layout == PlateLayout::Circular || !FollowsForm(sheet.record.features[0])) return;
  const PointF half = PlateHalves(n);
  const PointF at = LayoutPlace(n, 0);
  const bool corners = n.layout == PlateLayout::Corners;
  if (corners || n.countX > 1) {
    Add(sheet,
        {.way = DimensionWay::Across,
         .x0 = -n.length / 2,
         .y0 = -half.y,
         .x1 = at.x,
         .y1 = at.y,
         .row = -1,
         .outside = true},
        kPlateEdgeX, Words(sheet, u"", n.edgeX));
  }
  if (corners || n.countY > 1) {
    Add(sheet,
        {.way = DimensionWay::Upright,
         .x0 = -half.x,
         .y0 = -n.width / 2,
         .x1 = at.x,
         .y1 = at.y,
         .row = -1,
         .outside = true},
        kPlateEdgeY, Words(sheet, u"", n.edgeY));
  }
}

// The pitch of a grid along one side of the plate, behind how many times it stands there.
void AddCount(const Sheet& sheet, int section, DimensionWay way, PointF from, PointF to) {
  const bool across = way == DimensionWay::Across;
  const int steps = (across ? sheet.n.countX : sheet.n.countY) - 1;
  if (steps < 1) return;
  const double pitch = across ? to.x - from.x : to.y - from.y;
  Add(sheet,
      {.way = way,
       .x0 = from.x,
       .y0 = from.y,
       .x1 = to.x,
       .y1 = to.y,
       .row = across ? 1 : kUprightRow,
       .outside = true},
      section, Words(sheet, IntegerText(steps) + u"× ", pitch));
}

// How many columns and rows there are, beside their pitch.
void AddCounts(const Sheet& sheet) {
  const PlateNumbers& n = sheet.n;
  if (n.layout != PlateLayout::Grid) return;
  const PointF first = LayoutPlace(n, 0);
  const PointF half = PlateHalves(n);
  AddCount(sheet, kPlateCountX, DimensionWay::Across, {first.x, half.y},
           {LayoutPlace(n, 1).x, half.y});
  AddCount(sheet, kPlateCountY, DimensionWay::Upright, {half.x, first.y},
           {half.x, LayoutPlace(n, n.countX).y});
}

void AddPatternCircle(const Sheet& sheet) {
  if (sheet.n.layout != PlateLayout::Circular) return;
  const double radius = PatternRadius(sheet.n);
  const std::u16string before = u"Bolt Hole Circle" + std::u16string(kDiameterSign);
  Add(sheet, {.way = DimensionWay::Diameter, .radius = radius, .leader = kUpperLeft},
      kPlatePatternDiameter, Words(sheet, before, 2 * radius));
}

void AddNote(const Sheet& sheet, PointF at, std::u16string_view words, int part, int place,
             LabelSide side) {
  LabelSpec spec = SpecOf(sheet, part, place);
  spec.side = side;
  AddLabel(sheet.picture, {at.x, at.y}, words, spec);
}

// Below each other, to the right of the plate's lower right corner.
void AddNotes(const Sheet& sheet) {
  const PlateNumbers& n = sheet.n;
  const PointF half = PlateHalves(n);
  const double row = kNoteRow * std::max(half.x, half.y);
  const auto add = [&](int rows, std::u16string_view words, int part, int place) {
    AddNote(sheet, {half.x, -half.y - rows * row}, words, part, place, LabelSide::Right);
  };
  add(0, Words(sheet, u"Thickness ", n.thickness), kDepthSection, kDepthSection);
  add(1, Words(sheet, u"Cut depth ", n.depth), kDepthSection, kCutDepthNote);
  if (n.type != PlateFeatureType::Mixed) return;
  add(2, kPlateTypeWords[static_cast<int>(n.type)], kPlateSlotLength, kTypeNote);
}

// Of many features only those are numbered that the user may look for.
bool IsNumbered(const PlateFeature& feature, int count) {
  return !feature.deleted && (count <= kNumberedFeatures || !IsPlainFeature(feature));
}

void AddNumbers(const Sheet& sheet, int selected) {
  const int count = FeatureCount(sheet.n);
  for (int k = 0; k < count; ++k) {
    const PlateFeature& feature = sheet.record.features[k];
    if (!IsNumbered(feature, count) && k != selected) continue;
    const PointF at = FeaturePlace(sheet.n, feature, k);
    const PointF reach = FeatureReach(sheet.n, feature, k);
    LabelSpec spec = SpecOf(sheet, FeatureTarget(k), FeatureTarget(k));
    spec.side = LabelSide::Above;
    spec.clear = reach.y;
    spec.ink = k == selected ? Ink::Selected : feature.hidden ? Ink::Hidden : Ink::Dimension;
    AddLabel(sheet.picture, {at.x, at.y}, IntegerText(k + 1), spec);
  }
}

std::u16string SizeWords(const Sheet& sheet, const PlateFeature& feature, int k) {
  const double units = UnitsPerInch(sheet.record);
  if (feature.shape.count > 1) return u"Custom";
  if (feature.shape.count == 1) {
    const SketchObject& object = feature.shape.objects[0];
    if (object.type == kTypeCircle) return Words(sheet, u"Ø ", object.size * units);
    if (!HasTwoSizes(object)) return u"Custom";
    return Words(sheet, Words(sheet, u"", object.size * units) + u" × ", object.size2 * units);
  }
  const ClosedShape item = PlainFeature(sheet.n, k, {});
  if (item.shape == ItemShape::Circle) return Words(sheet, u"Ø ", item.width);
  return Words(sheet, Words(sheet, u"", item.width) + u" × ", item.height);
}

// What the editor of the selected feature would say.
void AddSelected(const Sheet& sheet, int k) {
  if (k < 0 || k >= FeatureCount(sheet.n) || sheet.record.features[k].deleted) return;
  const PlateFeature& feature = sheet.record.features[k];
  const PointF at = FeaturePlace(sheet.n, feature, k);
  const int part = FeatureTarget(k);
  AddDimension(sheet.picture,
               {.way = DimensionWay::Across, .x1 = at.x, .y1 = at.y, .row = at.y < 0 ? -1 : 1},
               SpecOf(sheet, part, kSelectedAcross), Words(sheet, u"X ", at.x));
  AddDimension(sheet.picture,
               {.way = DimensionWay::Upright, .x1 = at.x, .y1 = at.y, .row = at.x < 0 ? -1 : 1},
               SpecOf(sheet, part, kSelectedUpright), Words(sheet, u"Y ", at.y));
  std::u16string words = SizeWords(sheet, feature, k);
  if (!IsThrough(sheet.n, feature)) {
    words = Words(sheet, words + u" Blind depth ", -FeatureZ(sheet.n, feature));
  }
  LabelSpec spec = SpecOf(sheet, part, kSelectedNote);
  spec.side = LabelSide::Right;
  spec.clear = FeatureReach(sheet.n, feature, k).x;
  spec.ink = Ink::Selected;
  AddLabel(sheet.picture, {at.x, at.y}, words, spec);
}

}  // namespace

void AddPlateDimensions(const PlateRecord& record, const PlateNumbers& numbers, int selected,
                        Picture& picture) {
  const PointF half = PlateHalves(numbers);
  if (!(half.x > 0 && half.y > 0)) return;
  const Sheet sheet{record, numbers, picture};
  AddSizes(sheet);
  AddEdges(sheet);
  AddCounts(sheet);
  AddPatternCircle(sheet);
  AddHoleSize(sheet);
  AddSlotSize(sheet);
  AddNotes(sheet);
  AddSelected(sheet, selected);
  AddNumbers(sheet, selected);
}

const char16_t* PlateSectionWords(int section) {
  return section >= 0 && section < kPlateSections ? kSectionTitles[section] : u"";
}

}  // namespace morva
