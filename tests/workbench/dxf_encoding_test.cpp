#include "tests/workbench/dxf_text.h"
#include "workbench/dxf/encoding.h"
#include "workbench/dxf/groups.h"
#include "workbench/dxf/reader.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

std::string headerWith(const std::string& release, const std::string& codePage) {
  return dxfSection("HEADER", "9 $ACADVER|1 " + release + "|9 $DWGCODEPAGE|3 " + codePage);
}

int codePageOf(const std::string& release, const std::string& codePage) {
  const std::string text = dxfFile(headerWith(release, codePage));
  return dxfCodePage(parseGroups(text, "a.dxf"));
}

TEST(DxfEncoding, HeaderNamesTheCodePage) {
  EXPECT_EQ(codePageOf("AC1015", "ANSI_932"), 932);
  EXPECT_EQ(codePageOf("AC1009", "dos850"), 850);
  EXPECT_EQ(codePageOf("AC1015", "gb2312"), 936);
  EXPECT_EQ(codePageOf("AC1015", "unheard"), 0);
}

TEST(DxfEncoding, LaterReleasesAreUtf8) {
  EXPECT_EQ(codePageOf("AC1021", "ANSI_932"), 0);
  EXPECT_EQ(codePageOf("AC1027", "ANSI_1252"), 0);
}

TEST(DxfEncoding, TextIsDecodedByItsCodePage) {
  const std::pair<int, std::pair<const char*, const char*>> table[] = {
      {932, {"\x95\xC7", "\u58C1"}},
      {936, {"\xC7\xBD", "\u5899"}},
      {950, {"\xC0\xF0", "\u7246"}},
      {949, {"\xBA\xAE", "\uBCBD"}},
      {1251, {"\xD1\xF2\xE5", "\u0421\u0442\u0435"}},
      {1252, {"W\xE4nde \x80", "W\u00E4nde \u20AC"}},
      {850, {"W\x84nde", "W\u00E4nde"}}};
  for (const auto& [page, texts] : table) EXPECT_EQ(decodeDxfText(texts.first, page), texts.second) << page;
}

TEST(DxfEncoding, BytesThatTheCodePageLacksAreKept) {
  EXPECT_EQ(decodeDxfText("W\xC3\xA4nde \xFF", 932), decodeDxfText("W\xC3\xA4nde \xFF", 0));
}

TEST(DxfEncoding, EscapesAreCharacters) {
  EXPECT_EQ(decodeDxfText("\\U+00C4rger \\u+0041 \\U+12", 0), "\u00C4rger \\u+0041 \\U+12");
  EXPECT_EQ(decodeDxfText("\\M+195C7 \\M+3BAAE \\M+61234 \\M+1", 0), "\u58C1 \uBCBD \\M+61234 \\M+1");
}

TEST(DxfEncoding, PairOfEscapesIsOneCharacter) {
  EXPECT_EQ(decodeDxfText("a\\U+D83D\\U+DE00b", 0), "a\U0001F600b");
  EXPECT_EQ(decodeDxfText("\\U+D83D \\U+DE00\\U+0041", 0), "\uFFFD \uFFFDA");
}

TEST(DxfEncoding, LayersAndBlocksAreDecoded) {
  const std::string text =
      dxfFile(headerWith("AC1015", "ANSI_932") +
              dxfSection("TABLES", "0 TABLE|2 LAYER|0 LAYER|2 \x95\xC7|70 0|62 3|0 ENDTAB") +
              dxfSection("ENTITIES", "0 POINT|8 \\M+195C7|10 0|20 0"));
  const auto drawing = parseDrawing(text, "a.dxf");
  EXPECT_EQ(drawing->layer("\u58C1").colour, 3);
  EXPECT_EQ(drawing->entities().at(0)->properties().layer, "\u58C1");
}

}  // namespace
}  // namespace workbench
