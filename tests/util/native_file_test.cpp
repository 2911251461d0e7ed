#include "util/native_file.h"

#include "tests/support/refusing_file.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class NativeFiles : public testing::Test {
 protected:
  std::string path() const { return mFolder.path("a.txt"); }

  TempFolder mFolder;
  NativeFile mFile;
};

TEST_F(NativeFiles, FileIsReadInPieces) {
  mFolder.write("a.txt", "abc");
  ASSERT_TRUE(mFile.openForReading(path()));
  char buffer[2];
  EXPECT_EQ(mFile.read(buffer, 2), 2u);
  EXPECT_EQ(mFile.read(buffer, 2), 1u);
  EXPECT_EQ(buffer[0], 'c');
  EXPECT_EQ(mFile.read(buffer, 2), 0u);
  mFile.rewind();
  EXPECT_EQ(mFile.position(), 0);
}

TEST_F(NativeFiles, MissingFileIsNotRead) {
  EXPECT_FALSE(mFile.openForReading(path()));
  EXPECT_FALSE(mFile.openForOverwriting(path()));
  EXPECT_FALSE(mFile.isOpen());
  char buffer[1];
  EXPECT_EQ(mFile.read(buffer, 1), 0u);
  EXPECT_FALSE(mFile.write("x"));
  EXPECT_EQ(mFile.position(), -1);
}

TEST_F(NativeFiles, FileIsAppendedToWhateverOthersAppendMeanwhile) {
  NativeFile other;
  mFolder.write("a.txt", "0");
  ASSERT_TRUE(mFile.openForAppending(path()));
  EXPECT_EQ(mFile.position(), 1);
  ASSERT_TRUE(other.openForAppending(path()));
  mFile.write("1");
  other.write("2");
  mFile.write("3");
  EXPECT_EQ(mFile.position(), 4);
  EXPECT_EQ(mFolder.read("a.txt"), "0123");
}

TEST_F(NativeFiles, FileKeepsWhatIsNotOverwritten) {
  mFolder.write("a.txt", "old text");
  ASSERT_TRUE(mFile.openForOverwriting(path()));
  EXPECT_TRUE(mFile.write("new"));
  EXPECT_EQ(mFolder.read("a.txt"), "new text");
}

TEST_F(NativeFiles, FolderIsNotOpenedAsAFile) {
  EXPECT_FALSE(mFile.openForReading(mFolder.path("")));
  EXPECT_FALSE(mFile.openForAppending(mFolder.path("")));
  EXPECT_EQ(removeFile(mFolder.path("")), FileChange::kFailed);
}

TEST_F(NativeFiles, RefusedWriteIsReported) {
  RefusingFile refusing;
  ASSERT_TRUE(mFile.openForAppending(refusing.path()));
  refusing.refuse();
  EXPECT_FALSE(mFile.write("x"));
}

TEST_F(NativeFiles, FilesAreRemovedAndRenamed) {
  mFolder.write("a.txt", "x");
  EXPECT_EQ(renameFile(path(), mFolder.path("b.txt")), FileChange::kDone);
  EXPECT_EQ(renameFile(path(), mFolder.path("c.txt")), FileChange::kMissing);
  EXPECT_EQ(mFolder.read("b.txt"), "x");
  EXPECT_EQ(removeFile(mFolder.path("b.txt")), FileChange::kDone);
  EXPECT_EQ(removeFile(mFolder.path("b.txt")), FileChange::kMissing);
}

}  // namespace
