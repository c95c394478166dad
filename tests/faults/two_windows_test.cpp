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
  second.Say("key \"Ctrl+S\"");
  EXPECT_TRUE(Holds(support::ReadRaw(folder / "mine.NC"), "G4 P3 "));
  EXPECT_FALSE(Holds(support::ReadRaw(program), "G4 P3 "));
}

}  // namespace
