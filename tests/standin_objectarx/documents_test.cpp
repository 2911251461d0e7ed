#include "host_fixture.h"

// clang-format off
#include <windows.h>
#include "accmd.h"
#include "acedads.h"
#include "dbmain.h"
#include "acdocman.h"
#include "gs.h"
#include "acgs.h"
#include "AcApDMgr.h"
// clang-format on

#include "gmock/gmock.h"

namespace {

using namespace standin;
using testing::ElementsAre;
using Documents = HostTest;

struct Data {
  int value = 0;
};

TEST_F(Documents, LocksNestAndAreCounted) {
  lock();
  lock();
  EXPECT_EQ(host::counts().lockDepth, 2);
  EXPECT_EQ(acDocManager->unlockDocument(document()), Acad::eOk);
  EXPECT_EQ(host::counts().lockDepth, 1);
  EXPECT_EQ(acDocManager->unlockDocument(document()), Acad::eOk);
  EXPECT_EQ(host::counts().lockDepth, 0);
  EXPECT_EQ(host::counts().locks, 2u);
  EXPECT_EQ(host::counts().unlocks, 2u);
  EXPECT_EQ(host::counts().breachesInAll, 0u);
}

TEST_F(Documents, UnlockWithoutALockBreaksARule) {
  EXPECT_EQ(acDocManager->unlockDocument(document()), Acad::eNotApplicable);
  EXPECT_EQ(breaches(), std::vector<std::string>{"AcApDocManager::unlockDocument: called without a lock"});
}

TEST_F(Documents, ClosingALockedDocumentBreaksARule) {
  lock();
  host::closeDocument();
  EXPECT_EQ(breaches(), std::vector<std::string>{"closing the document: it is still locked"});
}

TEST_F(Documents, ManagerRefusesLocksAndTextsWithoutADocument) {
  AcApDocument* closedP = document();
  host::closeDocument();
  EXPECT_EQ(document(), nullptr);
  EXPECT_EQ(acDocManager->lockDocument(nullptr), Acad::eNoDocument);
  EXPECT_EQ(acDocManager->sendStringToExecute(nullptr, L"x "), Acad::eNoDocument);
  EXPECT_EQ(host::counts().breachesInAll, 0u);
  EXPECT_EQ(acDocManager->lockDocument(closedP), Acad::eNoDocument);
  EXPECT_EQ(breaches(),
            std::vector<std::string>{"AcApDocManager::lockDocument: called for a document that is not open"});
}

TEST_F(Documents, SentTextsRunInOrderWhenTheHostIsIdle) {
  acDocManager->sendStringToExecute(document(), L"TILEMODE 0 ", false);
  acDocManager->sendStringToExecute(document(), L"TILEMODE 1 ");
  EXPECT_EQ(mHost.mSent, (std::vector<std::wstring>{L"TILEMODE 0 ", L"TILEMODE 1 "}));
  EXPECT_EQ(mHost.mIsActivating, (std::vector<bool>{false, true}));
  EXPECT_EQ(host::variable(L"TILEMODE"), L"1");
  EXPECT_TRUE(host::runQueuedText());
  EXPECT_EQ(host::variable(L"TILEMODE"), L"0");
  EXPECT_TRUE(host::runQueuedText());
  EXPECT_EQ(host::variable(L"TILEMODE"), L"1");
  EXPECT_FALSE(host::runQueuedText());
  EXPECT_EQ(host::counts().textsSent, 2u);
}

TEST_F(Documents, DataOfADocumentEndsWithIt) {
  AcApDataManager<Data> manager;
  EXPECT_EQ(host::counts().reactors, 1u);
  AcApDocument* documentP = document();
  manager.docData().value = 5;
  EXPECT_EQ(manager.docData(documentP).value, 5);
  host::closeDocument();
  EXPECT_EQ(manager.docData(documentP).value, 0);
}

TEST_F(Documents, DataManagerRemovesItself) {
  { const AcApDataManager<Data> manager; }
  EXPECT_EQ(host::counts().reactors, 0u);
  EXPECT_EQ(host::counts().breachesInAll, 0u);
}

TEST_F(Documents, RemovalOfAnUnknownReactorBreaksARule) {
  AcApDocManagerReactor reactor;
  acDocManager->removeReactor(&reactor);
  acDocManager->addReactor(&reactor);
  acDocManager->addReactor(&reactor);
  acDocManager->removeReactor(&reactor);
  EXPECT_EQ(breaches(), (std::vector<std::string>{
                            "AcApDocManager::removeReactor: called for a reactor that is not there",
                            "AcApDocManager::addReactor: called for no reactor, or for one that is there"}));
}

TEST_F(Documents, RemovalThatThrowsRemovesTheReactor) {
  {
    const AcApDataManager<Data> manager;
    host::faults().inject("AcApDocManager::removeReactor", {Misbehaviour::kThrow});
  }
  EXPECT_EQ(host::counts().reactors, 0u);
  host::closeDocument();
}

/// Another document with one line of handle 20, current after.
void openAnother(const std::wstring& name = L"other.dwg") {
  auto drawing = std::make_unique<Drawing>();
  drawing->add(makeLine({0x20}, {0, 0, 0}, {1, 1, 0}));
  EXPECT_TRUE(host::openDocument(std::move(drawing), name));
}

TEST_F(Documents, OpenedDocumentIsCurrent) {
  AcApDocument* const firstP = document();
  openAnother();
  EXPECT_NE(document(), firstP);
  EXPECT_NE(host::drawing()->find(0x20), nullptr);
  EXPECT_THAT(host::documentNames(), ElementsAre(L"Drawing1.dwg", L"other.dwg"));
}

TEST_F(Documents, NameOfAnOpenDocumentIsRefused) {
  openAnother();
  EXPECT_FALSE(host::openDocument(std::make_unique<Drawing>(), L"OTHER.dwg"));
  EXPECT_EQ(host::documentNames().size(), 2u);
}

TEST_F(Documents, SwitchMakesTheNamedDocumentCurrent) {
  AcApDocument* const firstP = document();
  openAnother();
  EXPECT_TRUE(host::switchDocument(L"drawing1.DWG"));
  EXPECT_EQ(document(), firstP);
  EXPECT_FALSE(host::switchDocument(L"missing.dwg"));
  EXPECT_EQ(document(), firstP);
}

TEST_F(Documents, CloseReturnsToTheDocumentThatWasCurrentBefore) {
  AcApDocument* const firstP = document();
  openAnother(L"a.dwg");
  openAnother(L"b.dwg");
  host::switchDocument(L"Drawing1.dwg");
  host::switchDocument(L"a.dwg");
  host::closeDocument();
  EXPECT_EQ(document(), firstP);
  host::closeDocument();
  EXPECT_THAT(host::documentNames(), ElementsAre(L"b.dwg"));
  host::closeDocument();
  EXPECT_EQ(document(), nullptr);
}

TEST_F(Documents, EachDocumentHasItsOwnViewsTabSelectionAndLock) {
  lock();
  host::selectAll();
  host::setVariable(L"TILEMODE", L"0");
  host::setVariable(L"CVPORT", L"2");
  openAnother();
  EXPECT_EQ(host::variable(L"TILEMODE"), L"1");
  EXPECT_TRUE(host::selection().empty());
  AcDbEntity* entityP = nullptr;
  EXPECT_EQ(open(entityP, 0x20, AcDb::kForWrite), Acad::eLockViolation);
  host::Camera camera = *host::camera(2);
  camera.fieldWidth = 77;
  host::setCamera(2, camera);
  host::switchDocument(L"Drawing1.dwg");
  EXPECT_EQ(host::variable(L"TILEMODE"), L"0");
  EXPECT_EQ(host::variable(L"CVPORT"), L"2");
  EXPECT_EQ(host::selection().size(), 3u);
  EXPECT_NE(host::camera(2)->fieldWidth, 77);
  EXPECT_EQ(open(entityP, 0x11, AcDb::kForWrite), Acad::eOk);
  entityP->close();
}

TEST_F(Documents, LockOfADocumentInTheBackgroundIsItsOwn) {
  AcApDocument* const firstP = document();
  openAnother();
  EXPECT_EQ(acDocManager->lockDocument(firstP), Acad::eOk);
  EXPECT_EQ(host::counts().lockDepth, 1);
  EXPECT_EQ(acDocManager->unlockDocument(document()), Acad::eNotApplicable);
  EXPECT_EQ(breaches(), std::vector<std::string>{"AcApDocManager::unlockDocument: called without a lock"});
  EXPECT_EQ(acDocManager->unlockDocument(firstP), Acad::eOk);
}

TEST_F(Documents, ObjectOfADocumentInTheBackgroundIsOpenedByItsId) {
  const AcDbObjectId line(host::objectIdOf(0x10));
  openAnother();
  AcDbEntity* entityP = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(entityP, line, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(entityP->close(), Acad::eOk);
  EXPECT_EQ(acdbOpenAcDbEntity(entityP, line, AcDb::kForWrite), Acad::eLockViolation);
}

TEST_F(Documents, LockedDocumentInTheBackgroundTakesWriters) {
  const AcDbObjectId line(host::objectIdOf(0x10));
  lock();
  openAnother();
  AcDbEntity* entityP = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(entityP, line, AcDb::kForWrite), Acad::eOk);
  if (entityP != nullptr) entityP->close();
}

AcDbObjectId lineInTheBackground;
Acad::ErrorStatus statusInACommand = Acad::eOk;

void writeInTheBackground() {
  AcDbEntity* entityP = nullptr;
  statusInACommand = acdbOpenAcDbEntity(entityP, lineInTheBackground, AcDb::kForWrite);
  if (entityP != nullptr) entityP->close();
}

TEST_F(Documents, CommandMayWriteToTheCurrentDocumentOnly) {
  lineInTheBackground = AcDbObjectId(host::objectIdOf(0x10));
  openAnother();
  acedRegCmds->addCommand(L"G", L"WRITE", L"WRITE", ACRX_CMD_MODAL, writeInTheBackground);
  host::type(L"WRITE");
  EXPECT_EQ(statusInACommand, Acad::eLockViolation);
  host::switchDocument(L"Drawing1.dwg");
  host::type(L"WRITE");
  EXPECT_EQ(statusInACommand, Acad::eOk);
}

TEST_F(Documents, IdOfAClosedDocumentIsUnknown) {
  const AcDbObjectId line(host::objectIdOf(0x10));
  host::closeDocument();
  openAnother();
  AcDbEntity* entityP = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(entityP, line, AcDb::kForRead), Acad::eUnknownHandle);
  EXPECT_EQ(entityP, nullptr);
}

