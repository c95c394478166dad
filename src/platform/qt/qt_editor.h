// The editor widget: a plain-text edit with a mirror of its text in CR LF.
//
// The document is the truth. The mirror follows it lazily: every change is kept as a stretch
// of positions, and a read copies those alone. A program's first marker and its last lie a
// whole text apart, so that one stretch around both would be everything.
#pragma once

#include <QAbstractTextDocumentLayout>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextDocument>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/common/changed_lines.h"
#include "platform/editor.h"
#include "platform/qt/qt_internal.h"

namespace platform {

// While one stands the program itself moves carets, not the user.
class ByProgram {
 public:
  ByProgram();
  ~ByProgram();
  ByProgram(const ByProgram&) = delete;
  ByProgram& operator=(const ByProgram&) = delete;
  static bool Stands();
};

class EditorWidget : public PlacedWidget<QPlainTextEdit> {
 public:
  EditorWidget(const EditorSpec& spec, QWidget* parent);

  std::u16string_view Mirror();
  std::uint64_t Revision() const { return revision_; }
  bool LinesChangedSince(std::uint64_t since, ChangedLines& lines) const {
    return LinesSince(journal_, since, revision_, lines);
  }
  void SetWhole(std::u16string_view text);
  void LayAside(std::uint64_t number);
  bool TakeBack(std::uint64_t number, std::u16string_view text);
  void DropAside(std::uint64_t number);
  void Select(int anchor, int caret);
  void Replace(QTextCursor cursor, std::u16string_view text);
  void SetRuns(int line, const ColourRun* runs, int count);
  void ClearRuns();
  void Hold(bool hold);
  void Freeze(bool freeze) { frozen_ += freeze ? 1 : (frozen_ > 0 ? -1 : 0); }
  bool Frozen() const { return frozen_ > 0; }
  // While kept, changes and moves are not told; at the end what is new is, the selection first.
  void KeepTells() { keeping_ = true; }
  void TellKept();
  void Mark(int line, Colour band);
  void SetBands(const LineBand* bands, int count);
  void SetMarks(const LineMark* marks, int count, Colour ground, Colour frame);
  int FirstLine() const { return firstVisibleBlock().blockNumber(); }
  int PositionAtPoint(int x, int y) const;
  Point PointOf(int position) const;
  void ShowColumnOf(int position);  // sideways alone
  int Length() const { return document()->characterCount() - 1; }

 protected:
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  QMimeData* createMimeDataFromSelection() const override;
  void wheelEvent(QWheelEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  // Positions that the mirror does not have yet, and how many it has in their place.
  struct Stretch {
    int from = 0;
    int to = 0;
    int mirrored = 0;
  };

  // A text that is not shown now.
  struct Aside {
    std::uint64_t number = 0;
    QTextDocument* document = nullptr;
    std::u16string mirror;
    bool coloured = false;
  };

  QTextDocument* MakeDocument();
  void ShowDocument(QTextDocument* document);
  void DropOldAside();
  void BeginAtFront();
  void TellWhole();
  void DocumentChanged(int from, int removed, int added);
  void NoteChangedLines(int from, int added);
  void NoteStretch(int from, int removed, int added);
  void CopyStretch(const Stretch& stretch);
  void TellChange();
  void TellSelection();
  void TellTyped(const QString& characters);
  void FlushRuns();
  void PaintBands(QPaintEvent* event);
  void PaintMarks(QPainter& painter, const QTextBlock& block, double top) const;
  void FollowCaretLine();
  void PaintText(QPaintEvent* event);
  void PaintLongLine(QPainter& painter, const QTextBlock& block, const QRectF& place,
                     const QRect& area) const;

  std::shared_ptr<QPlainTextEdit> mainView_;
  std::vector<Aside> aside_;  // the last one laid there last
  bool coloured_ = false;     // a line may have colours
  std::u16string mirror_;
  std::uint64_t revision_ = 0;
  LineJournal journal_;
  std::vector<Stretch> stale_;  // in order, never touching
  int knownLength_ = 0;         // positions after the last change
  int knownLines_ = 1;          // and lines
  bool settingWhole_ = false;
  bool textChanged_ = false;
  bool keeping_ = false;
  int lastAnchor_ = 0;
  int lastCaret_ = 0;
  int holds_ = 0;
  int frozen_ = 0;
  std::vector<LineBand> bands_;  // lines ascending
  std::vector<LineMark> marks_;  // lines ascending
  Colour markGround_ = 0;
  Colour markFrame_ = 0;
  Colour caretBand_ = 0;
  int caretLine_ = 0;  // the band was drawn for
  int runsFrom_ = -1;  // positions whose colours changed and are not painted yet
  int runsTo_ = -1;
};

EditorWidget* EditorOf(int id);

// Lines that are drawn in part, as far as they are in view (qt_long_line.cpp). Noted when a line is
// laid out; true where it is one.
bool NoteLongLine(QTextBlock block);
bool IsLongLine(const QTextBlock& block);

}  // namespace platform
