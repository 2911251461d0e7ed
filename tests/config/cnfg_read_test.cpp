#include "config/cnfg.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace {

class CnfgReading : public testing::Test {
 protected:
  void open(std::string_view text) {
    mFolder.write("a.ini", text);
    ASSERT_EQ(mCnfg.open(mFolder.path("a.ini")), Cnfg::kOk);
  }

  TempFolder mFolder;
  Cnfg mCnfg;
  std::string mKey = "untouched";
  std::string mValue = "untouched";
};

TEST_F(CnfgReading, NothingHasFailedAtFirst) {
  EXPECT_EQ(mCnfg.getErrorText(), "OK");
}

TEST_F(CnfgReading, AMissingFileIsNotFound) {
  const std::string path = mFolder.path("none.ini");
  EXPECT_EQ(mCnfg.open(path), 1);
  EXPECT_EQ(mCnfg.getErrorText(), "File '" + path + "' not found!");
}

TEST_F(CnfgReading, AFolderIsNotFoundAsAFile) {
  EXPECT_EQ(mCnfg.open(mFolder.path(".")), 1);
}

TEST_F(CnfgReading, AMissingSectionIsNamed) {
  open("name = 1\n");
  EXPECT_EQ(mCnfg.readParameter("name", mValue, "PROGRAM"), 2);
  EXPECT_EQ(mCnfg.getErrorText(), "Section 'PROGRAM' not found!");
  EXPECT_EQ(mValue, "untouched");
}

TEST_F(CnfgReading, AMissingParameterIsNamedWithSectionAndFile) {
  open("[PROGRAM]\nname = 1\n");
  EXPECT_EQ(mCnfg.readParameter("version", mValue, "PROGRAM"), 3);
  EXPECT_EQ(mCnfg.getErrorText(),
            "Parameter 'version' in section 'PROGRAM' not found! (" + mFolder.path("a.ini") + ")");
  EXPECT_EQ(mValue, "untouched");
}

TEST_F(CnfgReading, AnEndedSectionIsNamed) {
  open("[PROGRAM]\n\nname = 1\n");
  mCnfg.findSection("PROGRAM");
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 4);
  EXPECT_EQ(mCnfg.getErrorText(), "No further parameter in section 'PROGRAM'!");
  EXPECT_EQ(mKey + mValue, "untoucheduntouched");
}

TEST_F(CnfgReading, AnyOtherCodeIsUnknown) {
  EXPECT_EQ(mCnfg.errorText(5), "Unknown error in class Cnfg!");
  EXPECT_EQ(mCnfg.errorText(-1), "Unknown error in class Cnfg!");
}

TEST_F(CnfgReading, ASuccessClearsTheLastError) {
  open("[A]\nk=1\n");
  mCnfg.findSection("B");
  EXPECT_EQ(mCnfg.findSection("A"), 0);
  EXPECT_EQ(mCnfg.getErrorText(), "OK");
}

TEST_F(CnfgReading, ALineOfTheSettingsFileGivesKeyAndTrimmedValue) {
  open(
      "[PROGRAM]\n\tname                  = AutoCAD Plug-in                                   "
      "# program's name\n");
  mCnfg.findSection("PROGRAM");
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 0);
  EXPECT_EQ(mKey, "name");
  EXPECT_EQ(mValue, "AutoCAD Plug-in");
}

TEST_F(CnfgReading, WithoutTrimmingTheValueKeepsItsBlanks) {
  open("[A]\nk = 1 #\n");
  mCnfg.readParameter("k", mValue, "A", Cnfg::Trim::kNo);
  EXPECT_EQ(mValue, " 1 ");
}

TEST_F(CnfgReading, WithoutTrimmingTheOtherOperationsKeepTheBlanksToo) {
  open("[A]\nk = 1 #\n");
  mCnfg.findSection("A");
  mCnfg.readNextParameter(mKey, mValue, Cnfg::Trim::kNo);
  EXPECT_EQ(mValue, " 1 ");
  mValue.clear();
  mCnfg.readParameterByIndex(mKey, mValue, "A", 0, Cnfg::Trim::kNo);
  EXPECT_EQ(mValue, " 1 ");
}

TEST_F(CnfgReading, ACarriageReturnOfALastLineWithoutALineFeedEndsTheValue) {
  open("[A]\na=1\r");
  EXPECT_EQ(mCnfg.readParameter("a", mValue, "A"), 0);
  EXPECT_EQ(mValue, "1");
  mFolder.write("b.ini", "[A]\nkey\r");
  mCnfg.open(mFolder.path("b.ini"));
  EXPECT_EQ(mCnfg.readParameter("key\r", mValue, "A"), 0) << "it is part of a key alone";
}

