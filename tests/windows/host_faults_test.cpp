// Each operation of the host made to fail, and to throw, in a life of the shipped module. What the host
// throws passes from the host's compiler to the module's through the libraries in AutoCAD's ABI.
#include "tests/support/settings_text.h"
#include "tests/windows/driven_module.h"
#include "tests/windows/module_run.h"

#include <map>
#include <set>
#include <sstream>
#include <vector>

namespace controller = standin::controller;
namespace host = standin::host;
using standin::Misbehaviour;
using ::testing::IsEmpty;

namespace {

/// An operation of the host, and what the module logs when its first call throws or returns its failure.
/// Nothing where the module can do without, at its start and at its end.
struct Row {
  const char* operation;
  std::vector<std::string> onThrow;
  std::vector<std::string> onFailure;
};

const std::vector<Row> kRows = {
    {"AcApDocManager::addReactor", {}, {}},
    {"AcApDocManager::curDocument", {"Error StartDotNETPlugin()"}, {}},
    {"AcApDocManager::lockDocument", {"Error transformSelection()"}, {"Error transformSelection()"}},
    {"AcApDocManager::removeReactor", {}, {}},
    {"AcApDocManager::sendStringToExecute", {"Error StartDotNETPlugin()"}, {}},
    {"AcApDocManager::unlockDocument", {"Error handleCapIsReleased()"}, {}},
    {"AcDbAbstractViewTableRecord::centerPoint", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbAbstractViewTableRecord::height", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbAbstractViewTableRecord::setCenterPoint", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbAbstractViewTableRecord::setHeight", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbAbstractViewTableRecord::width", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbEntity::getGeomExtents", {"Error getSelObjectsCenter()"}, {"Error getSelObjectsCenter()"}},
    {"AcDbEntity::transformBy", {"Error transformSelection()"}, {}},
    {"AcDbLine::getEndPoint", {"Error getSelObjectsCenter()"}, {"Error getSelObjectsCenter()"}},
    {"AcDbLine::getStartPoint", {"Error getSelObjectsCenter()"}, {"Error getSelObjectsCenter()"}},
    {"AcDbObject::close", {"Error getSelObjectsCenter()"}, {}},
    {"AcDbViewport::height", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbViewport::setViewCenter", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbViewport::setViewHeight", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbViewport::updateDisplay", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbViewport::viewCenter", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbViewport::viewHeight", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcDbViewport::width", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"AcEdCommandStack::addCommand", {}, {}},
    {"AcEdCommandStack::removeCmd", {}, {}},
    {"AcGsView::fieldHeight", {"Error move3D()"}, {}},
    {"AcGsView::fieldWidth", {"Error move3D()"}, {}},
    {"AcGsView::isPerspective", {"Error handleCapIsDeflectedIn3DMode()"}, {}},
    {"AcGsView::isValid", {"Error handleCapIsReleased()"}, {"viewP not valid!"}},
    {"AcGsView::position", {"Error calcScreenAxesRelativeToObject()"}, {}},
    {"AcGsView::setView", {"Error move3D()"}, {}},
    {"AcGsView::target", {"Error calcScreenAxesRelativeToObject()"}, {}},
    {"AcGsView::upVector", {"Error calcScreenAxesRelativeToObject()"}, {}},
    {"AcGsView::update", {"Error handleCapIsDeflectedIn3DMode()"}, {}},
    {"AcGsView::zoom", {"Error moveXYZ()"}, {}},
    {"AcRxDictionary::at", {}, {}},
    {"AcRxDynamicLinker::registerAppMDIAware", {}, {}},
    {"AcRxDynamicLinker::unlockApplication", {}, {}},
    {"acDocManagerPtr", {}, {}},
    {"acdbGetObjectId", {"Error getSelObjectsCenter()"}, {"Error getSelObjectsCenter()"}},
    {"acdbOpenAcDbEntity", {"Error getSelObjectsCenter()"}, {"Error getSelObjectsCenter()"}},
    {"acdbOpenAcDbObject",
     {"Error handleCapIsDeflectedIn2DMode()"},
     {"AcDbObjectPointer could not be retrieved!"}},
    {"acedActiveViewportId",
     {"Error handleCapIsDeflectedIn2DMode()"},
     {"AcDbObjectPointer could not be retrieved!"}},
    {"acedGetVar", {"Error doTransform()"}, {}},
    {"acedRedraw", {"Error transformSelection()"}, {}},
    {"acedSSFree", {"Error getSelObjectsCenter()"}, {}},
    {"acedSSGet", {"Error getSelObjectsCenter()"}, {}},
    {"acedSSLength", {"Error getSelObjectsCenter()"}, {"Error getSelObjectsCenter()"}},
    {"acedSSName", {"Error getSelObjectsCenter()"}, {}},
    {"acedVportTableRecords2Vports", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"acedVports2VportTableRecords", {"Error handleCapIsDeflectedIn2DMode()"}, {}},
    {"acgsGetGsView",
     {"Error retrieveViewParams()", "ViewP could not be retrieved!"},
     {"AcGsView object could not be retrieved!", "ViewP could not be retrieved!"}},
    {"acgsSetViewParameters", {"Error handleCapIsReleased()"}, {}},
    {"acrxSysRegistry", {}, {}},
    {"acutPrintf", {}, {}},
};

/// The module reads a line's ends by the functions that report a failure.
const std::set<std::string> kNeverCalled = {"AcDbLine::startPoint", "AcDbLine::endPoint"};

/// A command of the host whose removal fails stays; the host says that there is none.
constexpr const char* kRemoveCommand = "AcEdCommandStack::removeCmd";
constexpr const char* kRemoveReactor = "AcApDocManager::removeReactor";

class HostFaults : public ModuleRun {
 protected:
  HostFaults() {
    // Few passes in a tick, so that a fault in one of them is a fault in few.
    std::ofstream(mProfile / "Lumetrapad" / "Applications" / "autocad_addin.ini")
        << tests::settingsText({{"maxContMoveTime", "30"}});
    std::ofstream(mProfile / "Lumetrapad" / "Applications" / "autocad.mnu")
        << "[Modes]\nDrafting =\n\n[MenuBar]\n1 = {Line}_LINE\n";
  }

  /// A host and a device as new, and an empty log. Nothing waits while it draws.
  void restart() {
    controller::reset();
    host::start();
    auto drawing = std::make_unique<standin::Drawing>();
    drawing->add(standin::makeLine({0x10, "0", 256}, {1, 1, 0}, {1, 1, 5}));
    host::openDocument(std::move(drawing));
    std::filesystem::remove(mProfile / "Lumetrapad" / "autocad_addin_log.txt");
    mHost = {};
  }

  /// Every kind of work that the module does with the host.
  static void work(const DrivenModule& module) {
    module.tick();
    module.move({10, 10, 10, 10, 10, 10});
    host::select({0x10});
    module.move({0, 0, 0, 10, 10, 10});
    host::type(L"LM_Toggle_Rotation_Axis");
    module.move({0, 0, 0, 10, 10, 10});
    host::type(L"LM_Toggle_Object_Move_Mode");
    module.move({10, 10, 10, 10, 10, 10});
    module.deliver(0x2000B, {});
    module.deliver(0x20020, {});
    module.tick();
    showTheSheet();
    module.move({10, 10, 10, 0, 0, 0});
    host::selectNone();
    module.move({10, 10, 10, 0, 0, 0});
    module.move({10, 10, 10, 0, 0, 0}, [] { host::setVariable(L"TILEMODE", L"1"); });
    host::type(L"LM_Toggle_Object_Move_Mode");
    host::type(L"LM_Toggle_Rotation_Axis");
  }

  static void showTheSheet() {
    host::setVariable(L"TILEMODE", L"0");
    host::setVariable(L"CVPORT", L"1");
  }

  void expectTheNextMovementToWork(const DrivenModule& module) {
    const std::size_t updates = mHost.mUpdates.size();
    const std::size_t commits = mHost.mCommits.size();
    module.move({0, 0, 0, 10, 0, 0});
    EXPECT_GT(mHost.mUpdates.size(), updates);
    EXPECT_EQ(mHost.mCommits.size(), commits + 1);
  }

  static void expectNothingLeft(const std::vector<std::string>& breaches = {}) {
    const host::Counts counts = host::counts();
    EXPECT_EQ(counts.openObjects, 0u);
    EXPECT_EQ(counts.selectionSetsAlive, 0u);
    EXPECT_EQ(counts.lockDepth, 0);
    EXPECT_EQ(counts.reactors, 0u);
    EXPECT_EQ(counts.callsOffMainThread, 0u);
    EXPECT_EQ(counts.breaches, breaches);
    EXPECT_THAT(controller::breaches(), IsEmpty());
    EXPECT_FALSE(LoadedModule::isMapped(LM_MODULE_FILE));
  }

  /// Texts of the errors in the log, in order.
  std::vector<std::string> errors() const {
    std::vector<std::string> texts;
    std::istringstream log(read("autocad_addin_log.txt"));
    for (std::string line; std::getline(log, line);) {
      if (line.find("|ERR|") == std::string::npos) continue;
      line.erase(0, line.rfind("| ") + 2);
      line.erase(line.find_last_not_of("\r") + 1);
      texts.push_back(line);
    }
    return texts;
  }

  /// Calls of each operation in a life without faults: by the work, and in all.
  struct Calls {
    std::uint64_t ofWork, inAll;
  };
  std::map<std::string, Calls> callsOfALife() {
    restart();
    std::map<std::string, Calls> calls;
    {
      const DrivenModule module;
      work(module);
      for (const std::string& name : host::faults().names()) calls[name].ofWork = host::faults().calls(name);
      expectTheNextMovementToWork(module);
    }
    for (auto& [name, count] : calls) count.inAll = host::faults().calls(name);
    expectNothingLeft();
    EXPECT_THAT(errors(), IsEmpty());
    return calls;
  }

  /// A life in which `operation` misbehaves once, at its nth call. Returns the errors that the module logs.
  std::vector<std::string> lifeWithFault(const std::string& operation, Misbehaviour kind, std::uint64_t nth) {
    SCOPED_TRACE(operation + (kind == Misbehaviour::kFail ? " fails" : " throws") + " at call " +
                 std::to_string(nth));
    restart();
    EXPECT_TRUE(host::faults().inject(operation, {kind, nth, true}));
    {
      const DrivenModule module;
      work(module);
      expectTheNextMovementToWork(module);
    }
    EXPECT_GE(host::faults().calls(operation), nth) << "the fault did not happen";
    if (operation != kRemoveCommand || kind != Misbehaviour::kFail) {
      EXPECT_EQ(host::counts().commandsRegistered, 0u);
    }
    // The stand-in forgets a reactor even when it throws, and the base class of the module's reactor asks
    // twice.
    if (operation == kRemoveReactor)
      expectNothingLeft({operation + ": called for a reactor that is not there"});
    else
      expectNothingLeft();
    return errors();
  }
};

TEST_F(HostFaults, EachOperationOfTheHostIsInTheTable) {
  std::set<std::string> inTable = kNeverCalled, ofHost;
  for (const Row& row : kRows) inTable.insert(row.operation);
  for (const std::string& name : host::faults().names()) ofHost.insert(name);
  EXPECT_EQ(inTable, ofHost);
  for (const auto& [name, calls] : callsOfALife())
    EXPECT_EQ(calls.inAll == 0, kNeverCalled.count(name) == 1) << name;
}

TEST_F(HostFaults, AThrowIsCaughtByTheModuleAndLogged) {
  for (const Row& row : kRows)
    EXPECT_EQ(lifeWithFault(row.operation, Misbehaviour::kThrow, 1), row.onThrow) << row.operation;
}

TEST_F(HostFaults, AFailureIsHandledByTheModule) {
  for (const Row& row : kRows)
    if (host::faults().canFail(row.operation)) {
      EXPECT_EQ(lifeWithFault(row.operation, Misbehaviour::kFail, 1), row.onFailure) << row.operation;
    }
}

TEST_F(HostFaults, AThrowAmidTheWorkIsSurvived) {
  for (const auto& [name, calls] : callsOfALife())
    if (calls.ofWork > 1) lifeWithFault(name, Misbehaviour::kThrow, calls.ofWork / 2 + 1);
}

}  // namespace
