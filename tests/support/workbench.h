// The whole application on the headless platform, in a fresh home folder.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "shell/start_up.h"

namespace support {

class Workbench : public testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/morva-test-XXXXXX";
    ASSERT_NE(mkdtemp(name), nullptr);
    home_ = name;
    headless::Reset(platform::FromUtf8(home_.string()));
    ASSERT_EQ(morva::StartApplication(), 0);
  }
  void TearDown() override {
    ExpectNames();
    headless::CloseKey();
    morva::ResetApplication();
    headless::Reset(platform::FromUtf8(home_.string()));
    std::filesystem::remove_all(home_);
  }
  // Whatever the test opened: what the user writes into or chooses from bears a name for
  // assistive technology.
  static void ExpectNames() {
    for (const int id : headless::AllIds()) {
      headless::ControlInfo info;
      if (!headless::Describe(id, info) || info.kind == u"label" || info.kind == u"view") continue;
      // The keys of tabs that are not open have no words either.
      const bool key = info.kind == u"button" && !info.visible;
      EXPECT_TRUE(key || !info.name.empty()) << id << " has no name";
    }
  }
  std::u16string Path(const std::string& name) const {
    return platform::FromUtf8((home_ / name).string());
  }
  void WriteFile(const std::string& name, const std::string& bytes) const {
    std::ofstream(home_ / name, std::ios::binary) << bytes;
  }
  std::string ReadFile(const std::string& name) const {
    std::ifstream in(home_ / name, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
  }
  // Opens through the dialog, as a user does.
  void Open(const std::string& name) {
    headless::QueueFile(Path(name));
    headless::Click(morva::kIdOpen);
  }
  static std::u16string Text() { return std::u16string(platform::EditorText(morva::kIdEditor)); }
  static std::u16string Output() { return platform::TextOf(morva::kIdOutputLog); }
  static bool OutputHas(std::u16string_view words) {
    return Output().find(words) != std::u16string::npos;
  }

  std::filesystem::path home_;
};

}  // namespace support
