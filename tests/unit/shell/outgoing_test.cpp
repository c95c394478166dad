// What goes out over the line is what the editor shows, whatever was done before.

#include <random>

#include "dnc/serial_profile.h"
#include "documents/program_tabs.h"
#include "support/workbench.h"

namespace morva {
namespace {

using Outgoing = support::Workbench;

// The bytes of a text for the line, written here a second time: CR LF line ends, "?" above
// 127, a percent line at each end where none stands.
std::string Bytes(const std::u16string& text) {
  std::string body;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' || text[i] == u'\n') {
      if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
      body += "\r\n";
    } else {
      body += text[i] > 127 ? '?' : static_cast<char>(text[i]);
    }
  }
  const std::size_t first = body.find_first_not_of(" \t\r\n");
  if (first == std::string::npos && body.empty()) return "%\r\n%\r\n";
  const std::size_t last = body.find_last_not_of(" \t\r\n");
  const bool opens = first != std::string::npos && body[first] == '%';
  const bool closes = last != std::string::npos && body[last] == '%';
  std::string out = opens ? "" : "%\r\n";
  out += body;
  if (!out.empty() && out.back() != '\n') out += "\r\n";
  if (!closes) out += "%\r\n";
  return out;
}

std::u16string SomeCode(std::mt19937& random) {
  static const char16_t* const kPieces[] = {u"G01 X1.5 ", u"Y-2. F20.", u"\r\n", u"(NOTE \u2014)",
                                            u"M30",       u"%",         u"\r\n", u"G83 Z-1. Q0.1"};
  std::u16string code;
  for (unsigned long n = 1 + random() % 4; n > 0; --n) code += kPieces[random() % 8];
  return code;
}

TEST_F(Outgoing, IsWhatTheEditorShowsOverAThousandRandomSteps) {
  headless::SetPort(u"COM1", headless::PortState::Present);
  std::mt19937 random(20261121);
  int sends = 0;
  for (int step = 0; step < 1000; ++step) {
    const unsigned long action = random() % 10;
    if (action < 4) {
      const int length = platform::EditorLength(kIdEditor);
      const int at = static_cast<int>(random() % static_cast<unsigned>(length + 1));
      headless::EditorSelect(kIdEditor, at, at);
      headless::EditorInsert(kIdEditor, SomeCode(random));
    } else if (action == 4) {
      headless::EditorUndo(kIdEditor);
    } else if (action == 5 && app.tabCount < 8) {
      headless::Click(kIdNew);
    } else if (action == 6) {
      headless::Click(kIdTabFirst +
                      static_cast<int>(random() % static_cast<unsigned>(app.tabCount)));
    } else if (action == 7) {
      headless::QueueFile(Path("part" + std::to_string(random() % 5) + ".NC"));
      platform::KeyEvent save;
      save.key = 'S';
      save.ctrl = true;
      headless::Focus(kIdEditor);
      headless::PressKey(save);
      headless::ClearQueues();
    } else if (action == 8) {
      headless::Advance(static_cast<int>(random() % 900));
    } else {
      headless::TakeSent();
      headless::QueueAnswer(platform::BoxAnswer::Yes);
      const std::u16string shown = Text();
      ASSERT_TRUE(headless::Click(kIdSend));
      headless::Advance(5);
      ASSERT_EQ(dncState, kDncConnected) << "step " << step;
      ASSERT_EQ(headless::TakeSent(), Bytes(shown)) << "step " << step;
      ++sends;
    }
    headless::TakeBoxes();
  }
  EXPECT_GT(sends, 50);
}

}  // namespace
}  // namespace morva
