#include "tests/workbench/dxf_text.h"
#include "workbench/dxf/reader.h"
#include "workbench/input_error.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

std::unique_ptr<standin::Drawing> readTables(const std::string& groups) {
  return parseDrawing(dxfFile(dxfSection("TABLES", groups)), "a.dxf");
}

TEST(DxfReader, LayerMayBeOffFrozenOrLocked) {
  const auto drawing = readTables(
      "0 TABLE|2 LAYER|0 LAYER|2 Off|62 -3|70 0|0 LAYER|2 Frozen|62 4|70 1|0 LAYER|2 Locked|62 5|70 4|0 "
      "ENDTAB");
  EXPECT_FALSE(drawing->layer("Off").isVisible);
  EXPECT_EQ(drawing->layer("Off").colour, 3);
  EXPECT_FALSE(drawing->layer("Frozen").isVisible);
  EXPECT_TRUE(drawing->layer("Locked").isLocked);
  EXPECT_TRUE(drawing->layer("Locked").isVisible);
}

TEST(DxfReader, EntityMaySpellItsLayerInAnotherCase) {
  const auto drawing = parseDrawing(dxfFile(dxfSection("TABLES", "0 LAYER|2 Walls|62 3|70 4") +
                                            dxfSection("ENTITIES", "0 POINT|8 WALLS|10 0|20 0")),
                                    "a.dxf");
  EXPECT_EQ(drawing->entities().at(0)->properties().layer, "Walls");
}

TEST(DxfReader, FirstActiveViewportGivesTheView) {
  const auto drawing = readTables(
      "0 VPORT|2 Other|40 9|0 VPORT|2 *Active|12 1|22 2|16 0|26 -1|36 1|17 5|27 6|37 7|40 20|41 1.5|42 35|51 "
      "90|71 1|"
      "0 VPORT|2 *ACTIVE|40 99|41 1");
  ASSERT_TRUE(drawing->mView);
  EXPECT_EQ(drawing->mView->centerX, 1);
  EXPECT_EQ(drawing->mView->centerY, 2);
  EXPECT_EQ(drawing->mView->direction.y, -1);
  EXPECT_EQ(drawing->mView->target.z, 7);
  EXPECT_EQ(drawing->mView->height, 20);
  EXPECT_EQ(drawing->mView->aspect, 1.5);
  EXPECT_EQ(drawing->mView->lensLength, 35);
  EXPECT_DOUBLE_EQ(drawing->mView->twist, 3.14159265358979323846 / 2);
  EXPECT_TRUE(drawing->mView->isPerspective);
}

struct HeaderDay {
  const char* header;
  std::optional<std::int64_t> day;  ///< since 1970-01-01
};

TEST(DxfReader, DrawingHasTheDayOfItsHeader) {
  const HeaderDay table[] = {
      {"9 $ACADVER|1 AC1027", std::nullopt},
      // The day of a date of the format begins at midnight: 1999-12-31, late in the evening.
      {"9 $TDCREATE|40 2451544.91568287", 10956},
      {"9 $TDCREATE|40 2440588.0", 0},
      {"9 $TDUPDATE|40 2451545.5|9 $TDCREATE|40 2451544.5", 10956},
      {"9 $TDCREATE|40 0.0|9 $TDUPDATE|40 2451545.5", 10957},
      {"9 $TDCREATE|40 2440587.9", std::nullopt},
      {"9 $TDCREATE|40 2816788.0", std::nullopt},
      {"9 $TDCREATE|40 yesterday", std::nullopt}};
  for (const auto& [header, day] : table)
    EXPECT_EQ(parseDrawing(dxfFile(dxfSection("HEADER", header)), "a.dxf")->mDay, day) << header;
}

TEST(DxfReader, ViewWithoutHeightIsIgnored) {
  EXPECT_FALSE(readTables("0 VPORT|2 *ACTIVE|40 0|41 1")->mView);
}

TEST(DxfReader, CommentsAndCrLfAreAccepted) {
  std::string text = "999\r\nmade by hand\r\n";
  for (const char c : dxfEntities("0 POINT|10 1|20 2"))
    text += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_EQ(parseDrawing(text, "a.dxf")->entities().size(), 1u);
}

