// Whether text still finds room in a program, by its length as against the bytes it is saved as.

#include "documents/text_room.h"

#include <gtest/gtest.h>

#include <string>

#include "app/command_ids.h"
#include "app/limits.h"
#include "documents/file_text.h"
#include "platform/editor.h"
#include "support/program_stage.h"

namespace morva {
namespace {

struct TextRoom : public support::ProgramStage {};

TEST_F(TextRoom, EndsWhereTheBytesOfASaveDo) {
  // Letters of one byte and of none else, pairs of units, and line ends of each kind.
  const std::u16string line = u"G1 X\u00C4\xD83D\xDE00 (0123456789)\r\nM0\rM1\n\r\n";
  std::u16string text;
  while (text.size() < 29000000) text += line;
  for (const std::u16string_view end : {u"", u"\r\n", u"M30"}) {
    platform::SetEditorText(kIdEditor, text += end);
    const std::size_t bytes = MeasureOutput(platform::EditorText(kIdEditor)).bytes;
    ASSERT_LT(bytes, kMaxReadBytes);
    const std::size_t room = (kMaxReadBytes - bytes) / 2;
    for (std::size_t units = room - 3; units <= room + 3; ++units) {
      EXPECT_EQ(HasRoomFor(units), units <= room) << units;
    }
  }
}

}  // namespace
}  // namespace morva
