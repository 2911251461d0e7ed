#include "standin/objectarx/call_record.h"
#include "standin_messages.h"
#include "standin_process.h"
#include "tests/module/module_fixture.h"

#include <gmock/gmock.h>

#include <fstream>

namespace controller = standin::controller;
namespace host = standin::host;
using standin::Misbehaviour;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class KeyFunctions : public ModuleTest {
 protected:
  void start(const std::string& menuBar = "1 = {Line}_LINE|help\n", std::uint8_t zoomAfterView = 0) {
    writeMenu("[Modes]\nDrafting =\n\n[MenuBar]\n" + menuBar);
    controller::setAdvancedSettings(0, zoomAfterView);
    load();
    proxy().loadMenufile();
    proxy().getNavigationMode();
    mHost = {};
  }
  void writeMenu(const std::string& text) {
    std::ofstream(mProfile / "Lumetrapad" / "Applications" / "autocad.mnu") << text;
  }
  void openSheet() {
    ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
    ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
    proxy().getNavigationMode();
  }
  void key(std::int32_t code) {
    deviceEvent(code);
    proxy().handleDeviceKeys();
  }
  void function(std::int32_t number) { key(0x20020 + number); }
  void orderHost(const char* operation, Misbehaviour kind, bool isOnce = true) {
    ASSERT_TRUE(host::faults().inject(operation, {kind, 1, isOnce})) << operation;
  }
  std::vector<std::string> errors() const { return logTexts("ERR"); }
};

struct KeyCase {
  std::int32_t code;
  const wchar_t* text;
};

class SpecialKeys : public KeyFunctions, public ::testing::WithParamInterface<KeyCase> {};

TEST_P(SpecialKeys, SpecialKeySendsItsCommand) {
  start();
  key(GetParam().code);
  EXPECT_THAT(mHost.mSent, ElementsAre(GetParam().text));
  EXPECT_EQ(mCoreP->getSpecialApplFunc(), 0);
}

TEST_P(SpecialKeys, SpecialKeyIsFollowedByAZoomWhenTheDeviceIsSetSo) {
  start("", 1);
  key(GetParam().code);
  if (GetParam().code == 0x2000C)
    EXPECT_THAT(mHost.mSent, ElementsAre(L"'_ZOOM _ALL "));
  else
    EXPECT_THAT(mHost.mSent, ElementsAre(GetParam().text, L"'_ZOOM _ALL "));
}

INSTANTIATE_TEST_SUITE_P(
    All, SpecialKeys,
    ::testing::Values(KeyCase{0x20009, L"'_-VIEW _FRONT "}, KeyCase{0x2000A, L"'_-VIEW _RIGHT "},
                      KeyCase{0x2000B, L"'_-VIEW _TOP "}, KeyCase{0x2000C, L"'_ZOOM _ALL "},
                      KeyCase{0x20016, L"'_-VIEW _BACK "}, KeyCase{0x20017, L"'_-VIEW _LEFT "},
                      KeyCase{0x20018, L"'_-VIEW _BOTTOM "}));

TEST_F(KeyFunctions, ViewKeyOnASheetIsDroppedInSilence) {
  start("", 1);
  openSheet();
  key(0x2000B);
  EXPECT_THAT(mHost.mSent, IsEmpty());
  EXPECT_THAT(errors(), IsEmpty());
  EXPECT_EQ(mCoreP->getSpecialApplFunc(), 0);
}

TEST_F(KeyFunctions, ZoomKeyOnASheetIsNotTransparent) {
  start();
  openSheet();
  key(0x2000C);
  EXPECT_THAT(mHost.mSent, ElementsAre(L"_ZOOM _ALL "));
}

TEST_F(KeyFunctions, UnknownSpecialFunctionIsLoggedAndStillZooms) {
  start("", 1);
  mCoreP->setSpecialApplFunc(12345);
  proxy().handleDeviceKeys();
  EXPECT_THAT(errors(), ElementsAre("Unknown special command '12345' found!"));
  EXPECT_THAT(mHost.mSent, ElementsAre(L"'_ZOOM _ALL "));
}

TEST_F(KeyFunctions, UnknownSpecialFunctionSendsNothingWithoutTheZoom) {
  start();
  mCoreP->setSpecialApplFunc(12345);
  proxy().handleDeviceKeys();
  EXPECT_THAT(mHost.mSent, IsEmpty());
}

TEST_F(KeyFunctions, ModeThatIsNotYetKnownCountsAsThreeDimensions) {
  load();
  mHost.mSent.clear();
  key(0x2000B);
  EXPECT_THAT(mHost.mSent, ElementsAre(L"'_-VIEW _TOP "));
}

