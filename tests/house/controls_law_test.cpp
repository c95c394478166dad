// Law: a control stands in a form. Where it cannot, its file says why.
//
// Forms make, place, colour and show the controls of their rows. Whoever does that by hand, outside
// of forms and platforms, stands in the list here and has a comment "No form: ..." where it does.

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>

#include "house/sources.h"

namespace {

using namespace house;

const std::set<std::string> kByHand = {
    "app/commands.cpp",
    "app/outlets.cpp",
    "app/panels.cpp",
    "app/tab_row.cpp",
    "cad/model/drawings.cpp",
    "cad/model/hint_line.cpp",
    "cad/panel/drawing_tabs.cpp",
    "cad/panel/workspace.cpp",
    "cad/tools/size_boxes.cpp",
    "cad/tools/tool_change.cpp",
    "codetools/completion_popup.cpp",
    "codetools/review.cpp",
    "codetools/words_view.cpp",
    "dnc/serial_profile.cpp",
    "documents/destination.cpp",
    "documents/tab_table.cpp",
    "plate/panel/plate_workspace.cpp",
    "shell/controls.cpp",
    "shell/inline_rename.cpp",
    "shell/layout.cpp",
    "skim/panel/skim_surface.cpp",
};

bool HandlesControls(const std::string& text) {
  static const std::regex kCalls(
      R"(\b(MakeControl|MakeList|MakeEditor|MakeView|SetColours|SetVisible)\b)");
  return std::regex_search(CodeOf(text), kCalls);
}

// At least five words behind the mark.
bool SaysWhy(const std::string& text) {
  static const std::regex kReason(R"(// No form:( +[^\s]+){5})");
  return std::regex_search(text, kReason);
}

// What is wrong with a file, empty for nothing.
std::string Complaint(const std::string& text, bool listed) {
  if (!HandlesControls(text)) return listed ? "makes and shows no control any more" : "";
  if (!listed) return "makes, colours or shows a control outside of the forms";
  return SaysWhy(text) ? "" : "does not say why its controls stand in no form";
}

TEST(ControlsLaw, TellsAControlByHandFromOthers) {
  EXPECT_EQ(Complaint("Put(id, area);", false), "");
  EXPECT_NE(Complaint("platform::MakeControl(spec);", false), "");
  EXPECT_NE(Complaint("using platform::SetVisible;\nSetVisible(id, on);", false), "");
  EXPECT_NE(Complaint("const auto make = &platform::MakeList;", false), "");
  EXPECT_EQ(Complaint("// MakeList(spec)\nf(\"SetColours\");", false), "");
  EXPECT_NE(Complaint("platform::MakeView(spec);", true), "");
  EXPECT_NE(Complaint("// No form: because.\nplatform::MakeView(spec);", true), "");
  EXPECT_EQ(Complaint("// No form: it lies over the canvas.\nplatform::MakeView(spec);", true), "");
  EXPECT_NE(Complaint("// No form: it lies over the canvas.\n", true), "");
}

TEST(ControlsLaw, MakesControlsByHandOnlyWhereItSaysWhy) {
  std::set<std::string> found;
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    const std::string name = NameInSource(path);
    if (Below(path, "src/platform") || Below(path, "src/forms")) continue;
    const bool listed = kByHand.count(name) > 0;
    if (listed) found.insert(name);
    EXPECT_EQ(Complaint(ReadText(path), listed), "") << name;
  }
  EXPECT_EQ(found, kByHand);
}

}  // namespace
