// Message boxes: modal, owner the main window.
#pragma once

#include <string_view>

namespace platform {

// NoYes is YesNo with No under Enter, for what a hasty key must not do.
enum class BoxButtons { Ok, YesNo, YesNoCancel, YesNoOtherCancel, NoYes };
enum class BoxIcon { None, Information, Warning, Error, Question };
enum class BoxAnswer { Ok, Yes, No, Cancel, Other };

// What the buttons say in place of their own words; null: their own.
struct BoxCaptions {
  const char16_t* yes = nullptr;
  const char16_t* no = nullptr;
  const char16_t* other = nullptr;
  const char16_t* cancel = nullptr;
};

// Closing the box by its key or Esc answers Cancel, else No, else Ok.
BoxAnswer ShowBox(std::u16string_view title, std::u16string_view text, BoxButtons buttons,
                  BoxIcon icon, const BoxCaptions& captions = {});

}  // namespace platform
