// A bracket from the first line to the updated block, on the real window with pointer and keys, in
// a wide window and in a small one.

#include <QApplication>
#include <QTimer>
#include <cmath>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "desk/cad_desk.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "library/outline.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"

namespace {

class Bracket : public CadDesk {
 protected:
  static void InsertThroughThePicker(int key) {
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&watch]() {
      const QWidget* insert = desk::WidgetOf(morva::kIdDestinationInsert);
      if (!insert || !insert->isVisible()) return;
      watch.stop();
      desk::Click(morva::kIdDestinationInsert);
    });
    watch.start(10);
    desk::Click(key);
  }

  void DrawOutline() {
    desk::Click(morva::kIdCadRectangle);
    ClickAt(-3, -2);
    Move(2, 1);
    Show("cad_1_rectangle.png");
    ClickAt(3, 2);
    ASSERT_EQ(morva::sketch.objectCount, 1);
    EXPECT_NEAR(morva::sketch.objects[0].size, 6, 1e-9);
    EXPECT_NEAR(morva::sketch.objects[0].size2, 4, 1e-9);
  }

  // Two slots with rounded ends; the width of the first from its field, the second by a copy.
  void DrawSlots() {
    desk::Click(morva::kIdCadSlot);
    ClickAt(-2.4, -1);
    ClickAt(-1.6, -1);
    ClickAt(-2, -0.8);
    EXPECT_NEAR(morva::sketch.objects[1].size, 1.2, 1e-9);
    EXPECT_NEAR(morva::sketch.objects[1].size2, 0.4, 1e-9);
    ASSERT_EQ(morva::sketch.objectCount, 2);
    Fill(morva::kIdCadSize, "1.25");
    Fill(morva::kIdCadSize2, "0.4");
    desk::Key(morva::kIdCadSize2, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(morva::sketch.objects[1].size, 1.25);
    EXPECT_DOUBLE_EQ(morva::sketch.objects[1].size2, 0.4);
    desk::Click(morva::kIdCadSelect);
    desk::Key(morva::kViewCadCanvas, Qt::Key_C, Qt::ControlModifier);
    desk::Key(morva::kViewCadCanvas, Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(morva::sketch.objectCount, 3);
    Fill(morva::kIdCadX, "-2");
    Fill(morva::kIdCadY, "1");
    desk::Key(morva::kIdCadY, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(morva::sketch.objects[2].x, -2);
    EXPECT_DOUBLE_EQ(morva::sketch.objects[2].y, 1);
    Show("cad_2_slots.png");
  }

  // A circle by its center and a typed diameter, then six of them on a circle of bolts.
  void DrawBoltCircle() {
    desk::Click(morva::kIdCadCircle);
    ClickAt(1, 0);
    Move(1.3, 0);
    desk::Key(morva::kViewCadCanvas, Qt::Key_Tab);
    ASSERT_TRUE(desk::WidgetOf(morva::kIdCadSizeBox1)->isVisible());
    Show("cad_3_typed_size.png");
    desk::TypeHere(QStringLiteral("0.25"));
    desk::KeyHere(Qt::Key_Return);
    ASSERT_EQ(morva::sketch.objectCount, 4);
    EXPECT_DOUBLE_EQ(morva::sketch.objects[3].size, 0.25);
    desk::Click(morva::kIdCadCircularPanel);
    Fill(morva::kIdCadQuantity, "6");
    Fill(morva::kIdCadCircularX, "1");
    Fill(morva::kIdCadCircularDiameter, "1.5");
    Show("cad_4_pattern.png");
    desk::Key(morva::kIdCadCircularDiameter, Qt::Key_Return);
    ASSERT_EQ(morva::sketch.objectCount, 9);
    for (int i = 3; i < 9; ++i) {
      EXPECT_NEAR(std::hypot(morva::sketch.objects[i].x - 1, morva::sketch.objects[i].y), 0.75,
                  1e-6);
    }
    desk::Key(morva::kViewCadCanvas, Qt::Key_Escape);
  }

  // The upper right corner cut off by a line: the corner's sections and the line's ends go.
  void TrimOutline() {
    desk::Click(morva::kIdCadLine);
    ClickAt(1.5, 2.5);
    ClickAt(3.5, 0.5);
    ASSERT_EQ(morva::sketch.objectCount, 10);
    desk::Click(morva::kIdCadTrimAt);
    Move(2.7, 2);
    EXPECT_GT(morva::tools.previewSegmentCount, 0);
    Show("cad_5_trim_preview.png");
    ClickAt(2.7, 2);
    ClickAt(3, 1.7);
    ClickAt(1.65, 2.35);
    ClickAt(3.3, 0.7);
    desk::Key(morva::kViewCadCanvas, Qt::Key_Escape);
    // Four sides and the slope, one part: closed, and nothing reaches into the corner.
    int lines = 0;
    std::int32_t group = 0;
    for (int i = 0; i < morva::sketch.objectCount; ++i) {
      const morva::SketchObject& object = morva::sketch.objects[i];
      if (object.type != morva::kTypeLine) continue;
      ++lines;
      if (group == 0) group = object.group;
      EXPECT_EQ(object.group, group);
      EXPECT_NE(object.group, 0);
      double x = 0;
      double y = 0;
      morva::LineEndPoint(object, x, y);
      EXPECT_LE(object.x + object.y, 4 + 1e-6);
      EXPECT_LE(x + y, 4 + 1e-6);
    }
    EXPECT_EQ(lines, 5);
    Show("cad_6_trimmed.png");
  }

  void FromTheFirstLineToTheUpdatedBlock();

  // The lower slot by its label: a click on the slot, a value, Enter.
  void Dimension() {
    desk::Click(morva::kIdCadDimension);
    desk::Run(50);
    ClickAt(-2, -1);
    ASSERT_EQ(QApplication::focusWidget(), desk::WidgetOf(morva::kIdCadDimensionValue));
    Show("cad_7_dimensions.png");
    desk::TypeHere(QStringLiteral("1.5"));
    desk::KeyHere(Qt::Key_Return);
    int wide = 0;
    for (int i = 0; i < morva::sketch.objectCount; ++i) {
      if (morva::sketch.objects[i].type == morva::kTypeSlot &&
          morva::sketch.objects[i].size == 1.5) {
        ++wide;
      }
    }
    EXPECT_EQ(wide, 1);
    desk::Key(morva::kViewCadCanvas, Qt::Key_Escape);
  }
};

void Bracket::FromTheFirstLineToTheUpdatedBlock() {
  DrawOutline();
  DrawSlots();
  DrawBoltCircle();
  TrimOutline();
  Dimension();
  if (HasFailure()) return;

  desk::Click(morva::kIdCadCutData);
  Fill(morva::kIdCadDepth, "-0.25");
  InsertThroughThePicker(morva::kIdCadGenerate);
  ASSERT_TRUE(desk::Until([]() { return morva::features.count == 2; }));
  const QString code = desk::TextOf(morva::kIdEditor);
  EXPECT_TRUE(code.contains(QStringLiteral("(CUSTOM SHAPE EDITOR)")));
  EXPECT_TRUE(code.contains(QStringLiteral("G01 Z-0.250 F10.00")));
  EXPECT_EQ(code.count(QStringLiteral("(OBJECT ")), 13);

  desk::Click(morva::kIdSurfaceCode);
  desk::Click(morva::kIdPath);
  EXPECT_GT(morva::path.count, 100);
  desk::Click(morva::kIdPlayToggle);
  EXPECT_TRUE(morva::playback.playing);
  ASSERT_TRUE(desk::Until([]() { return morva::playback.playHead > 3; }));
  Show("cad_8_played.png");
  desk::Click(morva::kIdPlayToggle);

  // Back into the drawing from the block's own settings.
  morva::sketch.selected = -1;
  int row = -1;
  const QStringList rows = desk::RowsOf(morva::kIdFeatureList);
  for (int i = 0; i < rows.size(); ++i) {
    if (rows[i].contains(QStringLiteral("CAD sketch"))) row = i;
  }
  ASSERT_GE(row, 0);
  desk::WidgetOf(morva::kIdFeatureList)->setFocus();
  desk::Key(morva::kIdFeatureList, Qt::Key_Home);
  for (int i = 0; i < row; ++i) desk::Key(morva::kIdFeatureList, Qt::Key_Down);
  desk::Key(morva::kIdFeatureList, Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return morva::app.surface == morva::kSurfaceCad; }));
  EXPECT_EQ(morva::sketch.objectCount, 13);
  EXPECT_EQ(desk::TextOf(morva::kIdCadGenerate), QStringLiteral("Update"));
  Show("cad_9_reopened.png");

  desk::Click(morva::kIdCadCutData);
  Fill(morva::kIdCadDepth, "-0.3");
  InsertThroughThePicker(morva::kIdCadGenerate);
  ASSERT_TRUE(desk::Until([]() {
    return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("G01 Z-0.300 F10.00"));
  }));
  const QString updated = desk::TextOf(morva::kIdEditor);
  EXPECT_FALSE(updated.contains(QStringLiteral("Z-0.250")));
  EXPECT_EQ(updated.count(QStringLiteral("(CUSTOM SHAPE EDITOR)")), 1);
  EXPECT_EQ(morva::features.count, 2);
}

TEST_F(Bracket, IsDrawnDimensionedGeneratedPlayedReopenedAndUpdated) {
  Resize(1560, 940);
  FromTheFirstLineToTheUpdatedBlock();
}

TEST_F(Bracket, IsDrawnToTheEndInASmallWindowToo) {
  Resize(1200, 800);
  FromTheFirstLineToTheUpdatedBlock();
}

}  // namespace
