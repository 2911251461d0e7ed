#include "config/cnfg.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class CnfgEditing : public testing::Test {
 protected:
  void load(std::string_view text) {
    mFolder.write("a.ini", text);
    ASSERT_EQ(mCnfg.open(mFolder.path("a.ini")), Cnfg::kOk);
    ASSERT_EQ(mCnfg.loadForEditing(), Cnfg::kOk);
  }

  TempFolder mFolder;
  Cnfg mCnfg;
};

TEST_F(CnfgEditing, SavingWithoutALoadDoesNothing) {
  mFolder.write("a.ini", "x\n\n\n");
  mCnfg.open(mFolder.path("a.ini"));
  EXPECT_EQ(mCnfg.save(), 0);
  EXPECT_EQ(mFolder.read("a.ini"), "x\n\n\n");
}

TEST_F(CnfgEditing, OpeningLeavesEditingMode) {
  load("[A]\nk=1\n");
  mCnfg.setParameter("k", "2");
  mCnfg.open(mFolder.path("a.ini"));
  EXPECT_EQ(mCnfg.save(), 0);
  EXPECT_EQ(mFolder.read("a.ini"), "[A]\nk=1\n");
}

TEST_F(CnfgEditing, ANewValueKeepsWhatIsAroundIt) {
  load("[A]\n\tkey  = old     # comment\n");
  EXPECT_EQ(mCnfg.setParameter("key", "longer"), 0);
  EXPECT_EQ(mCnfg.save(), 0);
  EXPECT_EQ(mFolder.read("a.ini"), "[A]\n\tkey  = longer  # comment\n");
}

TEST_F(CnfgEditing, AValueThatNeedsTheRoomMovesTheComment) {
  load("k = 1 # c\n");
  mCnfg.setParameter("k", "12345");
  mCnfg.save();
  EXPECT_EQ(mFolder.read("a.ini"), "k = 12345 # c\n");
}

TEST_F(CnfgEditing, AValueTakesTheRoomOfBlanksBeforeTheComment) {
  load("\tfileToLog = \t       # name\nempty =# c\n");
  mCnfg.setParameter("fileToLog", "a.cpp");
  mCnfg.setParameter("empty", "1");
  mCnfg.save();
  EXPECT_EQ(mFolder.read("a.ini"), "\tfileToLog = a.cpp   # name\nempty =1 # c\n");
}

TEST_F(CnfgEditing, AValueEndsWhereItWouldEndInTheFile) {
  load("a=1\nb=2\nc=3\n");
  mCnfg.setParameter("a", "44#5");
  mCnfg.setParameter("b", "4\n[B]");
  mCnfg.setParameter("c", "4\r5");
  mCnfg.save();
  EXPECT_EQ(mFolder.read("a.ini"), "a=44\nb=4\nc=4\n");
}

TEST_F(CnfgEditing, ALineOfBlanksAtTheEndIsKept) {
  load("k=1\n \n\n");
  mCnfg.setParameter("k", "11");
  mCnfg.save();
  EXPECT_EQ(mFolder.read("a.ini"), "k=11\n \n");
}

TEST_F(CnfgEditing, ACommentWithAnotherHashIsKeptWhole) {
  mFolder.write("a.ini", "[A]\nk = 1 # two # three\n");
  ASSERT_EQ(mCnfg.open(mFolder.path("a.ini")), 0);
  mCnfg.loadForEditing();
  EXPECT_EQ(mCnfg.setParameter("k", "2", "A"), 0);
  EXPECT_EQ(mCnfg.save(), 0);
  EXPECT_EQ(mFolder.read("a.ini"), "[A]\nk = 2 # two # three\n");
}

TEST_F(CnfgEditing, WhatIsMissingIsNamed) {
  load("[A]\nk=1\n");
  mCnfg.setParameter("none", "2", "A");
  EXPECT_EQ(mCnfg.getErrorText(),
            "Parameter 'none' in section 'A' not found! (" + mFolder.path("a.ini") + ")");
  mCnfg.setParameter("k", "2", "B");
  EXPECT_EQ(mCnfg.getErrorText(), "Section 'B' not found!");
}

TEST_F(CnfgEditing, AKeyAloneGetsASeparator) {
  load("key\n");
  mCnfg.setParameter("key", "1");
  mCnfg.save();
  EXPECT_EQ(mFolder.read("a.ini"), "key=1\n");
}

TEST_F(CnfgEditing, AMissingKeyIsNotFound) {
  load("[A]\nk=1\n");
  EXPECT_EQ(mCnfg.setParameter("none", "2"), 3);
  EXPECT_EQ(mCnfg.getErrorText(),
            "Parameter 'none' in section '' not found! (" + mFolder.path("a.ini") + ")");
}

TEST_F(CnfgEditing, ASectionLimitsTheSearch) {
  load("[A]\na=1\n[B]\nk=1\n");
  EXPECT_EQ(mCnfg.setParameter("k", "2", "A"), 3);
  EXPECT_EQ(mCnfg.setParameter("k", "2", "C"), 2);
  EXPECT_EQ(mCnfg.setParameter("k", "2", "B"), 0);
  mCnfg.save();
  EXPECT_EQ(mFolder.read("a.ini"), "[A]\na=1\n[B]\nk=2\n");
}

TEST_F(CnfgEditing, EmptyLinesAtTheEndAreDroppedFromMemoryOnly) {
  load("k=1\n\n\n");
  mCnfg.save();
  EXPECT_EQ(mFolder.read("a.ini"), "k=1\n\n\n");
}

TEST_F(CnfgEditing, AShorterTextLeavesTheOldTailAfterIt) {
  load("k=12345\nz=1\n");
  mCnfg.setParameter("k", "1");
  EXPECT_EQ(mCnfg.save(), 0);
  EXPECT_EQ(mFolder.read("a.ini"), "k=1\nz=1\nz=1\n");
}

TEST_F(CnfgEditing, ASavedFileCanBeReadOn) {
  load("[A]\nk=1\n");
  mCnfg.setParameter("k", "2");
  mCnfg.save();
  std::string value;
  EXPECT_EQ(mCnfg.readParameter("k", value, "A"), 0);
  EXPECT_EQ(value, "2");
}

TEST_F(CnfgEditing, AFileThatIsGoneCannotBeSaved) {
  load("k=1\n");
  std::filesystem::remove(mFolder.root() / "a.ini");
  EXPECT_EQ(mCnfg.save(), 1);
  EXPECT_FALSE(mFolder.has("a.ini"));
}

}  // namespace
