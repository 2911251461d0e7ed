// Level and operation of what the module's core logs of its own life: the log compares them whole.
#include "tests/module/module_fixture.h"
#include "tests/module/thread_start.h"

#include <gmock/gmock.h>

#include <algorithm>

using ::testing::ElementsAre;
using ::testing::EndsWith;

namespace {

class CoreLifeLog : public ModuleTest {
 protected:
  /// Level, operation and text of the lines of a class.
  std::vector<std::string> linesOf(const std::string& className) const {
    std::vector<std::string> result;
    for (const LogLine& line : logLines()) {
      const std::string method = line.method.substr(0, line.method.find_last_not_of(' ') + 1);
      if (method.find(className + "::" + className + "::") != std::string::npos)
        result.push_back(line.type + " " + method.substr(method.rfind("::") + 2) + ": " + line.text);
    }
    return result;
  }
};

TEST_F(CoreLifeLog, CoreLogsItsLifeWithLevelAndOperation) {
  load();
  unload();
  EXPECT_THAT(linesOf("LmAutoCad"),
              ElementsAre("CRT LmAutoCad: Constructed.", "CRT ~LmAutoCad: Destructing ...",
                          "CRT ~LmAutoCad: Destructed."));
}

TEST_F(CoreLifeLog, ThreadThatCannotStartIsAnErrorOfTheConstruction) {
  failThreadStart(2);
  load();
  EXPECT_EQ(linesOf("LmAutoCad").front(), "ERR LmAutoCad: Error creating reading thread!");
}

}  // namespace
