// Files in a user's profile whose name the ANSI code page does not have.
#include "tests/support/temp_folder.h"
#include "util/native_file.h"
#include "util/util.h"
#include "util/wide_text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

class ForeignProfile : public testing::Test {
 protected:
  ForeignProfile()
      : mBefore(environmentValue(L"USERPROFILE")), mProfile(mFolder / L"\u0418\u0432\u0430\u043d \u674e") {
    std::filesystem::create_directory(mProfile);
    _wputenv_s(L"USERPROFILE", mProfile.c_str());
  }
  ~ForeignProfile() override { _wputenv_s(L"USERPROFILE", mBefore.c_str()); }

  TempFolder mFolder;
  std::wstring mBefore;
  std::filesystem::path mProfile;
};

TEST_F(ForeignProfile, ForeignProfileHoldsFilesThatAreNamedInNarrowCharacters) {
  const std::string path = Util::getUserProfileDir() + "\\a.txt";
  EXPECT_TRUE(replaceFile(path, "text\n"));
  EXPECT_TRUE(std::filesystem::exists(mProfile / "a.txt"));
  EXPECT_TRUE(Util::fileExists(path));
  EXPECT_TRUE(Util::folderExists(Util::getUserProfileDir()));
  EXPECT_FALSE(Util::isFileLocked(path));
  EXPECT_EQ(removeFile(path), FileChange::kDone);
  EXPECT_FALSE(std::filesystem::exists(mProfile / "a.txt"));
}

TEST_F(ForeignProfile, ForeignProfileIsShownInNarrowCharacters) {
  const std::string shown = Util::getUserProfileDir();
  EXPECT_EQ(shown.substr(0, mFolder.root().string().size()), mFolder.root().string());
}

TEST_F(ForeignProfile, ForeignProfileLeavesOtherPathsAlone) {
  mFolder.write("b.txt", "x");
  EXPECT_TRUE(Util::fileExists(mFolder.path("b.txt")));
  EXPECT_FALSE(Util::fileExists(mFolder.path("a.txt")));
}

}  // namespace
