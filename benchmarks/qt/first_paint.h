// Ends a program after its first painting: writes when that was done and, half a second
// later, what memory it holds.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

class FirstPaint : public QObject {
 public:
  FirstPaint() { qApp->installEventFilter(this); }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Paint || seen_) return false;
    seen_ = true;
    // Behind the painting of all widgets, which goes in one piece.
    QTimer::singleShot(0, this, [this] {
      painted_ = Milliseconds(CLOCK_MONOTONIC);
      used_ = Milliseconds(CLOCK_PROCESS_CPUTIME_ID);
      QTimer::singleShot(500, this, [this] { Tell(); });
    });
    return false;
  }

 private:
  static double Milliseconds(clockid_t which) {
    timespec now = {};
    clock_gettime(which, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
  }
  void Tell() const {
    long rss = 0;
    long pss = 0;
    char line[256];
    if (std::FILE* file = std::fopen("/proc/self/smaps_rollup", "r")) {
      while (std::fgets(line, sizeof line, file)) {
        if (std::strncmp(line, "Rss:", 4) == 0) rss = std::atol(line + 4);
        if (std::strncmp(line, "Pss:", 4) == 0) pss = std::atol(line + 4);
      }
      std::fclose(file);
    }
    std::printf("%.3f %.3f %ld %ld\n", painted_, used_, rss, pss);
    std::fflush(stdout);
    std::_Exit(0);
  }

  bool seen_ = false;
  double painted_ = 0;
  double used_ = 0;
};
