// Processor time of this thread: what a busy machine does not lengthen.
#pragma once

#include <ctime>

inline double CpuMilliseconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}
