// The real canvas: which pixels a view's calls colour.

#include <gtest/gtest.h>

#include <QImage>
#include <cstddef>
#include <string>

#include "app/palette.h"
#include "forms/picture.h"
#include "platform/canvas.h"
#include "platform/file.h"
#include "platform/limits.h"
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

constexpr Rect kLabelPlaces[] = {
    {10, 10, 60, 27}, {33, 31, 83, 48}, {-12, 40, 38, 57}, {70, 66, 120, 83}};
constexpr unsigned kCentred = kAlignCentre | kAlignMiddle;

// A label is a filled area with a text on it, at its first time and when it comes again, inside
// the view and across its edges and those of a clip.
TEST(CanvasWidget, ALabelIsATextOnItsGround) {
  const auto labels = [](Canvas& c) {
    PushClip(c, {0, 0, 100, 75});
    for (const Rect& place : kLabelPlaces) {
      PaintLabel(c, place, u"\u00D80.250", FontRole::Small, 0x99C1DD, 0x010F19, kCentred);
      PaintLabel(c, {place.left, place.top - 9, place.right, place.top}, u"Wq", FontRole::Small,
                 0xFFB000, 0x010F19, kAlignRight);
    }
    PopClip(c);
  };
  const QImage first = Picture(labels);
  const QImage again = Picture(labels);
  const QImage expected = Picture([](Canvas& c) {
    PushClip(c, {0, 0, 100, 75});
    for (const Rect& place : kLabelPlaces) {
      FillArea(c, place, 0x010F19);
      PaintText(c, place, u"\u00D80.250", FontRole::Small, 0x99C1DD, kCentred);
      const Rect above{place.left, place.top - 9, place.right, place.top};
      FillArea(c, above, 0x010F19);
      PaintText(c, above, u"Wq", FontRole::Small, 0xFFB000, kAlignRight);
    }
    PopClip(c);
  });
  EXPECT_GT(Coloured(expected), 1000);
  EXPECT_EQ(first, expected);
  EXPECT_EQ(again, expected);
}

// Whatever a label's look depends on, it is not shown in another one's.
TEST(CanvasWidget, ALabelInAnotherLookIsDrawnAnew) {
  const auto label = [](Canvas& c) {
    PaintLabel(c, {10, 10, 60, 27}, u"A 1", FontRole::Small, 0xFFFFFF, 0x102030, kCentred);
  };
  const QImage one = Picture(label);
  const QImage others[] = {
      Picture([](Canvas& c) {
        PaintLabel(c, {10, 10, 60, 27}, u"A 2", FontRole::Small, 0xFFFFFF, 0x102030, kCentred);
      }),
      Picture([](Canvas& c) {
        PaintLabel(c, {10, 10, 60, 27}, u"A 1", FontRole::Code, 0xFFFFFF, 0x102030, kCentred);
      }),
      Picture([](Canvas& c) {
        PaintLabel(c, {10, 10, 60, 27}, u"A 1", FontRole::Small, 0x00FF00, 0x102030, kCentred);
      }),
      Picture([](Canvas& c) {
        PaintLabel(c, {10, 10, 60, 27}, u"A 1", FontRole::Small, 0xFFFFFF, 0x403020, kCentred);
      }),
      Picture([](Canvas& c) {
        PaintLabel(c, {10, 10, 60, 27}, u"A 1", FontRole::Small, 0xFFFFFF, 0x102030, kAlignRight);
      }),
      Picture([](Canvas& c) {
        PaintLabel(c, {10, 10, 59, 27}, u"A 1", FontRole::Small, 0xFFFFFF, 0x102030, kCentred);
      }),
  };
  for (const QImage& other : others) EXPECT_NE(one, other);
  EXPECT_EQ(Picture(label), one);
}

std::u16string Numbered(std::size_t i) { return FromUtf8(std::to_string(i)); }

TEST(CanvasWidget, DrawsAndMeasuresMoreWordsThanItKeeps) {
  const auto first = [](Canvas& c) {
    PaintLabel(c, {10, 10, 60, 27}, Numbered(0), FontRole::Small, 0xFFFFFF, 0x102030, kCentred);
  };
  const QImage before = Picture(first);
  const int width = TextWidth(FontRole::Small, Numbered(0));
  Picture([](Canvas& c) {
    for (std::size_t i = 0; i < platform::kMaxKeptLabels + 10; ++i) {
      PaintLabel(c, {10, 10, 60, 27}, Numbered(i), FontRole::Small, 0xFFFFFF, 0x102030, kCentred);
    }
  });
  for (std::size_t i = 0; i < platform::kMaxKeptWidths + 10; ++i) {
    ASSERT_GT(TextWidth(FontRole::Small, Numbered(i)), 0);
  }
  EXPECT_EQ(Picture(first), before);
  EXPECT_EQ(TextWidth(FontRole::Small, Numbered(0)), width);
}

// Smooth lines lie as plain ones do: whole coordinates are the middles of pixels.
TEST(CanvasWidget, ASmoothLineAlongAnAxisIsOneRowOfItsColour) {
  const QImage image = Picture([](Canvas& c) {
    const Segment s[] = {{20, 30, 60, 30}};
    PaintSegments(c, s, 1, Pen{0x00D3F2, 1, false, true});
  });
  EXPECT_EQ(At(image, 40, 29), 0u);
  EXPECT_EQ(At(image, 40, 30), 0x00D3F2u);
  EXPECT_EQ(At(image, 40, 31), 0u);
}

// Of a builder's picture: not half as bright on two rows.
TEST(CanvasWidget, ALineOfAPictureIsOneRowOfItsInk) {
  const QImage image = Picture([](Canvas& c) {
    morva::Picture picture;
    morva::ClearPicture(picture, false);
    morva::AddLine(picture, {-30, 0}, {30, 0}, morva::Ink::Feature);
    morva::PictureView view;
    view.area = CanvasArea(c);
    view.originX = 50;
    view.originY = 40;
    view.scaleX = view.scaleY = 1;
    morva::PaintPicture(c, picture, view);
  });
  EXPECT_EQ(At(image, 50, 39), morva::kPictureGround);
  EXPECT_EQ(At(image, 50, 40), morva::kPictureFeature);
  EXPECT_EQ(At(image, 50, 41), morva::kPictureGround);
}

TEST(CanvasWidget, MeasuresTextByItsFont) {
  stand::Open();
  EXPECT_EQ(TextWidth(FontRole::Body, u""), 0);
  EXPECT_GT(TextWidth(FontRole::Title, u"MORVA"), TextWidth(FontRole::Body, u"MORVA"));
  EXPECT_EQ(TextWidth(FontRole::Code, u"iiii"), TextWidth(FontRole::Code, u"MMMM"));
  // Also when they are asked for again.
  for (int i = 0; i < 2; ++i) {
    EXPECT_GT(TextWidth(FontRole::Title, u"MORVA"), TextWidth(FontRole::Body, u"MORVA"));
    EXPECT_GT(TextWidth(FontRole::Body, u"MORVA"), TextWidth(FontRole::Body, u"MORV"));
  }
}

}  // namespace
