// The store of open programs and the stage's way in and out of it.

#include "documents/program_tabs.h"

#include <utility>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/surfaces.h"
#include "documents/autosave.h"
#include "documents/disk_watch.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/new_program.h"
#include "documents/program_information.h"
#include "documents/recent_files.h"
#include "documents/recovery.h"
#include "documents/save_words.h"
#include "documents/saver.h"
#include "documents/tab_models.h"
#include "documents/tab_table.h"
#include "documents/text_mark.h"
#include "documents/text_refresh.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr int kSwitchRefreshMilliseconds = 60;

std::uint64_t lastSerial = 0;

}  // namespace

bool RoomForTab() {
  if (app.tabCount < kMaxTabs) return true;
  platform::ShowBox(u"MORVA Tabs", u"The workspace supports up to 8 open programs in this build.",
                    platform::BoxButtons::Ok, platform::BoxIcon::Warning);
  return false;
}

int OpenOwnedTab(std::u16string_view path, std::u16string text, std::u16string_view title) {
  if (!RoomForTab()) return -1;
  const int index = app.tabCount;
  ProgramTab& tab = tabs[index];
  tab = ProgramTab();
  tab.serial = ++lastSerial;
  ++app.tabCount;
  CopyBounded(tab.path, kPathUnits, path);
  if (path.empty() && title.empty()) title = u"Untitled.NC";
  CopyBounded(tab.title, kTitleUnits, path.empty() ? title : BareFileName(path));
  tab.text =
      path.empty() && text.empty() ? NewProgramText(tab.title, app.unitsMetric) : std::move(text);
  if (tab.path[0]) ReadCompanions(tab.path, tab.text, tab);
  RefreshTabButtons();
  return index;
}

int OpenTab(std::u16string_view path, std::u16string_view text, std::u16string_view title) {
  std::u16string kept(text);
  std::erase(kept, u'\0');
  return OpenOwnedTab(path, std::move(kept), title);
}

void SwitchTab(int index) {
  RunAutosave();
  CancelSurfaceInput();
  if (index < 0 || index >= app.tabCount || index == app.activeTab) return;
  Call(hooks.hideCompletion);
  Call(hooks.leaveImport);
  Call(hooks.programLeft);
  StashActiveWorkspace();
  DropEditLink();
  // What was said of a feature belongs to the program that is left.
  ShowFeatureHint(kFeaturesWords);
  SyncActiveTab();
  LayTextAside();
  app.activeTab = index;
  RestoreWorkspace();
  const ProgramTab& tab = tabs[index];
  StageText(tabs[index]);
  StageFile(tab.path, tab.dirty);
  UpdateTitle();
  RefreshTabButtons();
  if (app.commandWordsActive) Call(hooks.wordsFromEditor);
  ArmTextRefresh(kSwitchRefreshMilliseconds);
  WriteProgramInformation();
  Call(hooks.rebuildToolpath);
  Call(hooks.layout);
  TellHoldOfShown();
  WatchDisk();
}

void RemoveTab(int index) {
  platform::DropEditorText(kIdEditor, tabs[index].serial);
  ForgetTableOf(tabs[index].serial);
  FreeTab(tabs[index]);
  for (int i = index; i + 1 < app.tabCount; ++i) tabs[i] = std::move(tabs[i + 1]);
  --app.tabCount;
  tabs[app.tabCount] = ProgramTab();
  app.activeTab = -1;
}

bool ReturnToTab(std::uint64_t serial) {
  const int index = IndexOfSerial(serial);
  if (index < 0) return false;
  if (index != app.activeTab) SwitchTab(index);
  return true;
}

void FreeTabs() {
  for (ProgramTab& tab : tabs) {
    ForgetTableOf(tab.serial);
    FreeTab(tab);
  }
  platform::DropEditorText(kIdEditor, 0);
  ResetTextMarks();
  app.tabCount = 0;
  app.activeTab = -1;
}

void ResetDocuments() {
  ResetSaver();
  FreeTabs();
  ResetAutosave();
  ResetRecovery();
  ResetRecentFiles();
  ResetInsertion();
  ResetFeatures();
  ResetLiveModels();
}

}  // namespace morva
