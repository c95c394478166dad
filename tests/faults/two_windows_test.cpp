// Two processes of the workbench with one program open in both: neither loses the other's work.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "support/places.h"
#include "support/program_stage.h"

namespace {

namespace fs = std::filesystem;

// One process, spoken to by lines.
class Window {
 public:
  explicit Window(const fs::path& home) {
    int toIt[2];
    int fromIt[2];
    if (pipe(toIt) != 0 || pipe(fromIt) != 0) return;
    process_ = fork();
    if (process_ == 0) {
      dup2(toIt[0], 0);
      dup2(fromIt[1], 1);
      for (const int end : {toIt[0], toIt[1], fromIt[0], fromIt[1]}) close(end);
      const std::string program = support::BinaryDir() + std::string("/bin/morva_drive");
      execl(program.c_str(), program.c_str(), home.c_str(), nullptr);
      _exit(127);
    }
    close(toIt[0]);
    close(fromIt[1]);
    in_ = fdopen(toIt[1], "w");
    out_ = fdopen(fromIt[0], "r");
  }
  ~Window() {
    if (in_) std::fclose(in_);
    if (out_) std::fclose(out_);
    if (process_ > 0) waitpid(process_, nullptr, 0);
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  std::string Say(const std::string& line) {
    std::fprintf(in_, "%s\n", line.c_str());
    std::fflush(in_);
    std::string answer;
    for (int c = std::fgetc(out_); c != EOF && c != '\n'; c = std::fgetc(out_)) {
      answer += static_cast<char>(c);
    }
    return answer;
  }

 private:
  pid_t process_ = -1;
  std::FILE* in_ = nullptr;
  std::FILE* out_ = nullptr;
};

struct TwoWindows : public ::testing::Test {
  fs::path folder = support::NewHome();
  fs::path program = folder / "part.NC";
  ~TwoWindows() override {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }
  void Open(Window& window) const {
    window.Say("file \"" + program.string() + "\"");
    window.Say("click \"OPEN\"");
    window.Say("wait 1000");
  }
  static bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != text.npos;
  }
  static int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; ++at) ++count;
    return count;
  }
  // A circle of the sketch around a point of the canvas.
  static void DrawCircle(Window& window, int x) {
    window.Say("click \"Circle\"");
    for (const int at : {x, x + 40}) {
      for (const char* deed : {"press", "release"}) {
        window.Say("mouse MorvaCustomShapeCanvas " + std::string(deed) + " " + std::to_string(at) +
                   " 250 left");
      }
    }
    window.Say("key \"Esc\"");
  }
  static int Objects(Window& window) { return Count(window.Say("get sketch"), "\"type\":"); }
};

TEST_F(TwoWindows, KeepWhatTheOtherSavedAndOfferItForLoading) {
  support::WriteRaw(program, "G0 X1\r\n");
  Window first(folder / "first");
  Window second(folder / "second");
  Open(first);
  Open(second);
  first.Say("editor insert \"G4 P1 \"");
  first.Say("wait 1000");
  ASSERT_TRUE(Holds(support::ReadRaw(program), "G4 P1 "));
  // The second has nothing of its own: it takes what the first wrote.
  second.Say("answer yes");
  second.Say("front");
  EXPECT_TRUE(Holds(second.Say("get text"), "G4 P1 "));
  // Both type. Whoever saves first is kept; the other one is told.
  first.Say("editor insert \"G4 P2 \"");
  second.Say("editor insert \"G4 P3 \"");
  first.Say("wait 1000");
  second.Say("wait 1000");
  EXPECT_TRUE(Holds(support::ReadRaw(program), "G4 P2 "));
  EXPECT_FALSE(Holds(support::ReadRaw(program), "G4 P3 "));
  EXPECT_TRUE(Holds(second.Say("get status"), "Changed on disk by another program."));
  EXPECT_TRUE(Holds(second.Say("get text"), "G4 P3 "));
  // Under another name both are kept.
  second.Say("answer other");
  second.Say("file \"" + (folder / "mine.NC").string() + "\"");
  second.Say("command 3000");
  EXPECT_TRUE(Holds(support::ReadRaw(folder / "mine.NC"), "G4 P3 "));
  EXPECT_FALSE(Holds(support::ReadRaw(program), "G4 P3 "));
}

