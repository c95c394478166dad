// Frames as recorded calls. Places are worked out by hand: an inch is 100 pixels, the origin at
// 520, 300.
#include <cmath>

#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/draw_tools.h"
#include "unit/cad/canvas_fixture.h"

namespace morva {
namespace {

constexpr platform::Colour kGrid = 0x0E2536;
constexpr platform::Colour kAxisX = 0xC4574D;
constexpr platform::Colour kAxisY = 0x4FA765;
constexpr platform::Colour kObject = 0x86AAC6;
constexpr platform::Colour kConstruction = 0x8F83C9;
constexpr platform::Colour kBright = 0x00D3F2;
constexpr platform::Colour kHover = 0xF1BE4C;
constexpr platform::Colour kTrim = 0xFF6B5E;
constexpr platform::Colour kCursor = 0xDEE9F2;

using headless::DrawCall;

class CanvasPaint : public CanvasTest {
 protected:
  static void StartTrim() {
    tools.geometryTool = kGeometryTrim;
    Hover(400, 200);
  }
  static void Segments(std::initializer_list<PreviewSegment> segments) {
    tools.previewSegmentCount = 0;
    for (const PreviewSegment& s : segments) {
      tools.previewSegments[tools.previewSegmentCount++] = s;
    }
  }
};

TEST_F(CanvasPaint, CoversTheCanvasFirst) {
  const std::vector<DrawCall> calls = Paint();
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls[0].name, "FillArea");
  EXPECT_EQ(calls[0].numbers, (std::vector<double>{0, 0, 1040, 600}));
}

TEST_F(CanvasPaint, DrawsAGridOf81LinesEachWay) {
  for (const bool metric : {false, true}) {
    sketch.metric = metric;  // 0.4 inch or 10 mm: 40 pixels either way
    const std::vector<Line> lines = Lines(kGrid);
    ASSERT_EQ(lines.size(), 162u);
    int upright = 0;
    for (const Line& line : lines) upright += line.x0 == line.x1 ? 1 : 0;
    EXPECT_EQ(upright, 81);
    for (int i = -40; i <= 40; ++i) {
      int found = 0;
      for (const Line& line : lines) {
        // Each runs 20 spacings either way of the origin.
        const bool down = line.x0 == 520 + 40 * i && line.x1 == line.x0 && line.y0 == 300 + 800 &&
                          line.y1 == 300 - 800;
        const bool across = line.y0 == 300 - 40 * i && line.y1 == line.y0 && line.x0 == 520 - 800 &&
                            line.x1 == 520 + 800;
        found += down || across ? 1 : 0;
      }
      EXPECT_EQ(found, 2) << i;
    }
  }
}

TEST_F(CanvasPaint, DrawsNoGridWhenItIsOff) {
  sketch.gridOn = false;
  EXPECT_TRUE(Lines(kGrid).empty());
}

TEST_F(CanvasPaint, DrawsTheAxesAcrossTheClientThroughTheOrigin) {
  canvasView.panX = 30;
  canvasView.panY = -50;
  ASSERT_EQ(Lines(kAxisX).size(), 1u);
  ExpectLine(Lines(kAxisX)[0], 0, 250, 1040, 250);
  ASSERT_EQ(Lines(kAxisY).size(), 1u);
  ExpectLine(Lines(kAxisY)[0], 550, 0, 550, 600);
  const std::vector<DrawCall> origin = Calls("FillEllipse");
  ASSERT_EQ(origin.size(), 1u);
  EXPECT_EQ(origin[0].numbers[0], 550);
  EXPECT_EQ(origin[0].numbers[1], 250);
}

TEST_F(CanvasPaint, DrawsARectangleByItsFourSides) {
  Put(kTypeRectangle, 1, 1, 2, 1);
  const std::vector<Line> lines = Lines(kObject);
  ASSERT_EQ(lines.size(), 4u);
  // The series may put a corner a little inside of its pixel, which cuts to the next.
  EXPECT_NEAR(lines[0].x0, 520, 1);
  EXPECT_NEAR(lines[0].y0, 250, 1);
  EXPECT_NEAR(lines[0].x1, 720, 1);
  EXPECT_NEAR(lines[2].y0, 150, 1);
}

TEST_F(CanvasPaint, DrawsACircleRound) {
  Put(kTypeCircle, 0.1234, 0, 2);
  const std::vector<Line> lines = Lines(kObject);
  ASSERT_EQ(lines.size(), 96u);
  for (const Line& line : lines) {
    EXPECT_NEAR(std::hypot(line.x0 - 532.34, line.y0 - 300), 100, 0.01);
  }
}

TEST_F(CanvasPaint, DrawsNoHiddenObject) {
  Put(kTypeLine, 0, 0, 1);
  Put(kTypeLine, 0, 1, 1);
  sketch.hidden[0] = 1;
  const std::vector<Line> lines = Lines(kObject);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].y0, 200);
  sketch.selected = 0;  // not even when it is selected
  EXPECT_TRUE(Lines(kBright).empty());
}

