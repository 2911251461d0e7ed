#include "tests/workbench/dxf_text.h"
#include "workbench/dxf/reader.h"
#include "workbench/input_error.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

/// A block "A" based at (1, 0) that holds the line from (1, 0) to (2, 0).
constexpr const char* kBlockA = "0 BLOCK|2 A|10 1|20 0|30 0|0 LINE|10 1|20 0|11 2|21 0|0 ENDBLK|";

std::string file(const std::string& blocks, const std::string& entities) {
  return dxfFile(dxfSection("BLOCKS", blocks) + dxfSection("ENTITIES", entities));
}

std::vector<standin::Polyline3> outlineOf(const std::string& blocks, const std::string& insert) {
  return parseDrawing(file(blocks, insert), "a.dxf")->entities().at(0)->outline();
}

void expectPoint(const AcGePoint3d& p, double x, double y, double z) {
  EXPECT_NEAR(p.x, x, 1e-9);
  EXPECT_NEAR(p.y, y, 1e-9);
  EXPECT_NEAR(p.z, z, 1e-9);
}

TEST(DxfInserts, BasePointIsAtTheInsertionPoint) {
  const auto outline = outlineOf(kBlockA, "0 INSERT|2 A|10 5|20 6|30 7");
  expectPoint(outline.at(0).at(0), 5, 6, 7);
  expectPoint(outline.at(0).at(1), 6, 6, 7);
}

TEST(DxfInserts, ScaleComesBeforeRotation) {
  const auto outline = outlineOf(kBlockA, "0 INSERT|2 A|10 5|20 6|30 0|41 3|42 2|50 90");
  expectPoint(outline.at(0).at(1), 5, 9, 0);
}

TEST(DxfInserts, ExtrusionTurnsTheWholeInsertion) {
  const auto outline = outlineOf(kBlockA, "0 INSERT|2 A|10 5|20 6|30 7|210 0|220 0|230 -1");
  expectPoint(outline.at(0).at(0), -5, 6, -7);
  expectPoint(outline.at(0).at(1), -6, 6, -7);
}

TEST(DxfInserts, ArrayIsOneEntityWithUnscaledTurnedSpacing) {
  const auto drawing = parseDrawing(
      file(kBlockA, "0 INSERT|5 2A|2 A|10 0|20 0|30 0|41 2|50 90|70 2|71 3|44 10|45 100"), "a.dxf");
  ASSERT_EQ(drawing->entities().size(), 1u);
  const auto outline = drawing->entities()[0]->outline();
  ASSERT_EQ(outline.size(), 6u);
  expectPoint(outline[1].at(0), 0, 10, 0);
  expectPoint(outline[1].at(1), 0, 12, 0);
  expectPoint(outline[2].at(0), -100, 0, 0);
}

TEST(DxfInserts, BlocksMayBeNestedAndDefinedFurtherDown) {
  const std::string blocks = std::string("0 BLOCK|2 B|10 0|20 0|0 INSERT|2 a|10 10|20 0|0 ENDBLK|") + kBlockA;
  const auto outline = outlineOf(blocks.substr(0, blocks.size() - 1), "0 INSERT|2 b|10 0|20 5");
  expectPoint(outline.at(0).at(0), 10, 5, 0);
}

TEST(DxfInserts, InsertOfAMissingBlockIsRefused) {
  EXPECT_EQ(errorOf(file("0 BLOCK|2 A|0 ENDBLK", "0 INSERT|2 C|10 0|20 0")),
            "a.dxf:20: expected the name of a block of this file, found \"C\"");
}

TEST(DxfInserts, BlockThatContainsItselfIsRefused) {
  EXPECT_EQ(errorOf(file("0 BLOCK|2 A|0 INSERT|2 A|10 0|20 0|0 ENDBLK", "0 POINT|10 0|20 0")),
            "a.dxf:10: expected a block that does not contain itself, found \"A\"");
}

