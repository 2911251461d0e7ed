#include "workbench/text_output.h"

#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

std::string errorOf(const std::filesystem::path& file) {
  try {
    writeFile(file, "text");
  } catch (const std::exception& error) {
    return error.what();
  }
  return "no error";
}

TEST(TextOutput, WriteReplacesALongerFile) {
  const TempFolder folder;
  writeFile(folder / "a.txt", "longer\r\n");
  writeFile(folder / "a.txt", "a\n");
  EXPECT_EQ(folder.bytes("a.txt"), "a\n");
}

TEST(TextOutput, FailedWriteNamesFileAndReason) {
  EXPECT_EQ(errorOf("/nowhere/a.csv"),
            "/nowhere/a.csv: expected a file that can be written, found No such file or directory");
}

#ifndef _WIN32
TEST(TextOutput, FullDiskIsAFailedWrite) {
  EXPECT_EQ(errorOf("/dev/full"),
            "/dev/full: expected a file that can be written, found No space left on device");
}
#endif

}  // namespace
}  // namespace workbench