TEST_F(CanvasPaint, DrawsWhatIsSelectedBright) {
  Put(kTypeLine, 0, 0, 1);
  Put(kTypeLine, 0, 1, 1);
  Put(kTypeLine, 0, 2, 1).group = 7;
  Put(kTypeLine, 0, -1, 1).group = 7;
  sketch.selected = 1;
  ASSERT_EQ(Lines(kBright).size(), 1u);
  EXPECT_EQ(Lines(kBright)[0].y0, 200);
  EXPECT_EQ(Lines(kObject).size(), 3u);
  tools.multiSelect[0] = 1;
  EXPECT_EQ(Lines(kBright).size(), 2u);
  sketch.selected = 2;  // and its group
  EXPECT_EQ(Lines(kBright).size(), 3u);
  EXPECT_EQ(Lines(kObject).size(), 1u);
}

TEST_F(CanvasPaint, DashesWorkAxesWithinTheClient) {
  Put(kTypeWorkAxis, -1000, 1, 2000);
  EXPECT_TRUE(Lines(kConstruction).empty());
  const std::vector<DrawCall> axes = In("PaintLine", kConstruction);
  ASSERT_EQ(axes.size(), 1u);
  EXPECT_EQ(axes[0].numbers[5], 1);  // dashed
  EXPECT_NEAR(axes[0].numbers[0], 0, 1e-6);
  EXPECT_NEAR(axes[0].numbers[2], 1040, 1e-6);
  EXPECT_NEAR(axes[0].numbers[1], 200, 1);
  sketch.objects[0].y = 50;  // far above
  EXPECT_TRUE(In("PaintLine", kConstruction).empty());
}

TEST_F(CanvasPaint, DrawsWorkPointsLargeEnoughToSee) {
  Put(kTypeWorkPoint, 1, 1, 0);
  std::vector<Line> lines = Lines(kConstruction);
  ASSERT_EQ(lines.size(), 2u);
  ExpectLine(lines[0], 616, 200, 624, 200);
  ExpectLine(lines[1], 620, 196, 620, 204);
  canvasView.zoom = 10;  // 0.025 of 1000 pixels
  lines = Lines(kConstruction);
  ASSERT_EQ(lines.size(), 0u);  // outside now
  sketch.objects[0].x = sketch.objects[0].y = 0;
  lines = Lines(kConstruction);
  ASSERT_EQ(lines.size(), 2u);
  ExpectLine(lines[0], 495, 300, 545, 300);
}

TEST_F(CanvasPaint, LeavesOutWhatLiesOutside) {
  Put(kTypeCircle, 40, 0, 1);
  Put(kTypeCircle, 0, -30, 1);
  EXPECT_TRUE(Lines(kObject).empty());
  canvasView.panX = -4000;
  EXPECT_EQ(Lines(kObject).size(), 96u);
}

TEST_F(CanvasPaint, MarksTheEdgeUnderThePointer) {
  Put(kTypeLine, 0, 0, 1);
  Hover(570, 305);
  EXPECT_EQ(tools.hoverObject, 0);
  ASSERT_EQ(Lines(kHover).size(), 1u);
  Hover(570, 400);
  EXPECT_EQ(tools.hoverObject, -1);
  EXPECT_TRUE(Lines(kHover).empty());
}

