#include "pictures/small_picture.h"

#include <QColor>
#include <algorithm>
#include <map>
#include <vector>

namespace pictures {

namespace {

constexpr std::size_t kColours = 256;
// Colours closer than this, by the sum of squares of their parts, look alike.
constexpr int kAlike = 60;

int Distance(QRgb a, QRgb b) {
  const int red = qRed(a) - qRed(b);
  const int green = qGreen(a) - qGreen(b);
  const int blue = qBlue(a) - qBlue(b);
  return red * red + green * green + blue * blue;
}

std::size_t NearestOf(const std::vector<QRgb>& table, QRgb colour) {
  const auto nearest = std::min_element(table.begin(), table.end(), [colour](QRgb a, QRgb b) {
    return Distance(a, colour) < Distance(b, colour);
  });
  return static_cast<std::size_t>(nearest - table.begin());
}

// The most frequent first, and none that looks like one before it while there is room for others.
std::vector<QRgb> TableOf(const std::map<QRgb, int>& counts) {
  std::vector<std::pair<int, QRgb>> order;
  for (const auto& [colour, count] : counts) order.emplace_back(-count, colour);
  std::sort(order.begin(), order.end());
  std::vector<QRgb> table;
  for (const int alike : {kAlike, 0}) {
    for (const auto& [count, colour] : order) {
      if (table.size() == kColours) return table;
      if (table.empty() || Distance(table[NearestOf(table, colour)], colour) > alike) {
        table.push_back(colour);
      }
    }
  }
  return table;
}

}  // namespace

QImage WithFewColours(const QImage& picture) {
  const QImage full = picture.convertToFormat(QImage::Format_RGB32);
  std::map<QRgb, int> places;
  for (int y = 0; y < full.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(full.constScanLine(y));
    for (int x = 0; x < full.width(); ++x) ++places[line[x] | 0xFF000000U];
  }
  const std::vector<QRgb> table = TableOf(places);
  for (auto& [colour, place] : places) place = static_cast<int>(NearestOf(table, colour));
  QImage few(full.size(), QImage::Format_Indexed8);
  few.setColorTable(QList<QRgb>(table.begin(), table.end()));
  for (int y = 0; y < full.height(); ++y) {
    const auto* from = reinterpret_cast<const QRgb*>(full.constScanLine(y));
    uchar* to = few.scanLine(y);
    for (int x = 0; x < full.width(); ++x) {
      to[x] = static_cast<uchar>(places[from[x] | 0xFF000000U]);
    }
  }
  return few;
}

bool Save(const QImage& picture, const QString& file) {
  QImage few = WithFewColours(picture);
  few.setDotsPerMeterX(0);
  few.setDotsPerMeterY(0);
  return few.save(file, "PNG", 0);  // 0 packs hardest
}

}  // namespace pictures
