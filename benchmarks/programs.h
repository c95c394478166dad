// Programs that the benchmarks of the whole workbench open.
#pragma once

#include <cstdio>
#include <string>

namespace programs {

// About 27 bytes a line.
inline std::string Lines(int lines) {
  std::string text;
  text.reserve(static_cast<std::size_t>(lines) * 28);
  text += "%\r\nO01000\r\nG20 G90 G17 G40 G49 G80\r\n";
  char line[64];
  for (int i = 3; i < lines - 2; ++i) {
    std::snprintf(line, sizeof line, "N%d G01 X%d.%04d Y-%d.5\r\n", 10000 + i % 90000, i % 97,
                  i % 9973, i % 9);
    text += line;
  }
  return text + "M30\r\n%\r\n";
}

// Strokes from far left to far right and back, so close that all of them cross every view.
inline std::string Strokes(int lines) {
  std::string text = "G20 G90 G17\r\nG00 X-50 Y0\r\n";
  char line[64];
  for (int i = 0; i < lines; ++i) {
    std::snprintf(line, sizeof line, "G01 X%s50. Y%.4f\r\n", i % 2 ? "-" : "",
                  i * 2.0 / lines - 1.0);
    text += line;
  }
  return text;
}

// Pockets cleared level by level in short steps of a spiral.
inline std::string Pockets(int points) {
  std::string text = "G20 G90 G17\r\n";
  char line[96];
  double x = 0;
  double y = 0;
  for (int i = 0; i < points; ++i) {
    const int pocket = i / 2048;
    const int step = i % 2048;
    // A turn by a fixed angle without a library's sine: the rotation of (x, y).
    if (step == 0) {
      x = 0.05;
      y = 0;
    } else {
      const double turned = x * 0.996919 - y * 0.078440;
      y = (x * 0.078440 + y * 0.996919) * 1.0012;
      x = turned * 1.0012;
    }
    std::snprintf(line, sizeof line, "%s X%.4f Y%.4f Z%.2f\r\n", step == 0 ? "G00" : "G01",
                  pocket % 4 * 1.5 + x, pocket / 4 % 2 * 1.5 + y, -0.1 * (1 + pocket / 8));
    text += line;
  }
  return text;
}

}  // namespace programs
