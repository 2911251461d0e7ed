#include "workbench/running/module_log.h"

#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

namespace fs = std::filesystem;

/// A profile whose settings say `settings` of the log.
class LogOfARun : public testing::Test {
 protected:
  void SetUp() override { fs::create_directories(mFolder / "Applications"); }
  void setSettings(const std::string& settings) {
    mFolder.write("Applications/autocad_addin.ini", "[PROGRAM]\nname = x\n\n[LOGGING]\n" + settings);
  }
  void append(const std::string& name, const std::string& text) {
    mFolder.write(name, mFolder.bytes(name) + text);
    // The file system's clock is coarse; a later write has a later time in the world.
    fs::last_write_time(mFolder / name,
                        fs::file_time_type::clock::now() + ++mWrites * std::chrono::seconds(1));
  }
  void rotate() { fs::rename(mFolder / "autocad_addin_log.txt", mFolder / "autocad_addin_log.bak"); }

  const TempFolder mFolder;
  int mWrites = 0;
};

TEST_F(LogOfARun, EntriesOfEarlierRunsAreLeftOut) {
  append("autocad_addin_log.txt", "old\n");
  ModuleLog log(mFolder.root());
  append("autocad_addin_log.txt", "new\n");
  const auto [text, note] = log.finish();
  EXPECT_EQ(text, "new\n");
  EXPECT_EQ(note, "");
}

TEST_F(LogOfARun, FileOfAnotherNameIsFollowed) {
  setSettings("logFile = other.log   # name\nlogToFile = on\n");
  append("autocad_addin_log.txt", "of an earlier run\n");
  ModuleLog log(mFolder.root());
  append("other.log", "new\n");
  EXPECT_EQ(log.finish().text, "new\n");
}

TEST_F(LogOfARun, FileInAnotherFolderIsFollowed) {
  setSettings("logFile = " + mFolder.path("Applications\\a.log") + "\n");
  ModuleLog log(mFolder.root());
  append("Applications/a.log", "new\n");
  EXPECT_EQ(log.finish().text, "new\n");
}

TEST_F(LogOfARun, RefusedSettingsMeanTheDefaultFile) {
  setSettings("logFile = other.log\n");
  ModuleLog log(mFolder.root());
  append("autocad_addin_log.txt", "new\n");
  setSettings("logFile = autocad_addin_log.txt\n");
  EXPECT_EQ(log.finish().text, "new\n");
}

TEST_F(LogOfARun, SwitchedOffLogIsReported) {
  setSettings("logToFile = off\n");
  append("autocad_addin_log.txt", "of an earlier run\n");
  ModuleLog log(mFolder.root());
  const auto [text, note] = log.finish();
  EXPECT_EQ(text, "");
  EXPECT_EQ(note, "The module wrote no log: logToFile is off in its settings.");
}

TEST_F(LogOfARun, MissingLogIsReported) {
  EXPECT_EQ(ModuleLog(mFolder.root()).finish().note, "The module wrote no log.");
}

TEST_F(LogOfARun, RotatedEntriesAreKept) {
  setSettings("maxSize = 1\n");
  append("autocad_addin_log.txt", "old\n");
  ModuleLog log(mFolder.root());
  std::string expected;
  for (int i = 0; i < 5; ++i) {
    const std::string before = "entry " + std::to_string(i) + "\n",
                      after = "later " + std::to_string(i) + "\n";
    append("autocad_addin_log.txt", before);
    rotate();
    append("autocad_addin_log.txt", after);
    log.step();
    expected += before + after;
  }
  const auto [text, note] = log.finish();
  EXPECT_EQ(text, expected);
  EXPECT_EQ(note, "");
}

TEST_F(LogOfARun, EntriesThatARotationDroppedAreReported) {
  setSettings("maxSize = 1\n");
  ModuleLog log(mFolder.root());
  append("autocad_addin_log.txt", "seen\n");
  log.step();
  rotate();
  append("autocad_addin_log.txt", "dropped\n");
  append("autocad_addin_log.txt", "dropped with it\n");
  rotate();
  append("autocad_addin_log.txt", "last but one\n");
  rotate();
  append("autocad_addin_log.txt", "last\n");
  const auto [text, note] = log.finish();
  EXPECT_EQ(text, "seen\nlast but one\nlast\n");
  EXPECT_EQ(note, "Entries are missing: the log reached its size limit (maxSize) several times at once.");
}

}  // namespace
}  // namespace workbench
