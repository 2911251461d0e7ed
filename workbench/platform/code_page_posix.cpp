#include "workbench/platform/code_page.h"

#include <iconv.h>

namespace workbench {
namespace {

/// Windows numbers that iconv knows by another name.
std::string nameOf(int codePage) {
  if (codePage == 1361) return "JOHAB";
  if (codePage == 28591) return "ISO-8859-1";
  return "CP" + std::to_string(codePage);
}

}  // namespace

std::optional<std::string> decodedCodePage(std::string_view bytes, int codePage) {
  const iconv_t converter = iconv_open("UTF-8", nameOf(codePage).c_str());
  // The number may come from a drawing, so an unknown one is not a bug of this program.
  if (converter == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
  std::string input(bytes);
  // No character of these pages takes more than four bytes of UTF-8.
  std::string output(4 * bytes.size(), '\0');
  char* from = input.data();
  char* to = output.data();
  std::size_t fromLeft = input.size();
  std::size_t toLeft = output.size();
  // An incomplete character at the end fails as well, since the text is whole.
  const bool isDone = iconv(converter, &from, &fromLeft, &to, &toLeft) != static_cast<std::size_t>(-1);
  iconv_close(converter);
  if (!isDone) return std::nullopt;
  output.resize(output.size() - toLeft);
  return output;
}

}  // namespace workbench
