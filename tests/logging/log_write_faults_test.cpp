// Writing that fails midway: nothing is appended to half a line.
#include "tests/logging/log_fixture.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <cerrno>

namespace {

/// How many writes succeed from now on; negative for all.
int writesLeft = -1;

}  // namespace

// The linker gives the module this instead of the library's (option --wrap). The disk is full in the
// middle of the write after the last one that succeeds, and has room again later.
extern "C" ssize_t __real_write(int handle, const void* dataP, size_t size);
extern "C" ssize_t __wrap_write(int handle, const void* dataP, size_t size) {
  if (writesLeft < 0) return __real_write(handle, dataP, size);
  if (writesLeft-- > 0) return __real_write(handle, dataP, size / 2);
  errno = ENOSPC;
  writesLeft = -1;
  return -1;
}

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

TEST_F(LogTest, AWriteThatFailsMidwayIsTheLastOfTheFile) {
  init();
  LM_LOG(kInfo, "A", "A::b") << "whole";
  writesLeft = 1;
  LM_LOG(kInfo, "A", "A::b") << std::string(500, 'x');
  LM_LOG(kInfo, "A", "A::b") << "lost";
  EXPECT_THAT(file(), Not(HasSubstr("lost"))) << "it would be the end of half a line";
  EXPECT_THAT(file(), EndsWith("xxx"));
}

TEST_F(LogTest, ANextInitWritesAgainAfterAFailure) {
  init();
  writesLeft = 0;
  LM_LOG(kInfo, "A", "A::b") << "lost";
  init();
  LM_LOG(kInfo, "A", "A::b") << "text";
  EXPECT_EQ(linesOf(file()).back().substr(kPrefixWidth), "text");
}

TEST(FailedLogFiles, FileThatAWriteFailedToHasNoPosition) {
  const TempFolder folder;
  const std::unique_ptr<LogFile> fileP = makeLogFile();
  ASSERT_TRUE(fileP->open(folder.path("a.log")));
  fileP->write("text");
  EXPECT_EQ(fileP->position(false), 4);
  writesLeft = 0;
  fileP->write("lost");
  EXPECT_EQ(fileP->position(false), -1);
  EXPECT_EQ(fileP->position(true), -1);
}

}  // namespace
