#include "standin/controller/controller_feed.h"
#include "standin/objectarx/call_record.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "tests/module_life/loaded_module.h"
#include "tests/support/host_recorder.h"
#include "tests/support/user_profile.h"

#include "rxdefs.h"

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

namespace clock_ = standin::clock;
namespace controller = standin::controller;
namespace host = standin::host;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ModuleLife : public ::testing::Test {
 protected:
  ModuleLife() { start(clock_::Kind::kReplay, 1); }
  ~ModuleLife() override {
    host::setListener(nullptr);
    host::closeDocument();
    clock_::stop();
  }
  void start(clock_::Kind kind, double speed) {
    clock_::start(kind, 16, speed);
    controller::reset();
    host::start([] { clock_::drawn(); });
    auto drawing = std::make_unique<standin::Drawing>();
    drawing->add(standin::makeLine({0x10, "0", 256}, {0, 0, 0}, {10, 5, 2}));
    host::openDocument(std::move(drawing));
    host::setListener(&mHost);
  }
  UserProfile mProfile;
  HostRecorder mHost;
};

TEST_F(ModuleLife, ModuleIsBuiltForRelease19) {
  EXPECT_EQ(LoadedModule(LM_MODULE_FILE).apiVersion(), 0x130000u);
}

TEST_F(ModuleLife, VersionOfTheInterfaceIsTheFirstOfAChain) {
  const LoadedModule module(LM_MODULE_FILE);
  EXPECT_EQ(module.apiVersion(0x1234), 0x130000u);
  EXPECT_EQ(module.apiVersion(0x5678), 0x13444Cu);
  EXPECT_EQ(module.apiVersion(0x9ABC), 0x13DEF0u);
}

TEST_F(ModuleLife, VersionAskedForWithoutArgumentEndsTheChain) {
  const LoadedModule module(LM_MODULE_FILE);
  module.apiVersion(0x9ABC);
  EXPECT_EQ(module.apiVersion(0), 0x139ABCu);
  EXPECT_EQ(module.apiVersion(0), 0x130000u);
  EXPECT_EQ(module.apiVersion(0x1234), 0x130000u);
}

TEST_F(ModuleLife, VersionIsReadWithoutACallTwoBytesAfterTheExport) {
  const LoadedModule module(LM_MODULE_FILE);
  const unsigned char* const code = module.apiVersionCode();
  EXPECT_THAT(std::vector<unsigned char>(code, code + 6), ElementsAre(0xEB, 0x04, 0x00, 0x00, 0x13, 0x00));
}

TEST_F(ModuleLife, LoadingAloneTouchesNothing) {
  const LoadedModule module(LM_MODULE_FILE);
  EXPECT_EQ(host::counts().reactors, 0u);
  EXPECT_EQ(host::counts().commandsRegistered, 0u);
  EXPECT_EQ(clock_::timerCount(), 0u);
  EXPECT_EQ(controller::faults().calls("lmConnect"), 0u);
}

TEST_F(ModuleLife, InitMessageRegistersConnectsAndPrints) {
  const LoadedModule module(LM_MODULE_FILE);
  EXPECT_EQ(module.send(AcRx::kInitAppMsg), AcRx::kRetOK);
  EXPECT_EQ(host::faults().calls("AcRxDynamicLinker::unlockApplication"), 1u);
  EXPECT_EQ(host::faults().calls("AcRxDynamicLinker::registerAppMDIAware"), 1u);
  EXPECT_EQ(host::counts().commandsRegistered, 4u);
  EXPECT_EQ(host::counts().reactors, 1u);
  EXPECT_TRUE(controller::isConnected());
  EXPECT_THAT(mHost.mPrinted, ElementsAre(L"\nmLmAutoCadP constructed\n"));
  module.send(AcRx::kUnloadAppMsg);
}

