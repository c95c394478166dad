// What a change of the text sets in motion: dirty mark, autosave, the refreshes of a pause.
#pragma once

namespace morva {

// Set while a completion is written into the text, so that it does not open the list anew.
extern bool completionApplying;
// Sets it for as long as one of these stands.
class ApplyingCompletion {
 public:
  ApplyingCompletion();
  ~ApplyingCompletion();
  ApplyingCompletion(const ApplyingCompletion&) = delete;
  ApplyingCompletion& operator=(const ApplyingCompletion&) = delete;

 private:
  bool before_;
};

// A change notification of the code editor (300) or of the command words view (920).
void EditorChanged(int id);
// Timer 4 and the message of every edit: the completion list follows the text.
void RunCompletionRefresh();

}  // namespace morva
