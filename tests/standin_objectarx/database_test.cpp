#include "host_fixture.h"

// clang-format off
#include "acedads.h"
#include "dbmain.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "dbobjptr.h"
// clang-format on

namespace {

using namespace standin;
using Database = HostTest;

TEST_F(Database, SeveralReadersOpenOneObject) {
  AcDbEntity* firstP = nullptr;
  AcDbEntity* secondP = nullptr;
  EXPECT_EQ(open(firstP, 0x10, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(open(secondP, 0x10, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(firstP, secondP);
  EXPECT_EQ(host::counts().openObjects, 2u);
  EXPECT_EQ(firstP->close(), Acad::eOk);
  EXPECT_EQ(secondP->close(), Acad::eOk);
  EXPECT_EQ(host::counts().openObjects, 0u);
}

TEST_F(Database, ReaderKeepsWritersOut) {
  lock();
  AcDbEntity* readerP = nullptr;
  AcDbEntity* writerP = nullptr;
  open(readerP, 0x10, AcDb::kForRead);
  EXPECT_EQ(open(writerP, 0x10, AcDb::kForWrite), Acad::eWasOpenForRead);
  EXPECT_EQ(writerP, nullptr);
  readerP->close();
  EXPECT_EQ(open(writerP, 0x10, AcDb::kForWrite), Acad::eOk);
  writerP->close();
}

TEST_F(Database, WriterKeepsAllOthersOut) {
  lock();
  AcDbEntity* writerP = nullptr;
  AcDbEntity* otherP = nullptr;
  open(writerP, 0x10, AcDb::kForWrite);
  EXPECT_EQ(open(otherP, 0x10, AcDb::kForRead), Acad::eWasOpenForWrite);
  EXPECT_EQ(open(otherP, 0x10, AcDb::kForWrite), Acad::eWasOpenForWrite);
  writerP->close();
}

TEST_F(Database, ErasedObjectOpensOnRequestOnly) {
  host::drawing()->erase(0x10);
  AcDbEntity* entityP = nullptr;
  EXPECT_EQ(open(entityP, 0x10, AcDb::kForRead), Acad::eWasErased);
  EXPECT_EQ(open(entityP, 0x10, AcDb::kForRead, true), Acad::eOk);
  entityP->close();
}

TEST_F(Database, LockedLayerRefusesWritersOnly) {
  lock();
  AcDbEntity* entityP = nullptr;
  ASSERT_EQ(open(entityP, 0x12, AcDb::kForWrite), Acad::eOnLockedLayer);
  ASSERT_EQ(open(entityP, 0x12, AcDb::kForRead), Acad::eOk);
  entityP->close();
}

TEST_F(Database, WritingNeedsTheDocumentLock) {
  AcDbEntity* entityP = nullptr;
  EXPECT_EQ(open(entityP, 0x10, AcDb::kForWrite), Acad::eLockViolation);
  acDocManager->lockDocument(document(), AcAp::kRead);
  EXPECT_EQ(open(entityP, 0x10, AcDb::kForWrite), Acad::eLockViolation);
  acDocManager->lockDocument(document(), AcAp::kWrite);
  EXPECT_EQ(open(entityP, 0x10, AcDb::kForWrite), Acad::eOk);
  acDocManager->unlockDocument(document());
  EXPECT_EQ(entityP->transformBy(AcGeMatrix3d()), Acad::eLockViolation);
  entityP->close();
}

TEST_F(Database, OpenRefusesUnknownIdsAndClasses) {
  AcDbObject* objectP = nullptr;
  EXPECT_EQ(acdbOpenAcDbObject(objectP, AcDbObjectId(), AcDb::kForRead), Acad::eNullObjectId);
  EXPECT_EQ(acdbOpenAcDbObject(objectP, AcDbObjectId(0x99), AcDb::kForRead), Acad::eUnknownHandle);
  EXPECT_EQ(
      acdbOpenAcDbObject(objectP, AcDbObjectId(host::objectIdOf(0x11)), AcDb::kForRead, AcDbLine::desc()),
      Acad::eNotThatKindOfClass);
  EXPECT_EQ(acdbOpenAcDbObject(objectP, AcDbObjectId(host::objectIdOf(0x10)), AcDb::kForNotify),
            Acad::eInvalidInput);
  EXPECT_EQ(objectP, nullptr);
}

TEST_F(Database, ObjectPointerOpensAndCloses) {
  {
    const AcDbObjectPointer<AcDbLine> line(AcDbObjectId(host::objectIdOf(0x10)), AcDb::kForRead);
    ASSERT_EQ(line.openStatus(), Acad::eOk);
    expectPoint(line->endPoint(), 10, 0, 0);
    EXPECT_EQ(host::counts().openObjects, 1u);
  }
  EXPECT_EQ(host::counts().openObjects, 0u);
  const AcDbObjectPointer<AcDbLine> circle(AcDbObjectId(host::objectIdOf(0x11)), AcDb::kForRead);
  EXPECT_EQ(circle.openStatus(), Acad::eNotThatKindOfClass);
}

TEST_F(Database, CloseOfAnObjectThatIsNotOpenBreaksARule) {
  AcDbEntity* entityP = nullptr;
  open(entityP, 0x10, AcDb::kForRead);
  entityP->close();
  EXPECT_EQ(entityP->close(), Acad::eNotOpenForRead);
  EXPECT_EQ(breaches(), std::vector<std::string>{"AcDbObject::close: called for an object that is not open"});
}

TEST_F(Database, TransformOfAReaderBreaksARule) {
  lock();
  AcDbEntity* entityP = nullptr;
  open(entityP, 0x10, AcDb::kForRead);
  EXPECT_EQ(entityP->transformBy(AcGeMatrix3d().setTranslation({1, 0, 0})), Acad::eNotOpenForWrite);
  EXPECT_EQ(breaches(), std::vector<std::string>{
                            "AcDbEntity::transformBy: called for an object that is not open for write"});
  expectPoint(pointsOf(0x10)[0], 0, 0, 0);
  entityP->close();
}

TEST_F(Database, LineReturnsItsEndsOnlyWhileOpen) {
  AcDbEntity* entityP = nullptr;
  open(entityP, 0x10, AcDb::kForRead);
  const AcDbLine* lineP = AcDbLine::cast(entityP);
  ASSERT_NE(lineP, nullptr);
  AcGePoint3d point(7, 7, 7);
  EXPECT_EQ(lineP->getEndPoint(point), Acad::eOk);
  expectPoint(point, 10, 0, 0);
  entityP->close();
  EXPECT_EQ(lineP->getStartPoint(point), Acad::eNotOpenForRead);
  expectPoint(point, 10, 0, 0);
}

TEST_F(Database, ObjectsKnowTheirClasses) {
  AcDbEntity* lineP = nullptr;
  AcDbEntity* circleP = nullptr;
  open(lineP, 0x10, AcDb::kForRead);
  open(circleP, 0x11, AcDb::kForRead);
  EXPECT_TRUE(lineP->isA()->isDerivedFrom(AcDbLine::desc()));
  EXPECT_TRUE(lineP->isA()->isDerivedFrom(AcDbEntity::desc()));
  EXPECT_FALSE(circleP->isA()->isDerivedFrom(AcDbLine::desc()));
  EXPECT_EQ(AcDbLine::cast(circleP), nullptr);
  EXPECT_EQ(AcDbLine::cast(nullptr), nullptr);
  EXPECT_TRUE(AcDbViewportTableRecord::desc()->isDerivedFrom(AcDbAbstractViewTableRecord::desc()));
  lineP->close();
  circleP->close();
}

TEST_F(Database, EntityNameLeadsToItsId) {
  host::select({0x11});
  ads_name ss;
  ads_name name;
  ASSERT_EQ(acedSSGet(L"I", nullptr, nullptr, nullptr, ss), RTNORM);
  ASSERT_EQ(acedSSName(ss, 0, name), RTNORM);
  AcDbObjectId id;
  EXPECT_EQ(acdbGetObjectId(id, name), Acad::eOk);
  EXPECT_EQ(id, AcDbObjectId(host::objectIdOf(0x11)));
  EXPECT_EQ(acdbGetObjectId(id, ss), Acad::eInvalidInput);
  acedSSFree(ss);
}

TEST_F(Database, ClosingTheDocumentWithAnObjectOpenBreaksARule) {
  AcDbEntity* entityP = nullptr;
  open(entityP, 0x10, AcDb::kForRead);
  host::closeDocument();
  EXPECT_EQ(breaches(), std::vector<std::string>{"closing the document: objects of it are still open"});
}

}  // namespace
