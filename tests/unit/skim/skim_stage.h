// The guided skim on the whole application, opened from the machining wizard.
#pragma once

#include <gtest/gtest.h>

#include "app/command_ids.h"
#include "library/tools.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "skim/model/plan.h"
#include "skim/model/wizard_state.h"
#include "support/workbench.h"

namespace support {

struct SkimStage : Workbench {
  void SetUp() override {
    Workbench::SetUp();
    headless::Advance(200);  // the program has its markers
  }
  static void OpenSkim() {
    morva::SetMode(morva::kModeWizard);
    ASSERT_TRUE(headless::Click(morva::kIdWizardInsert));
    ASSERT_EQ(morva::app.surface, morva::kSurfaceSkim);
  }
  static int Field(int field) { return morva::kIdSkimField + field; }
  static void Type(int field, const char16_t* text) { headless::TypeInto(Field(field), text); }
  static std::u16string Says(int field) { return platform::TextOf(Field(field)); }
  static void Next() { ASSERT_TRUE(headless::Click(morva::kIdSkimNext)); }
  static void GoToReview() {
    for (int page = 1; page < morva::kSkimPages; ++page) Next();
    ASSERT_EQ(morva::skimWizard.page, morva::kSkimReview);
  }
  static std::u16string Status() { return platform::TextOf(morva::kIdStatusLine); }
  static std::u16string Matrix() { return platform::TextOf(morva::kIdSkimMatrix); }
  static void AddTool(int number, double diameter) {
    morva::ToolRecord tool;
    tool.number = number;
    tool.diameter = diameter;
    ASSERT_GE(morva::AppendTool(tool), 0);
    morva::RefreshToolLists();
  }
};

}  // namespace support
