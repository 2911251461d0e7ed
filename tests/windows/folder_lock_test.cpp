#include "workbench/platform/folder_lock.h"

#include "tests/support/temp_folder.h"
#include "workbench/input_error.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace workbench {
namespace {

TEST(FolderLocks, LockIsTakenOnceAtATime) {
  const TempFolder folder;
  auto first = FolderLock::take(folder.root());
  ASSERT_TRUE(first);
  EXPECT_FALSE(FolderLock::take(folder.root()));
  first.reset();
  EXPECT_TRUE(FolderLock::take(folder.root()));
}

/// Windows denies the access for that reason as it does in a folder that may not be written.
TEST(FolderLocks, DeniedAccessIsNoOtherRun) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / ".lock");
  try {
    FolderLock::take(folder.root());
    FAIL();
  } catch (const InputError& error) {
    EXPECT_THAT(error.what(), testing::HasSubstr(": expected a folder that can be written, found "));
  }
}

}  // namespace
}  // namespace workbench
