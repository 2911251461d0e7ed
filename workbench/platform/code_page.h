/// Text of a code page as UTF-8. Any thread.
#ifndef WORKBENCH_CODE_PAGE_H
#define WORKBENCH_CODE_PAGE_H

#include <optional>
#include <string>
#include <string_view>

namespace workbench {

/// None when the system does not know the code page (Windows number), or it does not have these bytes.
std::optional<std::string> decodedCodePage(std::string_view bytes, int codePage);

}  // namespace workbench

#endif
