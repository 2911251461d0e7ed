/// A log of its own for each test, in a folder of its own.
#ifndef TESTS_LOGGING_LOG_FIXTURE_H
#define TESTS_LOGGING_LOG_FIXTURE_H

#include "LM_Daemon/src/logging.h"
#include "tests/support/temp_folder.h"
#include "util/threads.h"
#include "util/util.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

/// The column of a thread's number, which takes the room it needs.
inline std::size_t threadWidth(std::uint32_t thread) {
  return std::max<std::size_t>(6, std::to_string(thread).size());
}

/// Column of the source file in a line of that thread.
inline std::size_t fileStart(std::uint32_t thread) {
  return 12 + 1 + 3 + 1 + threadWidth(thread) + 1;
}

/// Columns before the text of a line of that thread whose line number fits its column.
inline std::size_t prefixWidth(std::uint32_t thread) {
  return fileStart(thread) + 16 + 2 + 4 + 2 + 32 + 2;
}

/// The same for the thread that runs the tests.
inline const std::size_t kPrefixWidth = prefixWidth(currentThreadId());

inline std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The header block of a log file of that name, without the line end after it.
inline std::string headerOf(const std::string& name) {
  const std::string rule = std::string(90, '-') + "\n";
  return rule + "Lumetra logfile '" + name + "' opened at " + Util::localDate() + "\n" + rule +
         "    Time    |Typ|  TID |      File      | Line|        Class And Method         | LogText\n"
         "------------+---+------+----------------+-----+---------------------------------+---------";
}

class LogTest : public testing::Test {
 protected:
  LogTest() {
    mPars.mLogFile = mFolder.path("a.log");
    mPars.mIsCreation = false;
  }

  void init() { mLog.init(mPars); }
  std::string file() const { return mFolder.read("a.log"); }

  /// The lines after the header block.
  std::vector<std::string> entries() const {
    std::vector<std::string> lines = linesOf(file());
    if (lines.size() >= 5) lines.erase(lines.begin(), lines.begin() + 5);
    return lines;
  }

  /// The texts of the lines after the header block.
  std::vector<std::string> texts() const {
    std::vector<std::string> lines = entries();
    for (std::string& line : lines) line.erase(0, kPrefixWidth);
    return lines;
  }

  using Texts = std::vector<std::string>;

  TempFolder mFolder;
  LogPars mPars;
  Logging mLog;
};

#endif
