#include "shell/owner_draw.h"

#include <string>
#include <string_view>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/mode_table.h"
#include "app/palette.h"
#include "documents/document_commands.h"
#include "documents/feature_blocks.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "shell/icons.h"
#include "shell/keys.h"
#include "shell/modes.h"
#include "shell/theme.h"
#include "simulator/line_highlight.h"

namespace morva {

using platform::Canvas;
using platform::Colour;
using platform::DrawState;
using platform::FontRole;
using platform::Pen;
using platform::Rect;

namespace {

constexpr int kKeyIcon = 16;
constexpr int kFaceIcon = 20;
constexpr int kTallKey = 40;  // pixels from which on an icon stands over the words
constexpr int kTallIcon = 18;
constexpr int kIconClear = 3;          // pixels from an icon to the edge of its key
constexpr char16_t kOnly[] = u"ONLY";  // of the feature that is simulated alone
constexpr int kOnlyGap = 6;
constexpr int kModeRowLeast = 200;  // pixels for the longest row in the body font
constexpr int kNameLeast = 48;      // for a feature name before marks

Rect Shrunk(const Rect& r, int by) {
  return Rect{r.left + by, r.top + by, r.right - by, r.bottom - by};
}

Pen EdgeOf(const KeyLook& key, const DrawState& state, bool on) {
  Pen edge;
  edge.colour = kQuietKeyLine;
  if (!state.enabled) return edge;
  edge.colour = kControlLine;
  if (key.style == kPanelGreen) edge.colour = kGreenLine;
  if (key.style == kPanelAmber) edge.colour = kAmberLine;
  if (on && key.style == kPanelPlain) edge.colour = kAccent;
  if (state.hovered || state.pressed) edge.colour = kBrightAccent;
  // The green and amber grounds do not change under the finger; the edge does.
  if (state.pressed) edge.width = 2;
  return edge;
}

void DrawKeyGround(const KeyLook& key, const DrawState& state, bool on, Canvas& canvas) {
  const Rect& area = state.area;
  DrawPanel(canvas, area, state.enabled && (state.pressed || on),
            state.enabled ? key.style : kPanelPlain);
  FrameArea(canvas, area, EdgeOf(key, state, on));
  if (on && state.enabled) {
    FillArea(canvas, Rect{area.left + 1, area.bottom - 3, area.right - 1, area.bottom - 1},
             kBrightAccent);
  }
  if (state.focused) DrawFocusMark(canvas, area);
}

int IconOf(int id) {
  const Command* row = CommandOf(id);
  if (!row) return kNoIcon;
  return row->iconOn != kNoIcon && IsOn(id) ? row->iconOn : row->icon;
}

int CentreX(const Rect& r) { return (r.left + r.right) / 2; }
int CentreY(const Rect& r) { return (r.top + r.bottom) / 2; }

// Icon and caption as one centred group; the icon alone where the caption does not fit, so
// that a narrow panel cuts no word.
void DrawIconCaption(const KeyLook& key, const Rect& area, std::u16string text, Colour colour,
                     Canvas& canvas) {
  const int gap = 5;
  const int room = RectWidth(area) - 8;
  int words = platform::TextWidth(key.font, text);
  // Of what a key says about a state the state alone, where there is no room for more.
  if (const std::size_t state = text.find(u": "); words > room && state != text.npos) {
    text.erase(0, state + 2);
    words = platform::TextWidth(key.font, text);
  }
  if (words > room) {
    DrawIcon(canvas, IconOf(key.id), CentreX(area), CentreY(area), kKeyIcon, colour);
    return;
  }
  int x = area.left + (RectWidth(area) - words) / 2;
  if (kKeyIcon + gap + words + 4 <= room) {
    // The icons of a column of keys stand under each other.
    x = area.left + 9;
    DrawIcon(canvas, IconOf(key.id), x + kKeyIcon / 2, CentreY(area), kKeyIcon, colour);
    x += kKeyIcon + gap;
  }
  PaintText(canvas, Rect{x, area.top, area.right - 2, area.bottom}, text, key.font, colour,
            platform::kAlignLeft | platform::kAlignMiddle);
}

// In a key tall enough the icon stands over the words.
void DrawIconOverWords(const KeyLook& key, const Rect& area, const std::u16string& text,
                       Colour colour, Canvas& canvas) {
  const int height = kTallIcon + platform::TextHeight(key.font);
  const int top = (area.top + area.bottom - height) / 2;
  DrawIcon(canvas, IconOf(key.id), CentreX(area), top + kTallIcon / 2, kTallIcon, colour);
  PaintText(canvas, Rect{area.left + 2, top + kTallIcon, area.right - 2, area.bottom}, text,
            key.font, colour, platform::kAlignCentre | platform::kAlignTop);
}

bool StartsWith(const std::u16string& text, std::size_t at, std::u16string_view piece) {
  return text.compare(at, piece.size(), piece) == 0;
}

// A tab's caption cut in the middle of its title: names of one job differ at their ends, and
// the marks before and behind the title always stay in sight.
std::u16string FittedTabCaption(const std::u16string& text, FontRole font, int room) {
  if (platform::TextWidth(font, text) <= room) return text;
  std::size_t head = 0;
  if (StartsWith(text, head, u"> ")) head += 2;
  if (StartsWith(text, head, u"[C] ")) head += 4;
  const bool dirty = text.size() >= head + 2 && StartsWith(text, text.size() - 2, u" *");
  const std::size_t end = text.size() - (dirty ? 2 : 0);
  std::u16string fitted = text;
  for (std::size_t keep = end - head; keep > 1;) {
    --keep;
    const std::size_t back = keep / 2;
    fitted = text.substr(0, head + keep - back) + u'\u2026' + text.substr(end - back);
    if (platform::TextWidth(font, fitted) <= room) break;
  }
  return fitted;
}

// The words, and behind a thin line the arrow of the menu.
void DrawWithArrow(const KeyLook& key, const Rect& area, const std::u16string& text, Colour colour,
                   Canvas& canvas) {
  const int split = area.right - kOpenArrowWidth;
  PaintText(canvas, Rect{area.left + 2, area.top, split, area.bottom}, text, key.font, colour,
            platform::kAlignCentre | platform::kAlignMiddle | platform::kTextEllipsis);
  FillArea(canvas, Rect{split, area.top + 6, split + 1, area.bottom - 6}, kPanelLine);
  PaintText(canvas, Rect{split + 1, area.top, area.right, area.bottom}, u"\u25BE", key.font, colour,
            platform::kAlignCentre | platform::kAlignMiddle);
}

void DrawKey(const KeyLook& key, const DrawState& state, Canvas& canvas) {
  const bool on = HasState(key.id) ? IsOn(key.id) : state.checked;
  DrawKeyGround(key, state, on, canvas);
  Colour colour = kDimText;
  if (state.enabled) colour = on ? kBrightAccent : kMainText;
  const Rect& area = state.area;
  if (key.face == Face::Icon) {
    // In a key of a narrow bar the icon keeps clear of the edge.
    const int size = std::min(kFaceIcon, RectWidth(area) - 2 * kIconClear);
    DrawIcon(canvas, IconOf(key.id), CentreX(area), CentreY(area), size, colour);
    return;
  }
  const std::u16string text = platform::TextOf(key.id);
  if (key.face == Face::IconAndWords && RectHeight(area) >= kTallKey) {
    DrawIconOverWords(key, area, text, colour, canvas);
    return;
  }
  if (key.face == Face::IconAndWords) {
    DrawIconCaption(key, area, text, colour, canvas);
    return;
  }
  if (key.face == Face::Arrow) return DrawWithArrow(key, area, text, colour, canvas);
  const bool tab = key.face == Face::Tab;
  const Rect place =
      tab ? Rect{area.left + 9, area.top, area.right - 7, area.bottom} : Shrunk(area, 2);
  const Command* row = CommandOf(key.id);
  const bool cutInside = row && row->cutInside;
  PaintText(canvas, place, cutInside ? FittedTabCaption(text, key.font, RectWidth(place)) : text,
            key.font, colour,
            (tab ? platform::kAlignLeft : platform::kAlignCentre) | platform::kAlignMiddle |
                platform::kTextEllipsis);
}

// Draws keys that have no row in the table of keys, with the icon of their command.
void DrawPlainKey(int id, const DrawState& state, Canvas& canvas) {
  const std::u16string text = platform::TextOf(id);
  const Face face = IconOf(id) == kNoIcon ? Face::Words : Face::IconAndWords;
  const bool fits = platform::TextWidth(FontRole::Body, text) <= RectWidth(state.area) - 4;
  const FontRole font = fits && face == Face::Words ? FontRole::Body : FontRole::Small;
  const KeyLook key{id, font, kPanelPlain, face};
  DrawKey(key, state, canvas);
}

void DrawRowGround(const DrawState& state, bool selected, Canvas& canvas) {
  FillArea(canvas, state.area, kInputBackground);
  if (!selected) return;
  DrawPanel(canvas, state.area, true, kPanelPlain);
  FillArea(canvas, Rect{state.area.left, state.area.top, state.area.left + 3, state.area.bottom},
           kBrightAccent);
}

void DrawModeRow(const DrawState& state, Canvas& canvas) {
  DrawRowGround(state, state.selected, canvas);
  const Rect& area = state.area;
  const int mode = static_cast<int>(platform::RowData(kIdModeList, state.row));
  const Colour colour = ModeExists(mode) ? kMainText : kDimText;
  DrawIcon(canvas, ModeOf(mode).icon, area.left + 26, CentreY(area), 23, colour);
  const std::u16string words = platform::RowText(kIdModeList, state.row);
  const Rect place{area.left + 63, area.top, area.right - 3, area.bottom};
  // A panel dragged narrow shows all rows in the smaller font rather than cut.
  const bool fits = RectWidth(area) >= kModeRowLeast;
  PaintText(canvas, place, words, fits ? FontRole::Body : FontRole::Small, colour,
            platform::kAlignLeft | platform::kAlignMiddle | platform::kTextEllipsis);
  if (state.focused && state.selected) DrawFocusMark(canvas, area);
}

struct FeatureRowState {
  bool played = false;
  bool excluded = false;
  bool hasCode = false;  // though it is excluded
  bool hidden = false;
  bool locked = false;
  bool isolated = false;  // the only one that is simulated
};

// Exclusion is what the last refresh noted: between a change of the text and the next refresh
// the positions of the feature table may lie outside the text.
FeatureRowState FeatureStateOf(int listRow) {
  const auto id = static_cast<std::int32_t>(platform::RowData(kIdFeatureList, listRow));
  FeatureRowState row;
  row.played = id != 0 && id == HighlightedFeature();
  row.excluded = FeatureRowExcluded(listRow);
  row.hasCode = FeatureRowHasLiveCode(listRow);
  if (const ProgramTab* tab = ActiveTab()) {
    row.hidden = IdListHolds(tab->hiddenIds, id);
    row.locked = IdListHolds(tab->lockedIds, id);
    row.isolated = id != 0 && id == tab->isolatedId;
  }
  return row;
}

struct RowWords {
  std::u16string text;
  FontRole font = FontRole::Body;
};

// Cut by as many units as need be, with an ellipsis.
std::u16string Elided(std::u16string text, FontRole font, int width) {
  if (platform::TextWidth(font, text) <= width) return text;
  while (!text.empty() && platform::TextWidth(font, text + u"\u2026") > width) text.pop_back();
  while (!text.empty() && text.back() == u' ') text.pop_back();
  return text + u"\u2026";
}

// What a feature's row shows of its text in `width`: in a smaller font where it does not fit, then
// with the name cut rather than the marks behind it. The icons tell the same as the marks; where
// both do not fit the name stands.
RowWords FeatureWords(const std::u16string& text, bool marked, int width) {
  if (platform::TextWidth(FontRole::Body, text) <= width) return {text, FontRole::Body};
  if (!marked) return {text, FontRole::Body};
  if (platform::TextWidth(FontRole::Small, text) <= width) return {text, FontRole::Small};
  std::size_t marks = text.size();
  for (const std::u16string_view mark : {kLockedMark, kHiddenMark, kHasCodeMark}) {
    const std::u16string_view before = std::u16string_view(text).substr(0, marks);
    if (before.ends_with(mark)) marks -= mark.size();
  }
  const int room = width - platform::TextWidth(FontRole::Small, text.substr(marks));
  if (room < kNameLeast)
    return {Elided(text.substr(0, marks), FontRole::Small, width), FontRole::Small};
  return {Elided(text.substr(0, marks), FontRole::Small, room) + text.substr(marks),
          FontRole::Small};
}

void DrawFeatureRow(const DrawState& state, Canvas& canvas) {
  const Rect& area = state.area;
  const FeatureRowState row = FeatureStateOf(state.row);
  DrawRowGround(state, state.selected || row.played, canvas);
  Colour text = kMainText;
  // What the control gets is not dim.
  if (row.excluded && !row.hasCode) text = kDimText;
  if (row.played) text = kBrightAccent;
  Rect place{area.left + 10, area.top, area.right - 66, area.bottom};
  if (row.isolated) {
    Rect mark = place;
    mark.left = mark.right - platform::TextWidth(FontRole::Small, kOnly);
    PaintText(canvas, mark, kOnly, FontRole::Small, kBrightAccent,
              platform::kAlignRight | platform::kAlignMiddle);
    place.right = mark.left - kOnlyGap;
  }
  const RowWords words = FeatureWords(platform::RowText(kIdFeatureList, state.row),
                                      row.hasCode || row.hidden || row.locked, RectWidth(place));
  PaintText(canvas, place, words.text, words.font, text,
            platform::kAlignLeft | platform::kAlignMiddle | platform::kTextEllipsis);
  const int y = CentreY(area);
  const int eye = area.right - 49;
  DrawIcon(canvas, kIconEye, eye, y, 18, row.hidden ? kDimText : kMainText);
  if (row.hidden) {
    Pen slash;
    slash.colour = kDimText;
    slash.width = 2;
    slash.smooth = true;
    PaintLine(canvas, {eye - 8.0, y + 7.0}, {eye + 8.0, y - 7.0}, slash);
  }
  DrawIcon(canvas, kIconLock, area.right - 20, y, 18, row.locked ? kBrightAccent : kDimText);
  if (state.focused && state.selected) DrawFocusMark(canvas, area);
}

}  // namespace

void DrawFocusMark(Canvas& canvas, const Rect& area) {
  Pen pen;
  pen.colour = kBrightAccent;
  pen.width = 2;
  FrameArea(canvas, Shrunk(area, 2), pen);
}

void DrawListRow(const DrawState& state, int left, std::u16string_view text, Colour colour,
                 Canvas& canvas) {
  const Rect& area = state.area;
  DrawRowGround(state, state.selected, canvas);
  PaintText(canvas, Rect{area.left + left, area.top, area.right - 6, area.bottom}, text,
            FontRole::Body, colour,
            platform::kAlignLeft | platform::kAlignMiddle | platform::kTextEllipsis);
  if (state.focused && state.selected) DrawFocusMark(canvas, area);
}

void DrawOwnerItem(int id, const DrawState& state, Canvas& canvas) {
  if (state.row >= 0) {
    if (id == kIdModeList) return DrawModeRow(state, canvas);
    if (id == kIdFeatureList) return DrawFeatureRow(state, canvas);
    DrawListRow(state, 10, platform::RowText(id, state.row), kMainText, canvas);
    return;
  }
  const KeyLook key = KeyOf(id);
  if (key.id != 0) return DrawKey(key, state, canvas);
  DrawPlainKey(id, state, canvas);
}

}  // namespace morva
