// The module under the real Windows: its timer, its threads, its files.
#include "tests/windows/module_run.h"
#include "workbench/platform/beeps.h"
#include "workbench/platform/desktop.h"

namespace clock_ = standin::clock;
namespace controller = standin::controller;
namespace host = standin::host;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

TEST_F(ModuleRun, TimerTicksAndCapMovesTheView) {
  const LoadedModule module(LM_MODULE_FILE);
  EXPECT_EQ(module.send(AcRx::kInitAppMsg), AcRx::kRetOK);
  const host::Camera before = *host::camera(2);
  moveCap(100, 0);
  EXPECT_TRUE(serve(0, [this] { return mHost.mUpdates.size() > 5; }));
  moveCap(0, 0);
  EXPECT_TRUE(serve(0, [] { return host::counts().commits > 0; }));
  EXPECT_NE(host::camera(2)->target.x, before.target.x);
  module.send(AcRx::kUnloadAppMsg);
  EXPECT_THAT(host::counts().breaches, IsEmpty());
  EXPECT_EQ(host::counts().callsOffMainThread, 0u);
}

TEST_F(ModuleRun, KeySendsItsViewCommand) {
  const LoadedModule module(LM_MODULE_FILE);
  module.send(AcRx::kInitAppMsg);
  mHost.mSent.clear();
  controller::deliver({0x2000B, {}, 0, 0});
  EXPECT_TRUE(serve(0, [this] { return !mHost.mSent.empty(); }));
  EXPECT_THAT(mHost.mSent, ElementsAre(L"'_-VIEW _TOP "));
  module.send(AcRx::kUnloadAppMsg);
}

TEST_F(ModuleRun, UnloadMessageLeavesNothingBehind) {
  {
    const LoadedModule module(LM_MODULE_FILE);
    module.send(AcRx::kInitAppMsg);
    EXPECT_EQ(clock_::otherThreads(), 2u);
    module.send(AcRx::kUnloadAppMsg);
    EXPECT_EQ(clock_::otherThreads(), 0u);
  }
  EXPECT_FALSE(LoadedModule::isMapped(LM_MODULE_FILE));
  EXPECT_EQ(clock_::timerCount(), 0u);
  EXPECT_FALSE(controller::isConnected());
  EXPECT_THAT(controller::breaches(), IsEmpty());
}

TEST_F(ModuleRun, DaemonIsLostAndFoundWhileTheCapMoves) {
  const LoadedModule module(LM_MODULE_FILE);
  module.send(AcRx::kInitAppMsg);
  moveCap(100, 0);
  EXPECT_TRUE(serve(0, [this] { return mHost.mUpdates.size() > 2; }));
  controller::setDown(true);
  EXPECT_TRUE(serve(0, [] { return !controller::isConnected(); }));
  controller::setDown(false);
  EXPECT_TRUE(serve(0, [] { return controller::isConnected(); }));
  // The release may have come while nobody listened.
  moveCap(0, 0);
  EXPECT_TRUE(serve(0, [] { return host::counts().commits > 0; }));
  const std::size_t before = mHost.mUpdates.size();
  moveCap(100, 0);
  EXPECT_TRUE(serve(0, [this, before] { return mHost.mUpdates.size() > before + 2; }));
  moveCap(0, 0);
  module.send(AcRx::kUnloadAppMsg);
  EXPECT_THAT(host::counts().breaches, IsEmpty());
}

TEST_F(ModuleRun, SettingsAndLogAreInTheUsersFolderWhateverItsName) {
  for (const wchar_t* const name : {L"J\u00fcrgen M\u00fcller", L"a b  c"}) {
    useProfile(mFolder / name);
    const LoadedModule module(LM_MODULE_FILE);
    module.send(AcRx::kInitAppMsg);
    module.send(AcRx::kUnloadAppMsg);
    EXPECT_THAT(read("Applications/autocad_addin.ini"), HasSubstr("transSensBase         = 20000"));
    EXPECT_THAT(read("autocad_addin_log.txt"), HasSubstr("AutoCadProxy constructed."));
  }
}

TEST_F(ModuleRun, MissingSettingsFolderIsReportedInABoxAfterABeep) {
  std::filesystem::remove_all(mProfile / "Lumetrapad" / "Applications");
  std::vector<std::wstring> told;
  workbench::listenToDesktop(
      [&told](const workbench::DesktopMessage& message) { told.push_back(message.text); });
  const LoadedModule module(LM_MODULE_FILE);
  workbench::interceptBeeps(GetModuleHandleA(LM_MODULE_FILE));
  module.send(AcRx::kInitAppMsg);
  module.send(AcRx::kUnloadAppMsg);
  workbench::listenToDesktop({});
  EXPECT_THAT(told, ElementsAre(L"440 Hz, 200 ms",
                                L"Lumetra Plug-in Error\nFolder '" + mProfile.wstring() +
                                    L"\\Lumetrapad\\Applications' not found!\n\nStart the driver first "
                                    L"and try again to read out AutoCAD's menu items."));
}

TEST_F(ModuleRun, ExporterIsLoadedFromTheModulesOwnFolder) {
  const LoadedModule module(LM_MODULE_FILE);
  module.send(AcRx::kInitAppMsg);
  module.send(AcRx::kUnloadAppMsg);
  const std::wstring folder = std::filesystem::absolute(LM_MODULE_FILE).parent_path().generic_wstring();
  EXPECT_THAT(mHost.mSent, ElementsAre(L"(command \"netload\" \"" + folder + L"/MenuScribe2015.dll\")\n"));
  EXPECT_THAT(read("autocad_addin_log.txt"), Not(HasSubstr("MenuScriber does not exist")));
}

}  // namespace
