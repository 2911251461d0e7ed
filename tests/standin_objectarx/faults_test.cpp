#include "host_fixture.h"

// clang-format off
#include <windows.h>
#include "accmd.h"
#include "acedads.h"
#include "acutads.h"
#include "rxdlinkr.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "aced.h"
#include "gs.h"
#include "acgs.h"
// clang-format on

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <thread>
#include <utility>

namespace {

using namespace standin;

void doNothing() {}

/// What the operations need to be called with, got without a fault.
struct Operands {
  ads_name ss = {0, 0};
  ads_name name = {0, 0};
  AcDbLine* lineP = nullptr;
  AcDbViewport* viewportP = nullptr;
  AcDbViewportTableRecord* recordP = nullptr;
  AcRxDictionary* registryP = nullptr;
  AcRxDynamicLinker* linkerP = nullptr;
  AcEdCommandStack* stackP = nullptr;
  AcApDocManager* managerP = nullptr;
  AcGsView* viewP = nullptr;
  AcApDocManagerReactor reactor;
};

/// Each operation by name: one call of it, which returns whether its result reported success.
using Calls = std::map<std::string, std::function<bool(Operands&)>>;

void addCInterface(Calls& calls) {
  calls["acedGetVar"] = [](Operands&) {
    resbuf result{};
    return acedGetVar(L"CVPORT", &result) == RTNORM;
  };
  calls["acedSSGet"] = [](Operands&) {
    ads_name ss;
    return acedSSGet(L"I", nullptr, nullptr, nullptr, ss) == RTNORM;
  };
  calls["acedSSLength"] = [](Operands& o) {
    AdInt32 length = 0;
    return acedSSLength(o.ss, &length) == RTNORM;
  };
  calls["acedSSName"] = [](Operands& o) {
    ads_name name;
    return acedSSName(o.ss, 0, name) == RTNORM;
  };
  calls["acedSSFree"] = [](Operands& o) { return acedSSFree(o.ss) == RTNORM; };
  calls["acedRedraw"] = [](Operands& o) { return acedRedraw(o.name, 1) == RTNORM; };
  calls["acutPrintf"] = [](Operands&) { return acutPrintf(L"x") == RTNORM; };
}

void addRegistry(Calls& calls) {
  calls["acrxSysRegistry"] = [](Operands&) { return acrxSysRegistry() != nullptr; };
  calls["AcRxDictionary::at"] = [](Operands& o) { return o.registryP->at(ACRX_DYNAMIC_LINKER) != nullptr; };
  calls["AcRxDynamicLinker::unlockApplication"] = [](Operands& o) {
    return o.linkerP->unlockApplication(nullptr);
  };
  calls["AcRxDynamicLinker::registerAppMDIAware"] = [](Operands& o) {
    return o.linkerP->registerAppMDIAware(nullptr);
  };
  calls["AcEdCommandStack::addCommand"] = [](Operands& o) {
    return o.stackP->addCommand(L"G", L"NEW", L"NEW", 0, doNothing) == Acad::eOk;
  };
  calls["AcEdCommandStack::removeCmd"] = [](Operands& o) {
    return o.stackP->removeCmd(L"G", L"OLD") == Acad::eOk;
  };
}

void addDocuments(Calls& calls) {
  calls["acDocManagerPtr"] = [](Operands&) { return acDocManagerPtr() != nullptr; };
  calls["AcApDocManager::curDocument"] = [](Operands& o) { return o.managerP->curDocument() != nullptr; };
  calls["AcApDocManager::lockDocument"] = [](Operands& o) {
    return o.managerP->lockDocument(o.managerP->curDocument()) == Acad::eOk;
  };
  calls["AcApDocManager::unlockDocument"] = [](Operands& o) {
    return o.managerP->unlockDocument(o.managerP->curDocument()) == Acad::eOk;
  };
  calls["AcApDocManager::sendStringToExecute"] = [](Operands& o) {
    return o.managerP->sendStringToExecute(o.managerP->curDocument(), L"x") == Acad::eOk;
  };
  calls["AcApDocManager::addReactor"] = [](Operands& o) {
    o.managerP->addReactor(&o.reactor);
    return true;
  };
  calls["AcApDocManager::removeReactor"] = [](Operands& o) {
    o.managerP->removeReactor(&o.reactor);
    return true;
  };
}

void addDatabase(Calls& calls) {
  calls["acdbGetObjectId"] = [](Operands& o) {
    AcDbObjectId id;
    return acdbGetObjectId(id, o.name) == Acad::eOk;
  };
  calls["acdbOpenAcDbEntity"] = [](Operands&) {
    AcDbEntity* entityP = nullptr;
    return acdbOpenAcDbEntity(entityP, AcDbObjectId(host::objectIdOf(0x11)), AcDb::kForRead) == Acad::eOk;
  };
  calls["acdbOpenAcDbObject"] = [](Operands&) {
    AcDbObject* objectP = nullptr;
    return acdbOpenAcDbObject(objectP, AcDbObjectId(host::objectIdOf(0x11)), AcDb::kForRead) == Acad::eOk;
  };
  calls["AcDbObject::close"] = [](Operands& o) { return o.lineP->close() == Acad::eOk; };
  calls["AcDbEntity::getGeomExtents"] = [](Operands& o) {
    AcDbExtents box;
    return o.lineP->getGeomExtents(box) == Acad::eOk;
  };
  calls["AcDbEntity::transformBy"] = [](Operands& o) {
    return o.lineP->transformBy(AcGeMatrix3d()) == Acad::eOk;
  };
  calls["AcDbLine::getStartPoint"] = [](Operands& o) {
    AcGePoint3d point;
    return o.lineP->getStartPoint(point) == Acad::eOk;
  };
  calls["AcDbLine::getEndPoint"] = [](Operands& o) {
    AcGePoint3d point;
    return o.lineP->getEndPoint(point) == Acad::eOk;
  };
  calls["AcDbLine::startPoint"] = [](Operands& o) { return o.lineP->startPoint().x == 0; };
  calls["AcDbLine::endPoint"] = [](Operands& o) { return o.lineP->endPoint().x == 10; };
}

void addViewports(Calls& calls) {
  calls["AcDbViewport::width"] = [](Operands& o) { return o.viewportP->width() > 0; };
  calls["AcDbViewport::height"] = [](Operands& o) { return o.viewportP->height() > 0; };
  calls["AcDbViewport::viewHeight"] = [](Operands& o) { return o.viewportP->viewHeight() > 0; };
  calls["AcDbViewport::viewCenter"] = [](Operands& o) { return o.viewportP->viewCenter().x > 0; };
  calls["AcDbViewport::setViewHeight"] = [](Operands& o) {
    return o.viewportP->setViewHeight(3) == Acad::eOk;
  };
  calls["AcDbViewport::setViewCenter"] = [](Operands& o) {
    return o.viewportP->setViewCenter({3, 3}) == Acad::eOk;
  };
  calls["AcDbViewport::updateDisplay"] = [](Operands& o) {
    return o.viewportP->updateDisplay() == Acad::eOk;
  };
  calls["AcDbAbstractViewTableRecord::centerPoint"] = [](Operands& o) {
    return std::isfinite(o.recordP->centerPoint().x);
  };
  calls["AcDbAbstractViewTableRecord::width"] = [](Operands& o) { return o.recordP->width() > 0; };
  calls["AcDbAbstractViewTableRecord::height"] = [](Operands& o) { return o.recordP->height() > 0; };
  calls["AcDbAbstractViewTableRecord::setCenterPoint"] = [](Operands& o) {
    o.recordP->setCenterPoint({1, 1});
    return true;
  };
  calls["AcDbAbstractViewTableRecord::setHeight"] = [](Operands& o) {
    o.recordP->setHeight(2);
    return true;
  };
  calls["acedActiveViewportId"] = [](Operands&) { return !acedActiveViewportId().isNull(); };
  calls["acedVports2VportTableRecords"] = [](Operands&) {
    return acedVports2VportTableRecords() == Acad::eOk;
  };
  calls["acedVportTableRecords2Vports"] = [](Operands& o) {
    if (o.recordP != nullptr) std::exchange(o.recordP, nullptr)->close();
    return acedVportTableRecords2Vports() == Acad::eOk;
  };
}

void addViews(Calls& calls) {
  calls["acgsGetGsView"] = [](Operands&) { return acgsGetGsView(2, true) != nullptr; };
  calls["acgsSetViewParameters"] = [](Operands& o) {
    return acgsSetViewParameters(2, o.viewP, true, true) != 0;
  };
  calls["AcGsView::position"] = [](Operands& o) { return o.viewP->position().z != 0; };
  calls["AcGsView::target"] = [](Operands& o) { return o.viewP->target().x != 0; };
  calls["AcGsView::upVector"] = [](Operands& o) { return o.viewP->upVector().y == 1; };
  calls["AcGsView::isPerspective"] = [](Operands& o) { return !o.viewP->isPerspective(); };
  calls["AcGsView::fieldWidth"] = [](Operands& o) { return o.viewP->fieldWidth() > 0; };
  calls["AcGsView::fieldHeight"] = [](Operands& o) { return o.viewP->fieldHeight() > 0; };
  calls["AcGsView::setView"] = [](Operands& o) {
    o.viewP->setView({0, 0, 1}, {0, 0, 0}, {0, 1, 0}, 1, 1);
    return true;
  };
  calls["AcGsView::zoom"] = [](Operands& o) {
    o.viewP->zoom(2);
    return true;
  };
  calls["AcGsView::isValid"] = [](Operands& o) { return o.viewP->isValid(); };
  calls["AcGsView::update"] = [](Operands& o) {
    o.viewP->update();
    return true;
  };
}

Calls allCalls() {
  Calls calls;
  addCInterface(calls);
  addRegistry(calls);
  addDocuments(calls);
  addDatabase(calls);
  addViewports(calls);
  addViews(calls);
  return calls;
}

class Faults : public HostTest {
 protected:
  Faults() {
    lock();
    host::selectAll();
    acedSSGet(L"I", nullptr, nullptr, nullptr, mOperands.ss);
    acedSSName(mOperands.ss, 0, mOperands.name);
    mOperands.lineP = openObject<AcDbLine>(AcDbObjectId(host::objectIdOf(0x10)));
    mOperands.recordP = openObject<AcDbViewportTableRecord>(acedActiveViewportId());
    host::setVariable(L"TILEMODE", L"0");
    mOperands.viewportP = openObject<AcDbViewport>(acedActiveViewportId());
    host::setVariable(L"TILEMODE", L"1");
    mOperands.registryP = acrxSysRegistry();
    mOperands.linkerP = acrxDynamicLinker;
    mOperands.stackP = acedRegCmds;
    mOperands.stackP->addCommand(L"G", L"OLD", L"OLD", 0, doNothing);
    mOperands.managerP = acDocManager;
    mOperands.viewP = acgsGetGsView(2, true);
  }

