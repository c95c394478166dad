// Plates: whole programs that were made by a second method, from the tables of arcs and the rules
// of the layouts, and random plates whose path is compared with their picture.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "golden/picture_meets_path.h"
#include "library/shapes.h"
#include "plate/geometry/plate_code.h"
#include "plate/geometry/plate_picture.h"
#include "plate/model/plate.h"
#include "platform/file.h"
#include "simulator/extract.h"
#include "support/places.h"
#include "text/code_writer.h"
#include "text/length_units.h"

namespace golden {
namespace {

using namespace morva;

class Plates : public testing::Test {
 protected:
  Plates() {
    ResetPlate();
    ResetShapeLibrary();
    SetPlateName(u"Golden");
  }
  ~Plates() override {
    ResetPlate();
    ResetShapeLibrary();
  }
  static CodeWriter Code() {
    CodeWriter out;
    out.most = PlateCodeRoom(plate);
    WritePlate(plate, out);
    return out;
  }
  static bool Passes() {
    Refusal refusal;
    int value = -1;
    return CheckPlate(plate, refusal, value);
  }
  static void ExpectProgram(const std::string& name) {
    ASSERT_TRUE(Passes());
    std::ifstream in(std::string(support::SourceDir()) + "/tests/golden/plates/" + name,
                     std::ios::binary);
    const std::string wanted{std::istreambuf_iterator<char>(in), {}};
    ASSERT_FALSE(wanted.empty());
    EXPECT_EQ(platform::ToUtf8(Code().text), wanted);
  }
};

TEST_F(Plates, FourCornersInInchAreTheWorkedExample) { ExpectProgram("corners_inch.nc"); }

TEST_F(Plates, AGridInMillimetresTakesItsOverrides) {
  StartPlate(true);
  SetPlateName(u"Golden");
  SetPlateText(kPlateEdgeRadius, u"0");
  SetPlateLayout(PlateLayout::Grid);
  SetPlateType(PlateFeatureType::SlotsX);
  SetPlateText(kPlateCountX, u"3");
  PlaceFeature(0, 1, -0.5);
  SetFeatureFlag(1, FeatureFlag::Deleted, true);
  SetFeatureFlag(2, FeatureFlag::Through, true);
  SetFeatureDepth(3, 0.2);
  PlateFeature feature;
  feature.placed = true;
  feature.x = 0.125;
  feature.y = 2;
  feature.depth = 0.25;
  feature.shape.count = 1;
  feature.shape.objects[0] = {kTypeRectangle, 0, 0, 0, 1, 0.5, 0};
  PutFeature(4, feature);
  ExpectProgram("grid_mm_with_overrides.nc");
}

TEST_F(Plates, ARoundPlateTakesMixedFeaturesOnACircle) {
  SetPlateShape(PlateShape::Round);
  SetPlateLayout(PlateLayout::Circular);
  SetPlateType(PlateFeatureType::Mixed);
  SetPlateText(kPlateLength, u"6");
  SetPlateText(kPlateWidth, u"4");
  SetPlateText(kPlateCountX, u"3");
  ExpectProgram("circular_round_mixed.nc");
}

std::mt19937 random(1105);

int Pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
double Between(double least, double most) {
  return std::uniform_real_distribution<double>(least, most)(random);
}

SketchObject AnyObject() {
  SketchObject object;
  object.type = Pick(4);
  object.x = Between(-0.5, 0.5);
  object.y = Between(-0.5, 0.5);
  object.size = Between(0.1, 1);
  object.size2 = Between(0.05, 0.5);
  object.angle = Between(-180, 180);
  return object;
}

PlateFeature AnyFeature() {
  PlateFeature feature;
  feature.placed = Pick(2) == 0;
  feature.x = Between(-3, 3);
  feature.y = Between(-3, 3);
  feature.hidden = Pick(4) == 0;
  feature.deleted = Pick(5) == 0;
  feature.through = Pick(3) == 0;
  feature.depth = Pick(2) == 0 ? Between(0.01, 0.4) : 0;
  feature.shape.count = Pick(3);
  for (int i = 0; i < feature.shape.count; ++i) feature.shape.objects[i] = AnyObject();
  return feature;
}

void MakeAnyPlate() {
  StartPlate(Pick(2) == 0);
  SetPlateName(u"Any");
  const double units = UnitsPerInch(plate);
  SetPlateNumber(kPlateLength, Between(1, 12) * units, 3);
  SetPlateNumber(kPlateWidth, Between(1, 12) * units, 3);
  SetPlateNumber(kPlateEdgeRadius, Pick(3) == 0 ? 0 : Between(0, 3) * units, 3);
  SetPlateNumber(kPlateSize, Between(0.05, 1) * units, 3);
  SetPlateNumber(kPlateSlotLength, Between(0.05, 2) * units, 3);
  SetPlateNumber(kPlateCountX, Between(-1, 5), 3);
  SetPlateNumber(kPlateCountY, Between(-1, 5), 3);
  SetPlateNumber(kPlateEdgeX, Between(-1, 1) * units, 3);
  SetPlateNumber(kPlatePatternDiameter, Pick(4) == 0 ? 0 : Between(-5, 5) * units, 3);
  SetPlateType(static_cast<PlateFeatureType>(Pick(4)));
  SetPlateLayout(static_cast<PlateLayout>(Pick(3)));
  SetPlateShape(static_cast<PlateShape>(Pick(3)));
  if (Pick(4) == 0) {
    SavedShape outline;
    outline.count = 1 + Pick(4);
    for (int i = 0; i < outline.count; ++i) outline.objects[i] = AnyObject();
    TakePlateOutline(outline, -1);
  }
  for (int i = 0; i < 4; ++i) PutFeature(Pick(8), AnyFeature());
}

// Three decimals of X, Y, I and J leave small arcs with ends of unlike radius, which the reader of
// the path shows as arrivals. The picture then shows more than the path.
bool HasBadArcs(const MotionPath& path) {
  return path.notes.rows[static_cast<int>(PathNote::BadArcs)].lines > 0;
}
// The rounding of the four adds up between the ends of an arc; generators_test.cpp.
constexpr double kArcMeets = 0.002;

TEST_F(Plates, AnyThatPassesItsCheckIsCutAsItIsDrawn) {
  static std::vector<MotionPoint> points(kMaxMotionPoints);
  static MotionPath path{points.data()};
  int passed = 0;
  int whole = 0;
  for (int round = 0; round < 150 && !HasFailure(); ++round) {
    MakeAnyPlate();
    if (!Passes()) continue;
    ++passed;
    const CodeWriter code = Code();
    ASSERT_FALSE(code.full);
    Picture picture;
    DrawPlate(plate, {.selected = Pick(6)}, picture);
    ASSERT_FALSE(picture.full || picture.unsound);
    // The outline, the selected and the hidden features are cut as well.
    for (PictureMark& mark : picture.marks) {
      if (mark.ink == Ink::Outline || mark.ink == Ink::Hidden || mark.ink == Ink::Selected) {
        mark.ink = Ink::Feature;
      }
    }
    ExtractInto(path, code.text, {.metric = plate.metric});
    ASSERT_LT(path.fullAtLine, 0);
    const bool arcs = code.text.find(u" I") != code.text.npos;
    for (const std::string& told : Differences(picture, path, true, arcs ? kArcMeets : kMeets)) {
      ADD_FAILURE() << round << ": " << told << "\n" << platform::ToUtf8(code.text);
    }
    if (HasBadArcs(path)) continue;
    ++whole;
    for (const std::string& told : Differences(picture, path, false, kArcMeets)) {
      ADD_FAILURE() << round << ": " << told << "\n" << platform::ToUtf8(code.text);
    }
  }
  EXPECT_GT(whole, 10);
  EXPECT_GT(passed, 100);
}

}  // namespace
}  // namespace golden