TEST_F(CanvasPaint, DashesTheTrimPreviewAsOneRun) {
  Segments({{0, 0, 1, 0}, {1, 0, 1, 1}, {3, 0, 3, 1}});
  const std::vector<DrawCall> runs = In("PaintPolyline", kTrim);
  ASSERT_EQ(runs.size(), 2u);
  // Three points and two, then width 2, dashed, not smooth.
  EXPECT_EQ(runs[0].numbers, (std::vector<double>{520, 300, 620, 300, 620, 200, 2, 1, 0}));
  EXPECT_EQ(runs[1].numbers, (std::vector<double>{820, 300, 820, 200, 2, 1, 0}));
}

TEST_F(CanvasPaint, CutsTheTrimPreviewAtTheEdgesOfTheCanvas) {
  Segments({{0, 0, 1e6, 0}});
  EXPECT_TRUE(In("PaintPolyline", kTrim).empty());
  const std::vector<DrawCall> lines = In("PaintLine", kTrim);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].numbers[0], 520);
  EXPECT_NEAR(lines[0].numbers[2], 1040, 1e-6);
}

TEST_F(CanvasPaint, DrawsAConstructionPreviewAsSelected) {
  tools.constructionMethod = kIdMethodRectangle;
  tools.previewObject.type = kTypeRectangle;
  tools.previewObject.size = 2;
  tools.previewObject.size2 = 1;
  EXPECT_TRUE(Lines(kBright).empty());
  tools.previewValid = true;
  EXPECT_EQ(Lines(kBright).size(), 4u);
}

TEST_F(CanvasPaint, DrawsTheObjectOfADragAsSelected) {
  StartDragTool(kTypeRectangle + 1);
  Press(420, 350);
  DragTo(620, 250);
  const std::vector<Line> lines = Lines(kBright);
  ASSERT_EQ(lines.size(), 4u);
  // From corner to corner, to the pixel that places are cut off to.
  EXPECT_NEAR(lines[0].x0, 420, 1);
  EXPECT_NEAR(lines[0].y0, 350, 1);
  EXPECT_NEAR(lines[1].x1, 620, 1);
  EXPECT_NEAR(lines[1].y1, 250, 1);
  EXPECT_EQ(sketch.objectCount, 0);
  Release(620, 250);
  EXPECT_EQ(sketch.objectCount, 1);
}

TEST_F(CanvasPaint, DrawsTheWholeFigureOfAPolygonPreview) {
  tools.constructionMethod = kIdMethodPolygon;
  tools.previewValid = true;
  tools.previewObject.type = kTypeCircle;
  tools.previewObject.size = 2;   // the radius
  tools.previewObject.size2 = 4;  // the sides
  tools.previewObject.x = 1;
  const std::vector<Line> lines = Lines(kBright);
  ASSERT_EQ(lines.size(), 4u);
  ExpectLine(lines[0], 820, 300, 620, 100);
  ExpectLine(lines[1], 620, 100, 420, 300);
  ExpectLine(lines[2], 420, 300, 620, 500);
  ExpectLine(lines[3], 620, 500, 820, 300);
}

TEST_F(CanvasPaint, TellsTheSizesOfThePreviewBesideTheCursor) {
  tools.constructionMethod = kIdMethodLine;
  tools.previewValid = true;
  tools.previewObject.type = kTypeLine;
  tools.previewObject.size = 1.25;
  EXPECT_FALSE(Shows(u"Length / width 1.2500"));  // no cursor inside
  canvasView.cursorX = 500;
  canvasView.cursorY = 300;
  EXPECT_TRUE(Shows(u"Length / width 1.2500"));
  tools.previewObject.type = kTypeSlot;
  tools.previewObject.size2 = 0.5;
  EXPECT_TRUE(Shows(u"Length / width 1.2500 / 0.5000"));
  tools.previewObject.type = kTypeCircle;
  EXPECT_TRUE(Shows(u"Diameter 1.2500"));
  tools.constructionMethod = kIdMethodPolygon;
  tools.previewObject.size2 = 6;
  EXPECT_TRUE(Shows(u"Radius / sides 1.2500 / 6"));
  tools.sizePanelShown = true;  // the boxes tell it instead
  EXPECT_FALSE(Shows(u"Radius / sides 1.2500 / 6"));
}

