#include "workbench/running/result_folder.h"

#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

namespace fs = std::filesystem;

class Results : public testing::Test {
 protected:
  /// An earlier run's results, and a later one's in `partial`.
  void SetUp() override {
    fs::create_directories(mFolder / "out");
    mFolder.write("out/a.csv", "old a");
    mFolder.write("out/b.csv", "old b");
    mFolder.write("out/mine.txt", "mine");
    mResults.emplace(mFolder / "out");
    mResults->begin();
    mFolder.write("out/partial/a.csv", "new a");
    mFolder.write("out/partial/b.csv", "new b");
  }

  const TempFolder mFolder;
  std::optional<ResultFolder> mResults;
};

TEST_F(Results, PutInPlaceReplacesAllAndKeepsOtherFiles) {
  mResults->putInPlace({"a.csv", "b.csv"});
  EXPECT_EQ(mFolder.read("out/a.csv"), "new a");
  EXPECT_EQ(mFolder.read("out/b.csv"), "new b");
  EXPECT_EQ(mFolder.read("out/mine.txt"), "mine");
  EXPECT_FALSE(mFolder.has("out/partial"));
}

TEST_F(Results, FailedMoveUndoesTheOthers) {
  EXPECT_ANY_THROW(mResults->putInPlace({"a.csv", "b.csv", "missing.csv"}));
  EXPECT_EQ(mFolder.read("out/a.csv"), "old a");
  EXPECT_EQ(mFolder.read("out/b.csv"), "old b");
  EXPECT_EQ(mFolder.read("out/partial/a.csv"), "new a");
}

TEST_F(Results, PutInPlaceReplacesAFolderOfThatName) {
  fs::create_directories(mFolder / "out/profile/Lumetrapad/old");
  fs::create_directories(mFolder / "out/partial/profile/Lumetrapad/new");
  mResults->putInPlace({"profile/Lumetrapad"});
  EXPECT_TRUE(mFolder.has("out/profile/Lumetrapad/new"));
  EXPECT_FALSE(mFolder.has("out/profile/Lumetrapad/old"));
}

TEST_F(Results, PartialStaysOnlyForARunUnderWay) {
  mResults.reset();
  EXPECT_FALSE(mFolder.has("out/partial"));
  mResults.emplace(mFolder / "out");
  mResults->begin();
  mResults->keepPartial();
  mResults.reset();
  EXPECT_TRUE(mFolder.has("out/partial"));
}

TEST_F(Results, LockedFolderRefusesASecondRun) {
  try {
    const ResultFolder second(mFolder / "out");
    FAIL();
  } catch (const std::exception& error) {
    EXPECT_EQ(error.what(), (mFolder / "out").string() +
                                ": expected a folder for the results, found one that another run is writing "
                                "into; wait for its end, or name another folder");
  }
  EXPECT_TRUE(mFolder.has("out/partial/a.csv")) << "the first run's";
  mResults.reset();
  const ResultFolder third(mFolder / "out");
}

TEST_F(Results, UnusedFoldersAreRemovedAgain) {
  { const ResultFolder results(mFolder / "new/deeper"); }
  EXPECT_FALSE(mFolder.has("new"));
}

}  // namespace
}  // namespace workbench
