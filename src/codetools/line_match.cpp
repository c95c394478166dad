#include "codetools/line_match.h"

#include <algorithm>

namespace morva {

namespace {

using std::size_t;
using Lines = std::vector<std::u16string_view>;

constexpr int kMostDifferences = 200;  // lines taken out and put in, together

// The part of two lists between their equal fronts and backs.
struct Middle {
  const Lines& before;
  const Lines& after;
  size_t front = 0;
  int beforeCount = 0;
  int afterCount = 0;
  bool Same(int b, int a) const {
    return before[front + static_cast<size_t>(b)] == after[front + static_cast<size_t>(a)];
  }
};

// How far each diagonal comes with so many differences, in lines of `before`; -1: not at all.
// A diagonal is the lines of `before` less those of `after` that lie behind.
struct Reach {
  std::vector<int> of;
  int span = 0;  // diagonals from -span to span
  explicit Reach(int differences)
      : of(2 * static_cast<size_t>(differences) + 1, -1), span(differences) {}
  int At(int diagonal) const {
    return diagonal < -span || diagonal > span ? -1 : of[static_cast<size_t>(diagonal + span)];
  }
  void Set(int diagonal, int reached) { of[static_cast<size_t>(diagonal + span)] = reached; }
};

// Where a diagonal begins with one difference more; `from` is the diagonal that it comes from.
int NextStart(const Reach& last, int diagonal, const Middle& middle, int& from) {
  int taken = last.At(diagonal - 1);  // a line of `before` taken out
  taken = taken >= 0 && taken < middle.beforeCount ? taken + 1 : -1;
  int put = last.At(diagonal + 1);  // a line of `after` put in
  if (put >= 0 && put - diagonal > middle.afterCount) put = -1;
  from = taken > put ? diagonal - 1 : diagonal + 1;
  return std::max(taken, put);
}

int Follow(int reached, int diagonal, const Middle& middle) {
  while (reached < middle.beforeCount && reached - diagonal < middle.afterCount &&
         middle.Same(reached, reached - diagonal)) {
    ++reached;
  }
  return reached;
}

// What each number of differences reaches, up to the one that reaches the end of both lists.
// Empty: there are too many.
std::vector<Reach> FindWay(const Middle& middle) {
  const int last = middle.beforeCount - middle.afterCount;
  std::vector<Reach> way;
  way.emplace_back(0);
  way[0].Set(0, Follow(0, 0, middle));
  while (way.back().At(last) < middle.beforeCount) {
    const int differences = static_cast<int>(way.size());
    if (differences > kMostDifferences) return {};
    Reach next(differences);
    for (int diagonal = -differences; diagonal <= differences; diagonal += 2) {
      int from = 0;
      const int start = NextStart(way.back(), diagonal, middle, from);
      if (start >= 0) next.Set(diagonal, Follow(start, diagonal, middle));
    }
    way.push_back(std::move(next));
  }
  return way;
}

void MatchMiddle(const Middle& middle, std::vector<size_t>& matches) {
  std::vector<Reach> way = FindWay(middle);
  int diagonal = middle.beforeCount - middle.afterCount;
  while (!way.empty()) {
    const int end = way.back().At(diagonal);
    way.pop_back();
    int from = diagonal;
    const int start = way.empty() ? 0 : NextStart(way.back(), diagonal, middle, from);
    for (int line = start; line < end; ++line) {
      matches[middle.front + static_cast<size_t>(line - diagonal)] =
          middle.front + static_cast<size_t>(line);
    }
    diagonal = from;
  }
}

}  // namespace

std::vector<size_t> MatchLines(const Lines& before, const Lines& after) {
  std::vector<size_t> matches(after.size(), kNoLine);
  const size_t least = std::min(before.size(), after.size());
  size_t front = 0;
  while (front < least && before[front] == after[front]) ++front;
  size_t back = 0;
  while (back < least - front && before[before.size() - 1 - back] == after[after.size() - 1 - back])
    ++back;
  for (size_t i = 0; i < front; ++i) matches[i] = i;
  for (size_t i = 0; i < back; ++i) matches[after.size() - 1 - i] = before.size() - 1 - i;
  const Middle middle{before, after, front, static_cast<int>(before.size() - front - back),
                      static_cast<int>(after.size() - front - back)};
  if (middle.beforeCount > 0 && middle.afterCount > 0) MatchMiddle(middle, matches);
  return matches;
}

}  // namespace morva
