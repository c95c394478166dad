// A second interpreter of program text, slow and plain, to hold the fast one against.
//
// It shares nothing with the program but the decimal parser: lines are cut out first, words
// are copied out with their numbers, points are kept in a growing list. No feature filter.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/codetext.h"

namespace reference {

struct Point {
  double x, y, z;
  bool rapid;
  std::int32_t sourceLine;
  bool jump;
  std::int32_t tool;
};

struct Path {
  std::vector<Point> points;
  std::int32_t fullAtLine = -1;
};

struct Word {
  char16_t letter;
  double value;
};

// CR, LF and CR LF end a line; NUL ends the text; a final empty piece is no line.
inline std::vector<std::u16string> Lines(std::u16string_view all) {
  const std::u16string text(all.substr(0, all.find(u'\0')));
  std::vector<std::u16string> lines(1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r') {
      if (i + 1 < text.size() && text[i + 1] == u'\n') ++i;
      lines.emplace_back();
    } else if (text[i] == u'\n') {
      lines.emplace_back();
    } else {
      lines.back() += text[i];
    }
  }
  if (lines.back().empty()) lines.pop_back();
  return lines;
}

inline std::vector<Word> Words(const std::u16string& line) {
  std::vector<Word> words;
  bool comment = false;
  std::size_t i = 0;
  while (i < line.size()) {
    const char16_t c = morva::FoldUpper(line[i]);
    ++i;
    if (c == u')') {
      comment = false;
    } else if (c == u'(') {
      comment = true;
    } else if (comment) {
      continue;
    } else if (c == u';') {
      break;
    } else if (c >= u'A' && c <= u'Z') {
      std::u16string number;
      if (i < line.size() && (line[i] == u'+' || line[i] == u'-')) number += line[i++];
      while (i < line.size() && number.size() < 62 &&
             ((line[i] >= u'0' && line[i] <= u'9') || line[i] == u'.')) {
        number += line[i++];
      }
      if (!number.empty()) words.push_back({c, morva::ParseDecimal(number, 0.0)});
    }
  }
  return words;
}

class Interpreter {
 public:
  Path Run(std::u16string_view text, bool metric) {
    displayMetric_ = programMetric_ = metric;
    Add(0, 0, 0, true);
    for (const std::u16string& line : Lines(text)) {
      RunLine(Words(line));
      ++line_;
    }
    return path_;
  }

 private:
  static constexpr std::size_t kTable = 32768;

  struct Axis {
    bool present = false;
    double value = 0;
  };

  void Add(double x, double y, double z, bool rapid) {
    std::vector<Point>& points = path_.points;
    if (points.size() >= kTable) {
      if (path_.fullAtLine < 0) path_.fullAtLine = line_;
      return;
    }
    if (!points.empty()) {
      const Point& last = points.back();
      const bool same = !(std::fabs(x - last.x) > 1e-6) && !(std::fabs(y - last.y) > 1e-6) &&
                        !(std::fabs(z - last.z) > 1e-6);
      if (same) return;
    }
    points.push_back({x, y, z, rapid, line_, jump_, tool_});
    jump_ = false;
  }

  void Arrive(double x, double y, double z) {
    jump_ = true;
    Add(x, y, z, false);
  }

  void TakeG(double g, bool& still) {
    if (g == 0 || g == 1 || g == 2 || g == 3) {
      motion_ = static_cast<int>(g);
    } else if (g == 90) {
      absolute_ = true;
    } else if (g == 91) {
      absolute_ = false;
    } else if (g == 20) {
      programMetric_ = false;
    } else if (g == 21) {
      programMetric_ = true;
    } else if (g == 17 || g == 18 || g == 19) {
      plane_ = static_cast<int>(g);
    } else if (g == 4 || g == 10 || g == 28 || g == 30 || g == 53 || g == 92) {
      still = true;
    } else if (g >= 81 && g <= 89) {
      motion_ = static_cast<int>(g);
    } else if (g == 80) {
      motion_ = 0;
    }
  }

