#include "host_fixture.h"

#include "gmock/gmock.h"

#include <cmath>
#include <stdexcept>

namespace {

using namespace standin;

constexpr double kPi = 3.14159265358979323846;

/// A drawing with one entity, opened and closed as the module does it.
class Entities : public HostTest {
 protected:
  static AcDbExtents boxOf(std::unique_ptr<DrawnEntity> entity) {
    const std::uint64_t handle = host::drawing()->add(std::move(entity));
    AcDbEntity* entityP = nullptr;
    AcDbExtents box;
    EXPECT_EQ(open(entityP, handle, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(entityP->getGeomExtents(box), Acad::eOk);
    entityP->close();
    return box;
  }
  static void expectBox(const AcDbExtents& box, const AcGePoint3d& low, const AcGePoint3d& high) {
    expectPoint(box.minPoint(), low.x, low.y, low.z);
    expectPoint(box.maxPoint(), high.x, high.y, high.z);
  }
  static void transform(std::uint64_t handle, const AcGeMatrix3d& by) {
    lock();
    AcDbEntity* entityP = nullptr;
    ASSERT_EQ(open(entityP, handle, AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(entityP->transformBy(by), Acad::eOk);
    entityP->close();
    acDocManager->unlockDocument(document());
  }
};

TEST_F(Entities, LineBoxHasItsEndsAsCorners) {
  expectBox(boxOf(makeLine({}, {3, -1, 5}, {1, 2, 4})), {1, -1, 4}, {3, 2, 5});
}

TEST_F(Entities, CircleBoxIsExactInAnyPlane) {
  expectBox(boxOf(makeCircle({}, {1, 2, 3}, {0, 0, 1}, 2)), {-1, 0, 3}, {3, 4, 3});
  const double half = std::sqrt(0.5);
  expectBox(boxOf(makeCircle({}, {0, 0, 0}, {half, 0, half}, 2)), {-2 * half, -2, -2 * half},
            {2 * half, 2, 2 * half});
}

TEST_F(Entities, ArcBoxHoldsTheArcOnly) {
  expectBox(boxOf(makeArc({}, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}, 2, 0, kPi / 2)), {0, 0, 0}, {2, 2, 0});
  expectBox(boxOf(makeArc({}, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}, 2, kPi / 4, -kPi / 4)), {-2, -2, 0},
            {std::sqrt(2.0), 2, 0});
}

TEST_F(Entities, EllipseBoxFollowsItsAxes) {
  expectBox(boxOf(makeEllipse({}, {0, 0, 0}, {0, 0, 1}, {0, 4, 0}, 0.25, 0, 2 * kPi)), {-1, -4, 0},
            {1, 4, 0});
}

TEST_F(Entities, BulgeOfOneIsAHalfCircleToTheRight) {
  const std::vector<PolylineVertex> vertices{{{0, 0, 0}, 1}, {{4, 0, 0}, 0}};
  expectBox(boxOf(makePolyline({}, "LWPOLYLINE", vertices, {0, 0, 1}, false)), {0, -2, 0}, {4, 0, 0});
}

TEST_F(Entities, NegativeBulgeTurnsTheOtherWay) {
  const std::vector<PolylineVertex> vertices{{{0, 0, 0}, -0.5}, {{4, 0, 0}, 0}};
  // The height of the arc above the chord is half the chord times the bulge.
  expectBox(boxOf(makePolyline({}, "LWPOLYLINE", vertices, {0, 0, 1}, false)), {0, 0, 0}, {4, 1, 0});
}

TEST_F(Entities, ClosedPolylineEndsWhereItBegan) {
  const auto entity =
      makePolyline({}, "POLYLINE", {{{0, 0, 0}, 0}, {{1, 0, 0}, 0}, {{1, 1, 0}, 0}}, {0, 0, 1}, true);
  ASSERT_EQ(entity->outline().size(), 1u);
  EXPECT_EQ(entity->outline()[0].size(), 4u);
  EXPECT_EQ(entity->points().size(), 3u);
  EXPECT_STREQ(entity->typeName(), "POLYLINE");
}

TEST_F(Entities, PolylineWithoutVerticesHasNoBox) {
  const std::uint64_t handle = host::drawing()->add(makePolyline({}, "POLYLINE", {}, {0, 0, 1}, true));
  AcDbEntity* entityP = nullptr;
  AcDbExtents box({1, 1, 1}, {2, 2, 2});
  open(entityP, handle, AcDb::kForRead);
  EXPECT_EQ(entityP->getGeomExtents(box), Acad::eNullExtents);
  expectBox(box, {1, 1, 1}, {2, 2, 2});
  entityP->close();
}

TEST_F(Entities, FullTurnIsDrawnInSixtyFourChords) {
  const auto circle = makeCircle({}, {0, 0, 0}, {0, 0, 1}, 1);
  EXPECT_EQ(circle->outline()[0].size(), 65u);
  const auto quarter = makeArc({}, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}, 1, 0, kPi / 2);
  EXPECT_EQ(quarter->outline()[0].size(), 17u);
  expectPoint(quarter->outline()[0].back(), 0, 1, 0);
}

TEST_F(Entities, CircleStretchedIsAnEllipse) {
  AcGeMatrix3d stretch;
  stretch.entry[0][0] = 3;
  transform(0x11, stretch);
  AcDbEntity* entityP = nullptr;
  AcDbExtents box;
  open(entityP, 0x11, AcDb::kForRead);
  entityP->getGeomExtents(box);
  entityP->close();
  expectBox(box, {9, 3, 0}, {21, 7, 0});
  expectPoint(pointsOf(0x11)[0], 15, 5, 0);
}

TEST_F(Entities, LineIsMovedAndTurned) {
  transform(0x10,
            AcGeMatrix3d().setTranslation({0, 0, 5}) * AcGeMatrix3d::rotation(kPi / 2, {0, 0, 1}, {0, 0, 0}));
  expectPoint(pointsOf(0x10)[1], 0, 10, 5);
}

TEST_F(Entities, MeshIsDrawnAlongRowsAndColumns) {
  const auto mesh =
      makeMesh({}, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 1, 0}}, 2, 3, false, true);
  const std::vector<Polyline3> wires = mesh->outline();
  ASSERT_EQ(wires.size(), 5u);
  EXPECT_EQ(wires[0].size(), 4u);
  expectPoint(wires[0].back(), 0, 0, 0);
  EXPECT_EQ(wires[2].size(), 2u);
  expectPoint(wires[2].back(), 0, 1, 0);
}

