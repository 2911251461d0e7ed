// Files when the system's operations fail, or the process ends in the middle of them.
#include "tests/support/temp_folder.h"
#include "tests/util/system_faults.h"
#include "util/native_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

class FileFaults : public testing::Test {
 protected:
  FileFaults() { mFolder.write("a.txt", "old"); }

  std::string path() const { return mFolder.path("a.txt"); }
  bool isAlone() const { return std::distance(fs::directory_iterator(mFolder.root()), {}) == 1; }

  TempFolder mFolder;
};

TEST_F(FileFaults, ReplacementLeavesTheOldFileWholeWhereverTheProcessEnds) {
  int status = EndsAtFileOperation::kStatus;
  int endings = 0;
  for (; status == EndsAtFileOperation::kStatus; ++endings) {
    ASSERT_EQ(mFolder.read("a.txt"), "old");
    const pid_t child = fork();
    if (child == 0) {
      const EndsAtFileOperation ends(endings);
      _exit(replaceFile(path(), "new") ? 0 : 1);
    }
    int result = 0;
    ASSERT_EQ(waitpid(child, &result, 0), child);
    status = WEXITSTATUS(result);
  }
  EXPECT_EQ(status, 0);
  EXPECT_EQ(mFolder.read("a.txt"), "new");
  EXPECT_EQ(endings, 5) << "opened, written, on the disk, renamed, and once to the end";
}

class ReplacementFaults : public FileFaults, public testing::WithParamInterface<SystemCall> {};

TEST_P(ReplacementFaults, FailedReplacementLeavesTheOldFileAlone) {
  const SystemFault fault(GetParam(), EIO);
  EXPECT_FALSE(replaceFile(path(), "new"));
  EXPECT_EQ(mFolder.read("a.txt"), "old");
  EXPECT_TRUE(isAlone());
}

INSTANTIATE_TEST_SUITE_P(Operations, ReplacementFaults,
                         testing::Values(SystemCall::kOpen, SystemCall::kWrite, SystemCall::kFsync,
                                         SystemCall::kRename));

TEST_F(FileFaults, ReplacementKeepsTheRightsOfTheFile) {
  ASSERT_EQ(chmod((mFolder / "a.txt").c_str(), 0640), 0);
  ASSERT_TRUE(replaceFile(path(), "new"));
  EXPECT_EQ(fs::status(mFolder / "a.txt").permissions(), fs::perms{0640});
}

TEST_F(FileFaults, ReplacementFollowsASymbolicLink) {
  fs::create_symlink("a.txt", mFolder / "link");
  EXPECT_TRUE(replaceFile(mFolder.path("link"), "new"));
  EXPECT_TRUE(fs::is_symlink(mFolder / "link"));
  EXPECT_EQ(mFolder.read("a.txt"), "new");
}

TEST_F(FileFaults, ReplacementRefusesAPipe) {
  // No device of the system: whoever breaks the replacement as root would lose it.
  ASSERT_EQ(mkfifo((mFolder / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(replaceFile(mFolder.path("pipe"), "new"));
  EXPECT_TRUE(fs::is_fifo(mFolder / "pipe"));
}

TEST(FilePaths, PathGetsTheSystemsSeparators) {
  EXPECT_EQ(systemPath("\\a\\b/c"), "/a/b/c");
}

TEST_F(FileFaults, WriteGoesOnAfterASignal) {
  NativeFile file;
  ASSERT_TRUE(file.openForAppending(path()));
  const SystemFault fault(SystemCall::kWrite, EINTR, 1);
  EXPECT_TRUE(file.write(" and new"));
  EXPECT_EQ(mFolder.read("a.txt"), "old and new");
}

TEST_F(FileFaults, WriteThatFindsNoRoomMidwayFails) {
  NativeFile file;
  ASSERT_TRUE(file.openForAppending(path()));
  const SystemFault fault(SystemCall::kWrite, EIO);
  EXPECT_FALSE(file.write("x"));
}

TEST_F(FileFaults, WriteGoesOnAfterAPieceOfTheText) {
  NativeFile file;
  ASSERT_TRUE(file.openForAppending(path()));
  const SystemFault fault(SystemCall::kWrite, ENOSPC, 1);
  EXPECT_TRUE(file.write("12345678"));
  EXPECT_EQ(mFolder.read("a.txt"), "old12345678");
}

}  // namespace
