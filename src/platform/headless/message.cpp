// Message boxes, answered from the queue.

#include "platform/message.h"

#include <deque>
#include <utility>

#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

std::deque<platform::BoxAnswer> answers;
std::vector<BoxRecord> records;
void (*meanwhile)() = nullptr;

void ResetBoxes() {
  meanwhile = nullptr;
  answers.clear();
  records.clear();
}
ResetHook hook(1, ResetBoxes);

bool Offers(platform::BoxButtons buttons, platform::BoxAnswer answer) {
  using platform::BoxAnswer;
  switch (buttons) {
    case platform::BoxButtons::Ok:
      return answer == BoxAnswer::Ok;
    case platform::BoxButtons::YesNo:
    case platform::BoxButtons::NoYes:
      return answer == BoxAnswer::Yes || answer == BoxAnswer::No;
    case platform::BoxButtons::YesNoCancel:
      return answer != BoxAnswer::Ok && answer != BoxAnswer::Other;
    case platform::BoxButtons::YesNoOtherCancel:
      return answer != BoxAnswer::Ok;
  }
  return false;
}

platform::BoxAnswer MostCautious(platform::BoxButtons buttons) {
  switch (buttons) {
    case platform::BoxButtons::Ok:
      break;
    case platform::BoxButtons::YesNo:
    case platform::BoxButtons::NoYes:
      return platform::BoxAnswer::No;
    case platform::BoxButtons::YesNoCancel:
    case platform::BoxButtons::YesNoOtherCancel:
      return platform::BoxAnswer::Cancel;
  }
  return platform::BoxAnswer::Ok;
}

}  // namespace

void WhileOpen(void (*happens)()) { meanwhile = happens; }

void HappenMeanwhile() {
  if (void (*happens)() = std::exchange(meanwhile, nullptr)) happens();
}

void HappenWithoutKeyboard() {
  const int holder = platform::FocusedId();
  platform::SetFocusTo(platform::kMainWindow);
  HappenMeanwhile();
  platform::SetFocusTo(holder);
}

void QueueAnswer(platform::BoxAnswer answer) { answers.push_back(answer); }
void ClearAnswers() { answers.clear(); }
std::vector<BoxRecord> TakeBoxes() { return std::exchange(records, {}); }

}  // namespace headless

namespace platform {

BoxAnswer ShowBox(std::u16string_view title, std::u16string_view text, BoxButtons buttons,
                  BoxIcon icon, const BoxCaptions&) {
  const headless::Asking asking;
  headless::HappenWithoutKeyboard();
  BoxAnswer answer = headless::MostCautious(buttons);
  if (!headless::answers.empty()) {
    // A button that this box does not have cannot be pressed: the answer is spent all the same.
    if (headless::Offers(buttons, headless::answers.front())) answer = headless::answers.front();
    headless::answers.pop_front();
  }
  headless::records.push_back({std::u16string(title), std::u16string(text), buttons, icon, answer});
  return answer;
}

}  // namespace platform
