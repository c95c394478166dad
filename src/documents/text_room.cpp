#include "documents/text_room.h"

#include "app/command_ids.h"
#include "app/limits.h"
#include "documents/file_text.h"
#include "documents/save_state.h"
#include "platform/editor.h"
#include "platform/message.h"

namespace morva {

bool HasRoomFor(std::size_t units) {
  units += BytesInFront(ActiveTab());
  const auto held = static_cast<std::size_t>(platform::EditorLength(kIdEditor));
  // A line end is one position of the editor and two bytes.
  if (2 * (held + units) <= kMaxReadBytes) return true;
  // A line end is two bytes, one of them may close the text, and all else is a byte at most.
  const auto lines = static_cast<std::size_t>(platform::EditorLineCount(kIdEditor));
  if (held + lines + 1 + 2 * units <= kMaxReadBytes) return true;
  return MeasureOutput(platform::EditorText(kIdEditor)).bytes + 2 * units <= kMaxReadBytes;
}

bool FitsAsProgram(std::u16string_view text) {
  const std::size_t most = kMaxReadBytes - BytesInFront(ActiveTab());
  return 2 * text.size() <= most || MeasureOutput(text).bytes <= most;
}

void TellNoRoom(std::u16string_view title) {
  platform::ShowBox(title,
                    u"The program would become larger than 33554432 bytes, and MORVA could not "
                    u"open it again. Nothing was changed.",
                    platform::BoxButtons::Ok, platform::BoxIcon::Warning);
}

}  // namespace morva
