#include "documents/program_information.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "text/codetext.h"

namespace morva {

void WriteProgramInformation() {
  // The code index shows the panel too, beside its own page.
  if (app.mode != kModeHome && app.mode != kModeCodeIndex) return;
  std::u16string text = u"PROGRAM\r\n\r\nFile: ";
  text += app.activePath[0] ? BareFileName(app.activePath) : u"Unsaved / New";
  text += Call(hooks.twinWords);
  text += u"\r\nLines: " + IntegerText(platform::EditorLineCount(kIdEditor));
  text += u"\r\nState: ";
  text += app.editorDirty ? u"Modified" : u"Saved / clean";
  text +=
      u"\r\n\r\nUse Tool Library for reusable cutters, Code Index for quick inserts, and PATH "
      u"for a basic coordinate preview.";
  if (platform::TextOf(kIdInfoPanel) != text) platform::SetText(kIdInfoPanel, text);
}

}  // namespace morva