TEST_F(Entities, MeshOfTheWrongSizeIsRefused) {
  EXPECT_THROW(makeMesh({}, {{0, 0, 0}}, 2, 3, false, false), std::invalid_argument);
  EXPECT_THROW(makePolyface({}, {{0, 0, 0}}, {{0, 1}}), std::invalid_argument);
  EXPECT_THROW(makePolyface({}, {{0, 0, 0}}, {{}}), std::invalid_argument);
}

TEST_F(Entities, FacesAreDrawnClosed) {
  const auto face = makeFace({}, {{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}});
  EXPECT_EQ(face->outline()[0].size(), 5u);
  const auto polyface = makePolyface({}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
  EXPECT_EQ(polyface->outline()[0].size(), 4u);
  EXPECT_STREQ(polyface->typeName(), "POLYLINE");
}

TEST_F(Entities, InsertShowsItsBlockAtItsPlace) {
  Drawing& drawing = *host::drawing();
  drawing.addBlock("door", {1, 0, 0});
  drawing.addToBlock("door", makeLine({}, {1, 0, 0}, {3, 0, 0}));
  const std::uint64_t handle =
      drawing.add(makeInsert({}, drawing, "door", AcGeMatrix3d().setTranslation({10, 20, 0})));
  const Polyline3 wire = drawing.find(handle)->outline()[0];
  expectPoint(wire[0], 10, 20, 0);
  expectPoint(wire[1], 12, 20, 0);
  expectPoint(pointsOf(handle)[0], 10, 20, 0);
  transform(handle, AcGeMatrix3d().setTranslation({0, 0, 7}));
  expectPoint(drawing.find(handle)->outline()[0][1], 12, 20, 7);
}

TEST_F(Entities, BlockThatContainsItselfEnds) {
  Drawing& drawing = *host::drawing();
  drawing.addBlock("loop", {0, 0, 0});
  drawing.addToBlock("loop", makePoint({}, {0, 0, 0}));
  drawing.addToBlock("loop", makeInsert({}, drawing, "loop", AcGeMatrix3d()));
  const auto insert = makeInsert({}, drawing, "loop", AcGeMatrix3d());
  EXPECT_EQ(insert->outline().size(), 101u);
}

TEST_F(Entities, InsertOfAnUnknownBlockHasNoBox) {
  const std::uint64_t handle = host::drawing()->add(makeInsert({}, *host::drawing(), "none", AcGeMatrix3d()));
  AcDbEntity* entityP = nullptr;
  AcDbExtents box;
  open(entityP, handle, AcDb::kForRead);
  EXPECT_EQ(entityP->getGeomExtents(box), Acad::eNullExtents);
  entityP->close();
}

TEST(DrawingTest, DrawingGivesHandlesAfterTheHighest) {
  Drawing drawing;
  drawing.add(makePoint({0x2A}, {0, 0, 0}));
  EXPECT_EQ(drawing.add(makePoint({}, {0, 0, 0})), 0x2Bu);
  EXPECT_EQ(drawing.find(0x2B)->properties().handle, 0x2Bu);
}

TEST(DrawingTest, DrawingRefusesATakenHandleByName) {
  Drawing drawing;
  drawing.add(makePoint({0x2A}, {0, 0, 0}));
  try {
    drawing.add(makePoint({0x2A}, {0, 0, 0}));
    FAIL();
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "handle 2A is taken");
  }
  EXPECT_EQ(drawing.entities().size(), 1u);
}

