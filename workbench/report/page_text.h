/// Data and texts as the report page embeds them: no text can end the element around it. Any thread.
#ifndef WORKBENCH_PAGE_TEXT_H
#define WORKBENCH_PAGE_TEXT_H

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace workbench {

/// The value at `digits` significant digits (1 to 17), minus zero as zero. What is not finite stays so, and
/// is null in JSON.
double rounded(double value, int digits);

/// JSON for a script element: `<` is written as \u003c, so that nothing in a text is markup. Bytes that are
/// not UTF-8 become U+FFFD.
std::string scriptJson(const nlohmann::ordered_json& json);

/// Text for the content of an HTML element, with bytes that are not UTF-8 replaced in the same way.
std::string escapedForHtml(std::string_view text);

}  // namespace workbench

#endif
