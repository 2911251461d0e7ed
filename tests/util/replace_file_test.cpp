// A file that is replaced is the old one or the new one, whole, for whoever reads it.
#include "tests/support/temp_folder.h"
#include "util/native_file.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

namespace {

namespace fs = std::filesystem;

class ReplacedFile : public testing::Test {
 protected:
  std::string path() const { return mFolder.path("a.txt"); }
  /// Names in the folder, without order.
  std::size_t fileCount() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(mFolder.root()), {}));
  }
  std::string readWhole() const {
    NativeFile file;
    if (!file.openForReading(path())) return "not found";
    std::string text(100000, ' ');
    text.resize(file.read(text.data(), text.size()));
    return text;
  }

  TempFolder mFolder;
};

TEST_F(ReplacedFile, ReplacedFileHoldsTheNewTextAlone) {
  mFolder.write("a.txt", "a longer old text\n");
  EXPECT_TRUE(replaceFile(path(), "new\n"));
  EXPECT_EQ(mFolder.read("a.txt"), "new\n");
  EXPECT_EQ(fileCount(), 1u) << "nothing is left beside it";
}

TEST_F(ReplacedFile, ReplacedFileMayBeMissingBefore) {
  EXPECT_TRUE(replaceFile(path(), "new\n"));
  EXPECT_EQ(mFolder.read("a.txt"), "new\n");
}

TEST_F(ReplacedFile, ReplacedFileNeedsItsFolder) {
  EXPECT_FALSE(replaceFile(mFolder.path("none\\a.txt"), "new\n"));
  EXPECT_EQ(fileCount(), 0u);
}

TEST_F(ReplacedFile, FolderIsNotReplaced) {
  fs::create_directory(mFolder / "a.txt");
  EXPECT_FALSE(replaceFile(path(), "new\n"));
  EXPECT_TRUE(fs::is_directory(mFolder / "a.txt"));
  EXPECT_EQ(fileCount(), 1u);
}

TEST_F(ReplacedFile, ReplacedFileMayBeOpenElsewhere) {
  mFolder.write("a.txt", "old");
  NativeFile reader;
  ASSERT_TRUE(reader.openForReading(path()));
  EXPECT_TRUE(replaceFile(path(), "new"));
  EXPECT_EQ(readWhole(), "new");
}

TEST_F(ReplacedFile, FileIsReplacedAsSoonAsItIsClosedElsewhere) {
  mFolder.write("a.txt", "old");
  std::atomic<bool> isOpen{false}, isReplaced{false};
  std::thread other([&] {
    NativeFile reader;
    EXPECT_TRUE(reader.openForReading(path()));
    isOpen = true;
    // Until the new file is there, complete or not: the replacement is under way.
    while (fileCount() == 1 && !isReplaced) std::this_thread::yield();
  });
  while (!isOpen) std::this_thread::yield();
  EXPECT_TRUE(replaceFile(path(), "new"));
  isReplaced = true;
  other.join();
  EXPECT_EQ(readWhole(), "new");
}

TEST_F(ReplacedFile, ReplacedFileIsWholeForAReaderAtEveryMoment) {
  const std::string texts[] = {std::string(20000, 'a'), std::string(15000, 'b')};
  ASSERT_TRUE(replaceFile(path(), texts[0]));
  std::atomic<bool> isEnding{false};
  std::thread writer([&] {
    for (int i = 1; i <= 200; ++i) EXPECT_TRUE(replaceFile(path(), texts[i % 2]));
    isEnding = true;
  });
  while (!isEnding) {
    const std::string text = readWhole();
    if (text != texts[0] && text != texts[1]) {
      ADD_FAILURE() << text.size() << " bytes: " << text.substr(0, 20);
      break;
    }
  }
  writer.join();
}

}  // namespace
