// The laws about the pages for users: what they lead to is there, and no picture is left over.

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>

#include "house/sources.h"

namespace {

using namespace house;

const char* const kPages[] = {"README.md", "docs/guide.md", "docs/from_drawing_to_chips.md",
                              "docs/first_connection.md", "docs/limits.md"};

std::set<std::string> PicturesOf(const std::string& page) {
  static const std::regex kPicture(R"(!\[[^\]]+\]\((?:docs/)?pictures/([a-z_]+\.png)\))");
  std::set<std::string> pictures;
  for (auto it = std::sregex_iterator(page.begin(), page.end(), kPicture);
       it != std::sregex_iterator(); ++it) {
    pictures.insert((*it)[1].str());
  }
  return pictures;
}

// Width or height as a PNG has it in its head.
int NumberAt(const std::string& png, std::size_t at) {
  int number = 0;
  for (std::size_t i = at; i < at + 4 && i < png.size(); ++i) {
    number = number * 256 + static_cast<unsigned char>(png[i]);
  }
  return number;
}

TEST(Pages, HaveTheirPicturesFound) {
  EXPECT_EQ(PicturesOf("![A](pictures/a.png) pictures/b.png\n![C](docs/pictures/c_d.png)"),
            (std::set<std::string>{"a.png", "c_d.png"}));
}

TEST(Pages, ShowEachPictureOfTheFolderInOneSize) {
  std::set<std::string> shown;
  for (const char* page : kPages) shown.merge(PicturesOf(ReadText(kSource / page)));
  std::set<std::string> there;
  for (const auto& entry : fs::directory_iterator(kSource / "docs/pictures")) {
    there.insert(entry.path().filename().string());
    const std::string png = ReadText(entry.path());
    EXPECT_EQ(NumberAt(png, 16), 1200) << entry.path();
    EXPECT_EQ(NumberAt(png, 20), 800) << entry.path();
  }
  EXPECT_EQ(shown, there);
}

}  // namespace
