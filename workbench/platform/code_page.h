/// Text of a code page as UTF-8. Any thread.
#ifndef WORKBENCH_CODE_PAGE_H
#define WORKBENCH_CODE_PAGE_H

#include <optional>
#include <string>
#include <string_view>

namespace workbench {

/// None when the system does not have the code page (Windows number), or when the bytes are invalid in it.
std::optional<std::string> decodedCodePage(std::string_view bytes, int codePage);

}  // namespace workbench

#endif
