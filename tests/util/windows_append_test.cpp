// Lines that several handles append to one file of Windows.
#include "tests/support/temp_folder.h"
#include "util/native_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <vector>

namespace {

class WindowsAppending : public testing::Test {
 protected:
  std::string bytes() const {
    std::ifstream file(mFolder.root() / "a.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  TempFolder mFolder;
  NativeFile mFile;
};

TEST_F(WindowsAppending, AppendingEndsEachLineInTheSystemsMannerOnce) {
  ASSERT_TRUE(mFile.openForAppending(mFolder.path("a.txt")));
  ASSERT_TRUE(mFile.write("one\ntwo\n"));
  EXPECT_EQ(bytes(), "one\r\ntwo\r\n");
  EXPECT_EQ(mFile.position(), 10);
  EXPECT_EQ(NativeFile::appendedSize("one\ntwo\n"), 10u);
}

TEST_F(WindowsAppending, AppendedTextFollowsWhatOthersAppended) {
  NativeFile other;
  ASSERT_TRUE(mFile.openForAppending(mFolder.path("a.txt")));
  ASSERT_TRUE(other.openForAppending(mFolder.path("a.txt")));
  mFile.write("1");
  other.write("22\n");
  mFile.write("3");
  EXPECT_EQ(mFile.position(), 6);
  EXPECT_EQ(bytes(), "122\r\n3");
}

TEST_F(WindowsAppending, AppendingWritesATextOfAnyLengthWhole) {
  std::string text, expected;
  for (int i = 0; i < 5000; ++i) text += "line\n", expected += "line\r\n";
  ASSERT_TRUE(mFile.openForAppending(mFolder.path("a.txt")));
  EXPECT_TRUE(mFile.write(text));
  EXPECT_EQ(bytes(), expected);
}

TEST_F(WindowsAppending, AppendingNeitherReadsNorOverwrites) {
  mFolder.write("a.txt", "old");
  ASSERT_TRUE(mFile.openForAppending(mFolder.path("a.txt")));
  char buffer[4];
  mFile.rewind();
  EXPECT_EQ(mFile.read(buffer, sizeof buffer), 0u);
  mFile.write("new");
  EXPECT_EQ(bytes(), "oldnew") << "the system itself goes to the end";
}

TEST_F(WindowsAppending, AppendingOpensNoFolder) {
  EXPECT_FALSE(mFile.openForAppending(mFolder.path("")));
  EXPECT_FALSE(mFile.write("x"));
}

}  // namespace
