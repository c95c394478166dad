// Real buttons, edits, lists, timers and posts: what a user's hand makes of them.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <thread>

#include "platform/post.h"
#include "platform/timer.h"
#include "widgets/stand.h"

namespace {

using namespace platform;

void Make(int id, ControlKind kind, const char16_t* text, const char16_t* name = u"") {
  ControlSpec spec;
  spec.id = id;
  spec.kind = kind;
  spec.text = text;
  spec.accessibleName = name;
  ASSERT_TRUE(MakeControl(spec));
  SetPlace(id, {20, 20, 220, 120});
}

void MakeRows(int id, ListKind kind, int rows) {
  ListSpec spec;
  spec.id = id;
  spec.kind = kind;
  spec.accessibleName = u"Rows";
  ASSERT_TRUE(MakeList(spec));
  SetPlace(id, {20, 20, 220, 140});
  for (int i = 0; i < rows; ++i) AddRow(id, u"row", i * 10);
}

QPoint RowMiddle(int id, int row) {
  const Rect place = RowPlace(id, row);
  return QPoint((place.left + place.right) / 2, (place.top + place.bottom) / 2);
}

QWidget* Viewport(int id) { return static_cast<QListView*>(WidgetOf(id))->viewport(); }

TEST(ButtonWidget, ClicksOnceByMouseSpaceAndEnter) {
  stand::Open();
  Make(101, ControlKind::PushButton, u"NEW");
  QTest::mouseClick(WidgetOf(101), Qt::LeftButton);
  EXPECT_EQ(stand::Count(101, kNotifyClick), 1);
  EXPECT_EQ(FocusedId(), 101);
  QTest::keyClick(WidgetOf(101), Qt::Key_Space);
  QTest::keyClick(WidgetOf(101), Qt::Key_Return);
  EXPECT_EQ(stand::Count(101, kNotifyClick), 3);
}

TEST(ButtonWidget, ShowsItsTipAfter450MillisecondsAtRest) {
  const QStyle* style = QApplication::style();
  stand::Open();
  EXPECT_EQ(style->styleHint(QStyle::SH_ToolTip_WakeUpDelay), 450);
  // The next control's tip waits as long as the first one's.
  EXPECT_EQ(style->styleHint(QStyle::SH_ToolTip_FallAsleepDelay), 0);
  Make(101, ControlKind::PushButton, u"NEW");
  SetToolTip(101, u"A new program");
  ASSERT_TRUE(QTest::qWaitForWindowActive(WidgetOf(kMainWindow)));
  // As the window system tells it: the toolkit shows no tip for a move of another kind.
  const auto rest = [](int x) {
    QTest::mouseMove(WidgetOf(kMainWindow)->windowHandle(), QPoint(x, 60));
  };
  QElapsedTimer timer;
  timer.start();
  rest(100);
  ASSERT_TRUE(stand::Until([] { return QToolTip::isVisible(); }));
  EXPECT_GE(timer.elapsed(), 450 * 95 / 100) << "a coarse timer may be 5 per cent early";
  EXPECT_EQ(QToolTip::text(), QStringLiteral("A new program"));
  QTest::mouseClick(WidgetOf(101), Qt::LeftButton);
  EXPECT_TRUE(stand::Until([] { return !QToolTip::isVisible(); }));
  rest(110);
  ASSERT_TRUE(stand::Until([] { return QToolTip::isVisible(); }));
  HideToolTips();
  EXPECT_TRUE(stand::Until([] { return !QToolTip::isVisible(); }));
}

TEST(ButtonWidget, IsDrawnByTheApplicationWithItsState) {
  stand::Open();
  Make(101, ControlKind::PushButton, u"NEW");
  SetFocusTo(101);
  stand::told.drawn.clear();
  const QImage picture = WidgetOf(101)->grab().toImage();
  ASSERT_FALSE(stand::told.drawn.empty());
  EXPECT_TRUE(stand::told.drawn.back().focused);
  EXPECT_EQ(stand::told.drawn.back().row, -1);
  EXPECT_EQ(picture.pixel(100, 50) & 0xFFFFFFu, 0x102030u);
}

TEST(ButtonWidget, BearsItsCaptionAsNameUnlessOneIsGiven) {
  stand::Open();
  Make(101, ControlKind::PushButton, u"A & B");
  Make(102, ControlKind::PushButton, u"+", u"New program");
  EXPECT_EQ(WidgetOf(101)->accessibleName(), QStringLiteral("A & B"));
  EXPECT_EQ(WidgetOf(102)->accessibleName(), QStringLiteral("New program"));
  SetText(101, u"C");
  EXPECT_EQ(WidgetOf(101)->accessibleName(), QStringLiteral("C"));
  EXPECT_EQ(TextOf(101), u"C");
}

TEST(CheckWidget, TellsTheUsersClickAndNotTheProgramsSetting) {
  stand::Open();
  Make(110, ControlKind::CheckBox, u"Whole word");
  SetChecked(110, true);
  EXPECT_TRUE(IsChecked(110));
  EXPECT_EQ(stand::Count(110, kNotifyClick), 0);
  QTest::keyClick(WidgetOf(110), Qt::Key_Space);
  EXPECT_FALSE(IsChecked(110));
  EXPECT_EQ(stand::Count(110, kNotifyClick), 1);
}

TEST(EditLineWidget, TellsTypingAndNotSetting) {
  stand::Open();
  Make(1215, ControlKind::EditLine, u"", u"Feature name");
  SetText(1215, u"abc");
  EXPECT_EQ(stand::Count(1215, kNotifyEditChange), 0);
  QTest::keyClick(WidgetOf(1215), Qt::Key_X);
  EXPECT_EQ(stand::Count(1215, kNotifyEditChange), 1);
}

TEST(EditLineWidget, TheLimitBindsTypingAndNotTheProgram) {
  stand::Open();
  Make(1215, ControlKind::EditLine, u"", u"Feature name");
  SetTextLimit(1215, 3);
  QTest::keyClicks(WidgetOf(1215), QStringLiteral("12345"));
  EXPECT_EQ(TextOf(1215), u"123");
  SetText(1215, u"longer");
  EXPECT_EQ(TextOf(1215), u"longer");
  QTest::keyClicks(WidgetOf(1215), QStringLiteral("7"));
  EXPECT_EQ(TextOf(1215), u"longer");
}

TEST(TextAreaWidget, HandsOutCrLfAndHoldsItsLimit) {
  stand::Open();
  Make(700, ControlKind::MultiEdit, u"", u"Macro");
  SetTextLimit(700, 5);
  QTest::keyClicks(WidgetOf(700), QStringLiteral("ab"));
  QTest::keyClick(WidgetOf(700), Qt::Key_Return);
  QTest::keyClicks(WidgetOf(700), QStringLiteral("cdef"));
  EXPECT_EQ(TextOf(700), u"ab\r\nc");
}

TEST(LogWidget, AppendsAtItsEndAndShowsIt) {
  stand::Open();
  Make(701, ControlKind::Log, u"Ready.\r\n", u"Output");
  for (int i = 0; i < 100; ++i) AppendText(701, u"line\r\n");
  const std::u16string text = TextOf(701);
  EXPECT_EQ(text.size(), 8u + 600u);
  EXPECT_EQ(text.substr(text.size() - 6), u"line\r\n");
  EXPECT_EQ(stand::Count(701, kNotifyEditChange), 0);
  const auto* log = static_cast<QPlainTextEdit*>(WidgetOf(701));
  EXPECT_TRUE(log->isReadOnly());
  EXPECT_GT(log->verticalScrollBar()->value(), 0);
  EXPECT_EQ(log->verticalScrollBar()->value(), log->verticalScrollBar()->maximum());
}

TEST(AltKeys, CopyAndPasteInAnyTextControlAndNothingInAButton) {
  stand::Open();
  Make(1, ControlKind::EditLine, u"copied", u"One");
  Make(2, ControlKind::EditLine, u"", u"Two");
  Make(101, ControlKind::PushButton, u"NEW");
  SelectAllText(1);
  QTest::keyClick(WidgetOf(1), Qt::Key_C, Qt::AltModifier);
  QTest::keyClick(WidgetOf(101), Qt::Key_V, Qt::AltModifier);
  QTest::keyClick(WidgetOf(2), Qt::Key_V, Qt::AltModifier);
  EXPECT_EQ(TextOf(2), u"copied");
  QTest::keyClick(WidgetOf(2), Qt::Key_Z, Qt::AltModifier);
  EXPECT_EQ(TextOf(2), u"");
  EXPECT_EQ(stand::Count(101, kNotifyClick), 0);
}

TEST(AltKeys, TheApplicationComesFirst) {
  stand::Open();
  Make(1, ControlKind::EditLine, u"stays", u"One");
  stand::events.key = [](int, const KeyEvent& key) { return key.alt && key.key == 'V'; };
  SelectAllText(1);
  QTest::keyClick(WidgetOf(1), Qt::Key_C, Qt::AltModifier);
  QTest::keyClick(WidgetOf(1), Qt::Key_V, Qt::AltModifier);
  QTest::keyClick(WidgetOf(1), Qt::Key_End);
  EXPECT_EQ(TextOf(1), u"stays");
}

TEST(TextControls, AskTheApplicationForTheirMenu) {
  stand::Open();
  Make(1, ControlKind::EditLine, u"x", u"One");
  QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                          WidgetOf(1)->mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(WidgetOf(1), &event);
  ASSERT_EQ(stand::told.menus.size(), 1u);
  EXPECT_EQ(stand::told.menus[0], 1);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST(ListWidget, TellsClicksKeysAndDoubleClicksButNoSetting) {
  stand::Open();
  MakeRows(1212, ListKind::Single, 20);
  SelectRow(1212, 3);
  EXPECT_EQ(SelectedRow(1212), 3);
  EXPECT_EQ(stand::Count(1212, kNotifyListSelect), 0);
  QTest::mouseClick(Viewport(1212), Qt::LeftButton, Qt::NoModifier, RowMiddle(1212, 1));
  EXPECT_EQ(SelectedRow(1212), 1);
  EXPECT_EQ(stand::Count(1212, kNotifyListSelect), 1);
  ASSERT_EQ(stand::told.clickedRows.size(), 1u);
  EXPECT_EQ(stand::told.clickedRows[0], 1);
  QTest::keyClick(WidgetOf(1212), Qt::Key_Down);
  EXPECT_EQ(SelectedRow(1212), 2);
  EXPECT_EQ(stand::Count(1212, kNotifyListSelect), 2);
  QTest::keyClick(WidgetOf(1212), Qt::Key_Return);
  EXPECT_EQ(stand::Count(1212, kNotifyListDouble), 1);
  QTest::mouseDClick(Viewport(1212), Qt::LeftButton, Qt::NoModifier, RowMiddle(1212, 2));
  EXPECT_EQ(stand::Count(1212, kNotifyListDouble), 2);
}

TEST(ListWidget, GettingTheKeyboardChoosesNothing) {
  stand::Open();
  MakeRows(1212, ListKind::Single, 5);
  SetFocusTo(1212);
  EXPECT_EQ(SelectedRow(1212), -1);
  QTest::keyClick(WidgetOf(1212), Qt::Key_Down);
  EXPECT_EQ(SelectedRow(1212), 0);
  EXPECT_EQ(stand::Count(1212, kNotifyListSelect), 1);
}

TEST(ListWidget, TheRightButtonSelectsNothingAndAsksWithItsRow) {
  stand::Open();
  MakeRows(1212, ListKind::Single, 5);
  SelectRow(1212, 0);
  static int askedRow;
  askedRow = -2;
  stand::events.contextMenu = [](int, int row, int, int) {
    askedRow = row;
    return true;
  };
  const QPoint at = RowMiddle(1212, 2);
  QTest::mouseClick(Viewport(1212), Qt::RightButton, Qt::NoModifier, at);
  QContextMenuEvent event(QContextMenuEvent::Mouse, at, Viewport(1212)->mapToGlobal(at));
  QCoreApplication::sendEvent(Viewport(1212), &event);
  EXPECT_EQ(SelectedRow(1212), 0);
  EXPECT_EQ(askedRow, 2);
}

TEST(ListWidget, RowsKeepTextDataAndTop) {
  stand::Open();
  MakeRows(1212, ListKind::Single, 100);
  EXPECT_EQ(RowData(1212, 7), 70);
  SetRowText(1212, 7, u"seven");
  EXPECT_EQ(RowText(1212, 7), u"seven");
  SetTopRow(1212, 42);
  EXPECT_EQ(TopRow(1212), 42);
  EXPECT_EQ(RowPlace(1212, 42).top, 0);
  EXPECT_EQ(RectHeight(RowPlace(1212, 42)), 24);
  EXPECT_EQ(RectHeight(RowPlace(1212, 2)), 0);
  ClearRows(1212);
  EXPECT_EQ(RowCount(1212), 0);
  EXPECT_EQ(SelectedRow(1212), -1);
}

TEST(ListWidget, OnlyAMultiListHoldsSeveralRows) {
  stand::Open();
  MakeRows(1, ListKind::Single, 5);
  MakeRows(2, ListKind::Multi, 5);
  for (const int id : {1, 2}) {
    SelectRow(id, 0);
    SetRowSelected(id, 3, true);
  }
  EXPECT_FALSE(IsRowSelected(1, 3));
  EXPECT_TRUE(IsRowSelected(2, 0));
  EXPECT_TRUE(IsRowSelected(2, 3));
  EXPECT_EQ(SelectedRow(2), 3);
}

TEST(ComboWidget, StartsWithoutAChoiceAndTellsTheUsersOnly) {
  stand::Open();
  MakeRows(400, ListKind::Combo, 4);
  EXPECT_EQ(SelectedRow(400), -1);
  SelectRow(400, 1);
  EXPECT_EQ(stand::Count(400, kNotifyComboSelect), 0);
  QTest::keyClick(WidgetOf(400), Qt::Key_Down);
  EXPECT_EQ(SelectedRow(400), 2);
  EXPECT_EQ(stand::Count(400, kNotifyComboSelect), 1);
  EXPECT_EQ(RowData(400, 2), 20);
}

TEST(Windows, DestroyingAParentFreesTheIdsOfItsChildren) {
  stand::Open();
  ViewSpec view;
  view.id = 50;
  view.className = u"StandView";
  ASSERT_TRUE(MakeView(view));
  ControlSpec child;
  child.id = 51;
  child.parent = 50;
  ASSERT_TRUE(MakeControl(child));
  EXPECT_FALSE(MakeControl(child));
  EXPECT_EQ(ViewByClass(u"StandView"), 50);
  SetVisible(50, false);
  EXPECT_FALSE(IsVisible(51));
  Destroy(50);
  EXPECT_FALSE(Exists(51));
  EXPECT_EQ(ViewByClass(u"StandView"), 0);
}

TEST(Windows, PointerEventsReachViewAndBareWindow) {
  stand::Open();
  ViewSpec view;
  view.id = 50;
  view.className = u"StandView";
  ASSERT_TRUE(MakeView(view));
  SetPlace(50, {100, 100, 300, 300});
  QTest::mousePress(WidgetOf(50), Qt::LeftButton, Qt::ShiftModifier, QPoint(7, 9));
  QTest::mouseRelease(WidgetOf(50), Qt::LeftButton, Qt::NoModifier, QPoint(8, 9));
  QTest::mousePress(WidgetOf(kMainWindow), Qt::LeftButton, Qt::NoModifier, QPoint(600, 500));
  ASSERT_GE(stand::told.pointers.size(), 3u);
  const PointerEvent& first = stand::told.pointers[0];
  EXPECT_EQ(first.action, PointerAction::Press);
  EXPECT_EQ(first.x, 7);
  EXPECT_EQ(first.y, 9);
  EXPECT_TRUE(first.shift);
  EXPECT_TRUE(first.leftDown);
  EXPECT_EQ(stand::told.pointers.back().x, 600);
}

TEST(Timers, RepeatUntilStopped) {
  stand::Open();
  static int ticks;
  ticks = 0;
  stand::events.timer = [](int window, int timer) {
    if (++ticks == 3) StopTimer(window, timer);
  };
  StartTimer(kMainWindow, 3, 1);
  EXPECT_TRUE(stand::Until([] { return !TimerRuns(kMainWindow, 3); }));
  EXPECT_EQ(ticks, 3);
}

TEST(Posts, ArriveInOrderFromAnotherThreadAlsoInsideAHandlersLoop) {
  stand::Open();
  static std::vector<std::uint64_t> got;
  got.clear();
  stand::events.posted = [](std::uint32_t, std::uint64_t first, std::uint64_t) {
    got.push_back(first);
    // The second handler waits as a message box would, for what comes behind it.
    if (first == 1) {
      EXPECT_TRUE(stand::Until([] { return got.size() >= 1000; }));
    }
  };
  std::thread sender([] {
    for (std::uint64_t i = 0; i < 40000; ++i) PostToMain(1, i, 0);
  });
  EXPECT_TRUE(stand::Until([] { return got.size() == 40000; }));
  sender.join();
  for (std::size_t i = 0; i < got.size(); ++i) ASSERT_EQ(got[i], i);
}

// How far two colours are apart, by the ratio that legibility is measured with: from 1 for the
// same to 21 for black on white. Written out from the definition of relative luminance.
double Luminance(QColor colour) {
  const auto linear = [](double c) {
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

double Contrast(QColor a, QColor b) {
  const double first = Luminance(a);
  const double second = Luminance(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QImage PictureOf(int id) { return WidgetOf(id)->grab().toImage(); }

// The square of a check box, by its place in the style.
QRect SquareOf(int id) {
  QStyleOptionButton option;
  option.initFrom(WidgetOf(id));
  return WidgetOf(id)->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, WidgetOf(id));
}

TEST(CheckWidget, ShowsItsSquareAndItsTickOnADarkPanel) {
  stand::Open();
  for (const Colour panel : {0x021726u, 0x010F19u, 0x091627u}) {
    Make(200, ControlKind::CheckBox, u"Match case");
    SetColours(200, {0xDEE9F2, panel, true});
    WidgetOf(200)->parentWidget()->setFocus();
    const QRect square = SquareOf(200);
    ASSERT_GE(square.width(), 13);
    const QImage off = PictureOf(200);
    const QPoint corners[] = {square.topLeft(), square.topRight(), square.bottomLeft(),
                              square.bottomRight()};
    for (const QPoint corner : corners) {
      EXPECT_GE(Contrast(off.pixelColor(corner), QColor(QRgb(panel))), 3.0);
    }
    // What the tick changes: many pixels, and among them some as bright as words.
    SetChecked(200, true);
    const QImage on = PictureOf(200);
    int changed = 0;
    double brightest = 0;
    for (int y = square.top() + 1; y < square.bottom(); ++y) {
      for (int x = square.left() + 1; x < square.right(); ++x) {
        changed += on.pixel(x, y) != off.pixel(x, y) ? 1 : 0;
        brightest = std::max(brightest, Contrast(on.pixelColor(x, y), off.pixelColor(x, y)));
      }
    }
    EXPECT_GE(changed, square.width() * square.height() / 2);
    EXPECT_GE(brightest, 7.0);
    delete WidgetOf(200);
  }
}

TEST(CheckWidget, ShowsThatItHasTheKeyboard) {
  stand::Open();
  Make(200, ControlKind::CheckBox, u"Match case");
  Make(201, ControlKind::EditLine, u"");
  SetFocusTo(201);
  const QImage without = PictureOf(200);
  QTest::keyClick(WidgetOf(201), Qt::Key_Backtab);
  ASSERT_TRUE(WidgetOf(200)->hasFocus());
  const QImage with = PictureOf(200);
  int bright = 0;
  for (int y = 0; y < with.height(); ++y) {
    for (int x = 0; x < with.width(); ++x) {
      bright += with.pixelColor(x, y) == QColor(0x00, 0xD3, 0xF2) ? 1 : 0;
    }
  }
  EXPECT_GE(bright, 100);  // the square's frame and a mark around the words
  EXPECT_NE(with.pixelColor(SquareOf(200).topLeft()), without.pixelColor(SquareOf(200).topLeft()));
}

// At such a scale an odd pixel of the window begins within a pixel of the screen.
TEST(ComboWidget, HasAFrameOnEverySideAtAScaleOfOneAndAHalf) {
  stand::Open();
  MakeRows(400, ListKind::Combo, 1);
  Make(401, ControlKind::CheckBox, u"Match case");
  Make(201, ControlKind::EditLine, u"");
  SetPlace(201, {600, 20, 700, 50});
  for (const int id : {400, 401, 201}) SetVisible(id, true);
  SetFocusTo(201);
  constexpr double kScale = 1.5;
  QWidget* window = WidgetOf(kMainWindow);
  // Of what the frame has the colour: a pixel within two of the edge, in the middle of each side.
  const auto framed = [&](const QRect& place, Colour line) {
    QImage image(window->size() * kScale, QImage::Format_RGB32);
    image.setDevicePixelRatio(kScale);
    image.fill(0);
    window->render(&image);
    const auto meets = [&](QPointF at, QPoint step) {
      QPoint pixel = (at * kScale).toPoint() - 2 * step;
      for (int i = 0; i < 5; ++i, pixel += step) {
        if ((image.pixel(pixel) & 0xFFFFFFU) == line) return true;
      }
      return false;
    };
    const QRectF box(place);
    const QPointF middle = box.center();
    return std::vector<bool>{
        meets({box.left(), middle.y()}, {1, 0}), meets({middle.x(), box.top()}, {0, 1}),
        meets({box.right(), middle.y()}, {1, 0}), meets({middle.x(), box.bottom()}, {0, 1})};
  };
  const std::vector<bool> all(4, true);
  for (const int x : {20, 21}) {
    for (const int y : {40, 41}) {
      SetPlace(400, {x, y, x + 101, y + 27});
      SetPlace(401, {x, y + 60, x + 121, y + 81});
      EXPECT_EQ(framed({x, y, 101, 27}, 0x2A6FA3), all) << "combo at " << x << ", " << y;
      const QRect square = SquareOf(401).translated(x, y + 60);
      EXPECT_EQ(framed(square, 0x91AAC4), all) << "box at " << x << ", " << y + 60;
    }
  }
}

TEST(ComboWidget, CutsALongRowInItsMiddle) {
  stand::Open();
  MakeRows(400, ListKind::Combo, 0);
  SetPlace(400, {20, 20, 180, 48});
  const auto picture = [](const char16_t* row) {
    platform::ClearRows(400);
    AddRow(400, row);
    SelectRow(400, 0);
    return PictureOf(400);
  };
  // Two ports that differ in their last letter.
  const QImage one = picture(u"/dev/serial/by-id/usb-FTDI_FT232R_USB_UART_A50285BI-if00-port0");
  const QImage other = picture(u"/dev/serial/by-id/usb-FTDI_FT232R_USB_UART_A50285BI-if00-port7");
  EXPECT_NE(one, other);
}

TEST(ComboWidget, IsAsDarkAsAKeyAndMarksTheKeyboard) {
  stand::Open();
  MakeRows(400, ListKind::Combo, 4);
  SetPlace(400, {20, 20, 220, 48});
  Make(201, ControlKind::EditLine, u"");
  SetPlace(201, {20, 100, 220, 120});
  SetFocusTo(201);
  const QImage plain = PictureOf(400);
  // A key's ground runs from 0x031A27 to 0x02111C, its edge is 0x2A6FA3.
  for (const int y : {2, 14, 25}) {
    const QColor ground = plain.pixelColor(100, y);
    EXPECT_LE(ground.green(), 0x1A) << y;
    EXPECT_GE(ground.green(), 0x11) << y;
    EXPECT_LE(ground.blue(), 0x27) << y;
  }
  EXPECT_EQ(plain.pixelColor(100, 0), QColor(0x2A, 0x6F, 0xA3));
  SetFocusTo(400);
  EXPECT_EQ(PictureOf(400).pixelColor(100, 0), QColor(0x00, 0xD3, 0xF2));
}

constexpr char16_t kLongRow[] = u"WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW";

QString TipAt(QWidget* widget, const QPoint& at) {
  QHelpEvent asked(QEvent::ToolTip, at, widget->mapToGlobal(at));
  QApplication::sendEvent(widget, &asked);
  return QToolTip::text();
}

TEST(ListWidget, TellsARowThatIsCutAsAWhole) {
  stand::Open();
  ListSpec spec;
  spec.id = 1;
  spec.accessibleName = u"Rows";
  spec.ownerDrawn = false;
  ASSERT_TRUE(MakeList(spec));
  SetPlace(1, {20, 20, 220, 140});
  for (const char16_t* words : {u"row", u"row", kLongRow}) AddRow(1, words, 0);
  EXPECT_EQ(TipAt(Viewport(1), RowMiddle(1, 0)), QString());
  EXPECT_EQ(TipAt(Viewport(1), RowMiddle(1, 2)), QString::fromUtf16(kLongRow));
}

TEST(ComboWidget, TellsAChoiceThatIsCutAsAWholeBeforeItsTip) {
  stand::Open();
  MakeRows(400, ListKind::Combo, 1);
  AddRow(400, kLongRow, 0);
  SetToolTip(400, u"The tool");
  SelectRow(400, 1);
  EXPECT_EQ(TipAt(WidgetOf(400), {10, 10}),
            QString::fromUtf16(kLongRow) + QStringLiteral("\nThe tool"));
  SelectRow(400, 0);
  EXPECT_EQ(TipAt(WidgetOf(400), {10, 10}), QStringLiteral("The tool"));
}

TEST(ComboWidget, OpensInAFrameAsWideAsItsLongestRowAndWithinTheScreen) {
  stand::Open();
  MakeRows(400, ListKind::Combo, 1);
  AddRow(400, kLongRow, 0);
  SetVisible(400, true);
  auto* combo = static_cast<QComboBox*>(WidgetOf(400));
  combo->showPopup();
  const QWidget* list = combo->view()->window();
  const QRect screen = list->screen()->availableGeometry();
  const int words = combo->fontMetrics().horizontalAdvance(QString::fromUtf16(kLongRow));
  EXPECT_GE(combo->view()->viewport()->width(), std::min(words + 12, screen.width() - 4));
  QImage picture(list->size(), QImage::Format_RGB32);
  combo->view()->window()->render(&picture);
  const QRect edge = picture.rect();
  for (const QPoint corner : {edge.topLeft(), edge.topRight(), edge.bottomLeft()}) {
    EXPECT_EQ(picture.pixelColor(corner), QColor(0x2A, 0x6F, 0xA3)) << corner.x();
  }
  EXPECT_GE(list->geometry().left(), screen.left());
  EXPECT_LE(list->geometry().right(), screen.right());
  combo->hidePopup();
}

TEST(ToolTips, BreakALineThatIsLongerThanTheScreenBehindItsFolders) {
  stand::Open();
  Make(101, ControlKind::PushButton, u"NEW");
  std::u16string path;
  for (int i = 0; i < 60; ++i) path += u"/fixtures of the left hand";
  SetToolTip(101, path + u"\nCtrl+click chooses");
  const QWidget* button = WidgetOf(101);
  const QStringList lines = button->toolTip().split(u'\n');
  ASSERT_GT(lines.size(), 3);
  const QFontMetrics metrics(QToolTip::font());
  QString whole;
  for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
    whole += lines[i];
    EXPECT_LE(metrics.horizontalAdvance(lines[i]), button->screen()->availableGeometry().width());
    const bool last = i + 2 == lines.size();
    EXPECT_TRUE(last || lines[i].endsWith(u'/') || lines[i].endsWith(u' ')) << i;
  }
  EXPECT_EQ(whole.toStdU16String(), path);
  EXPECT_EQ(lines.last(), QStringLiteral("Ctrl+click chooses"));
  SetToolTip(101, u"New program");
  EXPECT_EQ(button->toolTip(), QStringLiteral("New program"));
}

}  // namespace
