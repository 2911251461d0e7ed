// Programs that the host starts must not keep the module's files open.
#include "tests/support/temp_folder.h"
#include "util/native_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

/// Whether the handle under which `file` is open here ends when a program is started; false without one.
bool isClosedOnExec(const std::filesystem::path& file) {
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code ignored;
    if (std::filesystem::read_symlink(entry.path(), ignored) != file) continue;
    return (fcntl(std::stoi(entry.path().filename().string()), F_GETFD) & FD_CLOEXEC) != 0;
  }
  return false;
}

TEST(FileInheritance, StartedProgramsInheritNoFile) {
  const TempFolder folder;
  const std::filesystem::path path = folder.write("a.txt", "text");
  NativeFile file;
  for (const auto open :
       {&NativeFile::openForReading, &NativeFile::openForAppending, &NativeFile::openForOverwriting}) {
    ASSERT_TRUE((file.*open)(folder.path("a.txt")));
    EXPECT_TRUE(isClosedOnExec(path));
  }
}

}  // namespace
