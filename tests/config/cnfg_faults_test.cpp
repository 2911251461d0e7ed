#include "config/cnfg.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

constexpr std::size_t kMegabyte = 1024 * 1024;

class CnfgFaults : public testing::Test {
 protected:
  std::int32_t read(std::string_view key) {
    if (mCnfg.open(mFolder.path("a.ini")) != 0) return Cnfg::kFileNotFound;
    return mCnfg.readParameter(key, mValue, "A");
  }

  TempFolder mFolder;
  Cnfg mCnfg;
  std::string mValue;
};

TEST_F(CnfgFaults, AFileOfHundredMegabytesIsReadToItsEnd) {
  mFolder.write("a.ini", "[B]\nk=1\n");
  std::filesystem::resize_file(mFolder.root() / "a.ini", 100 * kMegabyte);
  std::ofstream(mFolder.root() / "a.ini", std::ios::app) << "\n[A]\nk=2\n";
  EXPECT_EQ(read("k"), 0);
  EXPECT_EQ(mValue, "2");
  EXPECT_EQ(mCnfg.findSection("none"), 2);
}

TEST_F(CnfgFaults, ALineOfTenMegabytesIsOneLine) {
  mFolder.write("a.ini", "[A]\na=1\nlong=" + std::string(10 * kMegabyte, 'x') + "\nk=2\n");
  EXPECT_EQ(read("k"), 0);
  EXPECT_EQ(read("long"), 0);
  EXPECT_EQ(mValue, std::string(10 * kMegabyte, 'x'));
}

TEST_F(CnfgFaults, ALineAcrossTheBuffersEndIsWhole) {
  std::string text = "[A]\n";
  while (text.size() < 200 * 1024) text += "key" + std::to_string(text.size()) + " = some value\n";
  mFolder.write("a.ini", text + "k=2\n");
  ASSERT_EQ(read("k"), 0);
  ASSERT_EQ(mCnfg.findSection("A"), 0);
  std::string key;
  std::string joined = "[A]\n";
  while (mCnfg.readNextParameter(key, mValue) == 0 && key != "k") joined += key + " = " + mValue + "\n";
  EXPECT_EQ(joined, text);
}

TEST_F(CnfgFaults, NulBytesAreOrdinaryCharacters) {
  using namespace std::string_literals;
  mFolder.write("a.ini", "\0\0\n[A]\nb\0=x\0y\nk=\0"s);
  EXPECT_EQ(read("k"), 0);
  EXPECT_EQ(mValue, "");
  EXPECT_EQ(read("b\0"s), 0);
  EXPECT_EQ(mValue, "x\0y"s);
}

TEST_F(CnfgFaults, AnEmptyFileHasNothing) {
  mFolder.write("a.ini", "");
  EXPECT_EQ(read("k"), 2);
  std::string key;
  EXPECT_EQ(mCnfg.readNextParameter(key, mValue), 4);
}

TEST_F(CnfgFaults, AFileThatWasNeverOpenedHasNothing) {
  std::string key;
  EXPECT_EQ(mCnfg.findSection("A"), 2);
  EXPECT_EQ(mCnfg.readNextParameter(key, mValue), 4);
  EXPECT_EQ(mCnfg.loadForEditing(), 0);
}

}  // namespace
