#include "common_sources/lm_auto_cad.h"

#include "standin_clock.h"
#include "tests/module/module_fixture.h"
#include "tests/module/thread_start.h"

#include <gmock/gmock.h>

namespace controller = standin::controller;
using ::testing::ElementsAre;

namespace {

class LmAutoCadTest : public ModuleTest {};

TEST_F(LmAutoCadTest, CoreStartsWithNothingPendingAndTheCapAtRest) {
  load();
  EXPECT_EQ(mCoreP->getApplFunc(), -1);
  EXPECT_EQ(mCoreP->getSpecialApplFunc(), 0);
  EXPECT_TRUE(isCapReleased(mCoreP->capData(), 0));
}

TEST_F(LmAutoCadTest, CoreBuildsAutoCadProxyThenDaemonProxyThenItself) {
  load();
  std::vector<std::string> own;
  for (const std::string& text : logTexts("CRT"))
    if (text.find("onstruct") == 0 || text.find("onstruct") == 1 || text == "AutoCadProxy constructed.")
      own.push_back(text);
  const std::vector<std::string> expected{"Constructing ...", "AutoCadProxy constructed.",  // AutoCadProxy
                                          "Constructing ...", "Constructed.",               // DaemonProxy
                                          "Constructed."};                                  // LmAutoCad
  // In the first life of a process, what the log and the settings said before the log was open comes first.
  ASSERT_GE(own.size(), expected.size());
  own.erase(own.begin(), own.end() - static_cast<std::ptrdiff_t>(expected.size()));
  EXPECT_EQ(own, expected);
}

TEST_F(LmAutoCadTest, CoreStopsTheThreadsThenDaemonProxyThenAutoCadProxy) {
  load();
  unload();
  std::vector<std::string> own;
  for (const std::string& text : logTexts("CRT"))
    if (text.find("Destruct") == 0 || text == "Reading thread ended.") own.push_back(text);
  const std::vector<std::string> expected{"Destructing ...",        // LmAutoCad
                                          "Reading thread ended.",  // while the watch thread is awaited
                                          "Destructing ...",
                                          "Destructed.",  // DaemonProxy
                                          "Destructing ...",
                                          "Destructed.",   // AutoCadProxy
                                          "Destructed."};  // LmAutoCad
  own.resize(expected.size());                             // the settings follow last
  EXPECT_EQ(own, expected);
}

TEST_F(LmAutoCadTest, AbsentDaemonIsTriedEveryTwoSecondsUntilItIsThere) {
  controller::setDown(true);
  load();
  EXPECT_TRUE(hasLogged("Constructed."));
  const std::uint64_t atStart = controller::faults().calls("lmConnect");
  idle(10000);
  EXPECT_EQ(controller::faults().calls("lmConnect") - atStart, 5u);
  EXPECT_FALSE(mCoreP->daemonProxy()->isConnected());
  controller::setDown(false);
  idle(2000);
  EXPECT_TRUE(mCoreP->daemonProxy()->isConnected());
}

TEST_F(LmAutoCadTest, LostConnectionIsClosedAndRestored) {
  load();
  controller::setDown(true);
  idle(2500);
  EXPECT_FALSE(mCoreP->daemonProxy()->isConnected());
  controller::setDown(false);
  idle(2000);
  EXPECT_TRUE(mCoreP->daemonProxy()->isConnected());
  deflect({1, 2, 3, 4, 5, 6});
  EXPECT_THAT(mCoreP->capData().axes, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(LmAutoCadTest, UnloadWaitsInStepsForTheWatchThread) {
  load();
  idle(500);
  const std::int64_t before = standin::clock::nowMs();
  unload();
  const std::int64_t waited = standin::clock::nowMs() - before;
  EXPECT_GE(waited, 2000);
  EXPECT_LE(waited, 2400);
}

TEST_F(LmAutoCadTest, WatchThreadChecksTheConnectionBeforeItsFirstPause) {
  load();
  EXPECT_EQ(controller::faults().calls("lmGetDevNum"), 2u) << "one of connect, one of the watch thread";
}

TEST_F(LmAutoCadTest, TickDuringTheUnloadDoesNotArmTheTimer) {
  load();
  bool hasTicked = false;
  std::size_t timers = 0;
  standin::clock::schedule(standin::clock::nowMs() + 50, [&] {
    AutoCadProxy::instance()->tick();
    hasTicked = true;
    timers = standin::clock::timerCount();
  });
  unload();
  EXPECT_TRUE(hasTicked);
  EXPECT_EQ(timers, 0u);
}

TEST_F(LmAutoCadTest, UnloadRightAfterTheLoadLeavesNoThread) {
  mCoreP = std::make_unique<LmAutoCad>();
  unload();
}

TEST_F(LmAutoCadTest, WatchThreadThatCannotStartIsLoggedAndTheRestWorks) {
  failThreadStart(2);
  load();
  EXPECT_EQ(logTexts("ERR"), std::vector<std::string>{"Error creating reading thread!"});
  deflect({5, 0, 0, 0, 0, 0});
  EXPECT_EQ(mCoreP->capData().axes[0], 5);
}

TEST_F(LmAutoCadTest, ReadingThreadThatCannotStartIsNotChecked) {
  failThreadStart(1);
  load();
  EXPECT_TRUE(logTexts("ERR").empty());
  unload();
}

}  // namespace