TEST_F(Documents, SelectionSetOfAnotherDocumentBreaksARule) {
  host::selectAll();
  ads_name ss;
  acedSSGet(L"I", nullptr, nullptr, nullptr, ss);
  openAnother();
  AdInt32 length = 0;
  EXPECT_EQ(acedSSLength(ss, &length), RTERROR);
  EXPECT_EQ(breaches(),
            std::vector<std::string>{"acedSSLength: called for a selection set that is not alive"});
}

TEST_F(Documents, SelectionSetLeftInAClosedDocumentBreaksARule) {
  host::selectAll();
  ads_name ss;
  acedSSGet(L"I", nullptr, nullptr, nullptr, ss);
  host::closeDocument();
  EXPECT_EQ(breaches(), std::vector<std::string>{"closing the document: a selection set of it is not freed"});
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
}

TEST_F(Documents, ClosingADocumentCountsItsOwnOpenObjectsOnly) {
  AcDbEntity* entityP = nullptr;
  open(entityP, 0x10, AcDb::kForRead);
  openAnother();
  host::closeDocument();
  EXPECT_EQ(host::counts().breachesInAll, 0u);
  EXPECT_EQ(host::counts().openObjects, 1u);
  entityP->close();
}

TEST_F(Documents, ViewOfADocumentInTheBackgroundIsNotValid) {
  AcGsView* const viewP = acgsGetGsView(2, true);
  openAnother();
  EXPECT_FALSE(viewP->isValid());
  EXPECT_NE(acgsGetGsView(2, true), viewP);
  host::switchDocument(L"Drawing1.dwg");
  EXPECT_TRUE(viewP->isValid());
}

