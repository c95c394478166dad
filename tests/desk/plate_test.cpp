// The plate workspace on the real window: name, picture, clicks, drags, and the keyboard alone.

#include "plate/model/plate.h"

#include <QApplication>
#include <QTest>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "forms/picture.h"
#include "library/shapes.h"
#include "plate/canvas/plate_view.h"
#include "plate/geometry/plate_layout.h"
#include "plate/panel/plate_workspace.h"
#include "plate/tools/plate_editor.h"
#include "platform/window.h"

namespace {

struct PlateAtTheDesk : AtDesk {
  void SetUp() override {
    AtDesk::SetUp();
    desk::Click(morva::kIdSurfacePlate);
    ASSERT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdPlateName); }));
    desk::TypeHere(QStringLiteral("Fixture"));
    desk::KeyHere(Qt::Key_Return);
    ASSERT_TRUE(desk::Until([]() { return !morva::plate.unnamed; }));
  }
  static QWidget* Preview() { return desk::WidgetOf(morva::kViewPlatePicture); }
  static platform::PointF Place(int k) {
    return morva::FeaturePlace(morva::NumbersOf(morva::plate), morva::plate.features[k], k);
  }
  static QPoint At(platform::PointF place) {
    const platform::PointF pixel = morva::OnView(morva::PlateSight(), place.x, place.y);
    return QPoint(static_cast<int>(pixel.x + 0.5), static_cast<int>(pixel.y + 0.5));
  }
  static void Drag(const QPoint& from, const QPoint& to) {
    desk::MovePointer(Preview(), from);
    QTest::mousePress(Preview(), Qt::LeftButton, Qt::NoModifier, from);
    desk::MovePointer(Preview(), (from + to) / 2);
    desk::MovePointer(Preview(), to);
    QTest::mouseRelease(Preview(), Qt::LeftButton, Qt::NoModifier, to);
  }
  // The middle of the label of a section, as it lies in the preview.
  static QPoint LabelOf(int place) {
    for (int y = 0; y < Preview()->height(); y += 3) {
      for (int x = 0; x < Preview()->width(); x += 3) {
        const int label = morva::PlateLabelAt(x, y);
        if (label < 0) continue;
        const auto& labels = morva::DrawnPlate().labels;
        if (labels[static_cast<std::size_t>(label)].spec.place == place) return {x + 4, y + 4};
      }
    }
    return {};
  }
};

// Behind the box the keyboard is in the field that the box was about, or where it was.
TEST_F(PlateAtTheDesk, HasTheKeyboardInItsFieldBehindTheBoxOfInsert) {
  constexpr int kLength = morva::kIdPlateField;
  desk::TypeInto(kLength, QStringLiteral("0,75"));
  ASSERT_TRUE(desk::Until([]() { return HasKeyboard(kLength); }));
  const int seen = desk::BoxesSeen();
  desk::AnswerBox(QStringLiteral("OK"));
  desk::Click(morva::kIdPlateInsert);
  ASSERT_EQ(desk::BoxesSeen(), seen + 1) << desk::LastBoxText().toStdString();
  ASSERT_TRUE(desk::Until([]() { return HasKeyboard(kLength); }));
  ASSERT_TRUE(QApplication::activeWindow() != nullptr);
  desk::TypeHere(QStringLiteral("8"));  // what was refused is selected
  EXPECT_EQ(desk::TextOf(kLength), QStringLiteral("8"));
}

// The first keys are a number, the last one is not.
TEST_F(PlateAtTheDesk, KeepsNothingOfANumberThatEndsHalf) {
  constexpr int kLength = morva::kIdPlateField;
  const double before = morva::plate.values[morva::kPlateLength].value;
  desk::Key(kLength, Qt::Key_A, Qt::ControlModifier);
  desk::TypeHere(QStringLiteral("25"));
  EXPECT_EQ(morva::plate.values[morva::kPlateLength].value, 25);
  desk::Run(300);
  desk::TypeHere(QStringLiteral("o"));
  desk::AnswerBox(QStringLiteral("OK"));
  desk::KeyHere(Qt::Key_Return);
  EXPECT_TRUE(desk::LastBoxText().contains(QStringLiteral("Nothing was changed.")));
  EXPECT_EQ(desk::TextOf(kLength), QStringLiteral("25o"));
  EXPECT_EQ(morva::plate.values[morva::kPlateLength].value, before);
}

TEST_F(PlateAtTheDesk, LooksWholeAtBothSizes) {
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    const auto show = [&size](const char* step) {
      Show(QStringLiteral("plate_%1_%2.png")
               .arg(QLatin1String(step))
               .arg(size.width())
               .toLatin1()
               .constData());
    };
    show("named");
    morva::OpenPlateTarget(morva::FeatureTarget(1), morva::Keyboard::ToEditor);
    show("feature");
    morva::OpenPlateTarget(morva::kDepthSection, morva::Keyboard::ToEditor);
    show("depth");
    morva::OpenPlateTarget(morva::kPlatePatternDiameter, morva::Keyboard::ToEditor);
    show("section");
    morva::OpenPlateNaming(false);
    show("name");
    morva::ClosePlateEditor();
    EXPECT_TRUE(desk::WidgetOf(morva::kIdPlateInsert)->isVisible());
    EXPECT_FALSE(Preview()->visibleRegion().isEmpty());
  }
}

