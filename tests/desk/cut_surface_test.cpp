// A program that plays with its tool cutting the stock, on the real window, at both sizes.

#include "simulator/cut_surface.h"

#include <QWidget>

#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "library/tools.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/tool_model.h"
#include "simulator/view.h"

namespace {

class CutStock : public AtDesk {
 protected:
  static void AddTool(int number, std::u16string_view type, double diameter) {
    morva::ToolRecord tool;
    tool.number = number;
    std::copy(type.begin(), type.end(), tool.type);
    tool.diameter = diameter;
    tool.stickout = 1;
    tool.gaugeLength = 1.75;
    ASSERT_GE(morva::AppendTool(tool), 0);
  }
};

TEST_F(CutStock, WhileAProgramPlays) {
  AddTool(1, u"End Mill", 0.5);
  AddTool(2, u"Ball Nose", 0.375);
  AddTool(3, u"Drill", 0.25);
  QByteArray program = "%\nO1000\nT1 M06\nG0 X-0.4 Y0.3\nG1 Z-0.2 F10.\n";
  program += "X4.4\nY1.2\nX1.\nY2.1\nX4.4\nG0 Z0.5\nT2 M06\nG0 X0.4 Y0.8\nG1 Z-0.3\n";
  for (int i = 0; i < 120; ++i) {
    program += "X" + QByteArray::number(0.4 + i * 0.03, 'f', 3) + " Y" +
               QByteArray::number(1.2 + 0.7 * ((i % 20) / 10.0 - 1), 'f', 3) + "\n";
  }
  program += "G0 Z0.5\nT3 M06\nX0.3 Y2.1\nG1 Z-0.4\nG0 Z0.5\nM30\n%\n";
  Open(Write("cut.NC", program));
  ASSERT_TRUE(desk::Until(
      []() { return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("(MORVA END")); }));
  desk::Click(morva::kIdPath);
  desk::Click(morva::kIdPlayToggle);
  // In place of a drawing, whose stock would be found when the path is read.
  morva::SetStockOf(morva::PathOwner::Program, {true, 0, 4, 0, 2.4, 0, -0.5, 0.5});
  morva::SetPlaySpeed(6);
  ASSERT_TRUE(desk::Until([]() { return morva::playback.playHead > 60; }));
  EXPECT_TRUE(morva::ToolModelNow().shown);
  const morva::CutSurface* const surface = morva::CutSurfaceNow();
  ASSERT_NE(surface, nullptr);
  EXPECT_GE(surface->stamped, 60);
  EXPECT_EQ(surface->heights[6][24], -0.2);
  desk::Click(morva::kIdPlayToggle);
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    Show(size.width() == 1200 ? "cut_surface_1200.png" : "cut_surface_1560.png");
  }
}

}  // namespace
