#include "common_sources/ansi_text.h"

#include <windows.h>

std::wstring wideFromAnsi(std::string_view text) {
  const int size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), length);
  return wide;
}

std::string ansiFromWide(const wchar_t* text) {
  const int size = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(size > 0 ? size : 1), '\0');
  WideCharToMultiByte(CP_ACP, 0, text, -1, narrow.data(), size, nullptr, nullptr);
  narrow.pop_back();
  return narrow;
}
