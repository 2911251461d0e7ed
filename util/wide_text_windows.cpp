#include "util/wide_text.h"

#include <windows.h>

std::string toAnsi(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  // Without a replacement of its own: UTF-8 as the ANSI code page refuses one.
  const int size = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, result.data(), size, nullptr, nullptr);
  return result;
}

std::wstring fromAnsi(std::string_view text) {
  const int length = static_cast<int>(text.size());
  const int size = ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(size), L'\0');
  ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, result.data(), size);
  return result;
}

std::wstring environmentValue(const wchar_t* nameP) {
  // This first call counts the terminator, the second one does not.
  std::wstring value(::GetEnvironmentVariableW(nameP, nullptr, 0), L'\0');
  const auto size = static_cast<DWORD>(value.size());
  value.resize(size == 0 ? 0 : ::GetEnvironmentVariableW(nameP, value.data(), size));
  return value;
}
