// What the generators of short jobs write is read back by the simulator's own reader and lies on
// what they draw, and the other way round, for random values of every kind.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "builders/shapes/pattern_text.h"
#include "builders/shapes/shape_text.h"
#include "builders/wizard/wizard_picture.h"
#include "builders/wizard/wizard_text.h"
#include "golden/picture_meets_path.h"
#include "platform/file.h"
#include "simulator/extract.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace golden {
namespace {

using namespace morva;

std::mt19937 random(820);

int Pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
// As typed: three decimals, read as a form reads them.
double Typed(double least, double most) {
  std::uniform_real_distribution<double> place(least, most);
  return ParseDecimal(FixedText(place(random), 3), 0);
}

// X, Y, I and J of an arc are each rounded by up to half a thousandth. Its start is off by up to
// 0.0007, the centre that I and J lead to by 0.0014, the radius by 0.0007, and a point between by
// all three.
constexpr double kArcMeets = 0.002;

void ExpectToMeet(const CodeWriter& code, const Picture& picture, bool metric) {
  const bool arcs = code.text.find(u" I") != code.text.npos;
  ASSERT_FALSE(code.full);
  ASSERT_FALSE(picture.full || picture.unsound);
  static std::vector<MotionPoint> points(kMaxMotionPoints);
  static MotionPath path{points.data()};
  ExtractInto(path, code.text, {.metric = metric});
  ASSERT_LT(path.fullAtLine, 0);
  for (const std::string& difference :
       Differences(picture, path, false, arcs ? kArcMeets : kMeets)) {
    ADD_FAILURE() << difference << "\n" << platform::ToUtf8(code.text);
  }
}

// The code of the values against their picture.
template <typename Values, typename Room, typename Write, typename Draw>
void ExpectCutAsDrawn(const Values& values, Room room, Write write, Draw draw) {
  CodeWriter out;
  out.most = room(values);
  write(values, out);
  Picture picture;
  ClearPicture(picture, values.metric);
  draw(values, picture);
  ExpectToMeet(out, picture, values.metric);
}

WizardValues RandomWizard(int kind) {
  WizardValues values;
  values.kind = kind;
  values.metric = Pick(2) == 1;
  double* n = values.numbers;
  n[kWizardTool] = Pick(1000);
  n[kWizardRpm] = 1 + Pick(9000);
  n[kWizardFeed] = Typed(0.1, 300);
  n[kWizardSafeZ] = Typed(0.2, 50);
  n[kWizardDepth] = Typed(-50, 0);
  n[kWizardX] = Typed(-300, 300);
  n[kWizardY] = Typed(-300, 300);
  n[kWizardNinth] = kind == kWizardFace ? n[kWizardX] + Typed(0.1, 300) : Typed(-300, 300);
  n[kWizardTenth] = kind == kWizardFace ? n[kWizardY] + Typed(0.1, 39) : Typed(-300, 300);
  if (kind == kWizardPeck) n[kWizardNinth] = Typed(0.001, 10);
  if (kind >= kWizardDrill) n[kind == kWizardPeck ? kWizardTenth : kWizardNinth] = 1 + Pick(400);
  return values;
}

TEST(Generators, CutTheWizardsJobsAsTheyAreDrawn) {
  for (int round = 0; round < 40 && !testing::Test::HasFailure(); ++round) {
    const WizardValues values = RandomWizard(round % kWizardKinds);
    SCOPED_TRACE(round);
    ASSERT_EQ(CheckWizard(values).field, -1) << values.kind;
    const double diameter = Typed(0.1, 1);
    ExpectCutAsDrawn(
        values, [](const WizardValues&) { return WizardRoom(); }, WriteWizard,
        [diameter](const WizardValues& drawn, Picture& picture) {
          DrawWizard(drawn, diameter, picture);
        });
  }
}

// The reader takes an arc whose radii at start and end differ by more than a thousandth of the
// radius for a straight line, so that arcs rounded to 3 decimals need a radius of more than 1.4.
constexpr double kLeastArcSize = 3;

SketchObject RandomObject(int types) {
  const double size = Typed(kLeastArcSize, 6);
  return {Pick(types),     Pick(3), Typed(-2, 2), Typed(-2, 2), size, Typed(kLeastArcSize, size),
          Typed(-720, 720)};
}
SavedShape RandomSaved() {
  SavedShape saved;
  for (int n = 1 + Pick(6); n > 0; --n) saved.objects[saved.count++] = RandomObject(6);
  return saved;
}

TEST(Generators, CutShapesAsTheyAreDrawn) {
  for (int round = 0; round < 64 && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE(round);
    const SavedShape saved = RandomSaved();
    ShapeValues values;
    values.kind = round % kShapeKinds;
    values.metric = Pick(2) == 1;
    values.saved = &saved;
    double* n = values.numbers;
    n[kShapeX] = Typed(-100, 100);
    n[kShapeY] = Typed(-100, 100);
    n[kShapeSize] = Typed(kLeastArcSize, 10) * (Pick(2) == 0 ? 1 : -1);
    n[kShapeSize2] = Typed(kLeastArcSize, 10);
    n[kShapeDepth] = -1;
    n[kShapeFeed] = 10;
    n[kShapeSafeZ] = 1;
    for (const int field : {kShapeSize, kShapeSize2}) {
      if (values.kind != kShapeSaved) continue;
      const double shown = ParseDecimal(SavedShapeStart(saved, values.metric, field), 0);
      n[field] = round % 16 < 8 ? shown : shown * Typed(1, 3);
    }
    ExpectCutAsDrawn(values, ShapeRoom, WriteShape, DrawShape);
  }
}

TEST(Generators, CutCircularPatternsAsTheyAreDrawn) {
  for (int round = 0; round < 21 && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE(round);
    const SavedShape saved = RandomSaved();
    CircularValues values;
    values.metric = Pick(2) == 1;
    values.item.shape = static_cast<ItemShape>(round % 6);
    if (round % 7 == 0) values.item.saved = &saved;
    values.orientation = static_cast<Orientation>(Pick(3));
    const double numbers[] = {Typed(kLeastArcSize, 5),
                              Typed(kLeastArcSize, 5),
                              Typed(-20, 20),
                              Typed(-20, 20),
                              Typed(0, 40),
                              1.0 + Pick(7),
                              Typed(-720, 720),
                              Typed(-90, 90),
                              -1,
                              10,
                              1};
    std::copy(std::begin(numbers), std::end(numbers), values.numbers);
    ExpectCutAsDrawn(values, CircularRoom, WriteCircular, DrawCircular);
  }
}

TEST(Generators, CutGridsAsTheyAreDrawn) {
  for (int round = 0; round < 21 && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE(round);
    const SavedShape saved = RandomSaved();
    GridValues values;
    values.metric = Pick(2) == 1;
    values.item.shape = static_cast<ItemShape>(round % 6);
    if (round % 7 == 0) values.item.saved = &saved;
    const double numbers[] = {-Typed(kLeastArcSize, 5),
                              Typed(kLeastArcSize, 5),
                              Typed(-360, 360),
                              Typed(-20, 20),
                              Typed(-20, 20),
                              1.0 + Pick(3),
                              1.0 + Pick(3),
                              Typed(-9, 9),
                              Typed(-9, 9),
                              -1,
                              10,
                              1};
    std::copy(std::begin(numbers), std::end(numbers), values.numbers);
    ExpectCutAsDrawn(values, GridRoom, WriteGrid, DrawGrid);
  }
}

}  // namespace
}  // namespace golden
