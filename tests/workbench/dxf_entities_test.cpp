#include "tests/workbench/dxf_text.h"
#include "workbench/dxf/entity_types.h"
#include "workbench/dxf/reader.h"

#include <gtest/gtest.h>

#include <cmath>

namespace workbench {
namespace {

constexpr double kPi = 3.14159265358979323846;

std::unique_ptr<standin::Drawing> read(std::string_view entities) {
  return parseDrawing(dxfEntities(entities), "a.dxf");
}

void expectPoint(const AcGePoint3d& p, double x, double y, double z) {
  EXPECT_NEAR(p.x, x, 1e-9);
  EXPECT_NEAR(p.y, y, 1e-9);
  EXPECT_NEAR(p.z, z, 1e-9);
}

TEST(DxfEntities, LineHasItsEndsHandleLayerAndColour) {
  const auto drawing = read("0 LINE|5 2A|8 Walls|62 3|10 1|20 2|30 3|11 4|21 5|31 6");
  const standin::DrawnEntity& line = *drawing->entities().at(0);
  EXPECT_STREQ(line.typeName(), "LINE");
  EXPECT_EQ(line.properties().handle, 0x2Au);
  EXPECT_EQ(line.properties().layer, "Walls");
  EXPECT_EQ(line.properties().colour, 3);
  expectPoint(line.points().at(0), 1, 2, 3);
  expectPoint(line.points().at(1), 4, 5, 6);
}

TEST(DxfEntities, MissingZIsZero) {
  expectPoint(read("0 POINT|10 1|20 2")->entities().at(0)->points().at(0), 1, 2, 0);
}

TEST(DxfEntities, CircleIsInItsObjectFrame) {
  // Extrusion along world x: the frame's axes are world y and world z.
  const auto drawing = read("0 CIRCLE|10 1|20 2|30 3|40 5|210 1|220 0|230 0");
  expectPoint(drawing->entities().at(0)->points().at(0), 3, 1, 2);
}

TEST(DxfEntities, DownwardExtrusionMirrorsX) {
  const auto drawing = read("0 CIRCLE|10 1|20 2|30 3|40 5|210 0|220 0|230 -1");
  expectPoint(drawing->entities().at(0)->points().at(0), -1, 2, -3);
}

TEST(DxfEntities, ArcRunsCounterClockwiseAcrossZero) {
  const auto outline = read("0 ARC|10 0|20 0|40 2|50 270|51 90")->entities().at(0)->outline().at(0);
  expectPoint(outline.front(), 0, -2, 0);
  expectPoint(outline.back(), 0, 2, 0);
  expectPoint(outline[outline.size() / 2], 2, 0, 0);
}

TEST(DxfEntities, ArcIsTheSameWithTurnsBetweenItsAngles) {
  for (const char* const angles : {"50 -450|51 90", "50 990|51 90", "50 270|51 4410"}) {
    const auto outline =
        read(std::string("0 ARC|10 0|20 0|40 2|") + angles)->entities().at(0)->outline().at(0);
    EXPECT_EQ(outline.size(), 33u) << angles;
    expectPoint(outline.front(), 0, -2, 0);
    expectPoint(outline.back(), 0, 2, 0);
    expectPoint(outline[outline.size() / 2], 2, 0, 0);
  }
}

TEST(DxfEntities, EllipseHasItsAxisInTheWorldFrame) {
  const auto outline = read("0 ELLIPSE|10 1|20 1|30 0|11 0|21 4|31 0|40 0.5|41 0|42 1.5707963267948966")
                           ->entities()
                           .at(0)
                           ->outline();
  expectPoint(outline.at(0).front(), 1, 5, 0);
  expectPoint(outline.at(0).back(), -1, 1, 0);
}

TEST(DxfEntities, FaceOfThreeCornersRepeatsTheThird) {
  const auto points =
      read("0 3DFACE|10 0|20 0|30 0|11 1|21 0|31 0|12 0|22 1|32 7")->entities().at(0)->points();
  ASSERT_EQ(points.size(), 4u);
  expectPoint(points[3], 0, 1, 7);
}

TEST(DxfEntities, LightPolylineHasElevationAndBulges) {
  const auto drawing = read("0 LWPOLYLINE|90 2|70 0|38 4|10 0|20 0|42 1|10 2|20 0");
  const standin::DrawnEntity& polyline = *drawing->entities().at(0);
  ASSERT_EQ(polyline.points().size(), 2u);
  expectPoint(polyline.points()[1], 2, 0, 4);
  const auto outline = polyline.outline().at(0);
  // A bulge of 1 is half a turn to the left of the chord, so it swings below it.
  expectPoint(outline[outline.size() / 2], 1, -1, 4);
}

TEST(DxfEntities, ClosedLightPolylineReturnsToItsStart) {
  const auto outline =
      read("0 LWPOLYLINE|90 3|70 1|10 0|20 0|10 2|20 0|10 0|20 2")->entities().at(0)->outline().at(0);
  expectPoint(outline.front(), 0, 0, 0);
  expectPoint(outline.back(), 0, 0, 0);
}

TEST(DxfEntities, PolylineIsPlanarUnlessItsFlagsSayOtherwise) {
  const auto drawing = read(
      "0 POLYLINE|70 0|10 0|20 0|30 9|0 VERTEX|10 1|20 2|30 5|0 VERTEX|10 3|20 4|0 SEQEND|"
      "0 POLYLINE|70 8|0 VERTEX|10 1|20 2|30 5|0 VERTEX|10 3|20 4|30 6|0 SEQEND");
  expectPoint(drawing->entities().at(0)->points().at(0), 1, 2, 9);
  expectPoint(drawing->entities().at(1)->points().at(0), 1, 2, 5);
}

TEST(DxfEntities, ReaderLeavesOutTheFrameOfAFittedSpline) {
  const auto drawing = read(
      "0 POLYLINE|70 12|0 VERTEX|70 48|10 9|20 9|30 9|0 VERTEX|70 40|10 1|20 1|30 1|"
      "0 VERTEX|70 40|10 2|20 2|30 2|0 SEQEND");
  EXPECT_EQ(drawing->entities().at(0)->points().size(), 2u);
}

TEST(DxfEntities, MeshIsReadRowByRow) {
  const auto drawing = read(
      "0 POLYLINE|70 16|71 2|72 2|0 VERTEX|70 64|10 0|20 0|30 0|0 VERTEX|70 64|10 0|20 1|30 0|"
      "0 VERTEX|70 64|10 1|20 0|30 0|0 VERTEX|70 64|10 1|20 1|30 0|0 SEQEND");
  EXPECT_EQ(drawing->entities().at(0)->points().size(), 4u);
  EXPECT_EQ(drawing->entities().at(0)->outline().size(), 4u);
}

TEST(DxfEntities, PolyfaceHasItsVerticesAndFaces) {
  const auto drawing = read(
      "0 POLYLINE|70 64|0 VERTEX|70 192|10 0|20 0|30 0|0 VERTEX|70 192|10 1|20 0|30 0|"
      "0 VERTEX|70 192|10 0|20 1|30 2|0 VERTEX|70 128|71 1|72 -2|73 3|0 SEQEND");
  EXPECT_EQ(drawing->entities().at(0)->points().size(), 3u);
  EXPECT_EQ(drawing->entities().at(0)->outline().size(), 1u);
}

TEST(DxfEntities, ReaderCountsOtherEntitiesByTypeAndPlace) {
  const auto drawing =
      parseDrawing(dxfFile(dxfSection("BLOCKS",
                                      "0 BLOCK|2 A|10 0|20 0|0 MTEXT|1 x|0 LINE|10 0|20 0|11 1|21 1|0 ENDBLK|"
                                      "0 BLOCK|2 *Paper_Space0|10 0|20 0|0 VIEWPORT|67 1|0 ENDBLK") +
                           dxfSection("ENTITIES",
                                      "0 TEXT|1 x|0 TEXT|1 y|0 LINE|67 1|10 0|20 0|11 1|21 1|0 SEQEND|"
                                      "0 INSERT|66 1|2 a|10 0|20 0|0 ATTRIB|1 z|0 SEQEND")),
                   "a.dxf");
  const std::map<std::string, std::size_t> expected = {{"TEXT", 2},
                                                       {"ATTRIB", 1},
                                                       {"SEQEND", 1},
                                                       {"LINE (paper space)", 1},
                                                       {"MTEXT (in a block)", 1},
                                                       {"VIEWPORT (paper space)", 1}};
  EXPECT_EQ(drawing->mSkipped, expected);
  EXPECT_EQ(drawing->entities().size(), 1u);
}

TEST(DxfEntities, ViewportsOfTheLayoutFloatOnItsSheet) {
  const auto drawing = read(
      "0 VIEWPORT|67 1|69 1|10 5|20 4|40 12|41 9|"
      "0 VIEWPORT|67 1|69 2|10 3|20 4|40 6|41 2|12 1|22 2|16 0|26 -1|36 0|17 7|27 8|37 9|45 50|90 1|"
      "0 VIEWPORT|67 1|69 3|10 8|20 4|40 2|41 2|"
      "0 VIEWPORT|67 1|69 4|68 0|10 8|20 4|40 2|41 2|45 50|"
      "0 VIEWPORT|67 1|69 5|10 8|20 4|40 0|41 2|45 50");
  ASSERT_EQ(drawing->mFloatingViewports.size(), 2u);
  const auto& front = drawing->mFloatingViewports[0];
  EXPECT_EQ(front.centerX, 3);
  EXPECT_EQ(front.height, 2);
  ASSERT_TRUE(front.view);
  EXPECT_EQ(front.view->direction.y, -1);
  EXPECT_EQ(front.view->target.z, 9);
  EXPECT_EQ(front.view->centerY, 2);
  EXPECT_EQ(front.view->height, 50);
  EXPECT_TRUE(front.view->isPerspective);
  EXPECT_FALSE(drawing->mFloatingViewports[1].view) << "its height is 0";
  EXPECT_EQ(drawing->mSkipped.at("VIEWPORT (paper space)"), 3u)
      << "the sheet, one that is off, one of no size";
}

TEST(DxfEntities, EntitiesWithoutAHandleOfTheirOwnGetFreeOnes) {
  const auto drawing =
      read("0 POINT|10 0|20 0|0 POINT|5 2|10 1|20 0|0 POINT|5 2|10 2|20 0|0 POINT|5 10|10 3|20 0");
  std::vector<std::uint64_t> handles;
  for (const auto& entity : drawing->entities()) handles.push_back(entity->properties().handle);
  EXPECT_EQ(handles, (std::vector<std::uint64_t>{0x11, 0x2, 0x12, 0x10}));
}

TEST(DxfEntities, EntityOfEachTypeHasTheNameOfItsType) {
  const std::string block = dxfSection("BLOCKS", "0 BLOCK|2 B|10 0|20 0|0 POINT|10 0|20 0|0 ENDBLK");
  for (const DxfEntityType& type : dxfEntityTypes()) {
    // Every group that any of the types needs.
    const std::string record = "0 " + std::string(type.name) +
                               "|2 B|10 0|20 0|11 1|21 0|12 1|22 1|13 0|23 1|40 1|41 1|42 2|50 0|51 90|"
                               "0 VERTEX|10 0|20 0|0 VERTEX|10 1|20 0|0 SEQEND";
    const auto drawing = parseDrawing(dxfFile(block + dxfSection("ENTITIES", record)), "a.dxf");
    EXPECT_EQ(drawing->entities().at(0)->typeName(), type.name);
  }
}

TEST(DxfEntities, ArcAnglesAreInDegrees) {
  const auto outline = read("0 ARC|10 0|20 0|40 1|50 0|51 45")->entities().at(0)->outline().at(0);
  expectPoint(outline.back(), std::cos(kPi / 4), std::sin(kPi / 4), 0);
}

}  // namespace
}  // namespace workbench
