// Placing a form's rows from the top down, and hiding what is not on the page.

#include <algorithm>
#include <cstddef>

#include "app/panels.h"
#include "forms/form_table.h"
#include "forms/sheet.h"
#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {

namespace {

using platform::FontRole;
using platform::Rect;

constexpr int kNoteSlack = 2;  // a label may break a little earlier than its width
constexpr int kNoteBelow = 2;

// The rows of one page, or of its part that scrolls or is fixed: what they need, and what is left
// for those that fill.
enum class Part : unsigned char { Whole, Scrolled, Fixed };
struct Page {
  const FormEntry* entry = nullptr;
  int page = 0;
  Part part = Part::Whole;
  int left = 0;
  int right = 0;
  int gap = 0;
  int height = 0;
  int fill = 0;   // height of a filling row that has no percentage
  int given = 0;  // what a row with a percentage gives up
  int spare = 0;  // what a yielding row gives up
};

const FormRow& RowAt(const Page& page, int index) {
  return page.entry->form->rows[static_cast<std::size_t>(index)];
}
bool IsIn(const Page& page, const FormRow& row) {
  if (!OnPage(row, page.page)) return false;
  return page.part == Part::Whole || row.fixed == (page.part == Part::Fixed);
}
int RowsOf(const FormEntry& entry) { return static_cast<int>(entry.form->rows.size()); }

// The lines that a note takes, broken at blanks as the label breaks it.
int LinesOf(std::u16string_view text, FontRole font, int width) {
  int lines = 1;
  std::size_t line = 0;
  for (std::size_t word = 0; word < text.size();) {
    const std::size_t end = std::min(text.find(u' ', word), text.size());
    const int reach = platform::TextWidth(font, text.substr(line, end - line));
    if (word > line && reach > width - kNoteSlack) {
      ++lines;
      line = word;
    }
    word = end + 1;
  }
  return lines;
}

bool LabelAbove(const Form& form, const FormRow& row) {
  return HasLabel(form, row) && form.look->labels == Labels::Above;
}

bool Fills(const Page& page, const FormRow& row) {
  return row.least > 0 && (row.fillPages & PageBit(page.page)) != 0;
}

int ControlHeight(const Page& page, const FormRow& row) {
  const FormLook& look = *page.entry->form->look;
  if (row.height > 0) return row.height;
  switch (row.kind) {
    case RowKind::Head:
      return look.headHeight;
    case RowKind::Note:
      return LinesOf(row.label, look.labelFont, page.right - page.left) *
                 platform::TextHeight(look.labelFont) +
             kNoteBelow;
    case RowKind::Keys:
      return look.keyHeight;
    case RowKind::Checks:
      return look.checkHeight;
    default:
      return look.fieldHeight;
  }
}

int AboveControl(const Page& page, const FormRow& row) {
  const FormLook& look = *page.entry->form->look;
  int above = row.above;
  if (row.kind == RowKind::Head) above += look.headAbove;
  if (LabelAbove(*page.entry->form, row)) above += look.labelHeight + look.labelGap;
  return above;
}

int GapBelow(const Page& page, const FormRow& row) {
  const FormLook& look = *page.entry->form->look;
  return row.kind == RowKind::Head && look.headGap >= 0 ? look.headGap : page.gap;
}

// Of two half rows that follow each other, the second.
bool IsSecondHalf(const Page& page, int index) {
  int halves = 0;
  for (int i = index; i >= 0; --i) {
    const FormRow& row = RowAt(page, i);
    if (!IsIn(page, row)) continue;
    if (!row.half) break;
    ++halves;
  }
  return halves > 0 && halves % 2 == 0;
}

// Everything but the filling rows, without the gap behind the last one.
int FixedHeight(const Page& page) {
  int height = 0;
  int behind = 0;
  for (int i = 0; i < RowsOf(*page.entry); ++i) {
    const FormRow& row = RowAt(page, i);
    if (!IsIn(page, row) || IsSecondHalf(page, i)) continue;
    height += behind + AboveControl(page, row);
    if (!Fills(page, row)) height += ControlHeight(page, row);
    behind = GapBelow(page, row);
  }
  return height;
}

int PercentOfHeight(const Page& page, int percent) {
  return (page.height + page.entry->form->look->gap) * percent / 100;
}

// What a row with a percentage has above its least.
int AboveLeast(const Page& page, const FormRow& row) {
  return std::max(PercentOfHeight(page, row.percent) - row.least, 0);
}

// Shares out the height that is left. Where it is too little the rows stand only as far apart as
// fits, then one with a percentage gives up what it has above its least, then the yielding one what
// it has.
void Fit(Page& page) {
  const FormLook& look = *page.entry->form->look;
  int least = 0;
  int shared = 0;
  for (int i = 0; i < RowsOf(*page.entry); ++i) {
    const FormRow& row = RowAt(page, i);
    if (!IsIn(page, row) || !Fills(page, row)) continue;
    least = std::max(least, static_cast<int>(row.least));
    if (row.percent == 0) continue;
    shared += PercentOfHeight(page, row.percent);
    page.given = std::max(page.given, AboveLeast(page, row));
  }
  page.gap = look.gap;
  const auto spareHeight = [&] { return page.height - FixedHeight(page) - shared; };
  if (least == 0) shared = 0;
  while (page.gap > look.tightGap && spareHeight() < least) --page.gap;
  if (least == 0) return;
  const int left = spareHeight();
  const int missing = std::max(least - left, 0);
  page.given = std::min(page.given, missing);
  page.spare = missing - page.given;
  page.fill = std::max(left, least);
}

int RowHeight(const Page& page, const FormRow& row) {
  if (!Fills(page, row)) {
    return std::max(ControlHeight(page, row) - (row.yields ? page.spare : 0), 0);
  }
  if (row.percent == 0) return page.fill;
  return PercentOfHeight(page, row.percent) - std::min(page.given, AboveLeast(page, row));
}

// Keys or check boxes side by side.
void PutSideBySide(const Page& page, const FormRow& row, int top, int bottom) {
  const FormLook& look = *page.entry->form->look;
  const int count = KeyCount(row);
  int all = 0;
  for (int i = 0; i < count; ++i) all += row.shares[i] > 0 ? row.shares[i] : 1;
  int left = page.left;
  int width = page.right - page.left - look.keyGap * (count - 1);
  if (look.keysAtEnd) {
    width = all;
    left = page.right - all - look.keyGap * (count - 1);
  }
  int x = left;
  int seen = 0;
  for (int i = 0; i < count; ++i) {
    seen += row.shares[i] > 0 ? row.shares[i] : 1;
    const int right = left + width * seen / all + look.keyGap * i;
    ShowAt(row.keys[i], Rect{x, top, right, bottom});
    x = right + look.keyGap;
  }
}

// The keys at a field's right end; the x that is left for the field.
int PutKeysAtEnd(const FormLook& look, const FormRow& row, int right, int top, int bottom) {
  for (int i = KeyCount(row) - 1; i >= 0; --i) {
    ShowAt(row.keys[i], Rect{right - row.shares[i], top, right, bottom});
    right -= row.shares[i] + look.keyGap;
  }
  return right;
}

// One control may stand on several rows: it is called as the row that is shown says.
void NameControl(const Form& form, const FormRow& row, int page) {
  const char16_t* name = NameOf(row, IsMetric(form), page);
  if (platform::AccessibleName(row.id) != name) platform::SetAccessibleName(row.id, name);
}

void PutControl(const Page& page, int index, const FormRow& row, int top, int bottom) {
  const Form& form = *page.entry->form;
  const FormLook& look = *form.look;
  int left = page.left;
  if (HasLabel(form, row)) {
    const int label = LabelId(*page.entry, index);
    if (look.labels == Labels::Above) {
      const int foot = top - look.labelGap;
      ShowAt(label, Rect{page.left, foot - look.labelHeight, page.right, foot});
    } else {
      const int field = (page.right - page.left) * look.fieldPercent / 100;
      left = look.labelWidth > 0 ? page.left + look.labelWidth : page.right - field;
      ShowAt(label, Rect{page.left, top, left - look.gap, bottom});
    }
  }
  int right = page.right;
  if (HasKeys(row, page.page)) right = PutKeysAtEnd(look, row, right, top, bottom);
  if (row.width > 0) right = std::min(right, left + row.width);
  const bool framed = row.kind != RowKind::Choice || look.framesChoices;
  const int inset = framed ? look.inset : 0;
  ShowAt(row.id, Rect{left + inset, top + inset, right - inset, bottom - inset});
  NameControl(form, row, page.page);
}

// Places one row at y. The y below it, without a gap.
int PutRow(const Page& page, int index, int y) {
  const FormRow& row = RowAt(page, index);
  RowState& state = StateOf(*page.entry, index);
  const int height = RowHeight(page, row);
  state.shown = height > 0;
  if (!state.shown) return y;
  state.top = y;
  const int top = y + AboveControl(page, row);
  const int bottom = top + height;
  switch (row.kind) {
    case RowKind::Head:
    case RowKind::Note:
      ShowAt(LabelId(*page.entry, index), Rect{page.left, top, page.right, bottom});
      break;
    case RowKind::Keys:
    case RowKind::Checks:
      PutSideBySide(page, row, top, bottom);
      break;
    default:
      PutControl(page, index, row, top, bottom);
      break;
  }
  return bottom;
}

// The columns of half rows.
Page HalfOf(const Page& page, bool second) {
  Page half = page;
  const int gap = page.entry->form->look->keyGap;
  const int middle = (page.left + page.right) / 2;
  if (second) {
    half.left = middle + gap;
  } else {
    half.right = middle - gap;
  }
  return half;
}

// The part's area and what fits into it.
Page FitPart(const FormEntry& entry, const FormPart& where, Part part) {
  const FormLook& look = *entry.form->look;
  Page page;
  page.entry = &entry;
  page.page = where.page;
  page.part = part;
  page.left = where.area.left + look.edge;
  page.right = where.area.right - look.edge;
  page.height = where.area.bottom - where.area.top - look.top;
  Fit(page);
  return page;
}

// The y below the last row and its gap; `foot` is that without the gap.
int PutPage(const Page& page, int top, int& foot) {
  int y = top + page.entry->form->look->top;
  int line = y;  // where the line of a first half begins
  foot = y;
  for (int i = 0; i < RowsOf(*page.entry); ++i) {
    const FormRow& row = RowAt(page, i);
    if (!IsIn(page, row)) continue;
    const bool second = IsSecondHalf(page, i);
    if (!second) line = y;
    const int below = PutRow(row.half ? HalfOf(page, second) : page, i, line);
    if (below <= line) continue;
    foot = std::max(foot, below);
    y = std::max(y, below + GapBelow(page, row));
  }
  return y;
}

// The height of a part whose filling row has its least.
int LeastHeight(const FormEntry& entry, int width, int pageNumber, Part part) {
  const Page page = FitPart(entry, {{0, 0, width, 0}, pageNumber}, part);
  int height = FixedHeight(page);
  for (int i = 0; i < RowsOf(entry); ++i) {
    const FormRow& row = RowAt(page, i);
    if (IsIn(page, row) && Fills(page, row)) height += row.least;
  }
  return height;
}

bool HasFixed(const Form& form, int page) {
  return form.sheet && std::any_of(form.rows.begin(), form.rows.end(), [page](const FormRow& row) {
           return row.fixed && OnPage(row, page);
         });
}

// What scrolls on this page; on one of the steady pages, the most that scrolls on any of them.
int ScrolledHeight(const FormEntry& entry, int width, int page) {
  int height = LeastHeight(entry, width, page, Part::Scrolled);
  const unsigned steady = entry.form->steadyPages;
  if ((steady & PageBit(page)) == 0) return height;
  for (int other = 0; steady >> other != 0; ++other) {
    if ((steady & PageBit(other)) == 0) continue;
    height = std::max(height, LeastHeight(entry, width, other, Part::Scrolled));
  }
  return height;
}

// The area of what scrolls, above what is fixed. What scrolls gets no more than it needs.
Rect AboveFixed(const FormEntry& entry, const Rect& area, int page) {
  const FormLook& look = *entry.form->look;
  const int scrolled = look.top + ScrolledHeight(entry, RectWidth(area) - kSheetBar, page);
  const int fixed = look.gap + look.top + LeastHeight(entry, RectWidth(area), page, Part::Fixed);
  Rect above = area;
  above.bottom = std::max(area.top, std::min(area.top + scrolled, area.bottom - fixed));
  return above;
}

bool IsControlShown(const FormEntry& entry, int id) {
  for (int i = 0; i < RowsOf(entry); ++i) {
    if (!StateOf(entry, i).shown) continue;
    const FormRow& row = entry.form->rows[static_cast<std::size_t>(i)];
    if (row.id == id) return true;
    for (const int key : row.keys) {
      if (key == id && StateOf(entry, i).keys) return true;
    }
  }
  return false;
}

// Whether another form on the same sheet has this key and fits.
template <typename Fits>
bool IsSharedWith(const FormEntry& entry, int id, Fits fits) {
  if (!entry.form->sheet) return false;
  for (int i = 0; const FormEntry* other = EntryAt(i); ++i) {
    if (other->form == entry.form || other->form->sheet != entry.form->sheet) continue;
    if (RowOfControl(*other->form, id) >= 0 && fits(*other)) return true;
  }
  return false;
}

bool IsSharedAndShown(const FormEntry& entry, int id) {
  return IsSharedWith(entry, id,
                      [id](const FormEntry& other) { return IsControlShown(other, id); });
}

void HideUnlessShown(const FormEntry& entry, int id) {
  if (id == 0 || IsControlShown(entry, id) || IsSharedAndShown(entry, id)) return;
  platform::SetVisible(id, false);
}

// Hides the controls of every row that is not shown; one control may belong to several rows.
void HideRest(const FormEntry& entry) {
  for (int i = 0; i < RowsOf(entry); ++i) {
    RowState& state = StateOf(entry, i);
    const FormRow& row = entry.form->rows[static_cast<std::size_t>(i)];
    for (const int key : row.keys) {
      if (!state.shown || !state.keys) HideUnlessShown(entry, key);
    }
    if (state.shown) continue;
    state.top = -1;
    const bool words = row.kind == RowKind::Head || row.kind == RowKind::Note;
    if (words || HasLabel(*entry.form, row)) platform::SetVisible(LabelId(entry, i), false);
    if (!words) HideUnlessShown(entry, row.id);
  }
}

void MarkPages(const FormEntry& entry, std::span<const FormPart> parts) {
  for (int i = 0; i < RowsOf(entry); ++i) {
    const FormRow& row = entry.form->rows[static_cast<std::size_t>(i)];
    RowState& state = StateOf(entry, i);
    state.shown = state.keys = false;
    for (const FormPart& part : parts) {
      state.shown = state.shown || OnPage(row, part.page);
      state.keys = state.keys || HasKeys(row, part.page);
    }
  }
}

}  // namespace