TEST_F(TwoWindows, KeepTheDrawingsThatTheOtherSaved) {
  support::WriteRaw(program, "G0 X1\r\n");
  Window first(folder / "first");
  Window second(folder / "second");
  for (Window* window : {&first, &second}) {
    Open(*window);
    window->Say("click 1201");
    // What is drawn from here on changes no byte of the program.
    window->Say("command 3000");
    window->Say("wait 1000");
  }
  DrawCircle(first, 300);
  first.Say("wait 6000");
  ASSERT_EQ(Objects(first), 1);
  const std::string text = support::ReadRaw(program);
  const std::string drawings = support::ReadRaw(folder / "part.NC.cadmv");
  DrawCircle(second, 300);
  DrawCircle(second, 500);
  second.Say("wait 6000");
  EXPECT_EQ(support::ReadRaw(program), text);
  EXPECT_EQ(support::ReadRaw(folder / "part.NC.cadmv"), drawings);
  EXPECT_TRUE(Holds(second.Say("get status"), "Changed on disk by another program."));
  // Both ways out that keep the other one's.
  second.Say("answer other");
  second.Say("file \"" + (folder / "mine.NC").string() + "\"");
  second.Say("command 3000");
  second.Say("wait 1000");
  EXPECT_EQ(support::ReadRaw(folder / "part.NC.cadmv"), drawings);
  EXPECT_NE(support::ReadRaw(folder / "mine.NC.cadmv"), drawings);
  EXPECT_EQ(Objects(second), 2);
  Open(second);
  EXPECT_EQ(Objects(second), 1);
}

TEST_F(TwoWindows, OfferTheDrawingsOfTheOtherForLoading) {
  support::WriteRaw(program, "G0 X1\r\n");
  Window first(folder / "first");
  Open(first);
  first.Say("command 3000");
  first.Say("click 1201");
  DrawCircle(first, 300);
  first.Say("wait 6000");
  Window second(folder / "second");
  Open(second);
  second.Say("click 1201");
  ASSERT_EQ(Objects(second), 1);
  const std::string text = support::ReadRaw(program);
  DrawCircle(first, 500);
  first.Say("wait 6000");
  ASSERT_EQ(support::ReadRaw(program), text);
  second.Say("answer yes");
  second.Say("front");
  EXPECT_TRUE(Holds(second.Say("get boxes"), "was changed on disk by another program"));
  EXPECT_EQ(Objects(second), 2);
  // Nothing has changed since.
  second.Say("front");
  EXPECT_FALSE(Holds(second.Say("get boxes"), "was changed on disk by another program"));
}

TEST_F(TwoWindows, KeepThePlatesThatTheOtherSaved) {
  support::WriteRaw(program, "G0 X1\r\n");
  Window first(folder / "first");
  Window second(folder / "second");
  for (Window* window : {&first, &second}) {
    Open(*window);
    window->Say("click \"Plate\"");
    window->Say("command 3000");
    window->Say("wait 1000");
  }
  const auto makePlate = [](Window& window, const std::string& name, const std::string& count) {
    window.Say("click \"Create plate\"");
    window.Say("type \"Plate name\" \"" + name + "\"");
    window.Say("click \"Apply\"");
    window.Say("select \"Layout\" 1");
    window.Say("type \"Count X\" \"" + count + "\"");
    window.Say("wait 6000");
  };
  makePlate(first, "Base", "3");
  const std::string text = support::ReadRaw(program);
  const std::string plates = support::ReadRaw(folder / "part.NC.platemv");
  ASSERT_FALSE(plates.empty());
  makePlate(second, "Cover", "5");
  EXPECT_EQ(support::ReadRaw(program), text);
  EXPECT_EQ(support::ReadRaw(folder / "part.NC.platemv"), plates);
  EXPECT_TRUE(Holds(second.Say("get status"), "Changed on disk by another program."));
  // What the user says may be written over, is.
  second.Say("answer yes");
  second.Say("command 3000");
  second.Say("wait 1000");
  EXPECT_NE(support::ReadRaw(folder / "part.NC.platemv"), plates);
  first.Say("answer yes");
  first.Say("front");
  EXPECT_TRUE(Holds(first.Say("get boxes"), "was changed on disk by another program"));
  EXPECT_EQ(support::ReadRaw(folder / "part.NC.platemv.kept"), plates);
}

}  // namespace
