/// JSON as the report page embeds it: short numbers, and texts that cannot end the script element around
/// them.
#ifndef WORKBENCH_REPORT_JSON_H
#define WORKBENCH_REPORT_JSON_H

#include <cstdint>
#include <string>
#include <string_view>

namespace workbench {

/// Appends a number in its shortest form of at most `digits` significant digits (1 to 17): 0.5, -12, 1e-07.
/// Minus zero becomes 0; JSON has no infinity, so what is not finite becomes null.
void appendNumber(std::string& json, double value, int digits);
void appendInteger(std::string& json, std::int64_t value);

/// Appends a text in quotes. `<` and the control characters are written as \uXXXX, so that nothing in the
/// text is markup; a byte that is not part of a UTF-8 character becomes U+FFFD.
void appendText(std::string& json, std::string_view text);

/// Text for an HTML element's content, with the same care for bytes that are not UTF-8.
std::string escapedForHtml(std::string_view text);

/// Writes the commas of an array or object: nothing before the first element, a comma before each later one.
class Separator {
 public:
  void before(std::string& json) {
    if (mIsStarted) json += ',';
    mIsStarted = true;
  }

 private:
  bool mIsStarted = false;
};

}  // namespace workbench

#endif
