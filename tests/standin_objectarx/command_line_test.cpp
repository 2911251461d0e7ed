#include "host_fixture.h"

// clang-format off
#include <windows.h>
#include "accmd.h"
// clang-format on

#include "gmock/gmock.h"

#include <cmath>
#include <filesystem>
#include <fstream>

namespace {

using namespace standin;
using testing::ElementsAre;
using Prints = std::vector<std::wstring>;

class CommandLineTest : public HostTest {
 protected:
  void send(const std::wstring& text) {
    acDocManager->sendStringToExecute(document(), text.c_str());
    while (host::runQueuedText()) {
    }
  }
  static AcGeVector3d directionOfView() {
    const host::Camera camera = *host::camera(2);
    return (camera.target - camera.position).normalize();
  }
  static void expectVector(const AcGeVector3d& v, double x, double y, double z) {
    expectPoint(AcGePoint3d::kOrigin + v, x, y, z);
  }
};

struct PresetCase {
  const wchar_t* option;
  AcGeVector3d along;
  AcGeVector3d up;
};

TEST_F(CommandLineTest, PresetViewsLookAlongTheWorldsAxes) {
  const PresetCase cases[] = {
      {L"_FRONT", {0, 1, 0}, {0, 0, 1}}, {L"_BACK", {0, -1, 0}, {0, 0, 1}},
      {L"_LEFT", {1, 0, 0}, {0, 0, 1}},  {L"_RIGHT", {-1, 0, 0}, {0, 0, 1}},
      {L"_TOP", {0, 0, -1}, {0, 1, 0}},  {L"_BOTTOM", {0, 0, 1}, {0, 1, 0}},
  };
  for (const PresetCase& preset : cases) {
    send(std::wstring(L"'_-VIEW ") + preset.option + L" ");
    expectVector(directionOfView(), preset.along.x, preset.along.y, preset.along.z);
    const AcGeVector3d up = host::camera(2)->up;
    expectVector(up, preset.up.x, preset.up.y, preset.up.z);
  }
  EXPECT_EQ(mHost.mChanges.size(), 6u);
  EXPECT_TRUE(mHost.mHostPrinted.empty());
}

TEST_F(CommandLineTest, PresetViewFitsTheDrawingAndKeepsTheProjection) {
  host::setPerspective(true);
  send(L"'_-VIEW _FRONT ");
  const host::Camera camera = *host::camera(2);
  EXPECT_TRUE(camera.isPerspective);
  // The nearest and widest face of the drawing, 10 wide at y = 0, fills the width of what is seen there.
  const double distance = camera.target.y - camera.position.y;
  const double nearDistance = 0 - camera.position.y;
  EXPECT_NEAR(camera.fieldWidth * nearDistance / distance, 10 * 1.05, 1e-6);
}

TEST_F(CommandLineTest, PresetViewIsStored) {
  send(L"_-VIEW _TOP ");
  EXPECT_EQ(host::committedCamera(2)->position.z, host::camera(2)->position.z);
  EXPECT_NEAR(host::camera(2)->fieldHeight, 8 * 1.05, 1e-9);
}

TEST_F(CommandLineTest, ZoomFitsTheDrawingAlongTheViewsDirection) {
  for (const wchar_t* text : {L"'_ZOOM _ALL ", L"_ZOOM _EXTENTS ", L"_ZOOM _ALL\n"}) {
    host::Camera camera;
    camera.position = {100, 200, 30};
    camera.target = {100, 200, 20};
    camera.fieldWidth = 3;
    camera.fieldHeight = 1;
    host::setCamera(2, camera);
    send(text);
    const host::Camera after = *host::camera(2);
    expectPoint(after.target, 5, 4, 20);
    expectPoint(after.position, 5, 4, 30);
    EXPECT_NEAR(after.fieldHeight, 8 * 1.05, 1e-9);
    EXPECT_NEAR(after.fieldWidth, 3 * after.fieldHeight, 1e-9);
  }
}

TEST_F(CommandLineTest, ZoomOfAnEmptyDrawingShowsItsLimits) {
  host::openDocument(std::make_unique<Drawing>());
  send(L"_ZOOM _ALL ");
  expectPoint(host::camera(2)->target, 6, 4.5, 0);
}

TEST_F(CommandLineTest, ZoomOnPaperShowsTheSheet) {
  host::setVariable(L"TILEMODE", L"0");
  send(L"_ZOOM _ALL ");
  EXPECT_EQ(host::paperView().height, 297);
  EXPECT_EQ(mHost.mChanges.back().viewport, 1);
  EXPECT_NEAR(mHost.mChanges.back().fieldWidth, 420, 1e-9);
}

TEST_F(CommandLineTest, PaperRefusesPresetViews) {
  host::setVariable(L"TILEMODE", L"0");
  send(L"'_-VIEW _TOP ");
  EXPECT_EQ(mHost.mHostPrinted, Prints{L"** Command not allowed in Paper space **"});
}

TEST_F(CommandLineTest, HostNamesAnUnknownCommandInCapitals) {
  host::type(L"frobnicate");
  host::type(L"'_whatever");
  EXPECT_EQ(mHost.mHostPrinted,
            (Prints{L"Unknown command \"FROBNICATE\".", L"Unknown command \"WHATEVER\"."}));
}

TEST_F(CommandLineTest, CommandAsksAgainAfterAnUnknownOption) {
  host::type(L"ZOOM x all");
  EXPECT_EQ(mHost.mHostPrinted, Prints{L"Invalid option keyword."});
  EXPECT_EQ(mHost.mChanges.size(), 1u);
  host::type(L"-VIEW inside ");
  EXPECT_EQ(mHost.mHostPrinted, (Prints{L"Invalid option keyword.", L"Invalid option keyword."}));
  EXPECT_EQ(host::variable(L"CMDACTIVE"), L"0");
}

TEST_F(CommandLineTest, TextWithoutAnEndWaitsForOne) {
  send(L"TILEMODE");
  EXPECT_EQ(host::variable(L"CMDACTIVE"), L"0");
  send(L" 0");
  EXPECT_EQ(host::variable(L"TILEMODE"), L"1");
  send(L"\n");
  EXPECT_EQ(host::variable(L"TILEMODE"), L"0");
}

TEST_F(CommandLineTest, TransparentCommandRunsWhileAnotherWaits) {
  host::type(L"LINE 0,0");
  send(L"'_ZOOM _ALL ");
  EXPECT_EQ(mHost.mChanges.size(), 1u);
  host::type(L"3,4,5");
  host::type(L"");
  EXPECT_EQ(host::variable(L"CMDACTIVE"), L"0");
  expectPoint(pointsOf(0x13)[1], 3, 4, 5);
  EXPECT_EQ(mHost.mHostPrinted,
            (Prints{L"Specify next point:", L"Specify next point:", L"Specify next point:"}));
}

TEST_F(CommandLineTest, WaitingCommandTakesACommandNameAsInput) {
  host::type(L"LINE");
  send(L"_ZOOM ");
  EXPECT_EQ(mHost.mHostPrinted,
            (Prints{L"Specify first point:", L"Point or option keyword required.", L"Specify first point:"}));
}

TEST_F(CommandLineTest, OnlySomeCommandsAreTransparent) {
  host::type(L"CIRCLE");
  host::type(L"'LINE");
  EXPECT_EQ(mHost.mHostPrinted, (Prints{L"Specify center point for circle:",
                                        L"** That command may not be invoked transparently **",
                                        L"Specify center point for circle:"}));
}

TEST_F(CommandLineTest, EscapeCancelsTheCommandAndThePendingText) {
  host::type(L"LINE 0,0");
  send(L"12\x1b\x1b");
  EXPECT_EQ(host::variable(L"CMDACTIVE"), L"0");
  EXPECT_EQ(mHost.mHostPrinted, (Prints{L"Specify next point:", L"*Cancel*"}));
  host::type(L"TILEMODE 0");
  EXPECT_EQ(host::variable(L"TILEMODE"), L"0");
}

TEST_F(CommandLineTest, EscapeWithNoCommandDropsThePreSelection) {
  host::selectAll();
  send(L"\x1b\x1b");
  EXPECT_TRUE(host::selection().empty());
  EXPECT_TRUE(mHost.mHostPrinted.empty());
}

TEST_F(CommandLineTest, LoneEnterDoesNothing) {
  host::type(L"");
  send(L"\n");
  EXPECT_TRUE(mHost.mHostPrinted.empty());
}

TEST_F(CommandLineTest, LineCommandDrawsFromPointToPoint) {
  host::type(L"_LINE 0,0 1,0 1,2,3 ");
  ASSERT_EQ(host::drawing()->entities().size(), 5u);
  expectPoint(pointsOf(0x14)[0], 1, 0, 0);
  expectPoint(pointsOf(0x14)[1], 1, 2, 3);
}

TEST_F(CommandLineTest, CircleCommandTakesACentreAndARadius) {
  host::type(L"CIRCLE x 1,1 -2 3");
  ASSERT_EQ(host::drawing()->entities().size(), 4u);
  EXPECT_STREQ(host::drawing()->entities()[3]->typeName(), "CIRCLE");
  expectPoint(pointsOf(0x13)[0], 1, 1, 0);
  EXPECT_EQ(mHost.mHostPrinted,
            (Prints{L"Point or option keyword required.", L"Value must be positive and nonzero."}));
}

TEST_F(CommandLineTest, EraseCommandErasesThePreSelectionButNotOnLockedLayers) {
  host::selectAll();
  host::type(L"ERASE");
  EXPECT_TRUE(host::drawing()->isErased(0x10));
  EXPECT_TRUE(host::drawing()->isErased(0x11));
  EXPECT_FALSE(host::drawing()->isErased(0x12));
  EXPECT_TRUE(host::selection().empty());
}

TEST_F(CommandLineTest, EraseCommandAsksForObjects) {
  host::type(L"ERASE 11 99 ");
  EXPECT_TRUE(host::drawing()->isErased(0x11));
  EXPECT_FALSE(host::drawing()->isErased(0x10));
  EXPECT_EQ(mHost.mHostPrinted, Prints{L"*Invalid selection*"});
}

TEST_F(CommandLineTest, SelectCommandSetsThePreSelection) {
  host::type(L"SELECT 12 10 ");
  EXPECT_THAT(host::selection(), ElementsAre(0x12u, 0x10u));
  host::type(L"SELECT _all ");
  EXPECT_THAT(host::selection(), ElementsAre(0x10u, 0x11u, 0x12u));
}

TEST_F(CommandLineTest, TilemodeAndCvportSwitchTabAndViewport) {
  host::type(L"TILEMODE 0");
  host::type(L"CVPORT 2");
  EXPECT_EQ(host::currentViewport(), 2);
  host::type(L"CVPORT 5 1");
  EXPECT_EQ(host::currentViewport(), 1);
  host::type(L"TILEMODE 7 1");
  EXPECT_EQ(host::currentViewport(), 2);
  EXPECT_EQ(mHost.mHostPrinted, (Prints{L"** No such viewport **", L"Requires 0 or 1 only."}));
}

TEST_F(CommandLineTest, NetloadByLispNamesTheAssembly) {
  const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / "an assembly.dll";
  std::ofstream(path) << "x";
  send(L"(command \"netload\" \"" + path.generic_wstring() + L"\")\n");
  send(L"(command \"netload\" \"C:/no such.dll\")\n");
  std::filesystem::remove(path);
  EXPECT_EQ(mHost.mHostPrinted, (Prints{L"Assembly \"" + path.generic_wstring() + L"\" loaded.",
                                        L"Cannot load assembly \"C:/no such.dll\"."}));
  EXPECT_THAT(mHost.mAssemblies, ElementsAre(path.generic_wstring()));
}

TEST_F(CommandLineTest, CommandLineEvaluatesAndRunsAMenuMacro) {
  send(L"(command (menucmd \"M=$(if,$(eq,$(getvar,tilemode),1),_line,_circle)\"))\n");
  EXPECT_EQ(mHost.mHostPrinted, Prints{L"Specify first point:"});
}

TEST_F(CommandLineTest, UnfinishedLispWaitsForItsEnd) {
  send(L"(command \"TILEMODE\" ");
  EXPECT_EQ(host::variable(L"TILEMODE"), L"1");
  send(L"\"0\")\n");
  EXPECT_EQ(host::variable(L"TILEMODE"), L"0");
}

TEST_F(CommandLineTest, CommandLineReportsLispMistakes) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"(setq \"a\")\n", L"; error: no function definition: SETQ"},
      {L"(command (foo \"a\"))\n", L"; error: no function definition: FOO"},
      {L"(command 5)\n", L"; error: bad argument type"},
      {L"(command \"x\"))\n", L"; error: extra right paren on input"},
      {L"(command (menucmd x))\n", L"; error: malformed list on input"},
  };
  for (const auto& [text, printed] : cases) {
    send(text);
    EXPECT_EQ(mHost.mHostPrinted.back(), printed);
  }
}

