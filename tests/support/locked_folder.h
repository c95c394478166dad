// A folder that cannot be written, for as long as the object lives; also where the tests run as the
// superuser, who may write everything: the test goes on as a user without rights, who owns `home`.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

namespace support {

class LockedFolder {
 public:
  LockedFolder(const std::filesystem::path& home, const std::filesystem::path& folder)
      : folder_(folder), superuser_(geteuid() == 0) {
    namespace fs = std::filesystem;
    fs::permissions(folder_, fs::perms(0555));
    if (!superuser_) return;
    constexpr uid_t kNobody = 65534;
    EXPECT_EQ(chown(home.c_str(), kNobody, kNobody), 0);
    for (const auto& entry : fs::recursive_directory_iterator(home)) {
      EXPECT_EQ(chown(entry.path().c_str(), kNobody, kNobody), 0);
    }
    EXPECT_EQ(seteuid(kNobody), 0);
  }
  ~LockedFolder() {
    if (superuser_) {
      EXPECT_EQ(seteuid(0), 0);
    }
    std::filesystem::permissions(folder_, std::filesystem::perms(0755));
  }
  LockedFolder(const LockedFolder&) = delete;
  LockedFolder& operator=(const LockedFolder&) = delete;

 private:
  std::filesystem::path folder_;
  bool superuser_;
};

}  // namespace support