TEST_F(Documents, TextWaitsInTheDocumentThatItWasSentTo) {
  AcApDocument* const firstP = document();
  openAnother();
  acDocManager->sendStringToExecute(firstP, L"TILEMODE 0 ", false);
  EXPECT_FALSE(host::runQueuedText());
  host::switchDocument(L"Drawing1.dwg");
  EXPECT_TRUE(host::runQueuedText());
  EXPECT_EQ(host::variable(L"TILEMODE"), L"0");
}

TEST_F(Documents, ActivatingTextMakesItsDocumentCurrent) {
  AcApDocument* const firstP = document();
  openAnother();
  acDocManager->sendStringToExecute(firstP, L"TILEMODE 0 ", true);
  EXPECT_TRUE(host::runQueuedText());
  EXPECT_EQ(document(), firstP);
  EXPECT_EQ(host::variable(L"TILEMODE"), L"0");
}

TEST_F(Documents, CommandWaitsInItsDocument) {
  host::type(L"LINE");
  openAnother();
  EXPECT_EQ(host::variable(L"CMDACTIVE"), L"0");
  host::switchDocument(L"Drawing1.dwg");
  EXPECT_EQ(host::variable(L"CMDACTIVE"), L"1");
}

TEST_F(Documents, ListenerLearnsWhichViewIsShownAfterASwitch) {
  host::setVariable(L"TILEMODE", L"0");
  openAnother();
  mHost = {};
  host::switchDocument(L"Drawing1.dwg");
  ASSERT_EQ(mHost.mChanges.size(), 1u);
  EXPECT_EQ(mHost.mChanges[0].viewport, 1);
}

