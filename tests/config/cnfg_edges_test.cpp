#include "config/cnfg.h"
#include "config/line_reader.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

class CnfgEdges : public testing::Test {
 protected:
  void open(std::string_view text) {
    mFolder.write("a.ini", text);
    ASSERT_EQ(mCnfg.open(mFolder.path("a.ini")), Cnfg::kOk);
  }

  std::string edited(std::string_view text, std::string_view key, std::string_view value) {
    open(text);
    mCnfg.loadForEditing();
    EXPECT_EQ(mCnfg.setParameter(key, value), Cnfg::kOk);
    EXPECT_EQ(mCnfg.save(), Cnfg::kOk);
    return mFolder.read("a.ini");
  }

  TempFolder mFolder;
  Cnfg mCnfg;
};

TEST_F(CnfgEdges, ValueByIndexIsTrimmedUnlessAskedOtherwise) {
  open("[A]\nk = \tx \t\n");
  std::string key;
  std::string value;
  EXPECT_EQ(mCnfg.readParameterByIndex(key, value, "A", 0), Cnfg::kOk);
  EXPECT_EQ(value, "x");
  EXPECT_EQ(mCnfg.readParameterByIndex(key, value, "A", 0, Cnfg::Trim::kNo), Cnfg::kOk);
  EXPECT_EQ(value, " \tx \t");
}

TEST_F(CnfgEdges, IndexOfNextParameterAfterLastIsNotFound) {
  open("[A]\na=1\nb=2");
  std::string key;
  std::string value;
  EXPECT_EQ(mCnfg.readParameterByIndex(key, value, "A", 1), Cnfg::kOk);
  EXPECT_EQ(key, "b");
  EXPECT_EQ(mCnfg.readParameterByIndex(key, value, "A", 2), Cnfg::kParameterNotFound);
}

TEST_F(CnfgEdges, LineThatBeginsWithTheSeparatorHasNoKey) {
  open("[A]\n=5\nk=1\n");
  std::string value = "before";
  // A line that is no parameter ends the section.
  EXPECT_EQ(mCnfg.readParameter("k", value, "A"), Cnfg::kParameterNotFound);
  EXPECT_EQ(mCnfg.readParameter("", value, "A"), Cnfg::kParameterNotFound);
  EXPECT_EQ(value, "before");
}

TEST_F(CnfgEdges, SavingBeforeAnythingIsOpenDoesNothing) {
  EXPECT_EQ(mCnfg.save(), Cnfg::kOk);
}

TEST_F(CnfgEdges, EditingAValueOfOneNulKeepsNoBlank) {
  EXPECT_EQ(edited("k=\0 # c\n"s, "k", "12"), "k=12 # c\n");
  EXPECT_EQ(edited("k=\0\n"s, "k", "12"), "k=12\n");
}

TEST_F(CnfgEdges, EditingKeepsATabAsTheSeparator) {
  EXPECT_EQ(edited("k\t1\n", "k", "2"), "k\t2\n");
}

TEST_F(CnfgEdges, EditedValueThatFillsTheRoomGetsABlankBeforeTheComment) {
  EXPECT_EQ(edited("k=12# c\n", "k", "34"), "k=34 # c\n");
}

TEST_F(CnfgEdges, EditingLoadsTheWholeFileAfterAPartWasRead) {
  open("[A]\na=1\nb=2\n");
  std::string value;
  ASSERT_EQ(mCnfg.readParameter("a", value, "A"), Cnfg::kOk);
  mCnfg.loadForEditing();
  EXPECT_EQ(mCnfg.setParameter("a", "3", "A"), Cnfg::kOk);
  mCnfg.save();
  EXPECT_EQ(mFolder.read("a.ini"), "[A]\na=3\nb=2\n");
}

TEST_F(CnfgEdges, EditingLoadedTwiceHoldsTheFileOnce) {
  open("[A]\na=1\n");
  mCnfg.loadForEditing();
  mCnfg.loadForEditing();
  mCnfg.save();
  EXPECT_EQ(mFolder.read("a.ini"), "[A]\na=1\n");
}

TEST_F(CnfgEdges, EmptyKeyIsNotThatOfAComment) {
  open("# comment\n\n[A]\n# comment\n");
  mCnfg.loadForEditing();
  EXPECT_EQ(mCnfg.setParameter("", "1"), Cnfg::kParameterNotFound);
  EXPECT_EQ(mCnfg.setParameter("", "1", "A"), Cnfg::kParameterNotFound);
}

TEST(LineReaderEdges, AnotherFileBeginsAtItsFirstLine) {
  const TempFolder folder;
  folder.write("a", "a1\na2\n");
  folder.write("b", "b1");
  LineReader reader;
  ASSERT_TRUE(reader.open(folder.path("a")));
  EXPECT_EQ(reader.next(), "a1");
  ASSERT_TRUE(reader.open(folder.path("b")));
  EXPECT_EQ(reader.next(), "b1");
  EXPECT_TRUE(reader.isAtEnd());
  ASSERT_TRUE(reader.open(folder.path("b")));
  EXPECT_FALSE(reader.isAtEnd());
}

TEST(LineReaderEdges, RewoundFileIsReadAsItIsNow) {
  const TempFolder folder;
  folder.write("a", "a1\na2\na3");
  LineReader reader;
  ASSERT_TRUE(reader.open(folder.path("a")));
  reader.next();
  folder.write("a", "b1\nb2\nb3");
  reader.rewind();
  EXPECT_FALSE(reader.isAtEnd());
  EXPECT_EQ(reader.next(), "b1");
  EXPECT_EQ(reader.next(), "b2");
  EXPECT_EQ(reader.next(), "b3");
  EXPECT_TRUE(reader.isAtEnd());
}

TEST(LineReaderEdges, NothingOpenIsOneEmptyLine) {
  LineReader reader;
  reader.rewind();
  EXPECT_EQ(reader.next(), "");
  EXPECT_TRUE(reader.isAtEnd());
}

}  // namespace
