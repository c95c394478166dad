// Modal dialogs: what the user does in them is handed in, else they are cancelled.

#include "platform/dialog.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

struct Dialog {
  platform::DialogSpec spec;
  int holder = 0;  // who is to get the keyboard when it runs
  bool running = false;
  bool ended = false;
  int code = 0;
};
// In the order in which they came up; the last running one has the user's input.
std::vector<Dialog> dialogs;
std::deque<std::function<void()>> acts;
bool (*nextTurn)() = nullptr;

void ResetDialogs() {
  dialogs.clear();
  acts.clear();
  nextTurn = nullptr;
}
ResetHook hook(1, ResetDialogs);

Dialog* DialogOf(int id) {
  for (Dialog& dialog : dialogs) {
    if (dialog.spec.id == id) return &dialog;
  }
  return nullptr;
}

Dialog* TopDialog() {
  for (auto it = dialogs.rbegin(); it != dialogs.rend(); ++it) {
    if (it->running) return &*it;
  }
  return nullptr;
}

bool LiesIn(int id, int dialog) {
  for (const Item* item = Find(id); item; item = Find(item->parent)) {
    if (item->id == dialog) return true;
  }
  return false;
}

void Tell(const Dialog& dialog, int id, int notification) {
  // The function may end this dialog or open another, which moves the record.
  void (*const command)(int, int) = dialog.spec.command;
  if (command) command(id, notification);
}

// The user's next doing; without any the dialog is cancelled, and ended where that did not.
void TakeTurn(int id) {
  if (!acts.empty()) {
    const std::function<void()> act = std::move(acts.front());
    acts.pop_front();
    act();
    return;
  }
  if (nextTurn && nextTurn()) return;
  CancelDialog();
  if (Dialog* dialog = DialogOf(id)) dialog->ended = true;
}

bool StillRuns(int id) {
  const Dialog* dialog = DialogOf(id);
  return dialog && !dialog->ended && Find(id);
}

}  // namespace

bool IsWindow(const Item& item) { return DialogOf(item.id) != nullptr; }

int OpenDialog() {
  const Dialog* dialog = TopDialog();
  return dialog ? dialog->spec.id : 0;
}

std::u16string DialogTitle() {
  const Dialog* dialog = TopDialog();
  return dialog ? dialog->spec.title : u"";
}

void InDialog(std::function<void()> act) { acts.push_back(std::move(act)); }
void SetDialogTurn(bool (*turn)()) { nextTurn = turn; }

void CancelDialog() {
  const Dialog* dialog = TopDialog();
  if (dialog) Tell(*dialog, dialog->spec.cancelButton, platform::kNotifyClick);
}

bool IsBehindDialog(int id) {
  const Dialog* dialog = TopDialog();
  return dialog && !LiesIn(id, dialog->spec.id);
}

bool TellDialog(int id, int notification) {
  for (const Dialog& dialog : dialogs) {
    if (!LiesIn(id, dialog.spec.id)) continue;
    if (!dialog.ended) Tell(dialog, id, notification);
    return true;
  }
  return false;
}

bool PressDialogKey(const platform::KeyEvent& key) {
  const Dialog* dialog = TopDialog();
  if (!dialog || key.ctrl || key.alt) return false;
  if (key.key == platform::kKeyEscape) {
    CancelDialog();
    return true;
  }
  if (key.key != platform::kKeyEnter) return false;
  // A button, a row and a text of several lines have an Enter of their own.
  const Item* focused = Find(platform::FocusedId());
  const bool own = focused && (focused->kind == Kind::Button || focused->kind == Kind::List ||
                               focused->kind == Kind::MultiList ||
                               focused->kind == Kind::MultiEdit || focused->editor);
  if (own) return false;
  const int button = dialog->spec.defaultButton;
  if (CanBeUsed(button)) Tell(*dialog, button, platform::kNotifyClick);
  return true;
}

void KeepForDialog(int id) {
  const Item* item = Find(id);
  if (!item || !item->visible || !platform::IsEnabled(id)) return;
  for (Dialog& dialog : dialogs) {
    if (!dialog.running && LiesIn(id, dialog.spec.id)) dialog.holder = id;
  }
}

void ForgetDialog(int id) {
  std::erase_if(dialogs, [id](const Dialog& dialog) { return dialog.spec.id == id; });
}

}  // namespace headless

namespace platform {

bool MakeDialog(const DialogSpec& spec) {
  if (!Exists(kMainWindow)) return false;
  headless::Item* item = headless::NewItem(spec.id, headless::Kind::View, kMainWindow, true);
  if (!item) return false;
  item->className = spec.className;
  item->name = spec.title;
  item->background = spec.background;
  item->place = spec.place;
  headless::Dialog dialog;
  dialog.spec = spec;
  headless::dialogs.push_back(dialog);
  return true;
}

int RunDialog(int id) {
  headless::Dialog* dialog = headless::DialogOf(id);
  if (!dialog || dialog->running) return 0;
  const int before = FocusedId();
  const int holder = dialog->holder;
  const headless::Asking asking;
  SetFocusTo(kMainWindow);
  dialog = headless::DialogOf(id);
  if (!dialog) return 0;
  dialog->running = true;
  SetVisible(id, true);
  SetFocusTo(holder);
  if (FocusedId() == 0) headless::FocusNext(false, false);
  headless::HappenMeanwhile();
  while (headless::StillRuns(id)) headless::TakeTurn(id);
  dialog = headless::DialogOf(id);
  const int code = dialog ? dialog->code : 0;
  headless::ForgetDialog(id);
  Destroy(id);
  SetFocusTo(before != 0 ? before : kMainWindow);
  return code;
}

void EndDialog(int id, int code) {
  headless::Dialog* dialog = headless::DialogOf(id);
  if (!dialog || dialog->ended) return;
  dialog->ended = true;
  dialog->code = code;
}

}  // namespace platform
