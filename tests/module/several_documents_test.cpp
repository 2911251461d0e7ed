// The cap is held while the user opens, switches and closes documents.
#include "host/doc_data.h"
#include "tests/module/module_fixture.h"

#include "acdocman.h"

#include <gmock/gmock.h>

#include <memory>

namespace {

namespace host = standin::host;
using ::testing::IsEmpty;

constexpr wchar_t kFirst[] = L"Drawing1.dwg";
constexpr wchar_t kSecond[] = L"second.dwg";

/// Two documents, of which the first is current.
class SeveralDocuments : public ModuleTest {
 protected:
  void SetUp() override {
    writeSettings();
    load();
    mManagerP = std::make_unique<DocDataManager>();
    openSecond();
    host::switchDocument(kFirst);
    mHost = {};
  }
  void TearDown() override { mManagerP.reset(); }

  static void openSecond() {
    auto drawing = std::make_unique<standin::Drawing>();
    drawing->add(standin::makeLine({0x50}, {0, 0, 0}, {100, 0, 0}));
    ASSERT_TRUE(host::openDocument(std::move(drawing), kSecond));
  }
  static void showSheet() {
    ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
    ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  }
  void pass() { proxy().handleDeviceCap(); }
  static void expectNothingHeld() {
    EXPECT_EQ(host::counts().lockDepth, 0);
    EXPECT_EQ(host::counts().openObjects, 0u);
    EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
    EXPECT_THAT(host::counts().breaches, IsEmpty());
  }

  std::unique_ptr<DocDataManager> mManagerP;
};

TEST_F(SeveralDocuments, HeldCapMovesTheViewOfTheCurrentDocument) {
  deflect({0, 0, 100, 0, 0, 0});
  pass();
  const double first = host::camera(2)->fieldWidth;
  host::switchDocument(kSecond);
  const double second = host::camera(2)->fieldWidth;
  pass();
  EXPECT_NE(host::camera(2)->fieldWidth, second);
  deflect({});
  pass();
  EXPECT_EQ(host::committedCamera(2)->fieldWidth, host::camera(2)->fieldWidth);
  host::switchDocument(kFirst);
  EXPECT_EQ(host::camera(2)->fieldWidth, first);
  expectNothingHeld();
}

TEST_F(SeveralDocuments, ReleaseUnlocksTheDocumentThatWasLocked) {
  showSheet();
  AcApDocument* const lockedP = acDocManager->curDocument();
  deflect({10, 0, 0, 0, 0, 0});
  pass();
  ASSERT_TRUE(proxy().isDocLocked());
  host::switchDocument(kSecond);
  showSheet();
  deflect({});
  pass();
  EXPECT_FALSE(proxy().isDocLocked());
  EXPECT_NE(acDocManager->curDocument(), lockedP);
  expectNothingHeld();
}

TEST_F(SeveralDocuments, ClosingTheLockedDocumentLetsTheOtherOneMove) {
  showSheet();
  deflect({10, 0, 0, 0, 0, 0});
  pass();
  host::closeDocument();
  showSheet();
  const double centre = host::paperView().centerX;
  pass();
  EXPECT_NE(host::paperView().centerX, centre);
  deflect({});
  pass();
  EXPECT_EQ(host::counts().locks, 2u);
  expectNothingHeld();
}

TEST_F(SeveralDocuments, KeyReachesTheDocumentThatIsCurrentWhenItIsServed) {
  deviceEvent(0x2000B);
  host::switchDocument(kSecond);
  proxy().handleDeviceKeys();
  ASSERT_FALSE(mHost.mSent.empty());
  EXPECT_TRUE(host::runQueuedText());
  EXPECT_EQ(host::documentNames().back(), kSecond);
}

TEST_F(SeveralDocuments, OpeningAndClosingUnderAHeldCapLeavesNothing) {
  deflect({40, 0, -30, 0, 0, 200});
  for (int round = 0; round < 20; ++round) {
    idle(50);
    host::switchDocument(kSecond);
    idle(50);
    host::closeDocument();
    idle(50);
    openSecond();
    if (round % 2 == 0) showSheet();
    host::selectAll();
    idle(50);
    host::switchDocument(kFirst);
  }
  deflect({});
  idle(200);
  EXPECT_FALSE(proxy().isCapMoving());
  expectNothingHeld();
}

}  // namespace
