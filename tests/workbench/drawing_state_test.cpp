#include "workbench/running/drawing_state.h"

#include "tests/workbench/dxf_text.h"
#include "workbench/dxf/reader.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

/// Layer and colour of each shape that the drawing's only entity is drawn as.
std::string looksOf(const std::string& blocks, const std::string& entity) {
  const auto drawing = parseDrawing(
      dxfFile(dxfSection("TABLES",
                         "0 TABLE|2 LAYER|0 LAYER|2 Walls|70 0|62 3|0 LAYER|2 Doors|70 0|62 5|0 LAYER|2 "
                         "Frozen|70 1|62 2|0 ENDTAB") +
              dxfSection("BLOCKS", blocks) + dxfSection("ENTITIES", entity)),
      "a.dxf");
  std::string looks;
  for (const ReportShape& shape : shapesOf(*drawing->entities().at(0), *drawing))
    looks +=
        shape.layer + " " + std::to_string(shape.colour) + " x" + std::to_string(shape.outline.size()) + "; ";
  return looks;
}

std::string block(const std::string& name, const std::string& contents) {
  return "0 BLOCK|2 " + name + "|10 0|20 0|" + contents + "|0 ENDBLK";
}

TEST(DrawingState, ContentsOnLayer0TakeTheLayerOfTheInsertion) {
  EXPECT_EQ(looksOf(block("A", "0 POINT|8 0|10 0|20 0"), "0 INSERT|8 Walls|2 A|10 0|20 0"), "Walls 3 x1; ");
}

TEST(DrawingState, ContentsOnOtherLayersKeepThem) {
  EXPECT_EQ(looksOf(block("A", "0 POINT|8 Doors|10 0|20 0|0 POINT|8 Doors|62 1|10 0|20 0"),
                    "0 INSERT|8 Walls|62 6|2 A|10 0|20 0"),
            "Doors 5 x1; Doors 1 x1; ");
}

TEST(DrawingState, ColourByBlockIsThatOfTheInsertion) {
  const std::string byBlock = block("A", "0 POINT|8 Doors|62 0|10 0|20 0");
  EXPECT_EQ(looksOf(byBlock, "0 INSERT|8 Walls|62 6|2 A|10 0|20 0"), "Doors 6 x1; ");
  EXPECT_EQ(looksOf(byBlock, "0 INSERT|8 Walls|2 A|10 0|20 0"), "Doors 3 x1; ") << "by the insertion's layer";
}

TEST(DrawingState, NestedInsertionsPassLayerAndColourOn) {
  const std::string blocks =
      block("A", "0 POINT|8 0|62 0|10 0|20 0") + "|" + block("B", "0 INSERT|8 0|62 0|2 A|10 0|20 0");
  EXPECT_EQ(looksOf(blocks, "0 INSERT|8 Walls|2 B|10 0|20 0"), "Walls 3 x1; ");
  EXPECT_EQ(looksOf(blocks, "0 INSERT|8 Walls|62 4|2 B|10 0|20 0|70 2|44 9"), "Walls 4 x2; ");
}

TEST(DrawingState, ContentsOnAFrozenLayerAreNotSeen) {
  EXPECT_EQ(looksOf(block("A", "0 POINT|8 Frozen|10 0|20 0|0 POINT|8 Doors|10 0|20 0"),
                    "0 INSERT|8 Walls|2 A|10 0|20 0"),
            "Doors 5 x1; ");
}

}  // namespace
}  // namespace workbench