TEST(DxfReader, NumbersThatNoViewCanShowAreRefused) {
  const std::pair<const char*, const char*> table[] = {
      {"0 POINT|10 1e200|20 0", "a.dxf:8: expected a number from -1e15 to 1e15 in group 10, found \"1e200\""},
      {"0 POINT|10 0|20 -1.1e15",
       "a.dxf:10: expected a number from -1e15 to 1e15 in group 20, found \"-1.1e15\""},
      {"0 CIRCLE|10 0|20 0|40 1e300",
       "a.dxf:12: expected a number from -1e15 to 1e15 in group 40, found \"1e300\""}};
  for (const auto& [groups, message] : table) EXPECT_EQ(errorOf(dxfEntities(groups)), message);
  const std::string view =
      dxfFile(dxfSection("TABLES", "0 TABLE|2 VPORT|0 VPORT|2 *ACTIVE|12 0|22 0|40 1e300|0 ENDTAB"));
  EXPECT_NE(errorOf(view).find("expected a number from -1e15 to 1e15 in group 40"), std::string::npos);
}

TEST(DxfReader, NumbersTooSmallToBeSeenAreZero) {
  const auto drawing = parseDrawing(dxfEntities("0 POINT|10 1e-300|20 1e-30"), "a.dxf");
  const AcGePoint3d at = drawing->entities().at(0)->points().at(0);
  EXPECT_EQ(at.x, 0);
  EXPECT_EQ(at.y, 1e-30);
}

TEST(DxfReader, HandlesBeyondTheDrawingsLimitAreRefused) {
  EXPECT_EQ(errorOf(dxfEntities("0 POINT|5 FFFFFFFFFFFFFFF|10 0|20 0")), "no error");
  EXPECT_EQ(
      errorOf(dxfEntities("0 POINT|5 1000000000000000|10 0|20 0")),
      "a.dxf:8: expected a handle (hexadecimal, at most 60 bits) in group 5, found \"1000000000000000\"");
  EXPECT_EQ(errorOf(dxfEntities("0 POINT|5 FFFFFFFFFFFFFFF|10 0|20 0|0 POINT|10 0|20 0")),
            "a.dxf:14: expected a handle, since the highest there can be is taken, found none of its own");
}

TEST(DxfReader, HeaderAndObjectsAreSkipped) {
  const std::string text = dxfFile(dxfSection("HEADER", "9 $ACADVER|1 AC1027|9 $EXTMIN|10 bad") +
                                   dxfSection("OBJECTS", "0 DICTIONARY|5 C"));
  EXPECT_TRUE(parseDrawing(text, "a.dxf")->entities().empty());
}

