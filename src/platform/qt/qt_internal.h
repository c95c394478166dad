// What the Qt sources share: the table of placed things, fonts, text conversion, guards.
//
// Everything here belongs to the user-interface thread. A placed thing is a widget under its
// decimal id; the table is the only way from an id to a widget, and a widget that goes takes
// its row with it. None of this leaves platform/qt.
#pragma once

#include <QContextMenuEvent>
#include <QFont>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPalette>
#include <QPointer>
#include <QString>
#include <QTextDocument>
#include <QWidget>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/canvas.h"
#include "platform/editor.h"
#include "platform/events.h"
#include "platform/geometry.h"
#include "platform/window.h"

namespace platform {

enum class PlacedKind {
  MainWindow,
  View,
  PushButton,
  CheckBox,
  Label,
  EditLine,
  MultiEdit,
  Log,
  List,
  Combo,
  Editor,
};

struct Placed {
  int id = 0;
  PlacedKind kind = PlacedKind::Label;
  QWidget* widget = nullptr;
  std::u16string className;
  std::u16string text;  // caption of a button, check box or label
  std::u16string name;  // accessible name where one was given
  unsigned order = 0;   // of making
  int textLimit = 0;    // 0 for none
  ViewRole role = ViewRole::Drawing;
};

// The row of an id, or null. Good until the next thing is made or destroyed.
Placed* FindPlaced(int id);
// False: the id is taken.
bool AddPlaced(Placed row);
void ForgetPlaced(int id, const QWidget* widget);
// The id of the placed thing that `widget` is or lies in, 0 for none.
int IdOfWidget(const QWidget* widget);
// The widget that children of `parent` go into; null when there is none.
QWidget* ParentWidget(int parent);
QWidget* MainWidget();

inline QString Text(std::u16string_view text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}
inline std::u16string Text16(const QString& text) { return text.toStdU16String(); }
// A tip as it fits the screen of the widget: longer lines break behind a blank or a slash.
QString FoldTip(const QString& tip, const QWidget* widget);
inline QColor ColourOf(Colour colour) { return QColor::fromRgb(colour); }
inline QRect RectOf(const Rect& r) { return QRect(r.left, r.top, RectWidth(r), RectHeight(r)); }
inline Rect RectFrom(const QRect& r) {
  return Rect{r.left(), r.top(), r.left() + r.width(), r.top() + r.height()};
}

// Fonts by role, made once by BeginLook.
const QFont& FontOf(FontRole role);
// Style, palette and fonts of the whole process.
void BeginLook();
// Palette of a text control.
void PaintWith(QWidget* widget, Colour text, Colour background);

// The palette of the rooms again, for what the toolkit paints by itself: this room stands below
// them and cannot include it.
inline constexpr Colour kLookWindow = 0x010F19;
inline constexpr Colour kLookPanel = 0x021726;
inline constexpr Colour kLookInput = 0x031929;
inline constexpr Colour kLookOutput = 0x03080E;
inline constexpr Colour kLookAccent = 0x0089B2;
inline constexpr Colour kLookSelection = 0x00779B;
inline constexpr Colour kLookBright = 0x00D3F2;
inline constexpr Colour kLookText = 0xDEE9F2;
inline constexpr Colour kLookDim = 0x91AAC4;
inline constexpr Colour kLookLine = 0x12528B;  // between things
inline constexpr Colour kLookControlLine = 0x2A6FA3;

struct Canvas {
  QPainter* painter = nullptr;
  Rect area;
  // The pixels behind the painter where the canvas has them to itself, else null.
  std::uint32_t* pixels = nullptr;
  int stride = 0;  // pixels from row to row
  int width = 0;   // device pixels
  int height = 0;
  double scale = 1;      // device pixels to one pixel of the view
  double textScale = 1;  // of fonts, on paper
};

// Device pixels inside the canvas and its clips.
Rect DeviceClip(const Canvas& canvas);
inline constexpr int kFontRoles = 5;
const QFontMetrics& MetricsOf(FontRole role);

// While one lives, what the program sets is not told as the user's doing.
struct Quiet {
  Quiet() { ++depth; }
  ~Quiet() { --depth; }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;
  static inline int depth = 0;
};

// Lives as long as a box, a dialog or a menu of ours asks the user.
struct Asking {
  Asking();
  ~Asking();
  Asking(const Asking&) = delete;
  Asking& operator=(const Asking&) = delete;
};

// Hands a control's word to the dialog that it lies in. False: it lies in none.
bool TellDialog(int id, int notification);
bool LiesInDialog(int id);

inline void SendCommand(int id, int notification) {
  if (TellDialog(id, notification)) return;
  if (Listener().command != nullptr) Listener().command(id, notification);
}

KeyEvent KeyFrom(const QKeyEvent& event);
PointerEvent PointerFrom(const QMouseEvent& event, PointerAction action);
// The widget that has the keyboard, or null. A key that it left over goes on to what lies
// around it, which must not offer it to the application once more.
QWidget* KeyboardHolder();
// Offers a key to the application, then to the rule of Alt+C, Alt+V and Alt+Z in text
// controls. True: used up, as every character with Alt is in a text control.
bool KeyBeforeControl(int id, const QKeyEvent& event);
// Asks the application for a context menu. `row` and `local` stand for a list's row and, for
// the keyboard's request, its place in the widget.
void AskContextMenu(int id, QWidget* widget, QContextMenuEvent* event, int row,
                    const QPoint* local);

// A widget under an id: keys and context menus go to the application first.
template <class Base>
class PlacedWidget : public Base {
 public:
  PlacedWidget(int placedId, bool takesKeys, QWidget* parent)
      : Base(parent), id_(placedId), takesKeys_(takesKeys) {}
  ~PlacedWidget() override { ForgetPlaced(id_, this); }
  int Id() const { return id_; }