// Millimetres, a saved outline, a grid, one feature of each kind.
TEST_F(PlateAtTheDesk, LooksWholeWithAllThatCanBeSet) {
  morva::SavedShape shape;
  shape.name[0] = u'T';
  shape.count = 1;
  shape.objects[0] = {morva::kTypeSlot, 0, 0, 0, 2, 1, 0};
  ASSERT_EQ(morva::PutShape(shape), 0);
  desk::Click(morva::kIdPlateUnit);
  morva::SetPlateLayout(morva::PlateLayout::Grid);
  morva::SetPlateText(morva::kPlateCountX, u"4");
  morva::SetPlateText(morva::kPlateCountY, u"3");
  ASSERT_TRUE(morva::SetPlateOutline(0));
  morva::SetFeatureFlag(0, morva::FeatureFlag::Locked, true);
  morva::SetFeatureFlag(1, morva::FeatureFlag::Through, true);
  morva::SetFeatureFlag(2, morva::FeatureFlag::Hidden, true);
  morva::SetFeatureFlag(3, morva::FeatureFlag::Deleted, true);
  morva::SavedShape cut = shape;
  cut.objects[0] = {morva::kTypeLine, 0, -0.3, -0.2, 0.72, 0, 33};
  morva::PlateFeature own;
  own.shape = cut;
  morva::PutFeature(5, own);
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    for (const int k : {0, 1, 2, 5}) {
      morva::OpenPlateTarget(morva::FeatureTarget(k), morva::Keyboard::ToEditor);
      EXPECT_EQ(morva::CurrentFeature(), k);
      Show(QStringLiteral("plate_full_%1_%2.png").arg(k + 1).arg(size.width()).toLatin1());
    }
  }
}

TEST_F(PlateAtTheDesk, LooksWholeInEveryShapeAndLayout) {
  struct Kind {
    morva::PlateShape shape;
    morva::PlateFeatureType type;
    morva::PlateLayout layout;
    const char* name;
  };
  using morva::PlateFeatureType;
  using morva::PlateLayout;
  using morva::PlateShape;
  const Kind kinds[] = {
      {PlateShape::Round, PlateFeatureType::Holes, PlateLayout::Circular, "round"},
      {PlateShape::Obround, PlateFeatureType::SlotsX, PlateLayout::Corners, "obround"},
      {PlateShape::Rectangle, PlateFeatureType::Mixed, PlateLayout::Grid, "mixed"},
      {PlateShape::Rectangle, PlateFeatureType::SlotsY, PlateLayout::Circular, "slots"},
  };
  morva::SetPlateText(morva::kPlateCountX, u"3");
  morva::SetPlateText(morva::kPlateCountY, u"3");
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    for (const Kind& kind : kinds) {
      morva::SetPlateShape(kind.shape);
      morva::SetPlateType(kind.type);
      morva::SetPlateLayout(kind.layout);
      morva::RefreshPlateWorkspace();
      Show(QStringLiteral("plate_%1_%2.png")
               .arg(QLatin1String(kind.name))
               .arg(size.width())
               .toLatin1());
      EXPECT_FALSE(morva::DrawnPlate().full);
    }
  }
}

TEST_F(PlateAtTheDesk, OpensAFeatureByAClickAndMovesItByADrag) {
  const QPoint at = At(Place(0));
  desk::MovePointer(Preview(), at);
  QTest::mouseClick(Preview(), Qt::LeftButton, Qt::NoModifier, at);
  ASSERT_TRUE(desk::Until([]() { return morva::CurrentFeature() == 0; }));
  EXPECT_EQ(desk::TextOf(morva::kIdPlateX), QStringLiteral("-3.5000"));
  Drag(At(Place(0)), At({-2, -1}));
  ASSERT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdPlateX); }));
  EXPECT_NEAR(Place(0).x, -2, 0.06);
  desk::TypeHere(QStringLiteral("-2.125"));
  desk::KeyHere(Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return std::abs(Place(0).x + 2.125) < 1e-9; }));
}

TEST_F(PlateAtTheDesk, KeepsTheNewPlaceOfALabel) {
  const QPoint from = LabelOf(morva::kPlateLength);
  ASSERT_FALSE(from.isNull());
  Drag(from, from + QPoint(40, 30));
  ASSERT_TRUE(desk::Until([]() { return morva::plate.dimensionLabels[morva::kPlateLength].set; }));
  EXPECT_NEAR(
      morva::plate.dimensionLabels[morva::kPlateLength].x * RectWidth(morva::PlatePictureArea()),
      40, 2);
}

TEST_F(PlateAtTheDesk, IsWorkedByTheKeyboardAlone) {
  Preview()->setFocus();
  desk::KeyHere(Qt::Key_PageDown);
  ASSERT_TRUE(desk::Until([]() { return morva::CurrentFeature() == 0; }));
  const double x = Place(0).x;
  desk::KeyHere(Qt::Key_Right);
  ASSERT_TRUE(desk::Until([x]() { return std::abs(Place(0).x - x - 0.05) < 1e-9; }));
  desk::KeyHere(Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdPlateWidth); }));
  desk::KeyHere(Qt::Key_Escape);
  ASSERT_TRUE(desk::Until([]() { return HasKeyboard(morva::kViewPlatePicture); }));
}

}  // namespace
