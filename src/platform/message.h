// Message boxes: modal, owner the main window.
#pragma once

#include <string_view>

namespace platform {

enum class BoxButtons { Ok, YesNo, YesNoCancel };
enum class BoxIcon { None, Information, Warning, Error, Question };
enum class BoxAnswer { Ok, Yes, No, Cancel };

// Closing the box by its key or Esc answers Cancel, else No, else Ok.
BoxAnswer ShowBox(std::u16string_view title, std::u16string_view text, BoxButtons buttons,
                  BoxIcon icon);

}  // namespace platform