 protected:
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ContextMenu && !this->isEnabled()) {
      // What lies around a disabled control is asked: its own class would swallow the request.
      event->ignore();
      return false;
    }
    if (takesKeys_ && event->type() == QEvent::ShortcutOverride) {
      // Every key comes as a plain key press; there are no shortcuts beside the application's.
      event->accept();
      return true;
    }
    const QWidget* holder = KeyboardHolder();
    const bool leftOver = holder != this && this->isAncestorOf(holder);
    if (takesKeys_ && event->type() == QEvent::KeyPress && !leftOver) {
      const QPointer<QWidget> self(this);
      if (KeyBeforeControl(id_, *static_cast<QKeyEvent*>(event)) || self.isNull()) {
        event->accept();
        return true;
      }
    }
    return Base::event(event);
  }
  void contextMenuEvent(QContextMenuEvent* event) override {
    AskContextMenu(id_, this, event, -1, nullptr);
  }

 private:
  int id_;
  bool takesKeys_;
};

// The second click of a double click that went to what came up over a list's row at the first
// one: told to the list. False: no list was pressed there.
bool DoubleClickBelow(const QPoint& screen);
// Registers and dresses a new widget: name, font, visibility. False: the widget is deleted.
bool Settle(Placed row, const char16_t* accessibleName, const QFont& font, bool hidden);
// Gives a hidden area its size at once; the toolkit would wait until it is shown.
void CatchUpSize(QWidget* widget);
// The text of a document with CR LF, and of its selection for other programs.
std::u16string TextOfDocument(const QTextDocument& document);
QMimeData* PlainMimeData(const QString& selected);
// The name that assistive technology reads, from the given name or the caption.
void RefreshAccessibleName(const Placed& row);

// What assistive technology is told of the placed things, and does to them.
void BeginAccess();
// Watches the pointer for PointerMoves.
void BeginMoves();
// Takes files that are dropped on the main window.
void BeginDrops();
// Tells when the application comes to the front again.
void BeginFront();
// A click in the middle of a list's row, or the choice of a combo's; `turn` turns over one of
// several rows and leaves the others.
void PressRow(int id, int row, bool turn);
bool ChoosesSeveral(int id);

// Pieces of listing and editor that window and control functions reach.
std::u16string EditorTextCopy(int id);
void BeginPosts();
void EndPosts();
void EndTimers();

}  // namespace platform
