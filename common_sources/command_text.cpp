#include "common_sources/command_text.h"

#include "common_sources/ansi_text.h"
#include "device/lmt_ctrlr.h"

namespace {

constexpr std::string_view kMenuMacroPrefix = "M=";

}  // namespace

const wchar_t* viewCommand(std::int32_t eventCode) {
  switch (eventCode) {
    case LM_VIEW_FRONT:
      return L"'_-VIEW _FRONT ";
    case LM_VIEW_RIGHT:
      return L"'_-VIEW _RIGHT ";
    case LM_VIEW_TOP:
      return L"'_-VIEW _TOP ";
    case LM_VIEW_BACK:
      return L"'_-VIEW _BACK ";
    case LM_VIEW_LEFT:
      return L"'_-VIEW _LEFT ";
    case LM_VIEW_BOTTOM:
      return L"'_-VIEW _BOTTOM ";
    default:
      return nullptr;
  }
}

std::vector<std::string> splitMacro(std::string_view macro) {
  std::vector<std::string> tokens;
  while (!macro.empty()) {
    const std::size_t end = macro.find(';');
    tokens.emplace_back(macro.substr(0, end));
    macro.remove_prefix(end == std::string_view::npos ? macro.size() : end + 1);
  }
  return tokens;
}

std::wstring commandOfToken(std::string_view token) {
  if (token.empty()) return L"\n";
  if (token.substr(0, kMenuMacroPrefix.size()) == kMenuMacroPrefix)
    return L"(command (menucmd \"" + wideFromAnsi(token) + L"\"))\n";
  return wideFromAnsi(token) + L"\n";
}

std::wstring netloadCommand(const std::wstring& path) {
  return L"(command \"netload\" \"" + path + L"\")\n";
}
