// Words that are drawn and measured again and again: their widths, and labels as the pixels that
// they were drawn with. Layout and shaping of a text cost many times what its pixels do.

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/canvas.h"
#include "platform/limits.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

// Longer texts are measured and drawn anew each time. Where the tables are full all of it is
// dropped: a picture that needs more costs what it would without them.
constexpr std::size_t kLongestKept = 64;
constexpr std::size_t kLargestKept = 1 << 16;  // device pixels of a label
constexpr std::size_t kMostPixels = 4 << 20;   // of all labels together, 4 bytes each

// Words and all else that their look depends on. `Words` is a view to look one up.
template <typename Words>
struct Look {
  Words words;
  FontRole font = FontRole::Body;
  Colour colour = 0;
  Colour ground = 0;
  int width = 0;  // device pixels
  int height = 0;
  unsigned align = 0;
  int scale = 1;
};
using KeptLook = Look<std::u16string>;
using AskedLook = Look<std::u16string_view>;

struct LookHash {
  using is_transparent = void;
  template <typename Words>
  std::size_t operator()(const Look<Words>& look) const {
    std::size_t hash = std::hash<std::u16string_view>()(look.words);
    const auto mix = [&hash](std::size_t number) { hash = hash * 0x9E3779B97F4A7C15u + number; };
    mix(static_cast<std::size_t>(look.font) * 64 + look.align);
    mix(look.colour);
    mix(look.ground);
    mix(static_cast<std::size_t>(look.width) * 65536 + static_cast<std::size_t>(look.height));
    mix(static_cast<std::size_t>(look.scale));
    return hash ^ (hash >> 32);
  }
};

struct SameLook {
  using is_transparent = void;
  template <typename One, typename Other>
  bool operator()(const Look<One>& a, const Look<Other>& b) const {
    return a.font == b.font && a.colour == b.colour && a.ground == b.ground && a.width == b.width &&
           a.height == b.height && a.align == b.align && a.scale == b.scale &&
           std::u16string_view(a.words) == std::u16string_view(b.words);
  }
};

using Pixels = std::vector<std::uint32_t>;
std::unordered_map<KeptLook, Pixels, LookHash, SameLook> labels;
std::size_t pixelsKept = 0;

Pixels DrawnLabel(const AskedLook& look) {
  Pixels pixels(static_cast<std::size_t>(look.width) * static_cast<std::size_t>(look.height));
  QImage image(reinterpret_cast<uchar*>(pixels.data()), look.width, look.height,
               QImage::Format_RGB32);
  image.setDevicePixelRatio(look.scale);
  QPainter painter(&image);
  Canvas canvas;
  canvas.painter = &painter;
  canvas.area = Rect{0, 0, look.width / look.scale, look.height / look.scale};
  FillArea(canvas, canvas.area, look.ground);
  PaintText(canvas, canvas.area, look.words, look.font, look.colour, look.align);
  return pixels;
}

const Pixels& PixelsOf(const AskedLook& look) {
  const auto found = labels.find(look);
  if (found != labels.end()) return found->second;
  Pixels pixels = DrawnLabel(look);
  pixelsKept += pixels.size();
  const bool tooLarge = pixelsKept > kMostPixels;
  if (tooLarge || labels.size() >= kMaxKeptLabels) {
    labels.clear();
    pixelsKept = pixels.size();
  }
  KeptLook kept{std::u16string(look.words),
                look.font,
                look.colour,
                look.ground,
                look.width,
                look.height,
                look.align,
                look.scale};
  return labels.emplace(std::move(kept), std::move(pixels)).first->second;
}

void CopyPixels(Canvas& canvas, const Pixels& pixels, int left, int top, int width, int height) {
  const Rect clip = DeviceClip(canvas);
  const int first = std::max(left, clip.left);
  const int last = std::min(left + width, clip.right);
  if (first >= last) return;
  for (int y = std::max(top, clip.top); y < std::min(top + height, clip.bottom); ++y) {
    const std::uint32_t* from =
        pixels.data() + static_cast<std::ptrdiff_t>(y - top) * width + (first - left);
    std::copy_n(from, last - first,
                canvas.pixels + static_cast<std::ptrdiff_t>(y) * canvas.stride + first);
  }
}

struct WordsHash {
  using is_transparent = void;
  std::size_t operator()(std::u16string_view words) const {
    return std::hash<std::u16string_view>()(words);
  }
};
using Widths = std::unordered_map<std::u16string, int, WordsHash, std::equal_to<>>;

}  // namespace

const QFontMetrics& MetricsOf(FontRole role) {
  static const QFontMetrics metrics[kFontRoles] = {
      QFontMetrics(FontOf(FontRole::Body)), QFontMetrics(FontOf(FontRole::Emphasis)),
      QFontMetrics(FontOf(FontRole::Small)), QFontMetrics(FontOf(FontRole::Title)),
      QFontMetrics(FontOf(FontRole::Code))};
  return metrics[static_cast<int>(role)];
}

void PaintLabel(Canvas& canvas, const Rect& area, std::u16string_view text, FontRole font,
                Colour colour, Colour ground, unsigned align) {
  const int scale = static_cast<int>(canvas.scale);
  const int width = RectWidth(area) * scale;
  const int height = RectHeight(area) * scale;
  // Between whole scales a label lies on other fractions of a pixel at each place.
  const bool keep =
      canvas.pixels != nullptr && canvas.scale == scale && width > 0 && height > 0 &&
      text.size() <= kLongestKept &&
      static_cast<std::size_t>(width) * static_cast<std::size_t>(height) <= kLargestKept;
  if (!keep) {
    FillArea(canvas, area, ground);
    PaintText(canvas, area, text, font, colour, align);
    return;
  }
  const Pixels& pixels = PixelsOf({text, font, colour, ground, width, height, align, scale});
  CopyPixels(canvas, pixels, area.left * scale, area.top * scale, width, height);
}

int TextWidth(FontRole font, std::u16string_view text) {
  const auto measure = [font, text] { return MetricsOf(font).horizontalAdvance(Text(text)); };
  if (text.size() > kLongestKept) return measure();
  static Widths kept[kFontRoles];
  Widths& widths = kept[static_cast<int>(font)];
  const auto found = widths.find(text);
  if (found != widths.end()) return found->second;
  if (widths.size() >= kMaxKeptWidths) widths.clear();
  return widths.emplace(std::u16string(text), measure()).first->second;
}

int TextHeight(FontRole font) {
  static const int heights[kFontRoles] = {
      MetricsOf(FontRole::Body).height(), MetricsOf(FontRole::Emphasis).height(),
      MetricsOf(FontRole::Small).height(), MetricsOf(FontRole::Title).height(),
      MetricsOf(FontRole::Code).height()};
  return heights[static_cast<int>(font)];
}

}  // namespace platform