  template <class T>
  static T* openObject(AcDbObjectId id) {
    AcDbObject* objectP = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(objectP, id, AcDb::kForWrite, T::desc()), Acad::eOk);
    return T::cast(objectP);
  }

  const Calls mCalls = allCalls();
  Operands mOperands;
};

class EachOperation : public Faults, public testing::WithParamInterface<std::string> {
 protected:
  bool call() { return mCalls.at(GetParam())(mOperands); }
};

std::vector<std::string> callNames() {
  std::vector<std::string> names;
  for (const auto& [name, call] : allCalls()) names.push_back(name);
  return names;
}

TEST_F(Faults, EveryOperationTakesAFault) {
  const std::vector<std::string> listed = host::faults().names();
  const std::vector<std::string> called = callNames();
  EXPECT_EQ(std::set<std::string>(listed.begin(), listed.end()),
            std::set<std::string>(called.begin(), called.end()));
  EXPECT_EQ(listed.size(), called.size());
}

TEST_P(EachOperation, OperationSucceedsWithoutAFault) {
  EXPECT_TRUE(call());
  EXPECT_GE(host::faults().calls(GetParam()), 1u);
}

TEST_P(EachOperation, OperationFailsOnceWhenItsResultCanReportIt) {
  const bool canFail = host::faults().canFail(GetParam());
  EXPECT_EQ(host::faults().inject(GetParam(), {Misbehaviour::kFail}), canFail);
  if (!canFail) return;
  EXPECT_FALSE(call());
  EXPECT_TRUE(call());
  EXPECT_EQ(host::counts().breachesInAll, 0u);
}