TEST(DxfReader, EveryMistakeNamesFileLineAndWhatWasExpected) {
  const std::pair<std::string, const char*> table[] = {
      {"", "a.dxf:1: expected a group code, up to 0 EOF, found the end of the file"},
      {"\x89PNG\r\n\x1A\n", "a.dxf:1: expected a group code of a DXF text file, found \"\\x89PNG\""},
      {"AutoCAD Binary DXF\r\n\x1A",
       "a.dxf:1: expected a DXF text file, found a binary DXF file; save the drawing as DXF in text form"},
      {"AC1027\x01\x02",
       "a.dxf:1: expected a DXF text file, found a DWG file; save the drawing as DXF in text form"},
      {"0\nSECTION\n2\nENTITIES\n0\nLINE\n10\n",
       "a.dxf:8: expected the value of group 10, found the end of the file"},
      {"0\nSECTION\n2\nENTITIES\n", "a.dxf:5: expected a group code, up to 0 EOF, found the end of the file"},
      {"0\nSECTION\n2\nENTITIES\nten\n1\n",
       "a.dxf:5: expected a group code of a DXF text file, found \"ten\""},
      {"0\nSECTION\n2\nENTITIES\n1072\n1\n",
       "a.dxf:5: expected a group code of a DXF text file, found \"1072\""},
      {"2\nA\n0\nEOF\n", "a.dxf:1: expected group 0 at the start of the file, found group 2"},
      {"0\nLINE\n0\nEOF\n", "a.dxf:2: expected SECTION or EOF in group 0, found \"LINE\""},
      {"0\nSECTION\n0\nEOF\n", "a.dxf:2: expected group 2 in SECTION, found none up to the next record"},
      {"0\nSECTION\n2\nENTITIES\n0\nEOF\n", "a.dxf:6: expected ENDSEC in group 0, found \"EOF\""},
      {dxfEntities("0 LINE|10 x|20 0|11 0|21 0"), "a.dxf:8: expected a number in group 10, found \"x\""},
      {dxfEntities("0 LINE|10 nan|20 0|11 0|21 0"), "a.dxf:8: expected a number in group 10, found \"nan\""},
      {dxfEntities("0 LINE|10 0|11 0|21 0"),
       "a.dxf:6: expected group 20 in LINE, found none up to the next record"},
      {dxfEntities("0 LINE|5 XY|10 0|20 0|11 0|21 0"),
       "a.dxf:8: expected a handle (hexadecimal, at most 60 bits) in group 5, found \"XY\""},
      {dxfEntities("0 POINT|62 red|10 0|20 0"),
       "a.dxf:8: expected a whole number, -32767 to 32767, in group 62, found \"red\""},
      {dxfEntities("0 CIRCLE|10 0|20 0|40 -1"), "a.dxf:12: expected a radius of 0 or more, found \"-1\""},
      {dxfEntities("0 CIRCLE|10 0|20 0|40 1|210 0|220 0|230 0"),
       "a.dxf:14: expected a direction of some length in groups 210 to 230, found \"0\""},
      {dxfEntities("0 LWPOLYLINE|90 3|10 0|20 0"),
       "a.dxf:8: expected the number of the vertices that follow (1), found \"3\""},
      {dxfEntities("0 LWPOLYLINE|10 0|10 1|20 0"),
       "a.dxf:10: expected group 20 of the vertex before, found \"1\""},
      {dxfEntities("0 LWPOLYLINE|10 0"),
       "a.dxf:6: expected group 20 of the last vertex, found none up to the next record"},
      {dxfEntities("0 POLYLINE|70 0|0 VERTEX|10 0|20 0|0 LINE"),
       "a.dxf:16: expected VERTEX or SEQEND of the POLYLINE of line 6, found \"LINE\""},
      {dxfEntities("0 POLYLINE|70 16|71 2|72 2|0 SEQEND"), "a.dxf:6: expected 2 x 2 mesh vertices, found 0"},
      {dxfEntities("0 POLYLINE|70 64|0 VERTEX|70 128|71 4|0 SEQEND"),
       "a.dxf:14: expected the index of one of the 0 vertices, found \"4\""},
      {dxfFile(dxfSection("BLOCKS", "0 LINE")),
       "a.dxf:6: expected BLOCK or ENDSEC in group 0, found \"LINE\""},
      {dxfFile(dxfSection("BLOCKS", "0 BLOCK|2 A")),
       "a.dxf:10: expected ENDBLK in group 0, found \"ENDSEC\""}};
  for (const auto& [text, message] : table) EXPECT_EQ(errorOf(text), message);
}

TEST(DxfReader, MissingFileIsReported) {
  try {
    readDrawing("/nowhere/a.dxf");
    FAIL();
  } catch (const InputError& error) {
    EXPECT_STREQ(error.what(), "/nowhere/a.dxf: expected a drawing (DXF text file), found no such file");
  }
}

TEST(DxfReader, EveryPrefixOfAFileIsAnError) {
  const std::string text = dxfEntities("0 LINE|5 2A|8 0|10 1|20 2|11 3|21 4|0 CIRCLE|10 0|20 0|40 1");
  for (std::size_t length = 0; length + 1 < text.size(); ++length)
    EXPECT_NE(errorOf(text.substr(0, length)), "no error") << length;
}

}  // namespace
}  // namespace workbench
