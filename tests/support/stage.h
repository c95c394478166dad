// The common start of tests: a machine with a home folder of its own, the few controls that
// rooms write to, and every table as at process start. Header only, so that programs without
// the headless platform never see it.
//
// A test derives from Stage (or makes a Stage itself), fills `home` and is cleaned up after.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/panels.h"
#include "app/router.h"
#include "app/surfaces.h"
#include "documents/builder_table.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/events.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "support/words.h"

namespace support {

namespace fs = std::filesystem;

// A fresh folder for this run; the caller removes it.
inline fs::path NewHome() {
  std::string name = (fs::temp_directory_path() / "morva-test-XXXXXX").string();
  EXPECT_NE(mkdtemp(name.data()), nullptr);
  return name;
}

inline void WriteRaw(const fs::path& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  EXPECT_TRUE(out.flush().good()) << path;
}

inline std::string ReadRaw(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Names of everything in a folder, sorted.
inline std::vector<std::string> NamesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

inline std::u16string Wide(std::string_view text) { return platform::FromUtf8(text); }
inline std::string Narrow(std::u16string_view text) { return platform::ToUtf8(text); }

inline void MakeButton(int id, const char16_t* text) {
  platform::ControlSpec spec;
  spec.id = id;
  spec.kind = platform::ControlKind::PushButton;
  spec.text = text;
  platform::MakeControl(spec);
}

inline void MakeText(int id, platform::ControlKind kind) {
  platform::ControlSpec spec;
  spec.id = id;
  spec.kind = kind;
  platform::MakeControl(spec);
}

// The main window with the code editor, the read-outs, the feature list and the tab bar.
inline void MakeStageControls() {
  platform::MainWindowSpec window;
  window.className = u"MorvaDeskWnd";
  window.title = u"MORVA v4.12.0";
  window.place = {50, 35, 50 + 1560, 35 + 940};
  window.minimumWidth = 1200;
  window.minimumHeight = 800;
  platform::MakeMainWindow(window);
  platform::EditorSpec editor;
  editor.id = morva::kIdEditor;
  editor.accessibleName = u"Program";
  platform::MakeEditor(editor);
  platform::ListSpec list;
  list.id = morva::kIdFeatureList;
  list.accessibleName = u"Features";
  platform::MakeList(list);
  MakeText(morva::kIdFeatureName, platform::ControlKind::EditLine);
  MakeText(morva::kIdOutputLog, platform::ControlKind::Log);
  MakeText(morva::kIdStatusLine, platform::ControlKind::Label);
  MakeText(morva::kIdFeatureHint, platform::ControlKind::Label);
  MakeText(morva::kIdInfoPanel, platform::ControlKind::MultiEdit);
  for (int id = morva::kIdTabFirst; id <= morva::kIdTabLast; ++id) MakeButton(id, u"");
  MakeButton(morva::kIdSaveMenu, u"SAVE  \u25BC");
  platform::ShowMainWindow();
}

struct Stage : public ::testing::Test {
  fs::path folder;      // the user's machine
  std::u16string home;  // the same as text

  Stage() : folder(NewHome()), home(Wide(folder.string())) {
    headless::Reset(home);
    morva::ResetAppState();
    morva::hooks = morva::Hooks();
    morva::ClearCommands();
    morva::ClearPanels();
    morva::ClearSurfaces();
    morva::ResetForms();
    morva::ResetBuilders();
    HandInWords();
    MakeStageControls();
  }
  ~Stage() override {
    // The listener and the hooks may stand in the test's own records.
    static const platform::Events kNobody;
    platform::ListenTo(&kNobody);
    morva::hooks = morva::Hooks();
    morva::ClearCommands();
    morva::ClearPanels();
    morva::ClearSurfaces();
    morva::ResetForms();
    morva::ResetBuilders();
    headless::Reset(home);
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }

  std::u16string PathOf(std::string_view name) const {
    return Wide((folder / fs::path(name)).string());
  }
  std::string Raw(std::string_view name) const { return ReadRaw(folder / fs::path(name)); }
  void Put(std::string_view name, std::string_view bytes) const {
    WriteRaw(folder / fs::path(name), bytes);
  }
  static std::u16string Text() { return std::u16string(platform::EditorText(morva::kIdEditor)); }
  static std::u16string TextOf(int id) { return platform::TextOf(id); }
};

}  // namespace support
