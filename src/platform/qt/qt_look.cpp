// The dark look of the toolkit's own parts: style, palette, fonts, icon.
//
// What the application draws itself it draws through the canvas. Here is only what the
// toolkit draws: scroll bars, edit frames, check boxes, combos, menus, boxes and dialogs.

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QFrame>
#include <QLinearGradient>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

constexpr int kMenuRow = 30;   // pixels
constexpr int kHoverMs = 450;  // from the pointer's rest on a key to its tip
constexpr int kCheckBox = 15;  // pixels, frame included
// The ground of a key; a combo stands among keys and looks like one.
constexpr Colour kKeyTop = 0x031A27;
constexpr Colour kKeyBottom = 0x02111C;
constexpr Colour kKeyOnTop = 0x042D43;
constexpr Colour kKeyOnBottom = 0x033A54;
constexpr Colour kFaint = 0x5C7389;  // what cannot be used
QFont fonts[kFontRoles];

// A frame of one pixel just inside the place. Of areas, not of lines: at a scale of 1.5 a line may
// come to lie outside.
void DrawFrame(QPainter* painter, const QRect& place, const QColor& line) {
  const QRect sides[] = {{place.left(), place.top(), place.width(), 1},
                         {place.left(), place.bottom(), place.width(), 1},
                         {place.left(), place.top(), 1, place.height()},
                         {place.right(), place.top(), 1, place.height()}};
  for (const QRect& side : sides) painter->fillRect(side, line);
}

Colour MarkColour(const QStyleOption& option, Colour plain) {
  if (!option.state.testFlag(QStyle::State_Enabled)) return kFaint;
  const bool near = option.state.testFlag(QStyle::State_MouseOver) ||
                    option.state.testFlag(QStyle::State_HasFocus);
  return near ? kLookBright : plain;
}

// A frame that stands out from every dark ground, full of the accent with a white tick when on.
void DrawCheckBox(const QStyleOption& option, QPainter* painter) {
  const int side = std::min({kCheckBox, option.rect.width(), option.rect.height()});
  QRect box(0, 0, side, side);
  box.moveCenter(option.rect.center());
  const bool enabled = option.state.testFlag(QStyle::State_Enabled);
  const bool on = option.state.testFlag(QStyle::State_On);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing, false);
  painter->fillRect(box, ColourOf(on && enabled ? kLookAccent : kLookOutput));
  DrawFrame(painter, box, ColourOf(MarkColour(option, kLookDim)));
  if (on) {
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setPen(QPen(enabled ? QColor(Qt::white) : ColourOf(kFaint), 2));
    const QPointF at = QRectF(box).topLeft();
    const double unit = side / 15.0;
    const QPointF tick[] = {at + QPointF(3.5, 7.5) * unit, at + QPointF(6.5, 10.5) * unit,
                            at + QPointF(11.5, 4.5) * unit};
    painter->drawPolyline(tick, 3);
  }
  painter->restore();
}

// An arrow without a shaft around `middle` that points along `tip`.
void DrawChevron(QPointF middle, QPointF tip, QPainter* painter) {
  const QPointF side(tip.y() * 2, tip.x() * 2);
  const QPointF chevron[] = {middle - tip - side, middle + tip, middle - tip + side};
  painter->drawPolyline(chevron, 3);
}

// A combo that cannot be typed into: a key's ground, and an arrow at its right end.
void DrawCombo(const QStyleOptionComboBox& option, const QRect& arrow, QPainter* painter) {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing, false);
  QLinearGradient ground(option.rect.topLeft(), option.rect.bottomLeft());
  ground.setColorAt(0, ColourOf(kKeyTop));
  ground.setColorAt(1, ColourOf(kKeyBottom));
  painter->fillRect(option.rect, ground);
  DrawFrame(painter, option.rect, ColourOf(MarkColour(option, kLookControlLine)));
  painter->setRenderHint(QPainter::Antialiasing, true);
  painter->setPen(QPen(ColourOf(MarkColour(option, kLookDim)), 1.6));
  DrawChevron(QRectF(arrow).center(), QPointF(0, 2), painter);
  painter->restore();
}

