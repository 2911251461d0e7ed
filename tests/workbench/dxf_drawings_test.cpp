/// Drawings that other programs made. They are beside the project, so a machine without them skips these
/// tests.
#include "workbench/dxf/reader.h"
#include "workbench/input_error.h"
#include "workbench/text_input.h"

#include <gtest/gtest.h>

#include <map>

namespace workbench {
namespace {

using Counts = std::map<std::string, std::size_t>;

class DxfDrawings : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::is_directory(folder())) GTEST_SKIP() << "no drawings at " << folder();
  }

  static std::filesystem::path folder() { return LM_SHARED_DRAWINGS; }
  static std::unique_ptr<standin::Drawing> read(const char* name) { return readDrawing(folder() / name); }

  static Counts countByType(const std::vector<std::unique_ptr<standin::DrawnEntity>>& entities) {
    Counts counts;
    for (const auto& entity : entities) ++counts[entity->typeName()];
    return counts;
  }
};

TEST_F(DxfDrawings, PinkEggHolds288Faces) {
  EXPECT_EQ(countByType(read("pink_egg.dxf")->entities()), (Counts{{"3DFACE", 288}}));
}

TEST_F(DxfDrawings, PolylinesR12HoldsThirtyPolylinesAndAFace) {
  const auto drawing = read("polylines_r12.dxf");
  EXPECT_EQ(countByType(drawing->entities()), (Counts{{"POLYLINE", 30}, {"3DFACE", 1}}));
  std::size_t vertices = 0;
  for (const auto& entity : drawing->entities())
    if (std::string(entity->typeName()) == "POLYLINE") vertices += entity->points().size();
  EXPECT_EQ(vertices, 101u);
}

TEST_F(DxfDrawings, UsMainHolds10052LinesAndOneText) {
  const auto drawing = read("us_main.dxf");
  EXPECT_EQ(countByType(drawing->entities()), (Counts{{"LINE", 10052}}));
  EXPECT_EQ(drawing->mSkipped, (Counts{{"TEXT", 1}}));
  EXPECT_TRUE(drawing->mView);
}

TEST_F(DxfDrawings, Sample2013HoldsItsModelSpace) {
  const Counts expected = {{"LINE", 26}, {"LWPOLYLINE", 21}, {"CIRCLE", 8}, {"INSERT", 6}, {"ARC", 1},
                           {"POINT", 6}, {"POLYLINE", 2},    {"3DFACE", 1}, {"ELLIPSE", 1}};
  EXPECT_EQ(countByType(read("sample_2013.dxf")->entities()), expected);
}

TEST_F(DxfDrawings, Sample2013HoldsTheRestInBlocks) {
  // With model space, that makes the 98 lines, 23 polylines, 13 circles and 14 insertions of the whole file.
  const auto drawing = read("sample_2013.dxf");
  Counts counts;
  for (const char* name :
       {"*D10",     "*D11",       "*D14",    "*D22",      "*D23",      "*D3",          "*D4",
        "*D5",      "*D6",        "*D7",     "*D8",       "*T16",      "*T9",          "*U18",
        "*U19",     "*U25",       "MyBlock", "_ArchTick", "_BoxBlank", "_ClosedBlank", "my-dynamic-block",
        "my_block", "my_block_v2"}) {
    ASSERT_TRUE(drawing->hasBlock(name)) << name;
    for (const auto& [type, count] : countByType(drawing->blockEntities(name))) counts[type] += count;
  }
  EXPECT_EQ(counts["LINE"], 98u - 26u);
  EXPECT_EQ(counts["LWPOLYLINE"], 23u - 21u);
  EXPECT_EQ(counts["CIRCLE"], 13u - 8u);
  EXPECT_EQ(counts["INSERT"], 14u - 6u);
}

TEST_F(DxfDrawings, Sample2013CountsWhatItDoesNotUnderstand) {
  const auto skipped = read("sample_2013.dxf")->mSkipped;
  EXPECT_EQ(skipped.at("TEXT"), 29u);
  EXPECT_EQ(skipped.at("ATTRIB"), 4u);
  EXPECT_EQ(skipped.at("MTEXT"), 5u);
  EXPECT_EQ(skipped.at("VIEWPORT (paper space)"), 5u) << "one more floats on the sheet";
  EXPECT_EQ(skipped.at("ATTDEF (in a block)"), 5u);
  EXPECT_EQ(skipped.count("SEQEND"), 0u);
  EXPECT_EQ(skipped.count("VERTEX"), 0u);
}

TEST_F(DxfDrawings, CutDrawingNamesItsLine) {
  const std::string text = readFile(folder() / "us_main.dxf", "a drawing");
  const std::string half = text.substr(0, text.size() / 2);
  try {
    parseDrawing(half, "half.dxf");
    FAIL() << "half a drawing was read";
  } catch (const InputError& error) {
    EXPECT_GE(error.line(), static_cast<std::size_t>(std::count(half.begin(), half.end(), '\n')));
  }
}

}  // namespace
}  // namespace workbench