  double Scale() const {
    if (programMetric_ == displayMetric_) return 1.0;
    return displayMetric_ ? 25.4 : 0.03937007874015748;
  }

  void RunLine(const std::vector<Word>& words) {
    Axis x, y, z, i, j, r;
    bool still = false;
    for (const Word& word : words) {
      switch (word.letter) {
        case u'X':
          x = {true, word.value};
          break;
        case u'Y':
          y = {true, word.value};
          break;
        case u'Z':
          z = {true, word.value};
          break;
        case u'I':
          i = {true, word.value};
          break;
        case u'J':
          j = {true, word.value};
          break;
        case u'R':
          r = {true, word.value};
          break;
        case u'T':
          if (word.value >= 2147483647.0) {
            tool_ = 2147483647;
          } else if (word.value <= -2147483648.0) {
            tool_ = -2147483647 - 1;
          } else {
            tool_ = static_cast<std::int32_t>(word.value);
          }
          break;
        case u'G':
          TakeG(word.value, still);
          break;
        default:
          break;
      }
    }
    const double scale = Scale();
    const double tx = Target(x, x_, scale);
    const double ty = Target(y, y_, scale);
    const double tz = Target(z, z_, scale);
    const bool axis = x.present || y.present || z.present;
    if (still) {
      jump_ = true;
      return;
    }
    if ((motion_ == 2 || motion_ == 3) && plane_ == 17 && (i.present || j.present) && !r.present) {
      Arc(tx, ty, tz, i.present ? i.value * scale : 0.0, j.present ? j.value * scale : 0.0);
    } else if ((motion_ == 2 || motion_ == 3) && axis) {
      Arrive(tx, ty, tz);
    } else if (motion_ >= 81 && motion_ <= 89 && axis) {
      Arrive(tx, ty, tz);
    } else if ((motion_ == 0 || motion_ == 1) && axis) {
      Add(tx, ty, tz, motion_ == 0);
    }
    x_ = tx;
    y_ = ty;
    z_ = tz;
  }

  double Target(const Axis& axis, double position, double scale) const {
    if (!axis.present) return position;
    return absolute_ ? axis.value * scale : position + axis.value * scale;
  }

  void Arc(double tx, double ty, double tz, double i, double j) {
    const double cx = x_ + i;
    const double cy = y_ + j;
    const double rStart = std::hypot(x_ - cx, y_ - cy);
    const double rEnd = std::hypot(tx - cx, ty - cy);
    if (!(rStart > 0) || std::fabs(rStart - rEnd) >= rStart * 0.001 + 0.0001) {
      Arrive(tx, ty, tz);
      return;
    }
    const double turn = 2 * std::acos(-1.0);
    const double start = std::atan2(y_ - cy, x_ - cx);
    double sweep = std::atan2(ty - cy, tx - cx) - start;
    if (motion_ == 2) {
      while (sweep >= -1e-10) sweep -= turn;
    } else {
      while (sweep <= 1e-10) sweep += turn;
    }
    const int n = static_cast<int>(std::trunc(std::fabs(sweep) / 0.0174532925199433)) + 1;
    const double z0 = z_;
    for (int k = 1; k <= n; ++k) {
      const double angle = start + sweep * k / n;
      if (k == n) {
        Add(tx, ty, tz, false);
      } else {
        Add(cx + rStart * std::cos(angle), cy + rStart * std::sin(angle), z0 + (tz - z0) * k / n,
            false);
      }
    }
  }

  Path path_;
  bool displayMetric_ = false;
  bool programMetric_ = false;
  bool absolute_ = true;
  bool jump_ = false;
  int motion_ = 0;
  int plane_ = 17;
  std::int32_t tool_ = 0;
  std::int32_t line_ = 0;
  double x_ = 0, y_ = 0, z_ = 0;
};

inline Path Interpret(std::u16string_view text, bool metric) {
  return Interpreter().Run(text, metric);
}

}  // namespace reference