TEST_F(ModuleLife, UnloadMessageLeavesNothingBehind) {
  {
    const LoadedModule module(LM_MODULE_FILE);
    module.send(AcRx::kInitAppMsg);
    EXPECT_EQ(module.send(AcRx::kUnloadAppMsg), AcRx::kRetOK);
    EXPECT_EQ(clock_::otherThreads(), 0u);
  }
  EXPECT_FALSE(LoadedModule::isMapped(LM_MODULE_FILE));
  EXPECT_EQ(host::counts().commandsRegistered, 0u);
  EXPECT_EQ(host::counts().reactors, 0u);
  EXPECT_EQ(clock_::timerCount(), 0u);
  EXPECT_FALSE(controller::isConnected());
  EXPECT_THAT(host::counts().breaches, IsEmpty());
  EXPECT_THAT(controller::breaches(), IsEmpty());
}

TEST_F(ModuleLife, OtherMessagesReturnZeroAndDoNothing) {
  const LoadedModule module(LM_MODULE_FILE);
  for (int message = 0; message <= 20; ++message) {
    if (message == AcRx::kInitAppMsg || message == AcRx::kUnloadAppMsg) continue;
    EXPECT_EQ(module.send(message), AcRx::kRetOK) << message;
  }
  EXPECT_EQ(module.send(-1), AcRx::kRetOK);
  EXPECT_EQ(module.send(1000000), AcRx::kRetOK);
  EXPECT_EQ(clock_::timerCount(), 0u);
  EXPECT_THAT(mHost.mPrinted, IsEmpty());
}

TEST_F(ModuleLife, UnloadWithoutInitIsHarmless) {
  const LoadedModule module(LM_MODULE_FILE);
  EXPECT_EQ(module.send(AcRx::kUnloadAppMsg), AcRx::kRetOK);
  EXPECT_EQ(module.send(AcRx::kInitAppMsg), AcRx::kRetOK);
  EXPECT_EQ(module.send(AcRx::kUnloadAppMsg), AcRx::kRetOK);
  EXPECT_EQ(module.send(AcRx::kUnloadAppMsg), AcRx::kRetOK);
}

TEST_F(ModuleLife, ClosedDocumentIsForgottenWithoutComplaint) {
  const LoadedModule module(LM_MODULE_FILE);
  module.send(AcRx::kInitAppMsg);
  host::closeDocument();
  module.send(AcRx::kUnloadAppMsg);
  EXPECT_THAT(host::counts().breaches, IsEmpty());
}

class InitFaults : public ModuleLife, public ::testing::WithParamInterface<const char*> {};

TEST_P(InitFaults, InitFaultDoesNotKeepTheCoreFromRunning) {
  const LoadedModule module(LM_MODULE_FILE);
  ASSERT_TRUE(host::faults().inject(GetParam(), {standin::Misbehaviour::kThrow, 1, true}));
  EXPECT_EQ(module.send(AcRx::kInitAppMsg), AcRx::kRetOK);
  EXPECT_TRUE(controller::isConnected());
  EXPECT_EQ(clock_::timerCount(), 1u);
  module.send(AcRx::kUnloadAppMsg);
  EXPECT_EQ(clock_::otherThreads(), 0u);
  EXPECT_EQ(host::counts().reactors, 0u);
}

INSTANTIATE_TEST_SUITE_P(Operations, InitFaults,
                         ::testing::Values("AcRxDynamicLinker::unlockApplication",
                                           "AcRxDynamicLinker::registerAppMDIAware", "acrxSysRegistry",
                                           "AcEdCommandStack::addCommand", "AcApDocManager::addReactor",
                                           "acutPrintf"));

class UnloadFaults : public ModuleLife, public ::testing::WithParamInterface<const char*> {};

TEST_P(UnloadFaults, UnloadFaultLeavesNothingThatLeadsIntoTheModule) {
  {
    const LoadedModule module(LM_MODULE_FILE);
    module.send(AcRx::kInitAppMsg);
    ASSERT_TRUE(host::faults().inject(GetParam(), {standin::Misbehaviour::kThrow, 1, true}));
    EXPECT_EQ(module.send(AcRx::kUnloadAppMsg), AcRx::kRetOK);
  }
  EXPECT_EQ(host::counts().commandsRegistered, 0u);
  EXPECT_EQ(host::counts().reactors, 0u);
  EXPECT_EQ(clock_::timerCount(), 0u);
  EXPECT_EQ(clock_::otherThreads(), 0u);
  host::closeDocument();
}

