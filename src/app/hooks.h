// Hooks: how a lower room asks an upper one without including it.
//
// Each pointer is set once, by the room that owns the operation, when rooms are joined at
// start-up. A null pointer means that the operation does not exist yet; callers use Call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {
struct Canvas;
struct DrawState;
}  // namespace platform

namespace morva {

struct PathPreview;
struct PlacePick;
struct PreviewMarker;
struct WantedDrawing;
struct WantedPlace;

struct Hooks {
  // documents: copies editorDirty into the active record, relabels its tab button.
  void (*titleChanged)() = nullptr;
  // documents: what tells the active program from others of its name; see TwinWords.
  std::u16string (*twinWords)() = nullptr;
  // codetools: another program comes onto the stage.
  void (*programLeft)() = nullptr;
  // simulator
  void (*rebuildToolpath)() = nullptr;
  // simulator: the program's text changed; its path may lag behind from now on.
  void (*textChanged)() = nullptr;
  // simulator: tagging put lines into the text, whose editor revision was `before`.
  void (*textTagged)(std::uint64_t before) = nullptr;
  // simulator: the report of the machine check over the program as it stands, line by line with
  // CR LF; empty while machine motion is off.
  std::u16string (*checkMachine)() = nullptr;
  // simulator: zoom 1, no pan, repainted.
  void (*fitView)() = nullptr;
  // simulator: the looping example of an operation of the machining wizard, 0 to 4, in place of
  // the program's path; another operation while one is shown.
  void (*showExample)(int operation) = nullptr;
  // simulator: the program's path again. Whoever showed an example calls it before another builder
  // has its own path read.
  void (*leaveExample)() = nullptr;
  // simulator: a builder's preview in place of the program's path, whose head, speed and view wait
  // behind it; the next change of it too. It follows the unit only when it is handed in again.
  void (*showPreview)(const PathPreview& preview) = nullptr;
  // simulator: points at a place of the preview, with words.
  void (*markPreview)(const PreviewMarker& marker) = nullptr;
  // simulator: the program's path again as it was, at once. A pick that waits is given up.
  void (*leavePreview)() = nullptr;
  // simulator: the user picks a place of the preview; a pick that waits is given up. False: no
  // preview is shown, and nobody is told.
  bool (*pickPlace)(const PlacePick& pick) = nullptr;
  // simulator: gives up the pick that waits. False: none did.
  bool (*dropPlacePick)() = nullptr;
  // cad: brings a drawing up for a builder, whose surface is up now. False: it did not come up, and
  // the user was told why.
  bool (*openDrawing)(const WantedDrawing& wanted) = nullptr;
  // cad: the next press in the drawing that is up picks a place for a builder, whose surface comes
  // up again. False: the drawing did not come up.
  bool (*pickInDrawing)(const WantedPlace& wanted) = nullptr;
  // skim: opens the guided skim. False: it did not come up, and the user was told why.
  bool (*openSkim)() = nullptr;
  // simulator: makes a program line current in the feature list and the editors.
  void (*highlightLine)(int line) = nullptr;
  // shell
  void (*layout)() = nullptr;
  // shell: opens the strip with the output log where it is closed.
  void (*openOutput)() = nullptr;
  void (*setMode)(int mode) = nullptr;
  void (*setSurface)(int surface) = nullptr;
  // shell: one row as every list looks, its text from `left` pixels on; icon_names.h, centred.
  void (*drawListRow)(const platform::DrawState& state, int left, std::u16string_view text,
                      std::uint32_t colour, platform::Canvas& canvas) = nullptr;
  void (*drawIcon)(platform::Canvas& canvas, int icon, int centreX, int centreY, int size,
                   std::uint32_t colour) = nullptr;
  // codetools: 20 or 21, the last unit that a text names outside comments; 0 for none.
  std::int32_t (*lastUnitsCode)(std::u16string_view text) = nullptr;
  // builders: reads the tools again that another window stored; lists and the tool form follow.
  void (*followTools)() = nullptr;
  // codetools: leaves the compare review where it is showing.
  void (*leaveCompare)() = nullptr;
  // codetools: closes the import panel where it is open, with words; its program goes off the
  // stage.
  void (*leaveImport)() = nullptr;
  // codetools: the colouring pass of the deferred text refresh.
  void (*colourEditor)() = nullptr;
  // codetools: the command words view, rebuilt from the code editor, and copied back into it.
  void (*wordsFromEditor)() = nullptr;
  void (*editorFromWords)() = nullptr;
  // codetools: completion list refreshed; hidden and reset.
  void (*refreshCompletion)() = nullptr;
  void (*hideCompletion)() = nullptr;
  // shell: says on the status line what stands without an end in sight: a transfer, a program that
  // the autosave leaves alone. False: nothing does.
  bool (*tellStanding)() = nullptr;
  // dnc: a log box of the setup panel that takes DNC events; false when it does not exist.
  bool (*setupPanelLog)(const char16_t* text) = nullptr;
};

extern Hooks hooks;

template <typename Result, typename... Wanted, typename... Given>
inline Result Call(Result (*hook)(Wanted...), Given... given) {
  if (hook) return hook(given...);
  return Result();
}

}  // namespace morva