TEST_F(CanvasPaint, KeepsTheSizeTextInsideTheCanvas) {
  tools.constructionMethod = kIdMethodLine;
  tools.previewValid = true;
  for (const platform::Point at : {platform::Point{1039, 0}, {1039, 599}, {0, 0}, {0, 599}}) {
    canvasView.cursorX = at.x;
    canvasView.cursorY = at.y;
    for (const DrawCall& call : Calls("PaintText")) {
      EXPECT_GE(call.numbers[0], 0);
      EXPECT_GE(call.numbers[1], 0);
      EXPECT_LE(call.numbers[2], 1040);
      EXPECT_LE(call.numbers[3], 600);
    }
  }
}

TEST_F(CanvasPaint, CrossesTheCursorWithAToolInHand) {
  Hover(400, 200);
  EXPECT_TRUE(Lines(kCursor).empty());
  StartTrim();
  const std::vector<Line> arms = Lines(kCursor);
  ASSERT_EQ(arms.size(), 4u);
  ExpectLine(arms[0], 388, 200, 395, 200);
  ExpectLine(arms[1], 405, 200, 412, 200);
  ExpectLine(arms[2], 400, 188, 400, 195);
  ExpectLine(arms[3], 400, 205, 400, 212);
}

TEST_F(CanvasPaint, RingsTheCursorWhileNoSnapIsHeld) {
  StartTrim();
  tools.snapHit = false;
  const std::vector<DrawCall> rings = In("PaintEllipse", kCursor);
  ASSERT_EQ(rings.size(), 1u);
  EXPECT_EQ(std::vector<double>(rings[0].numbers.begin(), rings[0].numbers.begin() + 4),
            (std::vector<double>{400, 200, 9, 9}));
  tools.snapHit = true;
  EXPECT_TRUE(In("PaintEllipse", kCursor).empty());
}

// A frame on an end, a ring on a centre, at the place itself; nothing where no snap is held.
TEST_F(CanvasPaint, MarksThePlaceThatASnapHolds) {
  Put(kTypeLine, 1, 1, 2);     // from 620, 200
  Put(kTypeCircle, -2, 1, 1);  // about 320, 200
  sketch.snapOn = true;
  StartMethod(kIdMethodLine);
  Hover(623, 204);
  const std::vector<DrawCall> frames = In("FrameArea", kHover);
  ASSERT_EQ(frames.size(), 1u);
  EXPECT_EQ(std::vector<double>(frames[0].numbers.begin(), frames[0].numbers.begin() + 4),
            (std::vector<double>{615, 195, 626, 206}));
  EXPECT_TRUE(In("PaintEllipse", kHover).empty());
  Hover(318, 203);
  const std::vector<DrawCall> rings = In("PaintEllipse", kHover);
  ASSERT_EQ(rings.size(), 1u);
  EXPECT_EQ(std::vector<double>(rings[0].numbers.begin(), rings[0].numbers.begin() + 4),
            (std::vector<double>{320, 200, 5, 5}));
  EXPECT_TRUE(In("FrameArea", kHover).empty());
  sketch.snapOn = false;
  Hover(319, 202);
  EXPECT_TRUE(In("FrameArea", kHover).empty());
  EXPECT_TRUE(In("PaintEllipse", kHover).empty());
}

TEST_F(CanvasPaint, DropsTheCrossWhenThePointerLeaves) {
  StartTrim();
  Tell(At(platform::PointerAction::Leave, 0, 0));
  EXPECT_EQ(canvasView.cursorX, -1);
  EXPECT_EQ(canvasView.cursorY, -1);
  EXPECT_TRUE(Lines(kCursor).empty());
}

TEST_F(CanvasPaint, HoldsAFullSketchAtEveryZoom) {
  for (int i = 0; i < 96; ++i) Put(kTypeCircle, i % 12 - 6, i / 12 - 4, 0.9);
  EXPECT_EQ(sketch.objectCount, 96);
  canvasView.zoom = 0.1;
  EXPECT_EQ(Lines(kObject).size(), 96u * 96);
  for (double zoom = 0.1; zoom <= 40; zoom *= 1.7) {
    canvasView.zoom = zoom;
    EXPECT_FALSE(Paint().empty());
  }
}

}  // namespace
}  // namespace morva
