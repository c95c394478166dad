#include "documents/program_print.h"

#include <algorithm>
#include <cstddef>

#include "app/command_ids.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "documents/tab_table.h"
#include "platform/canvas.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::Canvas;
using platform::FontRole;
using platform::Rect;

// Lengths on paper, in pixels of a screen of platform::kTextDots.
constexpr int kEdge = 24;  // inside the printable area, for a hole punch and a thumb
constexpr int kHeadHeight = 22;
constexpr int kHeadToLines = 12;
constexpr int kLineHeight = 18;
constexpr int kNumberWidth = 66;  // seven digits
constexpr int kNumberToLine = 12;
constexpr int kPageWords = 130;  // "Page 12345 of 12345"
constexpr int kLeastRoom = 120;  // for a line
constexpr int kLeastLines = 4;
constexpr std::size_t kTab = 8;

constexpr int kManyPages = 40;  // more are asked about

constexpr char16_t kTitle[] = u"Print Program";
constexpr char16_t kGoesOn[] = u"\u00BB";  // in place of the number of a line that goes on

struct Sheet {
  double scaleX = 1;  // printer's dots for a pixel of a screen
  double scaleY = 1;
  int width = 0;  // pixels of a screen
  int lines = 0;  // on a page
  int room = 0;   // for the text of a line
};

bool LayOut(const platform::PrinterFigures& page, Sheet& sheet) {
  if (page.width < 1 || page.height < 1 || page.dpiX < 1 || page.dpiY < 1) return false;
  sheet.scaleX = static_cast<double>(page.dpiX) / platform::kTextDots;
  sheet.scaleY = static_cast<double>(page.dpiY) / platform::kTextDots;
  sheet.width = static_cast<int>(page.width / sheet.scaleX);
  const int height = static_cast<int>(page.height / sheet.scaleY);
  sheet.lines = (height - 2 * kEdge - kHeadHeight - kHeadToLines) / kLineHeight;
  sheet.room = sheet.width - 2 * kEdge - kNumberWidth - kNumberToLine;
  return sheet.lines >= kLeastLines && sheet.room >= kLeastRoom;
}

Rect OnPaper(const Sheet& sheet, const Rect& place) {
  const auto x = [&](int pixels) { return static_cast<int>(pixels * sheet.scaleX); };
  const auto y = [&](int pixels) { return static_cast<int>(pixels * sheet.scaleY); };
  return {x(place.left), y(place.top), x(place.right), y(place.bottom)};
}

std::u16string WithoutTabs(std::u16string_view line) {
  std::u16string text;
  for (const char16_t c : line) {
    if (c == u'\t') {
      text.append(kTab - text.size() % kTab, u' ');
    } else {
      text.push_back(c);
    }
  }
  return text;
}