INSTANTIATE_TEST_SUITE_P(Operations, UnloadFaults,
                         ::testing::Values("acrxSysRegistry", "AcRxDictionary::at",
                                           "AcEdCommandStack::removeCmd", "acDocManagerPtr",
                                           "AcApDocManager::removeReactor"));

TEST_F(ModuleLife, SecondInitMessageMakesNoSecondCore) {
  {
    const LoadedModule module(LM_MODULE_FILE);
    module.send(AcRx::kInitAppMsg);
    module.send(AcRx::kInitAppMsg);
    EXPECT_EQ(clock_::timerCount(), 1u);
    module.send(AcRx::kUnloadAppMsg);
    EXPECT_EQ(clock_::otherThreads(), 0u);
  }
  EXPECT_EQ(clock_::timerCount(), 0u);
}

TEST_F(ModuleLife, CommandsFlipTheSwitchesOfTheirNames) {
  const LoadedModule module(LM_MODULE_FILE);
  module.send(AcRx::kInitAppMsg);
  mHost.mPrinted.clear();
  EXPECT_EQ(host::callRecord().commandFlags, 0);
  EXPECT_FALSE(host::callRecord().hasCommandContext);
  EXPECT_EQ(host::callRecord().commandResource, -1);
  for (const wchar_t* const name : {L"LM_Toggle_Rotation_Center", L"LM_Toggle_Rotation_Axis",
                                    L"LM_Toggle_Scroll_Mode", L"LM_Toggle_Object_Move_Mode"})
    host::type(std::wstring(name) + L"\n");
  EXPECT_THAT(
      mHost.mPrinted,
      ElementsAre(L"\n=> Selection as Rotation Center:  off", L"\n=> Selected Line as Rotation Axis:  on",
                  L"\n=> Scroll Trees and Lists:  off", L"\n=> Move Selected Object:  on"));
  ASSERT_TRUE(host::faults().inject("acutPrintf", {standin::Misbehaviour::kThrow, 1, true}));
  host::type(L"LM_Toggle_Scroll_Mode\n");
  EXPECT_THAT(host::counts().breaches, IsEmpty()) << "nothing is thrown into the host";
  module.send(AcRx::kUnloadAppMsg);
}

TEST_F(ModuleLife, ResetOfTheSettingsIsTheLogsFirstEntry) {
  mProfile.writeSettings("[PROGRAM]\nname = incomplete\n");
  {
    const LoadedModule module(LM_MODULE_FILE);
    module.send(AcRx::kInitAppMsg);
    module.send(AcRx::kUnloadAppMsg);
  }
  const std::string log = mProfile.log();
  const std::size_t missing = log.find("|ERR|");
  EXPECT_EQ(log.find("Parameter 'version' in section 'PROGRAM' not found!"), log.find("Parameter '"));
  EXPECT_LT(missing, log.find("Error reading settings file!"));
  EXPECT_LT(log.find("Error reading settings file!"),
            log.find("Settings file not found - using default values ..."));
  EXPECT_LT(log.find("Settings file not found - using default values ..."),
            log.find("AutoCadProxy constructed."));
}

TEST_F(ModuleLife, CommandsAreRegisteredInTheOrderOfTheirTable) {
  host::callRecord().commands.clear();
  const LoadedModule module(LM_MODULE_FILE);
  module.send(AcRx::kInitAppMsg);
  EXPECT_THAT(host::callRecord().commands,
              ElementsAre(L"LMGroup LM_Toggle_Rotation_Center LM_Toggle_Rotation_Center",
                          L"LMGroup LM_Toggle_Rotation_Axis LM_Toggle_Rotation_Axis",
                          L"LMGroup LM_Toggle_Scroll_Mode LM_Toggle_Scroll_Mode",
                          L"LMGroup LM_Toggle_Object_Move_Mode LM_Toggle_Object_Move_Mode"));
  module.send(AcRx::kUnloadAppMsg);
}