TEST(DxfInserts, RingOfBlocksIsRefused) {
  const std::string message =
      errorOf(file("0 BLOCK|2 A|0 INSERT|2 B|10 0|20 0|0 ENDBLK|0 BLOCK|2 B|0 INSERT|2 A|10 0|20 0|0 ENDBLK",
                   "0 POINT|10 0|20 0"));
  EXPECT_EQ(message, "a.dxf:24: expected a block that does not contain itself, found \"A\"");
}

TEST(DxfInserts, ArrayOfTooManyCopiesIsRefused) {
  EXPECT_EQ(errorOf(file("0 BLOCK|2 A|0 ENDBLK", "0 INSERT|2 A|10 0|20 0|70 32767|71 32767")),
            "a.dxf:18: expected at most 10000 copies of a block, found 1073676289");
}

/// Nine levels of blocks, each of which inserts the one before it ten times.
std::string multiplyingBlocks() {
  std::string blocks = "0 BLOCK|2 B0|0 CIRCLE|10 0|20 0|40 1|0 ENDBLK";
  for (int i = 1; i < 9; ++i)
    blocks += "|0 BLOCK|2 B" + std::to_string(i) + "|0 INSERT|2 B" + std::to_string(i - 1) +
              "|10 0|20 0|70 10|44 1|0 ENDBLK";
  return blocks;
}

TEST(DxfInserts, BlocksThatMultiplyWithoutEndAreRefusedWithTheirLines) {
  const std::string text = file(multiplyingBlocks(), "0 INSERT|2 B8|10 0|20 0");
  ASSERT_LT(text.size(), 1500u);
  EXPECT_EQ(errorOf(text),
            "a.dxf:96: expected insertions that draw at most 1001800 points together, found 6.5e+06 points "
            "with the "
            "insertions of the lines 170, 150, 132, 114, 96");
}

TEST(DxfInserts, ManyInsertionsCountTogether) {
  // Each draws 65 points of a circle, 10,000 times.
  const std::string block = "0 BLOCK|2 A|0 CIRCLE|10 0|20 0|40 1|0 ENDBLK";
  const std::string insertion = "0 INSERT|2 A|10 0|20 0|70 100|71 100";
  EXPECT_EQ(errorOf(file(block, insertion)), "no error");
  EXPECT_NE(errorOf(file(block, insertion + "|" + insertion)).find("points with the insertions of the lines"),
            std::string::npos);
}

TEST(DxfInserts, CopiesOfAllInsertionsCountTogether) {
  std::string insertions = "0 POINT|10 0|20 0";
  for (int i = 0; i < 21; ++i) insertions += "|0 INSERT|2 A|10 0|20 0|70 100|71 100";
  EXPECT_NE(errorOf(file("0 BLOCK|2 A|0 ENDBLK", insertions))
                .find("expected at most 200000 copies of blocks in all insertions, found 210000"),
            std::string::npos);
}

TEST(DxfInserts, ScalesThatMultiplyBeyondAnyViewAreRefused) {
  EXPECT_EQ(
      errorOf(file("0 BLOCK|2 A|0 LINE|10 0|20 0|11 1e10|21 0|0 ENDBLK", "0 INSERT|2 A|10 0|20 0|41 1e10")),
      "a.dxf:28: expected an insertion that stays within +-1e16, found one that reaches further");
}

TEST(DxfInserts, BlocksNestedTooDeepAreRefused) {
  std::string blocks = "0 BLOCK|2 B0|0 ENDBLK";
  for (int i = 1; i < 150; ++i)
    blocks +=
        "|0 BLOCK|2 B" + std::to_string(i) + "|0 INSERT|2 B" + std::to_string(i - 1) + "|10 0|20 0|0 ENDBLK";
  EXPECT_NE(
      errorOf(file(blocks, "0 INSERT|2 B149|10 0|20 0")).find("expected at most 100 blocks one in another"),
      std::string::npos);
}

}  // namespace
}  // namespace workbench
