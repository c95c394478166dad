// The icons of the package are the window's own. With MORVA_ICONS=folder they are written there.

#include <gtest/gtest.h>

#include <QIcon>
#include <QImage>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "app/palette.h"
#include "platform/window.h"
#include "shell/icons.h"
#include "shell/theme.h"
#include "support/places.h"
#include "widgets/stand.h"

using namespace morva;

namespace {

constexpr int kSizes[] = {16, 24, 32, 48, 64, 128, 256};
constexpr int kDrawingSize = 128;

QImage IconOfWindow(int size) {
  stand::Open();
  platform::SetWindowIcon(PaintWindowIcon);
  return platform::WidgetOf(platform::kMainWindow)->window()->windowIcon().pixmap(size).toImage();
}

std::string Folder() { return std::string(support::SourceDir()) + "/packaging/icons/"; }

// How many pixels are another colour for the eye.
int Different(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return -1;
  int count = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QColor one = a.pixelColor(x, y);
      const QColor other = b.pixelColor(x, y);
      const int most =
          std::max({std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                    std::abs(one.blue() - other.blue()), std::abs(one.alpha() - other.alpha())});
      count += most > 24;
    }
  }
  return count;
}

std::string Hex(platform::Colour colour) {
  char text[8];
  std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(colour));
  return text;
}

// The outlines and lines of the mark, as the paths of a drawing.
std::string PathsOfMark() {
  std::istringstream parts(IconDrawing(kIconMark));
  std::string paths;
  std::string word;
  std::string end;
  while (parts >> word) {
    if (word == "c" || word == "l") {
      paths += end;
      end = word == "c" ? "z\"/>\n" : "\"/>\n";
      paths += "    <path d=\"M";
      continue;
    }
    if (paths.back() != 'M') paths += ' ';
    std::string y;
    parts >> y;
    paths += word + "," + y;
  }
  return paths + end;
}

// The same places and widths as PaintWindowIcon at 128 pixels.
std::string Drawing() {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!-- The mark of the program's windows; a test of the widgets writes it. -->\n"
         "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"128\" height=\"128\" "
         "viewBox=\"0 0 128 128\">\n"
         "  <linearGradient id=\"panel\" x2=\"0\" y2=\"1\">\n"
         "    <stop stop-color=\"" +
         Hex(kPlainOnTop) + "\"/>\n    <stop offset=\"1\" stop-color=\"" + Hex(kPlainOnBottom) +
         "\"/>\n  </linearGradient>\n"
         "  <rect width=\"128\" height=\"128\" fill=\"url(#panel)\"/>\n"
         "  <rect x=\"0.5\" y=\"0.5\" width=\"127\" height=\"127\" fill=\"none\" stroke=\"" +
         Hex(kAccent) +
         "\"/>\n"
         "  <g transform=\"translate(15 15) scale(4.08333)\" fill=\"none\" stroke=\"" +
         Hex(kBrightAccent) +
         "\" stroke-width=\"1.46939\"\n"
         "     stroke-linecap=\"round\" stroke-linejoin=\"round\">\n" +
         PathsOfMark() + "  </g>\n</svg>\n";
}

TEST(PackageIcon, IsThatOfTheWindowAtEachSize) {
  const char* const into = std::getenv("MORVA_ICONS");
  for (const int size : kSizes) {
    const QImage drawn = IconOfWindow(size);
    ASSERT_EQ(drawn.size(), QSize(size, size));
    const QString name = QStringLiteral("%1.png").arg(size);
    if (into) drawn.save(QString::fromLocal8Bit(into) + QLatin1Char('/') + name);
    const QImage packed(QString::fromStdString(Folder()) + name);
    EXPECT_EQ(Different(drawn, packed), 0) << size;
  }
}

TEST(PackageIcon, IsThatOfTheWindowAsADrawing) {
  const char* const into = std::getenv("MORVA_ICONS");
  if (into) std::ofstream(std::string(into) + "/morva.svg") << Drawing();
  std::ostringstream packed;
  packed << std::ifstream(Folder() + "morva.svg").rdbuf();
  EXPECT_EQ(packed.str(), Drawing());
}

}  // namespace
