// Any settings file is read as libraries without harm: counts and texts stay within their tables,
// loading writes nothing, and what is saved is read back.
//
// The bytes serve as a macro's text as well, on both ways of its escapes.
#include <string>

#include "builders/tools/tool_picture.h"
#include "fuzz/fuzz.h"
#include "fuzz/home.h"
#include "library/macros.h"
#include "library/shapes.h"
#include "library/tool_fields.h"
#include "library/tools.h"
#include "text/code_writer.h"

namespace {

using namespace morva;
using fuzz::Bytes;
using fuzz::Check;
using fuzz::Home;

void CheckEscapes(const std::u16string& text) {
  const std::u16string line = EscapedMacro(text);
  Check(line.find_first_of(u"\r\n") == line.npos, "a macro stands on one line");
  Check(UnescapedMacro(line) == text, "a macro comes back");
  const std::u16string code = UnescapedMacro(text);
  Check(code.size() <= text.size(), "no escape makes a text longer");
  Check(UnescapedMacro(EscapedMacro(code)) == code, "what was read can be written");
}

void CheckTools() {
  Check(toolLibrary.count >= 0 && toolLibrary.count <= kMaxTools, "tools fit their table");
  for (int i = 0; i < toolLibrary.count; ++i) {
    const ToolRecord& tool = toolLibrary.tools[i];
    Check(tool.name[kToolNameUnits - 1] == 0 && tool.type[kToolTypeUnits - 1] == 0 &&
              tool.notes[kToolNotesUnits - 1] == 0,
          "texts of a tool end");
    CodeWriter out;
    out.most = kToolBlockUnits - 1;
    WriteToolBlock(tool, i % 2 == 0, out);
    Check(!out.full, "a tool's block fits");
    const ToolTexts texts = TextsOfTool(tool, false);
    Check(CheckTool(texts, false, false).words[0] != 0 ||
              ToolOfTexts(texts, false, &tool).diameter == tool.diameter,
          "a tool that is only shown stays as it was");
    Picture picture;
    DrawTool(tool, false, picture);
    DrawToolEnd(tool, false, picture);
    Check(!picture.full, "a tool's picture fits");
  }
}

void CheckCounts() {
  Check(macroLibrary.count >= 0 && macroLibrary.count <= kMaxMacros, "macros fit their table");
  for (int i = 0; i < macroLibrary.count; ++i) {
    Check(macroLibrary.macros[i].name[kMacroNameUnits - 1] == 0, "a macro's name ends");
    Check(macroLibrary.macros[i].code.size() < kMacroKeyUnits, "a macro's text is cut");
  }
  Check(shapeLibrary.count >= 0 && shapeLibrary.count <= kMaxShapes, "shapes fit their table");
}

void LoadAll() {
  LoadToolLibrary();
  LoadMacroLibrary();
  LoadShapeLibrary();
}

std::string SavedFile(const Home& home) {
  Check(SaveToolLibrary() && SaveMacroLibrary() && SaveShapeLibrary(), "libraries are saved");
  return Bytes(home.file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CheckEscapes(fuzz::TextOf(data, size));
  const Home home;
  fuzz::Write(home.file, data, size);
  const std::string before = Bytes(home.file);
  LoadAll();
  Check(Bytes(home.file) == before, "loading writes nothing");
  CheckTools();
  CheckCounts();
  const std::string once = SavedFile(home);
  LoadAll();
  Check(SavedFile(home) == once, "what is saved is read back");
  return 0;
}
