// The tables that rooms fill when they are joined: how full the whole application leaves them,
// and what one row too many does.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "app/commands.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/mode_table.h"
#include "app/panels.h"
#include "app/router.h"
#include "app/stop.h"
#include "app/surfaces.h"
#include "codetools/colours.h"
#include "documents/builder_table.h"
#include "forms/form.h"
#include "forms/sheet.h"
#include "library/shapes.h"
#include "library/tools.h"
#include "support/workbench.h"

namespace morva {
namespace {

struct JoinTables : support::Workbench {};

const JoinTable* TableOf(std::u16string_view what) {
  const JoinTable* table = FirstJoinTable();
  while (table && table->what != what) table = table->next;
  return table;
}

void Nothing() {}

TEST_F(JoinTables, HaveHeadroomAfterAFullStart) {
  for (const char16_t* what : {u"command handlers", u"timer handlers", u"message handlers",
                               u"panels", u"control handlers", u"surfaces"}) {
    EXPECT_NE(TableOf(what), nullptr) << platform::ToUtf8(what);
  }
  for (const JoinTable* table = FirstJoinTable(); table; table = table->next) {
    const std::string what = platform::ToUtf8(table->what);
    std::printf("  %-36s %4d of %4d, %4d free\n", what.c_str(), table->count, table->most,
                table->most - table->count);
    EXPECT_LT(table->count, table->most) << what;
  }
}

// Fills what is left of a table with add(0), add(1) and so on: the last row fits, one more stops
// the program with words that name the table and its limit, and an emptied table takes rows again.
template <typename Add>
void StopsBeyond(int most, const char16_t* what, Add add, void (*clear)()) {
  clear();
  for (int i = 0; i < most; ++i) add(i);
  const JoinTable* table = TableOf(what);
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->count, most);
  EXPECT_EXIT(add(most), testing::ExitedWithCode(3),
              "MORVA cannot start. Its table of " + platform::ToUtf8(what) + " is full: it holds " +
                  std::to_string(most) + "\\.");
  clear();
  add(0);
  EXPECT_EQ(table->count, 1);
  clear();
}

TEST(JoinTablesDeathTest, HandlersOfTheRouter) {
  static_assert(kMaxCommandHandlers == 320);
  static_assert(kMaxTimerHandlers == 16 && kMaxMessageHandlers == 16);
  const auto command = [](int i) {
    RegisterCommand(RouterStage::Click, 30000 + i, 0, [](int, int) {});
  };
  StopsBeyond(kMaxCommandHandlers, u"command handlers", command, ClearCommands);
  const auto timer = [](int i) { RegisterTimer(100 + i, Nothing); };
  StopsBeyond(kMaxTimerHandlers, u"timer handlers", timer, ClearCommands);
  const auto message = [](int i) {
    RegisterMessage(100u + static_cast<unsigned>(i), [](unsigned long long, unsigned long long) {});
  };
  StopsBeyond(kMaxMessageHandlers, u"message handlers", message, ClearCommands);
}

TEST(JoinTablesDeathTest, PanelsAndTheirHandlers) {
  static_assert(kMaxPanels == 24 && kMaxHandlers == 96);
  StopsBeyond(
      kMaxPanels, u"panels", [](int) { RegisterPanel(Panel()); }, ClearPanels);
  const auto listen = [](int i) {
    Handlers handlers;
    handlers.id = 100 + i;
    RegisterHandlers(handlers);
  };
  StopsBeyond(kMaxHandlers, u"control handlers", listen, ClearPanels);
}

TEST(JoinTablesDeathTest, SurfacesBesideTheCodeSurface) {
  static_assert(kMaxSurfaces == 4);
  const auto add = [](int i) {
    Surface surface;
    surface.surface = 1 + i;
    RegisterSurface(surface);
  };
  StopsBeyond(kMaxSurfaces, u"surfaces", add, ClearSurfaces);
  add(1);
  EXPECT_EXIT(add(1), testing::ExitedWithCode(3), "Surface 2 comes twice");
  EXPECT_EXIT(add(-1), testing::ExitedWithCode(3), "A surface has no number");
  ClearSurfaces();
}

TEST(JoinTablesDeathTest, RowsOfModes) {
  static_assert(kMaxModes == 24);
  const auto add = [](int i) { RegisterMode({.mode = i}); };
  StopsBeyond(kMaxModes, u"modes", add, ClearModes);
  add(5);
  EXPECT_EXIT(add(5), testing::ExitedWithCode(3), "Mode 5 comes twice");
  EXPECT_EXIT(add(-1), testing::ExitedWithCode(3), "A mode has no number");
  RegisterMode({.mode = 5, .words = u"To come", .coming = true});
  EXPECT_EQ(std::u16string(ModeOf(5).words), u"");
  ClearModes();
  RegisterMode({.mode = 5, .words = u"To come", .coming = true});
  RegisterMode({.mode = 5, .words = u"Here"});
  EXPECT_EQ(std::u16string(ModeOf(5).words), u"Here");
  EXPECT_EQ(ModeCount(), 1);
  ClearModes();
}

TEST(JoinTablesDeathTest, PlacesAndTabStops) {
  EXPECT_EXIT(StopFull(u"controls placed", kMaxPlacements), testing::ExitedWithCode(3),
              "controls placed is full: it holds 96");
}

TEST(JoinTablesDeathTest, WordsOfCommands) {
  static_assert(kMaxCommands == 640);
  static Command rows[kMaxCommands + 1];
  const auto add = [](int i) {
    rows[i].id = 1 + i;
    AddCommands({&rows[i], 1});
  };
  StopsBeyond(kMaxCommands, u"commands", add, ResetCommandWords);
  add(5);
  static Command other = rows[5];
  EXPECT_EXIT(AddCommands({&other, 1}), testing::ExitedWithCode(3), "Command 6 comes twice");
  ResetCommandWords();
}

TEST(JoinTablesDeathTest, FormsAndTheirRows) {
  static_assert(kMaxForms == 32 && kMaxFormRows == 1024);
  static Form forms[kMaxForms + 1];
  StopsBeyond(
      kMaxForms, u"forms", [](int i) { RegisterForm(forms[i]); }, ResetForms);
  static FormRow row;
  static FormRow rows[kMaxFormRows];
  static Form one{.rows = {&row, 1}};
  static Form all{.rows = rows};
  RegisterForm(all);
  EXPECT_EXIT(RegisterForm(one), testing::ExitedWithCode(3), "rows of forms is full");
  ResetForms();
}

TEST(JoinTablesDeathTest, GroundsOfFormsThatScroll) {
  static_assert(kMaxSheets == 8);
  static Sheet sheets[kMaxSheets + 1];
  const auto add = [](int i) { ScrollSheet(sheets[i], 0); };
  StopsBeyond(kMaxSheets, u"sheets of forms", add, ResetSheets);
}

TEST(JoinTablesDeathTest, Builders) {
  static_assert(kMaxBuilders == 16 && kMaxBuilderText == 131072);
  static Builder builders[kMaxBuilders + 1];
  StopsBeyond(
      kMaxBuilders, u"builders", [](int i) { AddBuilder(builders[i]); }, ResetBuilders);
}

TEST(JoinTablesDeathTest, ListsOfTools) {
  static_assert(kMaxToolLists == 8);
  StopsBeyond(
      kMaxToolLists, u"lists of tools", [](int) { AddToolList(Nothing); }, ResetToolLibrary);
  EXPECT_EXIT(AddToolList(nullptr), testing::ExitedWithCode(3), "filled by nobody");
}

TEST(JoinTablesDeathTest, ListsOfShapes) {
  static_assert(kMaxShapeLists == 8);
  StopsBeyond(
      kMaxShapeLists, u"lists of shapes", [](int) { AddShapeList(Nothing); }, ResetShapeLibrary);
  EXPECT_EXIT(AddShapeList(nullptr), testing::ExitedWithCode(3), "nothing that fills it");
}

}  // namespace
}  // namespace morva
