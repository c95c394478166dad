// The table that stands at the end of ./bench: what is to be reached, the figure, its peer.
//
// A benchmark notes a row once a repetition; when its program ends the medians are printed
// and, where MORVA_BENCH_TABLE names a file, added to it.
#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace targets {

// What a row must reach. A bound of 0 asks for nothing; a row without any only tells its figure.
struct Goal {
  const char* subject = "";
  const char* unit = "ms";
  double least = 0;      // of the figure
  double most = 0;       // of the figure
  double mostRatio = 0;  // of figure to peer
  const char* peer = "";
};

struct Row {
  Goal goal;
  std::vector<double> figures;
  std::vector<double> peers;
};

inline std::vector<Row>& Rows() {
  static std::vector<Row>* rows = new std::vector<Row>;  // outlives every static's end
  return *rows;
}

inline double Median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

inline std::string Words(const Row& row) {
  const Goal& goal = row.goal;
  const double figure = Median(row.figures);
  const double peer = Median(row.peers);
  const double ratio = peer > 0 ? figure / peer : 0;
  const bool met = (goal.least <= 0 || figure >= goal.least) &&
                   (goal.most <= 0 || figure <= goal.most) &&
                   (goal.mostRatio <= 0 || ratio <= goal.mostRatio);
  const bool asks = goal.least > 0 || goal.most > 0 || goal.mostRatio > 0;
  char bound[48] = "";
  if (goal.least > 0) std::snprintf(bound, sizeof bound, ">= %g %s", goal.least, goal.unit);
  if (goal.most > 0) std::snprintf(bound, sizeof bound, "<= %g %s", goal.most, goal.unit);
  if (goal.mostRatio > 0) {
    const std::size_t used = std::strlen(bound);
    std::snprintf(bound + used, sizeof bound - used, used > 0 ? ", %gx" : "<= %gx", goal.mostRatio);
  }
  char against[80] = "";
  if (peer > 0) std::snprintf(against, sizeof against, "%s %.4g", goal.peer, peer);
  char times[24] = "";
  if (peer > 0) std::snprintf(times, sizeof times, "%.3gx", ratio);
  char line[300];
  std::snprintf(line, sizeof line, "%-44s %-16s %9.4g %-9s %-28s %7s  %s", goal.subject, bound,
                figure, goal.unit, against, times,
                !asks ? "told"
                : met ? "met"
                      : "MISSED");
  return line;
}

inline void Print() {
  const char* name = std::getenv("MORVA_BENCH_TABLE");
  std::FILE* file = name ? std::fopen(name, "a") : nullptr;
  for (const Row& row : Rows()) {
    const std::string words = Words(row) + "\n";
    if (file) std::fputs(words.c_str(), file);
    if (!file) std::fputs(words.c_str(), stdout);
  }
  if (file) std::fclose(file);
}

inline void Note(const Goal& goal, double figure, double peer = 0) {
  if (Rows().empty()) std::atexit(Print);
  for (Row& row : Rows()) {
    if (std::string(row.goal.subject) != goal.subject) continue;
    row.figures.push_back(figure);
    if (peer > 0) row.peers.push_back(peer);
    return;
  }
  Row row{goal, {figure}, {}};
  if (peer > 0) row.peers.push_back(peer);
  Rows().push_back(row);
}

}  // namespace targets