TEST_F(CommandLineTest, MenucmdIgnoresOtherMenus) {
  send(L"(command (menucmd \"P1=x\"))\n");
  EXPECT_TRUE(mHost.mHostPrinted.empty());
}

TEST_F(CommandLineTest, ClosingTheDocumentDropsPendingText) {
  host::type(L"LINE");
  acDocManager->sendStringToExecute(document(), L"0,0 ");
  host::closeDocument();
  EXPECT_FALSE(host::runQueuedText());
  host::openDocument(std::make_unique<Drawing>());
  EXPECT_EQ(host::variable(L"CMDACTIVE"), L"0");
}

bool gCouldWrite = false;

void writeWithoutALock() {
  AcDbEntity* entityP = nullptr;
  gCouldWrite =
      acdbOpenAcDbEntity(entityP, AcDbObjectId(host::objectIdOf(0x10)), AcDb::kForWrite) == Acad::eOk;
  if (gCouldWrite) entityP->close();
}

TEST_F(CommandLineTest, ModuleCommandWritesWithoutALock) {
  acedRegCmds->addCommand(L"G", L"WRITE", L"WRITE", ACRX_CMD_MODAL, writeWithoutALock);
  writeWithoutALock();
  EXPECT_FALSE(gCouldWrite);
  host::type(L"WRITE");
  EXPECT_TRUE(gCouldWrite);
}

TEST_F(CommandLineTest, CommandStackRefusesTakenAndUnknownNames) {
  AcEdCommandStack* stackP = acedRegCmds;
  EXPECT_EQ(stackP->addCommand(L"G", L"A", L"A", 0, writeWithoutALock), Acad::eOk);
  EXPECT_EQ(stackP->addCommand(L"g", L"a", L"B", 0, writeWithoutALock), Acad::eDuplicateKey);
  EXPECT_EQ(stackP->addCommand(L"G", nullptr, L"B", 0, writeWithoutALock), Acad::eInvalidInput);
  EXPECT_EQ(stackP->removeCmd(L"H", L"A"), Acad::eKeyNotFound);
  EXPECT_EQ(stackP->removeCmd(L"G", L"A"), Acad::eOk);
  EXPECT_EQ(host::counts().commandsRegistered, 0u);
}

}  // namespace
