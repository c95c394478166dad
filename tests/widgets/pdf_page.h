// What a PDF file draws on its first page, read from its own operators: paths in points, 72 to an
// inch, Y up from the page's lower left corner. Enough of the format for what the toolkit writes.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace pdf {

struct Point {
  double x = 0;
  double y = 0;
};

// A piece of a path between two moves, as it is stroked.
struct Path {
  std::vector<Point> points;  // corners, and of curves their ends
  bool curved = false;
  double pen = 0;  // points
};

struct Page {
  double width = 0;  // points
  double height = 0;
  std::vector<Path> strokes;
  int texts = 0;  // strings that are shown
};

// False: the file is none, is not whole, or says something that is not understood here.
bool ReadFirstPage(const QString& file, Page& page);
// How many pages the file says it has.
int PageCount(const QString& file);

}  // namespace pdf
