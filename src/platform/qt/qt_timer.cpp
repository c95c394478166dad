// Repeating timers under window and number.

#include <QObject>
#include <QTimerEvent>
#include <algorithm>
#include <vector>

#include "platform/qt/qt_internal.h"
#include "platform/timer.h"

namespace platform {

namespace {

// Up to this period a timer drives movement on the screen and must not drift.
constexpr int kPrecisePeriod = 20;  // ms

struct Row {
  int window = 0;
  int timer = 0;
  int handle = 0;
};

class TimerHost : public QObject {
 public:
  std::vector<Row> rows;

  Row* Find(int window, int timer) {
    for (Row& row : rows) {
      if (row.window == window && row.timer == timer) return &row;
    }
    return nullptr;
  }

 protected:
  void timerEvent(QTimerEvent* event) override {
    for (const Row& row : rows) {
      if (row.handle != event->timerId()) continue;
      const Row fired = row;
      if (Listener().timer != nullptr) Listener().timer(fired.window, fired.timer);
      return;
    }
  }
};

TimerHost* host = nullptr;

}  // namespace

void StartTimer(int window, int timer, int milliseconds) {
  if (host == nullptr) host = new TimerHost;
  StopTimer(window, timer);
  const int period = std::max(milliseconds, 1);
  const int handle =
      host->startTimer(period, period <= kPrecisePeriod ? Qt::PreciseTimer : Qt::CoarseTimer);
  if (handle != 0) host->rows.push_back(Row{window, timer, handle});
}

void StopTimer(int window, int timer) {
  if (host == nullptr) return;
  Row* row = host->Find(window, timer);
  if (row == nullptr) return;
  host->killTimer(row->handle);
  host->rows.erase(host->rows.begin() + (row - host->rows.data()));
}

bool TimerRuns(int window, int timer) {
  return host != nullptr && host->Find(window, timer) != nullptr;
}

void EndTimers() {
  delete host;
  host = nullptr;
}

}  // namespace platform