TEST(DrawingTest, DrawingTakesHandlesOf64Bits) {
  constexpr std::uint64_t kLargest = ~std::uint64_t{0};
  Drawing drawing;
  EXPECT_EQ(drawing.add(makePoint({kLargest}, {1, 2, 3})), kLargest);
  EXPECT_NE(drawing.find(kLargest), nullptr);
  EXPECT_EQ(drawing.add(makePoint({}, {0, 0, 0})), 1u);
}

TEST(DrawingTest, ExtentsLeaveOutWhatIsErasedOrInvisible) {
  Drawing drawing;
  EXPECT_FALSE(drawing.extents().has_value());
  drawing.addLayer({"off", 7, false, false});
  drawing.add(makePoint({1}, {1, 1, 1}));
  drawing.add(makePoint({2}, {9, 9, 9}));
  drawing.add(makePoint({3, "off"}, {50, 50, 50}));
  drawing.erase(2);
  expectPoint(drawing.extents()->maxPoint(), 1, 1, 1);
  EXPECT_TRUE(drawing.isErased(2));
}

TEST(DrawingTest, UnknownLayerIsLayerZero) {
  const Drawing drawing;
  EXPECT_EQ(drawing.layer("nowhere").name, "0");
}

TEST(DrawingTest, LaterBlockOfTheNameReplacesTheFirst) {
  Drawing drawing;
  drawing.addBlock("b", {1, 2, 3});
  drawing.addToBlock("b", makePoint({}, {0, 0, 0}));
  drawing.addBlock("b", {4, 5, 6});
  EXPECT_TRUE(drawing.blockEntities("b").empty());
  expectPoint(drawing.blockBase("b"), 4, 5, 6);
  EXPECT_FALSE(drawing.hasBlock("c"));
}

}  // namespace