TEST_F(CnfgReading, AFileOfCarriageReturnsAloneIsOneLine) {
  open("[A]\ra=1\rb=2\r");
  EXPECT_EQ(mCnfg.findSection("A"), 0);
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 4);
}

TEST_F(CnfgReading, AFileThatCannotBeOpenedIsNamedAlsoAfterAnother) {
  open("[A]\na=1\n");
  const std::string path = mFolder.path("none.ini");
  EXPECT_EQ(mCnfg.open(path), 1);
  EXPECT_EQ(mCnfg.getErrorText(), "File '" + path + "' not found!");
  EXPECT_EQ(mCnfg.readParameter("a", mValue, "A"), 2) << "the first file is closed";
}

TEST_F(CnfgReading, TheEmptySectionIsFoundAtTheFirstLineThatNamesNone) {
  open("[A]\na=1\nb=2\n");
  EXPECT_EQ(mCnfg.findSection(""), 0);
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 0);
  EXPECT_EQ(mKey, "b");
  mFolder.write("b.ini", "[A]\n[B]");
  mCnfg.open(mFolder.path("b.ini"));
  EXPECT_EQ(mCnfg.findSection(""), 2);
}

TEST_F(CnfgReading, ABlankLineHidesEveryParameterAfterIt) {
  open("[PROGRAM]\nname = 1\n\nversion = 2\n");
  EXPECT_EQ(mCnfg.readParameter("name", mValue, "PROGRAM"), 0);
  EXPECT_EQ(mCnfg.readParameter("version", mValue, "PROGRAM"), 3);
}

TEST_F(CnfgReading, ACommentInTheFirstColumnDoesNotEndTheRun) {
  open("[A]\na=1\n# x\nb=2\n");
  EXPECT_EQ(mCnfg.readParameter("b", mValue, "A"), 0);
  EXPECT_EQ(mValue, "2");
}

TEST_F(CnfgReading, AnIndentedCommentEndsTheRun) {
  open("[A]\na=1\n # x\nb=2\n[B]\na=1\n\t# x\nb=2\n");
  EXPECT_EQ(mCnfg.readParameter("b", mValue, "A"), 3);
  EXPECT_EQ(mCnfg.readParameter("b", mValue, "B"), 3);
}

TEST_F(CnfgReading, TheNextHeaderEndsTheRun) {
  open("[A]\na=1\n[B]\nb=2\n");
  EXPECT_EQ(mCnfg.readParameter("b", mValue, "A"), 3);
}

TEST_F(CnfgReading, ALineThatEndsTheRunIsConsumed) {
  open("[A]\n[B\nb=2\n");
  mCnfg.findSection("A");
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 4);
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 0);
  EXPECT_EQ(mKey, "b");
}

TEST_F(CnfgReading, ALineThatBeginsWithACarriageReturnIsPassedOver) {
  open("[A]\n\rx=1\r\nb=2\r\n");
  mCnfg.findSection("A");
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 0);
  EXPECT_EQ(mKey + mValue, "b2");
}

TEST_F(CnfgReading, TheFirstOfTwoHashesEndsTheValue) {
  open("[A]\nk = one # two # three\n");
  EXPECT_EQ(mCnfg.readParameter("k", mValue, "A"), 0);
  EXPECT_EQ(mValue, "one");
}

TEST_F(CnfgReading, ASecondCarriageReturnBeforeALineFeedEndsTheValue) {
  open("[A]\r\r\nk = 1\r\r\nm = 2\r\r\n");
  EXPECT_EQ(mCnfg.readParameter("k", mValue, "A"), 0);
  EXPECT_EQ(mValue, "1");
  EXPECT_EQ(mCnfg.readParameter("m", mValue, "A"), 0);
  EXPECT_EQ(mValue, "2");
}

TEST_F(CnfgReading, LineEndsOfWindowsAreLineEnds) {
  open("[A]\r\na=1\r\nkeyAlone\r\n\r\nb=2\r\n");
  mCnfg.findSection("A");
  mCnfg.readNextParameter(mKey, mValue);
  EXPECT_EQ(mKey + mValue, "a1");
  mCnfg.readNextParameter(mKey, mValue);
  EXPECT_EQ(mKey + mValue, "keyAlone");
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 4);
}

