// The real canvas: which pixels a view's calls colour.

#include <gtest/gtest.h>

#include <QImage>

#include "platform/canvas.h"
#include "widgets/stand.h"

namespace {

using namespace platform;

void (*painter)(Canvas&) = nullptr;

// The picture of a view of 100 by 80 whose paint is `paint` on black.
QImage Picture(void (*paint)(Canvas&)) {
  stand::Open();
  painter = paint;
  stand::events.paint = [](int id, Canvas& canvas) {
    FillArea(canvas, CanvasArea(canvas), 0);
    if (id == 60) painter(canvas);
  };
  ViewSpec view;
  view.id = 60;
  view.className = u"CanvasView";
  MakeView(view);
  SetPlace(60, {0, 0, 100, 80});
  return WidgetOf(60)->grab().toImage();
}

unsigned At(const QImage& image, int x, int y) { return image.pixel(x, y) & 0xFFFFFFu; }

int Coloured(const QImage& image) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += At(image, x, y) != 0 ? 1 : 0;
  }
  return count;
}

TEST(CanvasWidget, AreasCoverLeftAndTopAndNotRightAndBottom) {
  const QImage image = Picture([](Canvas& c) { FillArea(c, {10, 20, 13, 22}, 0xFF8040); });
  EXPECT_EQ(At(image, 10, 20), 0xFF8040u);
  EXPECT_EQ(At(image, 12, 21), 0xFF8040u);
  EXPECT_EQ(Coloured(image), 6);
}

TEST(CanvasWidget, AFrameLiesInsideItsRectangle) {
  const QImage image = Picture([](Canvas& c) { FrameArea(c, {10, 10, 20, 16}, Pen{0xFFFFFF}); });
  EXPECT_EQ(At(image, 10, 10), 0xFFFFFFu);
  EXPECT_EQ(At(image, 19, 15), 0xFFFFFFu);
  EXPECT_EQ(Coloured(image), 2 * 10 + 2 * 4);
}

TEST(CanvasWidget, AGradientRunsFromTopToBottom) {
  const QImage image = Picture([](Canvas& c) {
    FillGradient(c, {0, 0, 100, 80}, 0x101010, 0xF0F0F0);
  });
  EXPECT_LT(At(image, 50, 0), 0x181818u);
  EXPECT_GT(At(image, 50, 79), 0xE8E8E8u);
  EXPECT_EQ(At(image, 3, 40), At(image, 96, 40));
}

TEST(CanvasWidget, SegmentsColourBothEndsAndKeepInsideTheClip) {
  const QImage whole = Picture([](Canvas& c) {
    const Segment s[] = {{10, 30, 19, 30}, {-1e6f, 50, 1e6f, 50}};
    PaintSegments(c, s, 2, Pen{0x00D3F2});
  });
  EXPECT_EQ(At(whole, 10, 30), 0x00D3F2u);
  EXPECT_EQ(At(whole, 19, 30), 0x00D3F2u);
  EXPECT_EQ(Coloured(whole), 10 + 100);
  const QImage clipped = Picture([](Canvas& c) {
    PushClip(c, {20, 0, 80, 80});
    PushClip(c, {0, 0, 30, 80});
    const Segment s[] = {{0, 50, 99, 50}};
    PaintSegments(c, s, 1, Pen{0x00D3F2});
    PopClip(c);
    PopClip(c);
  });
  EXPECT_EQ(At(clipped, 20, 50), 0x00D3F2u);
  EXPECT_EQ(Coloured(clipped), 10);
}

TEST(CanvasWidget, TextStaysInItsAreaAndEndsInAnEllipsis) {
  const QImage image = Picture([](Canvas& c) {
    PaintText(c, {10, 10, 60, 40}, u"A text that is much too long", FontRole::Body, 0xFFFFFF,
              kAlignMiddle | kTextEllipsis);
  });
  EXPECT_GT(Coloured(image), 20);
  for (int y = 0; y < 80; ++y) {
    for (int x = 61; x < 100; ++x) ASSERT_EQ(At(image, x, y), 0u);
  }
}

TEST(CanvasWidget, MeasuresTextByItsFont) {
  stand::Open();
  EXPECT_EQ(TextWidth(FontRole::Body, u""), 0);
  EXPECT_GT(TextWidth(FontRole::Title, u"MORVA"), TextWidth(FontRole::Body, u"MORVA"));
  EXPECT_EQ(TextWidth(FontRole::Code, u"iiii"), TextWidth(FontRole::Code, u"MMMM"));
}

}  // namespace