void PlaceForm(const Form& form, std::span<const FormPart> parts) {
  const FormEntry* entry = EntryOf(form);
  if (!entry) return;
  MakeForm(form);
  MarkPages(*entry, parts);
  HideRest(*entry);
  for (const FormPart& part : parts) {
    int foot = 0;
    SetPlacedPage(*entry, part.page);
    PutPage(FitPart(*entry, part, Part::Whole), part.area.top, foot);
  }
  HideRest(*entry);  // a row that had to give up all its height
}

namespace {

// Keys that another form made first would else come before the fields of this one.
void OrderSharedKeys(const FormEntry& entry) {
  int ids[kMaxTabStops];
  const int count = FormOrder(*entry.form, ids, kMaxTabStops);
  const auto shared = [&entry](int id) {
    return IsSharedWith(entry, id, [](const FormEntry&) { return true; });
  };
  if (std::any_of(ids, ids + count, shared)) platform::SetTabOrder(ids, count);
}

}  // namespace

int PlaceForm(const Form& form, const Rect& area) { return PlaceForm(form, area, PageOf(form)); }

int PlaceForm(const Form& form, const Rect& area, int page) {
  const FormEntry* entry = EntryOf(form);
  if (!entry) return area.top;
  MakeForm(form);
  SetPlacedPage(*entry, page);
  FormPart part{area, page};
  const bool fixed = HasFixed(form, page);
  Rect scrolled = area;
  if (form.sheet) {
    if (FormOnSheet(*form.sheet) != &form) OrderSharedKeys(*entry);
    if (fixed) scrolled = AboveFixed(*entry, area, page);
    PlaceSheet(*form.sheet, form, scrolled);
    part.area = SheetPaper(*form.sheet);
    // A row may take the height that is left. A paper as high as its rows leaves none, so such a
    // row gets that of the part in sight.
    if (form.sheet->height == 0) part.area.bottom = RectHeight(scrolled);
  }
  MarkPages(*entry, std::span(&part, 1));
  HideRest(*entry);
  int foot = 0;
  const Part kind = fixed ? Part::Scrolled : Part::Whole;
  const int below = PutPage(FitPart(*entry, part, kind), part.area.top, foot);
  if (form.sheet) SetSheetContent(*form.sheet, foot);
  if (fixed) {
    // As wide as the rows above; below a bar, the bar's width more.
    const bool bar = SheetScrolls(*form.sheet);
    part.area = {area.left, scrolled.bottom + form.look->gap,
                 bar ? area.right : area.right - kSheetBar, area.bottom};
    PutPage(FitPart(*entry, part, Part::Fixed), part.area.top, foot);
  }
  HideRest(*entry);
  if (!form.sheet) return below;
  platform::Repaint(form.sheet->paper.id);
  return area.bottom;
}

void HideForm(const Form& form) {
  const FormEntry* entry = EntryOf(form);
  if (!entry) return;
  MarkPages(*entry, {});
  HideRest(*entry);
  if (form.sheet) HideSheet(*form.sheet, form);
}

}  // namespace morva
