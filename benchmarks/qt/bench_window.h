// What the benchmarks of real widgets share: a home of their own, the workbench in it or one bare
// view, and the way through all benchmarks of a program.
#pragma once

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdlib>
#include <memory>

#include "app/app_state.h"
#include "platform/events.h"
#include "platform/process.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "shell/start_up.h"

namespace bench {

inline std::unique_ptr<QTemporaryDir> folder;

// Documents and settings of this run are its own. Before the process begins; false: there is no
// such folder.
inline bool MakeHome() {
  folder = std::make_unique<QTemporaryDir>();
  return folder->isValid() && setenv("HOME", folder->path().toLocal8Bit().constData(), 1) == 0;
}

// Runs what the program has registered.
inline int Main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (!MakeHome()) return 1;
  platform::BeginProcess(argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  platform::EndProcess();
  folder.reset();
  return 0;
}

// The whole application, once. False: it stands already.
inline bool StartWorkbench() {
  if (platform::Exists(platform::kMainWindow)) return false;
  platform::SetExecutablePathForTests(folder->filePath(QStringLiteral("bin/MORVA")));
  if (morva::StartApplication() != 0) std::abort();
  return true;
}

// One view of 1200 by 800 that fills the window, once. It waits until `painted` counts, because a
// window paints nothing until the screen shows it.
inline void StandView(int id, const platform::Events& events, const int& painted) {
  if (platform::Exists(platform::kMainWindow)) return;
  platform::ListenTo(&events);
  platform::MainWindowSpec window;
  window.place = {0, 0, 1200, 800};
  platform::MakeMainWindow(window);
  platform::ViewSpec view;
  view.id = id;
  view.className = u"BenchView";
  platform::MakeView(view);
  platform::SetPlace(id, {0, 0, 1200, 800});
  platform::ShowMainWindow();
  QElapsedTimer waited;
  waited.start();
  while (painted == 0 && waited.elapsed() < 10000) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
  }
  if (painted == 0) std::abort();
}

}  // namespace bench