TEST_F(CnfgReading, ALastLineWithoutANewlineIsRead) {
  open("[A]\na=1\nb=2");
  EXPECT_EQ(mCnfg.readParameter("b", mValue, "A"), 0);
  EXPECT_EQ(mValue, "2");
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 4);
}

TEST_F(CnfgReading, TheEndOfTheFileEndsTheSection) {
  open("[A]\na=1\n");
  mCnfg.findSection("A");
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 0);
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 4);
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 4);
}

TEST_F(CnfgReading, ASearchForASectionLeavesTheEndOfTheFile) {
  open("[A]\na=1");
  EXPECT_EQ(mCnfg.findSection("B"), 2);
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 4);
  EXPECT_EQ(mCnfg.findSection("A"), 0);
  EXPECT_EQ(mCnfg.readNextParameter(mKey, mValue), 0);
}

TEST_F(CnfgReading, SectionNamesAreMatchedExactly) {
  open("[ PROGRAM ]\na=1\n  [program] x\na=2\n");
  EXPECT_EQ(mCnfg.findSection("PROGRAM"), 2);
  EXPECT_EQ(mCnfg.findSection(" PROGRAM "), 0);
  EXPECT_EQ(mCnfg.findSection("program"), 0);
}

TEST_F(CnfgReading, KeysAreMatchedExactly) {
  open("[A]\nkey=1\n");
  EXPECT_EQ(mCnfg.readParameter("Key", mValue, "A"), 3);
  EXPECT_EQ(mCnfg.readParameter("ke", mValue, "A"), 3);
}

TEST_F(CnfgReading, TheFirstOfTwoSectionsAndOfTwoKeysCounts) {
  open("[A]\nk=1\nk=2\n\n[A]\nk=3\nother=4\n");
  EXPECT_EQ(mCnfg.readParameter("k", mValue, "A"), 0);
  EXPECT_EQ(mValue, "1");
  EXPECT_EQ(mCnfg.readParameter("other", mValue, "A"), 3);
}

TEST_F(CnfgReading, ParametersAreReadInAnyOrder) {
  open("[A]\na=1\nb=2\n");
  mCnfg.readParameter("b", mValue, "A");
  EXPECT_EQ(mValue, "2");
  mCnfg.readParameter("a", mValue, "A");
  EXPECT_EQ(mValue, "1");
}

TEST_F(CnfgReading, AnEmptySectionNameSearchesFromTheFilesPosition) {
  open("first=1\n[A]\na=1\nb=2\n");
  EXPECT_EQ(mCnfg.readParameter("first", mValue, ""), 0);
  EXPECT_EQ(mValue, "1");
  mCnfg.readParameter("a", mValue, "A");
  EXPECT_EQ(mCnfg.readParameter("b", mValue, ""), 0);
  EXPECT_EQ(mCnfg.readParameter("a", mValue, ""), 3);
}

TEST_F(CnfgReading, ParametersAreReadByIndex) {
  open("[A]\na=1\n# x\nb=2\n\nc=3\n");
  EXPECT_EQ(mCnfg.readParameterByIndex(mKey, mValue, "A", 1), 0);
  EXPECT_EQ(mKey + mValue, "b2");
  EXPECT_EQ(mCnfg.readParameterByIndex(mKey, mValue, "A", 0), 0);
  EXPECT_EQ(mKey + mValue, "a1");
  EXPECT_EQ(mCnfg.readParameterByIndex(mKey, mValue, "A", 2), 3);
  EXPECT_EQ(mCnfg.readParameterByIndex(mKey, mValue, "B", 0), 2);
}

TEST_F(CnfgReading, AnotherFileCanBeOpenedInTheSameObject) {
  open("[A]\na=1\n");
  mFolder.write("b.ini", "[B]\nb=2\n");
  ASSERT_EQ(mCnfg.open(mFolder.path("b.ini")), 0);
  EXPECT_EQ(mCnfg.findSection("A"), 2);
  EXPECT_EQ(mCnfg.readParameter("b", mValue, "B"), 0);
}

TEST_F(CnfgReading, OtherProcessesMayWriteMeanwhile) {
  open("[A]\na=1\n");
  mCnfg.readParameter("a", mValue, "A");
  mFolder.write("a.ini", "[A]\na=22\n");
  EXPECT_EQ(mCnfg.readParameter("a", mValue, "A"), 0);
  EXPECT_EQ(mValue, "22");
}

}  // namespace
