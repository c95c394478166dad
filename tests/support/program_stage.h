// A stage with the document commands joined and the first program open, as after start-up.
#pragma once

#include <string>
#include <string_view>

#include "app/data_dir.h"
#include "app/outlets.h"
#include "documents/autosave.h"
#include "documents/editor_changes.h"
#include "documents/program_tabs.h"
#include "documents/saving.h"
#include "support/stage.h"

namespace support {

inline void HearCommand(int id, int notification) {
  const bool editor = id == morva::kIdEditor || id == morva::kIdWordsEditor;
  if (editor && notification == platform::kNotifyEditChange) {
    morva::EditorChanged(id);
  } else {
    morva::RouteCommand(id, notification);
  }
}

inline void HearTimer(int window, int timer) {
  if (window == platform::kMainWindow) morva::RouteTimer(timer);
}

inline const platform::Events& ProgramEvents() {
  static const platform::Events events = [] {
    platform::Events made;
    made.command = HearCommand;
    made.timer = HearTimer;
    made.posted = [](std::uint32_t message, std::uint64_t first, std::uint64_t second) {
      morva::RouteMessage(message, first, second);
    };
    return made;
  }();
  return events;
}

struct ProgramStage : public Stage {
  // Without a data directory nothing is ever autosaved.
  explicit ProgramStage(bool dataDirectory = true) {
    morva::ResetDocuments();
    morva::RegisterDocumentCommands();
    platform::ListenTo(&ProgramEvents());
    if (dataDirectory) morva::FindDataDirectory();
    morva::SwitchTab(morva::OpenTab(u"", u"", u"Untitled-1.NC"));
    headless::TakeBoxes();
  }
  ~ProgramStage() override { morva::ResetDocuments(); }

  // Opens a file by the OPEN key.
  void OpenFile(std::string_view name) const {
    headless::QueueFile(PathOf(name));
    morva::RouteCommand(morva::kIdOpen, 0);
  }
  // The user types over everything.
  static void TypeProgram(std::u16string_view text) {
    EXPECT_TRUE(headless::EditorSetAll(morva::kIdEditor, text));
  }
  static std::u16string Label(int index) { return TextOf(morva::kIdTabFirst + index); }
  static std::u16string Status() { return TextOf(morva::kIdStatusLine); }
  static std::u16string Output() { return TextOf(morva::kIdOutputLog); }
};

struct OfflineProgramStage : public ProgramStage {
  OfflineProgramStage() : ProgramStage(false) {}
};

}  // namespace support
