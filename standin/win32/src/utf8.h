/// UTF-8 and wide text, each way as Windows converts it. Pure functions.
#ifndef STANDIN_WIN32_UTF8_H
#define STANDIN_WIN32_UTF8_H

#include <string>
#include <string_view>

namespace standin::windows {

/// A wide value that is no character (a lone surrogate, one above U+10FFFF) becomes U+FFFD.
std::string utf8Bytes(std::wstring_view text);

/// Each byte that belongs to no character becomes U+FFFD.
std::wstring utf8Text(std::string_view bytes);

}  // namespace standin::windows

#endif