TEST_F(KeyFunctions, CommandIsSentAfterTwoEscapes) {
  start();
  function(0);
  EXPECT_THAT(mHost.mSent, ElementsAre(L"\x1b\x1b", L"_LINE\n"));
  EXPECT_EQ(mCoreP->getApplFunc(), -1);
}

TEST_F(KeyFunctions, EmptyTokenIsEnter) {
  start("1 = {Circle}_CIRCLE;;\n");
  function(0);
  EXPECT_THAT(mHost.mSent, ElementsAre(L"\x1b\x1b", L"_CIRCLE\n", L"\n"));
}

TEST_F(KeyFunctions, DieselMacroIsWrapped) {
  start("1 = {Grid}M=$(if,1,_GRID)\n");
  function(0);
  EXPECT_THAT(mHost.mSent, ElementsAre(L"\x1b\x1b", L"(command (menucmd \"M=$(if,1,_GRID)\"))\n"));
}

TEST_F(KeyFunctions, MacroThatIsEmptySendsNothing) {
  start("1 = {Nothing}|only a help text\n");
  function(0);
  EXPECT_THAT(mHost.mSent, IsEmpty());
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(KeyFunctions, NumberBeyondTheTableIsLogged) {
  start("1 = {A}a\n2 = {B}b\n3 = {C}c\n");
  function(5);
  EXPECT_THAT(errors(), ElementsAre("keyEvent (5') too big (max. is 2)!"));
  EXPECT_THAT(mHost.mSent, IsEmpty());
  EXPECT_EQ(mCoreP->getApplFunc(), -1);
}

TEST_F(KeyFunctions, EmptyTableReportsAMaximumOfMinusOne) {
  load();
  mHost.mSent.clear();
  function(0);
  EXPECT_THAT(errors(), ElementsAre("keyEvent (0') too big (max. is -1)!"));
}

TEST_F(KeyFunctions, ApplicationFunctionsAreSentActivatedAndSpecialOnesNot) {
  start();
  function(0);
  key(0x2000B);
  openSheet();
  key(0x2000C);
  EXPECT_EQ(mHost.mIsActivating, (std::vector<bool>{true, true, false, false}));
  EXPECT_FALSE(host::callRecord().wrapUpInactiveDoc);
  EXPECT_TRUE(host::callRecord().echo);
}

TEST_F(KeyFunctions, FailedExecutionIsLoggedAndTriedAgain) {
  start();
  orderHost("AcApDocManager::sendStringToExecute", Misbehaviour::kThrow);
  function(0);
  EXPECT_THAT(errors(), ElementsAre("Error handleDeviceKeys()"));
  EXPECT_EQ(mCoreP->getApplFunc(), 0);
  proxy().handleDeviceKeys();
  EXPECT_THAT(mHost.mSent, ElementsAre(L"\x1b\x1b", L"_LINE\n"));
  EXPECT_EQ(mCoreP->getApplFunc(), -1);
}

TEST_F(KeyFunctions, FailedApplicationFunctionKeepsTheSpecialOneWaiting) {
  start();
  deviceEvent(0x2000B);
  orderHost("AcApDocManager::sendStringToExecute", Misbehaviour::kThrow);
  function(0);
  EXPECT_EQ(mCoreP->getSpecialApplFunc(), 0x2000B);
  proxy().handleDeviceKeys();
  EXPECT_THAT(mHost.mSent, ElementsAre(L"\x1b\x1b", L"_LINE\n", L"'_-VIEW _TOP "));
}

TEST_F(KeyFunctions, KeyThatArrivesDuringAnExecutionIsServedNext) {
  start();
  class Pressing : public host::Listener {
   public:
    explicit Pressing(LmAutoCad& core) : mCore(core) {}
    void textSent(const std::wstring& text, bool) override {
      if (mSent.empty()) mCore.setSpecialApplFunc(0x2000A);
      mSent.push_back(text);
    }
    LmAutoCad& mCore;
    std::vector<std::wstring> mSent;
  } pressing(*mCoreP);
  host::setListener(&pressing);
  key(0x2000B);
  proxy().handleDeviceKeys();
  host::setListener(&mHost);
  EXPECT_THAT(pressing.mSent, ElementsAre(L"'_-VIEW _TOP ", L"'_-VIEW _RIGHT "));
}

TEST_F(KeyFunctions, FunctionThatArrivesDuringAnExecutionIsServedNext) {
  start();
  class Pressing : public host::Listener {
   public:
    explicit Pressing(LmAutoCad& core) : mCore(core) {}
    void textSent(const std::wstring& text, bool) override {
      if (mSent.empty()) mCore.setApplFunc(0);
      mSent.push_back(text);
    }
    LmAutoCad& mCore;
    std::vector<std::wstring> mSent;
  } pressing(*mCoreP);
  host::setListener(&pressing);
  function(0);
  proxy().handleDeviceKeys();
  host::setListener(&mHost);
  EXPECT_THAT(pressing.mSent, ElementsAre(L"\x1b\x1b", L"_LINE\n", L"\x1b\x1b", L"_LINE\n"));
}

TEST_F(KeyFunctions, KeysAreServedBeforeTheCapInAPass) {
  writeSettings({{"maxContMoveTime", "1"}});
  start();
  class Ordering : public host::Listener {
   public:
    void textSent(const std::wstring&, bool) override { mEvents.push_back("text"); }
    void viewUpdated(int, const host::Camera&) override { mEvents.push_back("view"); }
    std::vector<std::string> mEvents;
  } ordering;
  host::setListener(&ordering);
  deviceEvent(0x2000B);
  deflect({10, 0, 0, 0, 0, 0});
  proxy().doTransform();
  host::setListener(&mHost);
  EXPECT_THAT(ordering.mEvents, ElementsAre("text", "view"));
}

TEST_F(KeyFunctions, KeysAreServedWhileTheForeignInterfaceMovesTheView) {
  writeSettings({{"useInt3dIntrfce", "on"}});
  load();
  deviceEvent(0x2000B);
  idle(100);
  EXPECT_THAT(mHost.mSent, ElementsAre(L"'_-VIEW _TOP "));
}

TEST_F(KeyFunctions, KeyWithoutADocumentIsDropped) {
  start();
  host::closeDocument();
  function(0);
  key(0x2000B);
  EXPECT_THAT(mHost.mSent, IsEmpty());
  EXPECT_THAT(errors(), IsEmpty());
}

// --- the menu file ---

TEST_F(KeyFunctions, MenuFileIsLoadedOnTheFirstTickAndOnlyThen) {
  writeMenu("[Modes]\nDrafting =\n\n[MenuBar]\n1 = {Line}_LINE\n");
  load();
  EXPECT_THAT(logTexts("CRT", "loadMenufile"), IsEmpty());
  idle(1000);
  EXPECT_THAT(logTexts("CRT", "loadMenufile"),
              ElementsAre("Menu file '" + mProfile.root().string() +
                          "\\Lumetrapad\\Applications\\autocad.mnu' with 1 entries loaded."));
}

TEST_F(KeyFunctions, MenuFileThatComesLaterIsFound) {
  load();
  idle(3000);
  writeMenu("[Modes]\nDrafting =\n\n[MenuBar]\n1 = {Line}_LINE\n");
  idle(200);
  EXPECT_EQ(logTexts("CRT", "loadMenufile").size(), 1u);
  function(0);
  EXPECT_EQ(mHost.mSent.back(), L"_LINE\n");
}

TEST_F(KeyFunctions, MenuFileWithoutModesIsReadOnEveryTickAndUsable) {
  writeMenu("[MenuBar]\n1 = {Line}_LINE\n");
  load();
  for (int tick = 0; tick < 5; ++tick) proxy().tick();
  EXPECT_EQ(logTexts("CRT", "loadMenufile").size(), 5u);
  function(0);
  EXPECT_EQ(mHost.mSent.back(), L"_LINE\n");
}

TEST_F(KeyFunctions, MenuFileIsReadBeforeTheKeysOfTheSameTick) {
  writeMenu("[Modes]\nDrafting =\n\n[MenuBar]\n1 = {Line}_LINE\n");
  load();
  deviceEvent(0x20020);
  proxy().tick();
  EXPECT_EQ(mHost.mSent.back(), L"_LINE\n");
}

TEST_F(KeyFunctions, MenuFileThatVanishesEmptiesBothLists) {
  writeMenu("[MenuBar]\n1 = {Line}_LINE\n");
  load();
  proxy().loadMenufile();
  std::filesystem::remove(mProfile / "Lumetrapad" / "Applications" / "autocad.mnu");
  proxy().loadMenufile();
  function(0);
  EXPECT_THAT(errors(), ElementsAre("keyEvent (0') too big (max. is -1)!"));
}

TEST_F(KeyFunctions, MenuFileThatVanishesTakesItsModesAlong) {
  writeMenu("[Modes]\nNone =\nSheet =\nModel =\n\n[MenuBar]\n1 = {Line}_LINE\n");
  load();
  proxy().loadMenufile();
  proxy().getNavigationMode();
  ASSERT_EQ(proxy().applModeName(), "Model");
  std::filesystem::remove(mProfile.applications() / "autocad.mnu");
  proxy().loadMenufile();
  EXPECT_EQ(proxy().applModeName(), "Unknown");
}

TEST_F(KeyFunctions, ReportedModeFollowsTheMenuFile) {
  writeMenu("[Modes]\nNone =\nSheet =\nModel =\n\n[MenuBar]\n");
  load();
  idle(300);
  std::vector<std::string> modes;
  for (const controller::ApplMode& mode : controller::applModes()) modes.push_back(mode.mode);
  EXPECT_EQ(modes.back(), "Model");
}

// --- the menu exporter ---

TEST_F(KeyFunctions, ExporterBesideTheModuleIsLoadedWithForwardSlashes) {
  load();
  const std::string folder = (mProfile / "plug-in").string();
  std::wstring command = L"(command \"netload\" \"";
  command.append(folder.begin(), folder.end()).append(L"/MenuScribe2015.dll\")\n");
  EXPECT_THAT(mHost.mSent, ElementsAre(command));
  EXPECT_THAT(mHost.mIsActivating, ElementsAre(true));
}

TEST_F(KeyFunctions, StartOfTheExporterIsTraced) {
  load();
  std::string folder = (mProfile / "plug-in").string();
  const std::string slashed = folder;
  std::replace(folder.begin(), folder.end(), '/', '\\');
  EXPECT_THAT(logTexts("TRC", "StartDotNETPlugin"),
              ElementsAre("Start .NET Plugin...", "charPath: '" + folder + "\\LMTRAutoCAD2013.arx'",
                          "dllPath: '" + folder + "\\MenuScribe2015.dll'",
                          "totalCmd: '(command \"netload\" \"" + slashed + "/MenuScribe2015.dll\")"));
  EXPECT_NE(mProfile.log().find("/MenuScribe2015.dll\")\n', ec: 0\n"), std::string::npos)
      << "the text ends in a newline";
}

TEST_F(KeyFunctions, MissingExporterIsLogged) {
  std::filesystem::remove(mProfile / "plug-in" / "MenuScribe2015.dll");
  load();
  std::string folder = (mProfile / "plug-in").string();
  std::replace(folder.begin(), folder.end(), '/', '\\');
  EXPECT_THAT(errors(), ElementsAre("Error: MenuScriber does not exist " + folder + "\\MenuScribe2015.dll"));
  EXPECT_THAT(mHost.mSent, IsEmpty());
}

TEST_F(KeyFunctions, ModulePathWithoutAFolderIsLogged) {
  standin::windows::setModulePath(nullptr, L"LMTRAutoCAD2013.arx");
  load();
  EXPECT_THAT(errors(), ElementsAre("Error: Invalid path LMTRAutoCAD2013.arx"));
}

TEST_F(KeyFunctions, ForeignInterfaceNeedsNoExporter) {
  writeSettings({{"useInt3dIntrfce", "on"}});
  load();
  EXPECT_THAT(mHost.mSent, IsEmpty());
  EXPECT_THAT(logTexts("TRC", "StartDotNETPlugin"), IsEmpty());
}

TEST_F(KeyFunctions, MissingSettingsFolderIsReportedInABoxWithABeep) {
  std::filesystem::remove_all(mProfile / "Lumetrapad" / "Applications");
  standin::windows::clearUserMessages();
  load();
  const std::vector<standin::windows::UserMessage> messages = standin::windows::userMessages();
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0].kind, standin::windows::UserMessage::Kind::kBeep);
  const std::string profile = mProfile.root().string();
  EXPECT_EQ(messages[1].type, MB_OK);
  EXPECT_EQ(messages[1].caption, L"Lumetra Plug-in Error");
  EXPECT_EQ(messages[1].text,
            L"Folder '" + std::wstring(profile.begin(), profile.end()) +
                L"\\Lumetrapad\\Applications' not found!\n\nStart the driver first and try again to "
                L"read out AutoCAD's menu items.");
  EXPECT_THAT(mHost.mSent, IsEmpty());
}

TEST_F(KeyFunctions, HostThatThrowsDoesNotKeepTheModuleFromLoading) {
  orderHost("AcApDocManager::sendStringToExecute", Misbehaviour::kThrow);
  load();
  EXPECT_THAT(errors(), ElementsAre("Error StartDotNETPlugin()"));
  EXPECT_NE(AutoCadProxy::instance(), nullptr);
}

}  // namespace
