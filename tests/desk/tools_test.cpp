// The tool library on the real window: keys, pointer and pictures.

#include "library/tools.h"

#include "desk/at_desk.h"
#include "platform/window.h"

namespace {

using ToolsAtTheDesk = AtDesk;

int Field(int n) { return morva::kIdToolField + n; }
void Press(Qt::Key key) { desk::KeyHere(key); }
// The mode list has the tool library in its sixth row.
void GoToTools() {
  desk::Key(morva::kIdModeList, Qt::Key_Home);
  for (int i = 0; i < 12 && morva::app.mode != morva::kModeTools; ++i) {
    desk::Key(morva::kIdModeList, Qt::Key_Down);
  }
  ASSERT_EQ(morva::app.mode, morva::kModeTools);
}

TEST_F(ToolsAtTheDesk, AreDescribedByKeyboardAlone) {
  GoToTools();
  desk::Click(morva::kIdToolAdd);
  ASSERT_TRUE(desk::Until([]() { return HasKeyboard(Field(0)); }));
  desk::TypeHere(QStringLiteral("12"));
  // Tab walks the fields in their order.
  for (int n = 1; n < 14; ++n) {
    Press(Qt::Key_Tab);
    ASSERT_TRUE(desk::Until([n]() { return HasKeyboard(Field(n)); })) << n;
    if (n == 1) desk::TypeHere(QStringLiteral("1/4 DRILL"));
    if (n == 2) desk::TypeHere(QStringLiteral("D"));
    if (n == 3) desk::TypeHere(QStringLiteral("0.25"));
    if (n == 4) desk::TypeHere(QStringLiteral("2"));
    if (n == 10) Resize(1200, 800), Show("tool_builder_1200_lower.png");
  }
  Press(Qt::Key_Tab);
  EXPECT_TRUE(HasKeyboard(morva::kIdToolSave));
  Press(Qt::Key_Enter);
  ASSERT_TRUE(desk::Until([]() { return morva::toolLibrary.count == 1; }));
  EXPECT_EQ(std::u16string(morva::toolLibrary.tools[0].type), u"Drill");
  EXPECT_EQ(morva::toolLibrary.tools[0].flutes, 2);
  // Enter in a field saves as well.
  desk::TypeInto(Field(13), QStringLiteral("HSS"));
  desk::Key(Field(13), Qt::Key_Return);
  EXPECT_TRUE(
      desk::Until([]() { return std::u16string(morva::toolLibrary.tools[0].notes) == u"HSS"; }));
  EXPECT_TRUE(desk::Until(
      []() { return desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("saved.")); }));
  for (const auto& [width, height] : {std::pair{1200, 800}, std::pair{1560, 940}}) {
    Resize(width, height);
    desk::Key(Field(0), Qt::Key_Home);
    Show(width == 1200 ? "tool_builder_1200.png" : "tool_builder_1560.png");
  }
  Press(Qt::Key_Escape);
  EXPECT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdEditor); }));
  EXPECT_FALSE(desk::WidgetOf(morva::kIdToolSave)->isVisible());
}

TEST_F(ToolsAtTheDesk, OpenByADoubleClickAndCloseByTheBackKey) {
  GoToTools();
  desk::Click(morva::kIdToolAdd);
  desk::Click(morva::kIdToolSave);
  ASSERT_TRUE(desk::Until([]() { return morva::toolLibrary.count == 1; }));
  desk::Click(morva::kIdBack);
  EXPECT_FALSE(desk::WidgetOf(morva::kIdToolSave)->isVisible());
  EXPECT_EQ(morva::app.mode, morva::kModeTools);
  desk::Key(morva::kIdToolList, Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return HasKeyboard(Field(0)); }));
  // What was typed is not lost by a slip of a key.
  desk::TypeInto(Field(1), QStringLiteral("PRECIOUS"));
  desk::AnswerBox(QStringLiteral("No"));
  Press(Qt::Key_Escape);
  EXPECT_TRUE(desk::WidgetOf(morva::kIdToolSave)->isVisible());
  desk::AnswerBox(QStringLiteral("Yes"));
  Press(Qt::Key_Escape);
  EXPECT_FALSE(desk::WidgetOf(morva::kIdToolSave)->isVisible());
  // At Home the tool can be looked up.
  desk::Click(morva::kIdShowFeatures);
  Resize(1200, 800);
  EXPECT_EQ(desk::TextOf(morva::kIdHomeToolNumber), QStringLiteral("1"));
  Show("home_tool_1200.png");
  Resize(1560, 940);
  Show("home_tool_1560.png");
}

TEST_F(ToolsAtTheDesk, KeepTheWindowOpenForWhatIsTyped) {
  GoToTools();
  desk::Click(morva::kIdToolAdd);
  desk::TypeInto(Field(1), QStringLiteral("PRECIOUS"));
  desk::Click(morva::kIdShowFeatures);
  desk::AnswerBox(QStringLiteral("No"));
  desk::CloseWindow();
  EXPECT_EQ(desk::LastBoxText(),
            QStringLiteral("A tool is typed and not saved. Close MORVA without it?"));
  EXPECT_TRUE(desk::WidgetOf(platform::kMainWindow)->window()->isVisible());
  EXPECT_TRUE(desk::WidgetOf(morva::kIdToolSave)->isVisible());
  EXPECT_TRUE(desk::TextOf(Field(1)).startsWith(QStringLiteral("PRECIOUS")));
  // Nothing is asked about a tool that is saved, whose number can be read and not typed over.
  desk::Click(morva::kIdToolSave);
  ASSERT_TRUE(desk::Until([]() { return morva::toolLibrary.count == 1; }));
  desk::Click(morva::kIdShowFeatures);
  desk::Key(morva::kIdHomeToolNumber, Qt::Key_7);
  EXPECT_EQ(desk::TextOf(morva::kIdHomeToolNumber), QStringLiteral("1"));
}

}  // namespace
