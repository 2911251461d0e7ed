// Every operation of the host made to fail, and to throw, at each of its calls in a life of the module.
#include "host/toggle_commands.h"
#include "tests/module/module_fixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>

namespace controller = standin::controller;
namespace host = standin::host;
using standin::Misbehaviour;
using ::testing::IsEmpty;

namespace {

/// All that the module may log of a host that misbehaves, with the methods that log it.
const std::map<std::string, std::set<std::string>> kErrors{
    {"Error TimerProc()", {"TimerProc"}},
    {"Error doTransform()", {"doTransform"}},
    {"Error handleCapIsReleased()", {"handleCapIsReleased"}},
    {"Error handleDeviceKeys()", {"handleDeviceKeys"}},
    {"Error retrieveViewParams()", {"retrieveViewParams"}},
    {"Error calcScreenAxesRelativeToObject()", {"calcScreenAxesRelativeToObject"}},
    {"Error getSelObjectsCenter()", {"getSelObjectsCenter", "getSelObjectAxis"}},
    {"Error handleCapIsDeflectedIn3DMode()", {"handleCapIsDeflectedIn3DMode"}},
    {"Error moveXYZ()", {"moveXYZ"}},
    {"Error move3D()", {"move3D"}},
    {"Error rotate()", {"rotate"}},
    {"Error handleCapIsDeflectedIn2DMode()", {"handleCapIsDeflectedIn2DMode"}},
    {"Error transformSelection()", {"transformSelection3d", "transformSelection2d"}},
    {"Error StartDotNETPlugin()", {"StartDotNETPlugin"}},
    {"System variable 'CVPORT'could not be retrieved! rc = -5001", {"retrieveViewParams"}},
    {"AcGsView object could not be retrieved!", {"retrieveViewParams"}},
    {"ViewP could not be retrieved!", {"handleCapIsDeflectedIn3DMode"}},
    {"viewP not valid!", {"handleCapIsReleased"}},
    {"AcDbObjectPointer could not be retrieved!", {"pan2D", "zoom2D"}},
    {"AcDbViewportTableRecordPointer could not be retrieved!", {"pan2D", "zoom2D"}}};

/// The column of the log that names class and method: 32 characters, a longer text without its beginning.
std::string methodColumn(const std::string& method) {
  constexpr std::size_t kWidth = 32;
  std::string text = "AutoCadProxy::AutoCadProxy::" + method;
  if (text.size() > kWidth) return "*" + text.substr(text.size() - kWidth + 1);
  text.resize(kWidth, ' ');
  return text;
}

bool isKnown(const std::string& text, const std::string& column) {
  const auto error = kErrors.find(text);
  return error != kErrors.end() &&
         std::any_of(error->second.begin(), error->second.end(), [&](const std::string& method) {
           return column.find(methodColumn(method)) != std::string::npos;
         });
}

/// Calls of each operation that are made to misbehave, at most; a life has some hundreds of the frequent
/// ones.
constexpr std::uint64_t kMostCalls = 40;

class HostFaults : public ModuleTest {
 protected:
  HostFaults() {
    writeSettings({{"maxContMoveTime", "30"}});
    std::ofstream(mProfile / "Lumetrapad" / "Applications" / "autocad.mnu")
        << "[Modes]\nDrafting =\n\n[MenuBar]\n1 = {Line}_LINE\n";
  }

  void move(std::array<std::int16_t, 6> cap) {
    deflect(cap);
    idle(250);
    deflect({});
    idle(250);
  }

  /// Every kind of work that the module does with the host.
  void liveALife() {
    load();
    move({10, 10, 10, 10, 10, 10});
    host::select({0x10});
    move({0, 0, 0, 10, 10, 10});
    mCoreP->setToggleRotationAxis(true);
    move({0, 0, 0, 10, 10, 10});
    proxy().setObjectMoveMode(true);
    move({10, 10, 10, 10, 10, 10});
    deviceEvent(0x2000B);
    deviceEvent(0x20020);
    idle(250);
    host::setVariable(L"TILEMODE", L"0");
    host::setVariable(L"CVPORT", L"1");
    move({10, 10, 10, 0, 0, 0});
    host::selectNone();
    move({10, 10, 10, 0, 0, 0});
    proxy().setObjectMoveMode(false);
  }

  void expectTheNextMovementToWork() {
    host::setVariable(L"TILEMODE", L"1");
    const std::size_t updates = mHost.mUpdates.size();
    const std::size_t commits = mHost.mCommits.size();
    move({0, 0, 0, 10, 0, 0});
    EXPECT_GT(mHost.mUpdates.size(), updates);
    EXPECT_EQ(mHost.mCommits.size(), commits + 1);
  }

  void expectNothingLeft() {
    const host::Counts counts = host::counts();
    EXPECT_EQ(counts.openObjects, 0u);
    EXPECT_EQ(counts.selectionSetsAlive, 0u);
    EXPECT_EQ(counts.lockDepth, 0);
    EXPECT_THAT(counts.breaches, IsEmpty());
  }

  void expectOnlyKnownErrors() {
    for (const LogLine& line : logLines())
      if (line.type == "ERR") {
        EXPECT_TRUE(isKnown(line.text, line.method)) << line.method << line.text;
      }
  }

  /// A life in which `operation` misbehaves at its nth call, from a fresh host on.
  void liveWithFault(const std::string& operation, Misbehaviour kind, std::uint64_t nth) {
    SCOPED_TRACE(operation + (kind == Misbehaviour::kFail ? " fails" : " throws") + " at call " +
                 std::to_string(nth));
    restart();
    ASSERT_TRUE(host::faults().inject(operation, {kind, nth, true}));
    liveALife();
    host::faults().inject(operation, {});
    expectTheNextMovementToWork();
    expectNothingLeft();
    expectOnlyKnownErrors();
    unload();
  }

  std::vector<Misbehaviour> kinds(const std::string& operation) {
    if (!host::faults().canFail(operation)) return {Misbehaviour::kThrow};
    return {Misbehaviour::kFail, Misbehaviour::kThrow};
  }
};

TEST_F(HostFaults, AnyCallMayFailOrThrowAndTheNextMovementWorks) {
  liveALife();
  std::map<std::string, std::uint64_t> calls;
  for (const std::string& name : host::faults().names()) calls[name] = host::faults().calls(name);
  unload();
  std::size_t lives = 0;
  for (const auto& [operation, count] : calls) {
    // Every call up to a number, then wider and wider apart.
    for (std::uint64_t nth = 1; nth <= count; nth += nth < kMostCalls ? 1 : nth / 4)
      for (const Misbehaviour kind : kinds(operation)) {
        liveWithFault(operation, kind, nth);
        ++lives;
        if (HasFatalFailure()) return;
      }
  }
  EXPECT_GT(lives, 500u);
}

TEST_F(HostFaults, HostThatAlwaysFailsIsSurvived) {
  for (const std::string& operation : host::faults().names())
    for (const Misbehaviour kind : kinds(operation)) {
      SCOPED_TRACE(operation);
      restart();
      ASSERT_TRUE(host::faults().inject(operation, {kind, 1, false}));
      liveALife();
      ASSERT_TRUE(host::faults().inject(operation, {}));
      expectTheNextMovementToWork();
      expectOnlyKnownErrors();
      unload();
    }
}

}  // namespace
