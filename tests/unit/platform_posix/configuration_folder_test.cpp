#include "platform/posix/configuration_folder.h"

#include <gtest/gtest.h>

namespace {

std::u16string From(const char* configHome, const char* home) {
  std::u16string path;
  return platform::ConfigurationFolderFrom(configHome, home, path) ? path : u"none";
}

TEST(ConfigurationFolder, IsTheOneThatTheUserNames) {
  EXPECT_EQ(From("/data/settings", "/home/ann"), u"/data/settings");
  EXPECT_EQ(From("/data/settings/", nullptr), u"/data/settings");
  EXPECT_EQ(From("/", nullptr), u"/");
}

TEST(ConfigurationFolder, IsInTheHomeFolderOtherwise) {
  EXPECT_EQ(From(nullptr, "/home/ann"), u"/home/ann/.config");
  EXPECT_EQ(From("", "/home/ann/"), u"/home/ann/.config");
  EXPECT_EQ(From(nullptr, "/"), u"/.config");
}

TEST(ConfigurationFolder, IsNeverARelativePath) {
  EXPECT_EQ(From("settings", "/home/ann"), u"/home/ann/.config");
  EXPECT_EQ(From("./settings", nullptr), u"none");
  EXPECT_EQ(From(nullptr, "ann"), u"none");
}

TEST(ConfigurationFolder, IsNoneWithoutAHomeFolder) {
  EXPECT_EQ(From(nullptr, nullptr), u"none");
  EXPECT_EQ(From("", ""), u"none");
}

TEST(ConfigurationFolder, IsNotAFolderWhoseNameCannotBeRead) {
  EXPECT_EQ(From("/data/\xE9", "/home/ann"), u"/home/ann/.config");
  EXPECT_EQ(From(nullptr, "/home/\xE9"), u"none");
}

}  // namespace