TEST_P(EachOperation, OperationThrowsOnceAndWorksAfterwards) {
  ASSERT_TRUE(host::faults().inject(GetParam(), {Misbehaviour::kThrow}));
  EXPECT_THROW(call(), InjectedFault);
  EXPECT_EQ(host::counts().breachesInAll, 0u);
  EXPECT_EQ(mDrawnCount, 0);
  // A reactor is taken out even when that throws, so it is not there to be taken out again.
  if (GetParam() == "AcApDocManager::removeReactor") mOperands.managerP->addReactor(&mOperands.reactor);
  EXPECT_TRUE(call());
}

TEST_P(EachOperation, OperationOffTheMainThreadIsCountedAndCarriedOut) {
  bool isDone = false;
  const std::uint64_t before = host::faults().calls(GetParam());
  std::thread([&] { isDone = call(); }).join();
  EXPECT_TRUE(isDone);
  EXPECT_GE(host::counts().callsOffMainThread, 1u);
  ASSERT_FALSE(breaches().empty());
  EXPECT_NE(std::find(breaches().begin(), breaches().end(), GetParam() + ": called off the main thread"),
            breaches().end());
  EXPECT_GT(host::faults().calls(GetParam()), before);
}

std::string testNameOf(const testing::TestParamInfo<std::string>& info) {
  std::string name;
  for (const char c : info.param)
    if (c != ':') name += c;
  return name;
}