/// The device as it lives: it moves, is lost and found, and its keys are pressed, while the host is busy.
/// Ends when the module has fetched so many events in all.
void driveDevice(std::uint64_t eventsInAll) {
  for (int i = 0; controller::eventsHandedOver() < eventsInAll; ++i) {
    const auto value = static_cast<std::int16_t>(i % 61 - 30);
    controller::deliver({-1 - i, {value, 1, value, 2, value, 3}, i, -i});
    if (i % 97 == 0) controller::deliver({0x20001, {}, 0, 0});
    if (i % 89 == 0) controller::deliver({0x20013, {}, 0, 0});
    if (i % 83 == 0) controller::deliver({0x20030, {}, 0, 0});
    if (i % 250 == 120) controller::setDown(true);
    if (i % 250 == 140) controller::setDown(false);
    while (controller::eventsPending() > 32) std::this_thread::yield();
  }
  controller::setDown(false);
}

void serveTimers(const std::atomic<bool>& isEnding) {
  while (!isEnding) {
    clock_::advanceTo(clock_::nextTimer().value_or(clock_::nowMs() + 10));
    clock_::runDueTimer();
  }
}

/// Every kind of event, and losses of the device, until `isEnding`.
void driveDeviceWithoutPause(const std::atomic<bool>& isEnding) {
  constexpr std::int32_t kCodes[] = {-1,      0x20001, -2,      0x20013, 0x20009,
                                     0x20020, -3,      0x2000C, 0x20002, 0x20099};
  for (int i = 0; !isEnding; ++i) {
    const auto value = static_cast<std::int16_t>(i % 61 - 30);
    controller::deliver({kCodes[i % 10], {value, 1, value, 2, value, 3}, i, -i});
    if (i % 250 == 120) controller::setDown(true);
    if (i % 250 == 140) controller::setDown(false);
    while (controller::eventsPending() > 32 && !isEnding) std::this_thread::yield();
  }
  controller::setDown(false);
}

TEST_F(ModuleLife, DeviceThatNeverRestsIsNoHarmToInitAndUnload) {
  constexpr int kLives = 60;
  start(clock_::Kind::kReal, 2000);
  std::atomic<bool> isEnding{false};
  std::thread device([&] { driveDeviceWithoutPause(isEnding); });
  for (int life = 0; life < kLives; ++life) {
    const LoadedModule module(LM_MODULE_FILE);
    module.send(AcRx::kInitAppMsg);
    for (int tick = 0; tick < life % 5; ++tick) {
      clock_::advanceTo(clock_::nextTimer().value_or(clock_::nowMs() + 10));
      clock_::runDueTimer();
    }
    module.send(AcRx::kUnloadAppMsg);
  }
  isEnding = true;
  device.join();
  EXPECT_GT(controller::eventsHandedOver(), 100u);
  EXPECT_THAT(host::counts().breaches, IsEmpty());
  EXPECT_EQ(host::counts().callsOffMainThread, 0u);
  EXPECT_EQ(host::counts().lockDepth, 0);
}

TEST_F(ModuleLife, TwoHundredLivesUnderAHundredThousandEventsLeaveNothing) {
  constexpr int kLives = 200;
  constexpr int kEventsALife = 500;
  start(clock_::Kind::kReal, 2000);
  for (int life = 0; life < kLives; ++life) {
    {
      const LoadedModule module(LM_MODULE_FILE);
      module.send(AcRx::kInitAppMsg);
      std::atomic<bool> isEnding{false};
      std::thread device([&] {
        driveDevice(static_cast<std::uint64_t>(life + 1) * kEventsALife);
        isEnding = true;
      });
      serveTimers(isEnding);
      module.send(AcRx::kUnloadAppMsg);
      device.join();
    }
    ASSERT_FALSE(LoadedModule::isMapped(LM_MODULE_FILE)) << "life " << life;
  }
  EXPECT_GE(controller::eventsHandedOver(), 100000u);
  EXPECT_GT(host::counts().updates, 1000u);
  EXPECT_THAT(host::counts().breaches, IsEmpty());
  EXPECT_EQ(host::counts().callsOffMainThread, 0u);
  EXPECT_EQ(host::counts().openObjects, 0u);
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
  EXPECT_THAT(controller::breaches(), IsEmpty());
}

}  // namespace
