#include "config/cnfg.h"
#include "packaging/lm_check/file_lines.h"
#include "tests/support/settings_text.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kFiles = 300;
const std::vector<std::string> kPieces = {
    "[PROGRAM]\n", "[LOGGING]\n",   "[ PROGRAM ]\n", "[PROGRAM\n", "\n",           " \t\n",
    "# comment\n", "\t# comment\n", "\r\n",          "a = 1\n",    "b\t= 2 # x\n", "c\n",
    " = 5\n",      "a = other\n",   "\td= 4\r\n",    "d =\n",      "]\n"};

/// A file of random lines.
std::string randomText(std::mt19937& random) {
  std::string text;
  for (int i = 0; i < 14; ++i) text += kPieces[random() % kPieces.size()];
  return text;
}

/// The value of the first line that is said to be read.
std::string valueInLines(const FileText& text, const std::string& section, const std::string& key) {
  for (const FileLine& line : text.lines)
    if (line.isRead && line.section == section && line.key == key) return "found " + line.value;
  return "not found";
}

TEST(FileLines, LinesAgreeWithTheModulesReader) {
  std::mt19937 random(1);
  for (int i = 0; i < kFiles; ++i) {
    const TempFolder folder;
    const std::string text = randomText(random);
    const std::string path = folder.write("a.ini", text).string();
    const auto lines = readFileText(path);
    ASSERT_TRUE(lines);
    for (const std::string section : {"PROGRAM", "LOGGING"})
      for (const std::string key : {"a", "b", "c", "d"}) {
        Cnfg reader;
        std::string value;
        ASSERT_EQ(reader.open(path), Cnfg::kOk);
        const bool isRead = reader.readParameter(key, value, section) == Cnfg::kOk;
        EXPECT_EQ(valueInLines(*lines, section, key), isRead ? "found " + value : "not found")
            << section << " " << key << " in\n"
            << text;
      }
  }
}

TEST(FileLines, FileThatCannotBeOpenedHasNoLines) {
  EXPECT_FALSE(readFileText("/nowhere/a.ini"));
}

}  // namespace