INSTANTIATE_TEST_SUITE_P(Host, EachOperation, testing::ValuesIn(callNames()), testNameOf);

TEST_F(Faults, FailedReadOfAVariableLeavesTheBufferUntouched) {
  resbuf result{};
  result.resval.rint = 77;
  host::faults().inject("acedGetVar", {Misbehaviour::kFail});
  EXPECT_EQ(acedGetVar(L"CVPORT", &result), RTERROR);
  EXPECT_EQ(result.resval.rint, 77);
}

TEST_F(Faults, FailedCloseLeavesTheObjectOpen) {
  const std::uint64_t open = host::counts().openObjects;
  host::faults().inject("AcDbObject::close", {Misbehaviour::kFail});
  mOperands.lineP->close();
  EXPECT_EQ(host::counts().openObjects, open);
}

TEST_F(Faults, HostKeepsAHundredBreachesAndCountsAll) {
  for (int i = 0; i < 150; ++i) mOperands.viewP->zoom(-1);
  EXPECT_EQ(breaches().size(), 100u);
  EXPECT_EQ(host::counts().breachesInAll, 150u);
}

TEST_F(Faults, StartEndsAllFaultsAndCounts) {
  mOperands.viewP->zoom(-1);
  host::faults().inject("acgsGetGsView", {Misbehaviour::kThrow, 1, false});
  host::start();
  EXPECT_EQ(host::counts().breachesInAll, 0u);
  EXPECT_EQ(host::counts().openObjects, 0u);
  EXPECT_EQ(host::faults().calls("AcGsView::zoom"), 0u);
  EXPECT_EQ(acgsGetGsView(2, true), nullptr);
}

TEST_F(Faults, TwoThreadsCallTheHostAtOnce) {
  std::thread other([this] {
    for (int i = 0; i < 200; ++i) mOperands.viewP->zoom(i % 2 == 0 ? 2 : 0.5);
  });
  for (int i = 0; i < 200; ++i) mOperands.viewP->zoom(i % 2 == 0 ? 4 : 0.25);
  other.join();
  EXPECT_EQ(host::counts().callsOffMainThread, 200u);
  EXPECT_EQ(host::faults().calls("AcGsView::zoom"), 400u);
}

}  // namespace
