/// Reads the user's input as text: whole files, strict numbers, and bytes converted to UTF-8.
#ifndef WORKBENCH_TEXT_INPUT_H
#define WORKBENCH_TEXT_INPUT_H

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace workbench {

/// The file's bytes. `what` names it in the message ("a drawing"). Throws InputError when there is no such
/// file, when it is a folder, and when it cannot be read.
std::string readBytes(const std::filesystem::path& file, const std::string& what);

/// The same without a UTF-8 byte order mark.
std::string readFile(const std::filesystem::path& file, const std::string& what);

/// The text without blanks and tabs at either end.
std::string_view trimmed(std::string_view text);

/// A decimal whole number with an optional sign and nothing else; none otherwise, also when it needs more
/// than 64 bits.
std::optional<long long> parseInteger(std::string_view text);

/// The same in hexadecimal, without prefix and sign.
std::optional<unsigned long long> parseHex(std::string_view text);

/// A finite decimal number with an optional sign and nothing else; none otherwise.
std::optional<double> parseReal(std::string_view text);

/// The bytes as UTF-8: kept when they are, else each byte above 0x7F taken as the Latin-1 character.
std::string toUtf8(std::string_view bytes);

/// Wide text as UTF-8 (surrogate pairs joined, a lone surrogate as U+FFFD), and UTF-8 as wide text (a broken
/// sequence as U+FFFD).
std::string toUtf8(std::wstring_view text);
std::wstring toWide(std::string_view utf8);

/// ASCII letters in upper case; names in a drawing are compared in this form.
std::string upperCase(std::string_view text);

}  // namespace workbench

#endif