// The thumb of a scroll bar stands out from its groove; the arrows are those of a combo.
void DrawScrollBar(const QStyleOptionSlider& option, const QRect& thumb, const QRect& less,
                   const QRect& more, QPainter* painter) {
  const bool lies = option.orientation == Qt::Horizontal;
  const bool enabled =
      option.state.testFlag(QStyle::State_Enabled) && option.minimum < option.maximum;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing, false);
  painter->fillRect(option.rect, ColourOf(kLookInput));
  if (enabled) {
    const QRect inner = lies ? thumb.adjusted(0, 3, 0, -3) : thumb.adjusted(3, 0, -3, 0);
    const bool held = option.state.testFlag(QStyle::State_Sunken) &&
                      option.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider);
    painter->fillRect(inner, ColourOf(held ? kLookBright : kLookControlLine));
  }
  painter->setRenderHint(QPainter::Antialiasing, true);
  painter->setPen(QPen(ColourOf(enabled ? kLookDim : kFaint), 1.6));
  const QPointF tip = lies ? QPointF(2, 0) : QPointF(0, 2);
  DrawChevron(QRectF(less).center(), -tip, painter);
  DrawChevron(QRectF(more).center(), tip, painter);
  painter->restore();
}

// A key of a box or dialog, framed as the keys of the window are.
void DrawBoxKey(const QStyleOption& option, QPainter* painter) {
  const bool down = option.state.testFlag(QStyle::State_Sunken);
  QLinearGradient ground(option.rect.topLeft(), option.rect.bottomLeft());
  ground.setColorAt(0, ColourOf(down ? kKeyOnTop : kKeyTop));
  ground.setColorAt(1, ColourOf(down ? kKeyOnBottom : kKeyBottom));
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing, false);
  painter->fillRect(option.rect, ground);
  DrawFrame(painter, option.rect, ColourOf(MarkColour(option, kLookControlLine)));
  painter->restore();
}

class DarkStyle : public QProxyStyle {
 public:
  DarkStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    switch (hint) {
      case SH_DialogButtonLayout:
        return 0;  // Yes, No, Cancel from the left on every desktop
      case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
      case SH_ComboBox_Popup:
        return 0;  // the list opens below its combo
      case SH_ComboBox_PopupFrameStyle:
        return static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain);
      case SH_ScrollBar_Transient:
        return 0;
      case SH_ToolTip_WakeUpDelay:
        return kHoverMs;
      case SH_Widget_Animate:
      case SH_Widget_Animation_Duration:
        return 0;
      case SH_ToolTip_FallAsleepDelay:
        return 0;  // the next control's tip waits as long as the first
      default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
  }

  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override {
    if (metric == PM_TextCursorWidth) return 2;
    if (metric == PM_MenuPanelWidth) return 1;
    if (metric == PM_MenuVMargin) return 3;
    if (metric == PM_IndicatorWidth || metric == PM_IndicatorHeight) return kCheckBox;
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override {
    QSize answer = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type == CT_MenuItem && item != nullptr &&
        item->menuItemType != QStyleOptionMenuItem::Separator) {
      answer.setHeight(std::max(answer.height(), kMenuRow));
    }
    return answer;
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element == PE_FrameFocusRect) {
      return DrawFrame(painter, option->rect, ColourOf(kLookBright));
    }
    if (element == PE_IndicatorCheckBox) return DrawCheckBox(*option, painter);
    if (element == PE_PanelButtonCommand) return DrawBoxKey(*option, painter);
    if (element == PE_FrameLineEdit) {
      // The program frames its own fields, around them; the keyboard's is marked inside as well.
      const bool keyboard = option->state.testFlag(State_HasFocus);
      if (IdOfWidget(widget) != 0 && !keyboard) return;
      return DrawFrame(painter, option->rect, ColourOf(MarkColour(*option, kLookControlLine)));
    }
    if (element == PE_FrameMenu) {
      return DrawFrame(painter, option->rect, ColourOf(kLookLine));
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
  }

  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override {
    const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control == CC_ComboBox && combo != nullptr && !combo->editable) {
      return DrawCombo(*combo, subControlRect(control, option, SC_ComboBoxArrow, widget), painter);
    }
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar != nullptr) {
      return DrawScrollBar(*bar, subControlRect(control, option, SC_ScrollBarSlider, widget),
                           subControlRect(control, option, SC_ScrollBarSubLine, widget),
                           subControlRect(control, option, SC_ScrollBarAddLine, widget), painter);
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
  }

  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item != nullptr &&
        item->menuItemType == QStyleOptionMenuItem::Separator) {
      const int y = item->rect.center().y();
      painter->fillRect(QRect(item->rect.left() + 6, y, item->rect.width() - 12, 1),
                        ColourOf(kLookLine));
      return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
  }
};