/// Writes down each notification with the document that is current meanwhile.
class Reactor final : public AcApDocManagerReactor {
 public:
  Reactor() { acDocManager->addReactor(this); }
  ~Reactor() override { acDocManager->removeReactor(this); }

  void documentCreateStarted(AcApDocument* documentP) override { note("createStarted", documentP); }
  void documentCreated(AcApDocument* documentP) override { note("created", documentP); }
  void documentToBeDestroyed(AcApDocument* documentP) override { note("toBeDestroyed", documentP); }
  void documentDestroyed(const ACHAR* fileName) override {
    const std::wstring name = fileName;
    mNotes.push_back("destroyed " + std::string(name.begin(), name.end()));
  }
  void documentBecameCurrent(AcApDocument* documentP) override { note("becameCurrent", documentP); }
  void documentToBeActivated(AcApDocument* documentP) override { note("toBeActivated", documentP); }
  void documentToBeDeactivated(AcApDocument* documentP) override { note("toBeDeactivated", documentP); }
  void documentActivated(AcApDocument* documentP) override { note("activated", documentP); }

  std::vector<std::string> mNotes;

 private:
  void note(const std::string& what, AcApDocument* documentP) {
    const char* const which = documentP == nullptr                       ? "none"
                              : documentP == acDocManager->curDocument() ? "the current"
                                                                         : "another";
    mNotes.push_back(what + " " + which);
  }
};

TEST_F(Documents, ReactorsFollowTheOpeningOfADocument) {
  Reactor reactor;
  openAnother();
  EXPECT_THAT(reactor.mNotes,
              ElementsAre("createStarted another", "created another", "toBeDeactivated the current",
                          "toBeActivated another", "becameCurrent the current", "activated the current"));
}

TEST_F(Documents, ReactorsFollowASwitch) {
  openAnother();
  Reactor reactor;
  host::switchDocument(L"other.dwg");
  EXPECT_TRUE(reactor.mNotes.empty());
  host::switchDocument(L"Drawing1.dwg");
  EXPECT_THAT(reactor.mNotes, ElementsAre("toBeDeactivated the current", "toBeActivated another",
                                          "becameCurrent the current", "activated the current"));
}

TEST_F(Documents, ReactorsFollowTheClosingOfADocument) {
  openAnother();
  Reactor reactor;
  host::closeDocument();
  EXPECT_THAT(reactor.mNotes,
              ElementsAre("toBeDestroyed the current", "destroyed other.dwg", "toBeActivated the current",
                          "becameCurrent the current", "activated the current"));
  reactor.mNotes.clear();
  host::closeDocument();
  EXPECT_THAT(reactor.mNotes,
              ElementsAre("toBeDestroyed the current", "destroyed Drawing1.dwg", "becameCurrent none"));
}

/// Removes another reactor when a document closes.
class RemovingReactor final : public AcApDocManagerReactor {
 public:
  void documentToBeDestroyed(AcApDocument* /*documentP*/) override {
    acDocManager->removeReactor(mOtherP.get());
    mOtherP.reset();
  }
  std::unique_ptr<AcApDocManagerReactor> mOtherP = std::make_unique<AcApDocManagerReactor>();
};

TEST_F(Documents, ReactorThatAnotherRemovedIsNotCalled) {
  RemovingReactor reactor;
  acDocManager->addReactor(&reactor);
  acDocManager->addReactor(reactor.mOtherP.get());
  host::closeDocument();
  EXPECT_EQ(host::counts().reactors, 1u);
  acDocManager->removeReactor(&reactor);
}

class ThrowingReactor final : public AcApDocManagerReactor {
 public:
  void documentToBeDestroyed(AcApDocument* /*documentP*/) override { throw 1; }
};

TEST_F(Documents, ThrowingReactorBreaksARule) {
  ThrowingReactor reactor;
  acDocManager->addReactor(&reactor);
  host::closeDocument();
  EXPECT_EQ(document(), nullptr);
  EXPECT_EQ(breaches(),
            std::vector<std::string>{"a reactor of the module: let something be thrown into the host"});
  acDocManager->removeReactor(&reactor);
}

}  // namespace
