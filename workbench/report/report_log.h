/// The module's log as the page reads it. An hour of motion logs a hundred thousand lines and some hundred
/// different texts: each text is written once, an entry is its time and the number of its text.
#ifndef WORKBENCH_REPORT_LOG_H
#define WORKBENCH_REPORT_LOG_H

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <string_view>

namespace workbench {

/// `count` lines in columns: `time` (ms since midnight of the first day; of a line without one the last
/// before it) and `text`, numbers of `texts`. The text of an entry is what follows its time and begins with
/// `|`. Of a log that takes more than `most` characters of the page lines in the middle are left out:
/// `left_out` of them, from `gap` on.
nlohmann::ordered_json logJson(std::string_view log, std::size_t most);

}  // namespace workbench

#endif
