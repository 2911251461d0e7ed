#include "common_sources/command_text.h"

#include "common_sources/ansi_text.h"

#include <algorithm>

namespace {

constexpr std::string_view kMenuMacroPrefix = "M=";

}  // namespace

std::vector<std::string> splitMacro(std::string_view macro) {
  std::vector<std::string> tokens;
  while (!macro.empty()) {
    const std::size_t end = macro.find(';');
    tokens.emplace_back(macro.substr(0, end));
    // A ";" at the very end leaves nothing, so it adds no empty token: no Enter too many.
    macro.remove_prefix(end == std::string_view::npos ? macro.size() : end + 1);
  }
  return tokens;
}

std::wstring commandOfToken(std::string_view token) {
  // An empty token is a bare Enter: it repeats the last command, or accepts a default.
  if (token.empty()) return L"\n";
  if (token.substr(0, kMenuMacroPrefix.size()) == kMenuMacroPrefix)
    // The prefix belongs to the expression that menucmd evaluates, so it stays.
    return L"(command (menucmd \"" + wideFromAnsi(token) + L"\"))\n";
  return wideFromAnsi(token) + L"\n";
}

std::wstring netloadCommand(std::wstring path) {
  // A backslash is an escape character in AutoLISP.
  std::replace(path.begin(), path.end(), L'\\', L'/');
  // By AutoLISP and not as plain text: a path with blanks would end at the first one.
  return L"(command \"netload\" \"" + path + L"\")\n";
}