bool IsLow(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

// How many units of the text fit, at least one character. Letters of the code's face are equally
// wide, so that the first guess is mostly right.
std::size_t UnitsThatFit(std::u16string_view text, int room) {
  const int letter = std::max(1, platform::TextWidth(FontRole::Code, u"0"));
  std::size_t units = std::min(text.size(), static_cast<std::size_t>(room / letter + 2));
  while (units > 1 && platform::TextWidth(FontRole::Code, text.substr(0, units)) > room) --units;
  const bool inPair = units < text.size() && IsLow(text[units]);
  if (!inPair) return units;
  return units > 1 ? units - 1 : units + 1;
}

// The lines of a program one after another, broken as on paper.
class Lines {
 public:
  Lines(std::u16string_view text, int room) : text_(text), room_(room) {}

  // False: none is left. `number` is 0 for a part that goes on.
  bool Next(int& number, std::u16string& part) {
    if (at_ == parts_.size()) {
      if (from_ > text_.size() || (from_ == text_.size() && line_ > 0)) return false;
      TakeLine();
    }
    number = at_ == 0 ? line_ : 0;
    part = parts_[at_++];
    return true;
  }

 private:
  void TakeLine() {
    const std::size_t end = std::min(text_.find(u"\r\n", from_), text_.size());
    parts_ = PrintedParts(text_.substr(from_, end - from_), room_);
    from_ = end + (end < text_.size() ? 2 : 1);
    at_ = 0;
    ++line_;
  }

  std::u16string_view text_;
  int room_;
  std::size_t from_ = 0;
  int line_ = 0;
  std::vector<std::u16string> parts_;
  std::size_t at_ = 0;
};

int CountPages(std::u16string_view text, const Sheet& sheet) {
  Lines lines(text, sheet.room);
  int count = 0;
  int number = 0;
  std::u16string part;
  while (lines.Next(number, part)) ++count;
  return std::max(1, (count + sheet.lines - 1) / sheet.lines);
}

struct Heading {
  std::u16string name;
  int page = 0;
  int pages = 0;
};

void PaintHead(Canvas& canvas, const Sheet& sheet, const Heading& heading) {
  const int right = sheet.width - kEdge;
  const int bottom = kEdge + kHeadHeight;
  PaintText(canvas, OnPaper(sheet, {kEdge, kEdge, right - kPageWords, bottom}), heading.name,
            FontRole::Body, kPaperInk,
            platform::kAlignLeft | platform::kAlignMiddle | platform::kTextEllipsis);
  PaintText(canvas, OnPaper(sheet, {right - kPageWords, kEdge, right, bottom}),
            u"Page " + IntegerText(heading.page) + u" of " + IntegerText(heading.pages),
            FontRole::Body, kPaperInk, platform::kAlignRight | platform::kAlignMiddle);
  FillArea(canvas, OnPaper(sheet, {kEdge, bottom + 3, right, bottom + 4}), kPaperInk);
}

void PaintLine(Canvas& canvas, const Sheet& sheet, int row, int number, std::u16string_view part) {
  const int top = kEdge + kHeadHeight + kHeadToLines + row * kLineHeight;
  const int text = kEdge + kNumberWidth + kNumberToLine;
  PaintText(canvas, OnPaper(sheet, {kEdge, top, kEdge + kNumberWidth, top + kLineHeight}),
            number > 0 ? IntegerText(number) : kGoesOn, FontRole::Code, kPaperInk,
            platform::kAlignRight | platform::kAlignMiddle);
  if (part.empty()) return;
  PaintText(canvas, OnPaper(sheet, {text, top, sheet.width, top + kLineHeight}), part,
            FontRole::Code, kPaperInk, platform::kAlignLeft | platform::kAlignMiddle);
}

// False: the printer refused a page, or the document as a whole.
bool PrintPages(std::u16string_view text, const Sheet& sheet, Heading heading) {
  Lines lines(text, sheet.room);
  int number = 0;
  std::u16string part;
  bool more = lines.Next(number, part);
  for (heading.page = 1; heading.page <= heading.pages; ++heading.page) {
    Canvas* const canvas = platform::StartPage();
    if (!canvas) return false;
    PaintHead(*canvas, sheet, heading);
    for (int row = 0; row < sheet.lines && more; ++row) {
      PaintLine(*canvas, sheet, row, number, part);
      more = lines.Next(number, part);
    }
    platform::EndPage();
  }
  return platform::EndDocument();
}

void Refuse(const char16_t* words) {
  platform::ShowBox(kTitle, words, platform::BoxButtons::Ok, platform::BoxIcon::Warning);
}

bool WantsPages(int pages) {
  return pages <= kManyPages || Confirmed(kTitle, u"This program takes " + IntegerText(pages) +
                                                      u" pages on this paper. Print all of them?");
}

void PrintOnChosen(const std::u16string& name, const std::u16string& text) {
  Sheet sheet;
  if (!LayOut(platform::FiguresOfPrinter(), sheet)) {
    platform::ReleasePrinter();
    return Refuse(u"A program does not fit on this paper. Choose a larger one.");
  }
  const int pages = CountPages(text, sheet);
  if (!WantsPages(pages)) return platform::ReleasePrinter();
  const bool started = platform::StartDocument(name);
  const bool printed = started && PrintPages(text, sheet, {name, 0, pages});
  platform::ReleasePrinter();
  if (!started) return Refuse(u"The printer took no job, or the file cannot be written there.");
  if (!printed) return Refuse(u"The printout is not complete. Print the program again.");
  const std::u16string words =
      u"Printed " + name + u": " + IntegerText(pages) + (pages == 1 ? u" page." : u" pages.");
  AppendOutput(words);
  ShowStatus(words);
}

}  // namespace

std::vector<std::u16string> PrintedParts(std::u16string_view line, int room) {
  const std::u16string whole = WithoutTabs(line);
  std::u16string_view rest = whole;
  std::vector<std::u16string> parts;
  do {
    const std::size_t units = UnitsThatFit(rest, room);
    parts.emplace_back(rest.substr(0, units));
    rest.remove_prefix(units);
  } while (!rest.empty());
  return parts;
}

void PrintProgram() {
  if (!ActiveTab()) return;
  // The program as it is now, whatever happens while the dialog stands.
  const std::u16string name = NameOfTab(IndexOfSerial(ActiveSerial()));
  const std::u16string text(platform::EditorText(kIdEditor));
  switch (platform::ChoosePrinter(name)) {
    case platform::PrinterChoice::Chosen:
      return PrintOnChosen(name, text);
    case platform::PrinterChoice::Missing:
      return Refuse(u"This system cannot print: no printer, and no way to print into a file.");
    case platform::PrinterChoice::Cancelled:
      return ShowStatus(u"Nothing was printed.");
  }
}

}  // namespace morva
