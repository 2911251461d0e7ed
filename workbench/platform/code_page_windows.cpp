#include "workbench/platform/code_page.h"
#include "workbench/text_input.h"

#include <windows.h>

namespace workbench {

std::optional<std::string> decodedCodePage(std::string_view bytes, int codePage) {
  const auto page = static_cast<UINT>(codePage);
  const int size = static_cast<int>(bytes.size());
  // No byte of these pages becomes more than one UTF-16 unit.
  std::wstring wide(bytes.size(), L'\0');
  // Without MB_ERR_INVALID_CHARS the system would put question marks in place of undefined bytes and report
  // success.
  const int length = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), size, wide.data(),
                                         static_cast<int>(wide.size()));
  if (length <= 0) return std::nullopt;
  wide.resize(static_cast<std::size_t>(length));
  return toUtf8(std::wstring_view(wide));
}

}  // namespace workbench