QPalette DarkPalette() {
  QPalette palette;
  const QColor text = ColourOf(kLookText);
  const QColor dim = ColourOf(kLookDim);
  palette.setColor(QPalette::Window, ColourOf(kLookWindow));
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, ColourOf(kLookInput));
  palette.setColor(QPalette::AlternateBase, ColourOf(kLookPanel));
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::PlaceholderText, dim);
  palette.setColor(QPalette::Button, QColor(0x0B, 0x2A, 0x3E));
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::BrightText, Qt::white);
  palette.setColor(QPalette::Highlight, ColourOf(kLookSelection));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, ColourOf(kLookBright));
  palette.setColor(QPalette::LinkVisited, ColourOf(kLookBright));
  palette.setColor(QPalette::ToolTipBase, ColourOf(kLookPanel));
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Light, QColor(0x1A, 0x45, 0x60));
  palette.setColor(QPalette::Midlight, QColor(0x12, 0x36, 0x4E));
  palette.setColor(QPalette::Mid, QColor(0x08, 0x20, 0x30));
  palette.setColor(QPalette::Dark, QColor(0x01, 0x0A, 0x11));
  palette.setColor(QPalette::Shadow, Qt::black);
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText}) {
    palette.setColor(QPalette::Disabled, role, ColourOf(kFaint));
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x12, 0x36, 0x4E));
  return palette;
}

QString FirstOf(const QStringList& present, const QStringList& wanted) {
  for (const QString& family : wanted) {
    if (present.contains(family, Qt::CaseInsensitive)) return family;
  }
  return QString();
}

QFont MakeFont(const QString& family, int pixels, QFont::Weight weight) {
  QFont font;
  if (!family.isEmpty()) font.setFamily(family);
  font.setPixelSize(pixels);
  font.setWeight(weight);
  return font;
}

double LineHeight(const QFont& font) {
  QTextLayout layout(QStringLiteral("G01"), font);
  layout.beginLayout();
  QTextLine line = layout.createLine();
  line.setLeadingIncluded(true);
  line.setLineWidth(1000);
  layout.endLayout();
  return line.height();
}

// Code lines stand 20 pixels apart. The wanted size is 17; a face that comes out higher or
// lower gets the nearest size that fits the pitch best without passing it.
QFont MakeCodeFont(const QString& family) {
  QFont best = MakeFont(family, 17, QFont::Normal);
  best.setStyleHint(QFont::Monospace, QFont::PreferMatch);
  best.setFixedPitch(true);
  double bestHeight = LineHeight(best);
  for (int pixels = 19; pixels >= 12 && bestHeight != kEditorLineHeight; --pixels) {
    QFont font = best;
    font.setPixelSize(pixels);
    const double height = LineHeight(font);
    if (height <= kEditorLineHeight && (bestHeight > kEditorLineHeight || height > bestHeight)) {
      best = font;
      bestHeight = height;
    }
  }
  return best;
}

void MakeFonts() {
  const QStringList present = QFontDatabase::families();
  const QString face =
      FirstOf(present, {QStringLiteral("Segoe UI"), QStringLiteral("Open Sans"),
                        QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
  const QString code = FirstOf(present, {QStringLiteral("Consolas"), QStringLiteral("Inconsolata"),
                                         QStringLiteral("DejaVu Sans Mono")});
  fonts[static_cast<int>(FontRole::Body)] = MakeFont(face, 16, QFont::Normal);
  fonts[static_cast<int>(FontRole::Emphasis)] = MakeFont(face, 16, QFont::DemiBold);
  fonts[static_cast<int>(FontRole::Small)] = MakeFont(face, 13, QFont::Normal);
  fonts[static_cast<int>(FontRole::Title)] = MakeFont(face, 30, QFont::Bold);
  fonts[static_cast<int>(FontRole::Code)] = MakeCodeFont(code);
}

}  // namespace

const QFont& FontOf(FontRole role) { return fonts[static_cast<int>(role)]; }

void BeginLook() {
  QApplication::setStyle(new DarkStyle);
  QApplication::setPalette(DarkPalette());
  MakeFonts();
  QApplication::setFont(FontOf(FontRole::Body));
  QToolTip::setFont(FontOf(FontRole::Small));
  QToolTip::setPalette(DarkPalette());
}

void PaintWith(QWidget* widget, Colour text, Colour background) {
  QPalette palette = widget->palette();
  const QColor ground = ColourOf(background);
  palette.setColor(QPalette::Active, QPalette::Text, ColourOf(text));
  palette.setColor(QPalette::Inactive, QPalette::Text, ColourOf(text));
  palette.setColor(QPalette::Active, QPalette::WindowText, ColourOf(text));
  palette.setColor(QPalette::Inactive, QPalette::WindowText, ColourOf(text));
  palette.setColor(QPalette::Base, ground);
  widget->setPalette(palette);
}

}  // namespace platform
