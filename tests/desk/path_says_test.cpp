// What the toolpath view says of its path, on the real window: the longest read-out fits at both
// sizes, and a key typed into the code makes the path stale.

#include <QWidget>

#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "platform/window.h"
#include "simulator/toolpath.h"

namespace {

using PathSays = AtDesk;

TEST_F(PathSays, WhatIsStaleAndWhatIsNotShown) {
  QByteArray program = "%\nO1000\nG28\n/G0 X1. Y0.5\nG2 X2. R.5\nG81 X1. Z-1. R.1\nG80\n";
  for (int i = 0; i < 33000; ++i) program += i % 2 ? "G1 X1. Y1.\n" : "G1 X3. Y2.\n";
  program += "M30\nG1 X2.\n%\n";
  Open(Write("long.NC", program));
  desk::Click(morva::kIdPath);
  QWidget* const view = desk::WidgetOf(morva::kViewToolpath);
  EXPECT_EQ(view->toolTip().toStdString(),
            "Not shown: G28, G30 and G53 1, canned cycles 1, R arcs 1\n"
            "Drawn, but behind the program's end: lines behind M30 1\n"
            "Drawn, but left out with block delete: lines with / 1");
  EXPECT_FALSE(morva::PathIsStale());
  desk::WidgetOf(morva::kIdEditor)->setFocus();
  desk::KeyHere(Qt::Key_X);
  ASSERT_TRUE(desk::Until([]() { return morva::PathIsStale(); }));
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    Show(size.width() == 1200 ? "path_says_1200.png" : "path_says_1560.png");
  }
  desk::Click(morva::kIdPath);
  EXPECT_FALSE(morva::PathIsStale());
}

}  // namespace
