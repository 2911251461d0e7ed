#include "host_fixture.h"

// clang-format off
#include "acdocman.h"
#include "AcApDMgr.h"
// clang-format on

namespace {

using namespace standin;
using Documents = HostTest;

struct Data {
  int value = 0;
};

TEST_F(Documents, LocksNestAndAreCounted) {
  lock();
  lock();
  EXPECT_EQ(host::report().lockDepth, 2);
  EXPECT_EQ(acDocManager->unlockDocument(document()), Acad::eOk);
  EXPECT_EQ(host::report().lockDepth, 1);
  EXPECT_EQ(acDocManager->unlockDocument(document()), Acad::eOk);
  EXPECT_EQ(host::report().lockDepth, 0);
  EXPECT_EQ(host::report().locks, 2u);
  EXPECT_EQ(host::report().unlocks, 2u);
  EXPECT_EQ(host::report().breachesInAll, 0u);
}

TEST_F(Documents, UnlockWithoutALockIsABrokenRule) {
  EXPECT_EQ(acDocManager->unlockDocument(document()), Acad::eNotApplicable);
  EXPECT_EQ(breaches(), std::vector<std::string>{"AcApDocManager::unlockDocument: called without a lock"});
}

TEST_F(Documents, ClosingALockedDocumentIsABrokenRule) {
  lock();
  host::closeDocument();
  EXPECT_EQ(breaches(), std::vector<std::string>{"closing the document: it is still locked"});
}

TEST_F(Documents, WithoutADocumentNothingCanBeLockedOrSent) {
  AcApDocument* closedP = document();
  host::closeDocument();
  EXPECT_EQ(document(), nullptr);
  EXPECT_EQ(acDocManager->lockDocument(nullptr), Acad::eNoDocument);
  EXPECT_EQ(acDocManager->sendStringToExecute(nullptr, L"x "), Acad::eNoDocument);
  EXPECT_EQ(host::report().breachesInAll, 0u);
  EXPECT_EQ(acDocManager->lockDocument(closedP), Acad::eNoDocument);
  EXPECT_EQ(breaches(),
            std::vector<std::string>{"AcApDocManager::lockDocument: called for a document that is not open"});
}

TEST_F(Documents, SentTextIsToldAndRunsWhenTheHostIsIdleInOrder) {
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
  EXPECT_EQ(host::report().textsSent, 2u);
}

TEST_F(Documents, DataOfADocumentEndsWithIt) {
  AcApDataManager<Data> manager;
  EXPECT_EQ(host::report().reactors, 1u);
  AcApDocument* documentP = document();
  manager.docData().value = 5;
  EXPECT_EQ(manager.docData(documentP).value, 5);
  host::closeDocument();
  EXPECT_EQ(manager.docData(documentP).value, 0);
}

TEST_F(Documents, DataManagerTakesItselfOut) {
  { const AcApDataManager<Data> manager; }
  EXPECT_EQ(host::report().reactors, 0u);
  EXPECT_EQ(host::report().breachesInAll, 0u);
}

TEST_F(Documents, RemovingAStrangeReactorIsABrokenRule) {
  AcApDocManagerReactor reactor;
  acDocManager->removeReactor(&reactor);
  acDocManager->addReactor(&reactor);
  acDocManager->addReactor(&reactor);
  acDocManager->removeReactor(&reactor);
  EXPECT_EQ(breaches(), (std::vector<std::string>{
                            "AcApDocManager::removeReactor: called for a reactor that is not there",
                            "AcApDocManager::addReactor: called for no reactor, or for one that is there"}));
}

TEST_F(Documents, ReactorToldToThrowIsRemovedAllTheSame) {
  {
    const AcApDataManager<Data> manager;
    host::faults().order("AcApDocManager::removeReactor", {Misbehaviour::kThrow});
  }
  EXPECT_EQ(host::report().reactors, 0u);
  host::closeDocument();
}

}  // namespace
