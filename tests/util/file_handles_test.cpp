// The handles and rights of files: which are open when, which number they have, what a signal does to a
// reading.
#include "tests/support/temp_folder.h"
#include "util/console.h"
#include "util/lock_name.h"
#include "util/native_file.h"
#include "util/sleep_mutex.h"
#include "util/util.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>

namespace {

int interruptionsLeft = 0;

}  // namespace

// The linker gives the module this instead of the library's (option --wrap).
extern "C" ssize_t __real_read(int handle, void* bufferP, size_t size);
extern "C" ssize_t __wrap_read(int handle, void* bufferP, size_t size) {
  if (interruptionsLeft-- > 0) {
    errno = EINTR;
    return -1;
  }
  return __real_read(handle, bufferP, size);
}

namespace {

namespace fs = std::filesystem;

std::ptrdiff_t openHandles() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

class FileHandles : public testing::Test {
 protected:
  FileHandles() {
    mFolder.write("a.txt", "abc");
    mFolder.write("b.txt", "b");
  }
  std::string path(std::string_view name = "a.txt") const { return mFolder.path(name); }
  static std::string textOf(NativeFile& file) {
    std::array<char, 10> buffer{};
    return {buffer.data(), file.read(buffer.data(), buffer.size())};
  }

  TempFolder mFolder;
  const std::ptrdiff_t mBefore = openHandles();
};

TEST_F(FileHandles, FileIsClosedWithItsObjectAndBeforeTheNextIsOpened) {
  {
    NativeFile file;
    for (int i = 0; i < 3; ++i) {
      EXPECT_TRUE(file.openForReading(path()));
      EXPECT_TRUE(file.openForAppending(path()));
      EXPECT_TRUE(file.openForOverwriting(path()));
    }
    EXPECT_EQ(openHandles(), mBefore + 1);
  }
  EXPECT_EQ(openHandles(), mBefore);
}

TEST_F(FileHandles, QuestionsAboutFilesLeaveNoneOpen) {
  NativeFile file;
  EXPECT_FALSE(file.openForReading(mFolder.path("")));
  EXPECT_FALSE(Util::isFileLocked(path()));
  EXPECT_TRUE(Util::fileExists(path()));
  EXPECT_TRUE(replaceFile(path(), "new"));
  EXPECT_EQ(openHandles(), mBefore);
}

TEST_F(FileHandles, ClaimEndsWithTheNextOne) {
  FileClaim claim, other;
  EXPECT_TRUE(claim.claim(path()));
  EXPECT_FALSE(other.claim(path()));
  EXPECT_EQ(openHandles(), mBefore + 1) << "a claim that is refused keeps nothing open";
  EXPECT_TRUE(claim.claim(path("b.txt")));
  EXPECT_TRUE(other.claim(path()));
  EXPECT_FALSE(claim.claim(path("missing.txt")));
  EXPECT_TRUE(other.claim(path("b.txt")));
}

TEST_F(FileHandles, ReleasedClaimClosesNoFileThatWasOpenedSince) {
  NativeFile file;
  {
    FileClaim claim;
    EXPECT_TRUE(claim.claim(path()));
    claim.release();
    EXPECT_TRUE(file.openForReading(path()));
  }
  EXPECT_EQ(textOf(file), "abc");
}

TEST_F(FileHandles, FirstHandleOfAProcessIsOneLikeAllOthers) {
  const int input = dup(STDIN_FILENO);
  close(STDIN_FILENO);
  bool isOpen = false, isClaimed = false, isLocked = true, isFolderOpen = true;
  std::string text;
  {
    NativeFile file;
    isOpen = file.openForReading(path());
    text = textOf(file);
  }
  {
    FileClaim claim;
    isClaimed = claim.claim(path());
  }
  errno = EACCES;
  isLocked = Util::isFileLocked(path());
  isFolderOpen = NativeFile().openForReading(mFolder.path(""));
  const bool isReplaced = replaceFile(path(), "new");
  const bool isFirstFree = dup(STDERR_FILENO) == STDIN_FILENO;
  dup2(input, STDIN_FILENO);
  close(input);
  EXPECT_TRUE(isOpen);
  EXPECT_EQ(text, "abc");
  EXPECT_TRUE(isClaimed);
  EXPECT_FALSE(isLocked);
  EXPECT_FALSE(isFolderOpen);
  EXPECT_TRUE(isReplaced);
  EXPECT_TRUE(isFirstFree) << "each of them has closed it";
}

TEST_F(FileHandles, ReadingGoesOnAfterASignalAndOnlyThen) {
  NativeFile file;
  ASSERT_TRUE(file.openForReading(path()));
  interruptionsLeft = 2;
  std::array<char, 2> buffer{};
  EXPECT_EQ(file.read(buffer.data(), 2), 2u);
  EXPECT_EQ(buffer[0], 'a');
  // Of an earlier operation: a reading that succeeds leaves it.
  errno = EINTR;
  EXPECT_EQ(file.read(buffer.data(), 1), 1u);
  EXPECT_EQ(buffer[0], 'c');
  errno = EINTR;
  EXPECT_EQ(file.read(buffer.data(), 1), 0u);
}

TEST_F(FileHandles, FileThatCanBeOpenedIsNotLockedWhateverFailedBefore) {
  errno = EACCES;
  EXPECT_FALSE(Util::isFileLocked(path()));
}

TEST_F(FileHandles, RightsOfNewFilesAndFoldersAreTheUsers) {
  const mode_t before = umask(0);
  {
    NativeFile file;
    EXPECT_TRUE(file.openForAppending(path("new.txt")));
  }
  EXPECT_TRUE(replaceFile(path("replaced.txt"), "new"));
  EXPECT_TRUE(Util::makeDirectory(path("folder")));
  umask(before);
  const auto rights = [&](const char* nameP) {
    struct stat status = {};
    stat((mFolder / nameP).c_str(), &status);
    return status.st_mode & 07777;
  };
  EXPECT_EQ(rights("new.txt"), 0666u);
  EXPECT_EQ(rights("replaced.txt"), 0666u);
  EXPECT_EQ(rights("folder"), 0777u);
}

TEST(ConsoleLines, LineIsOutBeforeTheProcessEnds) {
  int pipeEnds[2];
  ASSERT_EQ(pipe(pipeEnds), 0);
  // The child would print it again.
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    dup2(pipeEnds[1], STDOUT_FILENO);
    printLine("text");
    _exit(0);
  }
  close(pipeEnds[1]);
  std::string text(100, '\0');
  text.resize(static_cast<std::size_t>(read(pipeEnds[0], text.data(), text.size())));
  close(pipeEnds[0]);
  waitpid(child, nullptr, 0);
  EXPECT_EQ(text, "text\n");
}

TEST(LockNames, NameEndsWhereItsTextEnds) {
  constexpr std::string_view kText = "a name that is longer than the field of a lock's name";
  EXPECT_EQ(LockName(kText.substr(0, 6)).text(), "a name");
  EXPECT_EQ(LockName("").text(), "");
}

TEST(SleepMutexResults, LockAndUnlockReturnSuccess) {
  SleepMutex mutex("name");
  EXPECT_EQ(mutex.lock(), 0);
  EXPECT_EQ(mutex.unlock(), 0);
}

TEST(DateTexts, DayAndMonthBeyondTheTablesBeginThemAgain) {
  std::tm time = {};
  time.tm_mday = 9;
  time.tm_year = 113;
  time.tm_wday = 7;
  time.tm_mon = 12;
  EXPECT_EQ(Util::dateText(time), "Sun Jan  9 2013");
  time.tm_wday = 6;
  time.tm_mon = 11;
  EXPECT_EQ(Util::dateText(time), "Sat Dec  9 2013");
}

}  // namespace
