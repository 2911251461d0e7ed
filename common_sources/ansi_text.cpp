#include "common_sources/ansi_text.h"

#include <windows.h>

std::wstring wideFromAnsi(std::string_view text) {
  // With an explicit length, so that the result has no terminator in it.
  const int narrowSize = static_cast<int>(text.size());
  const int wideLength = MultiByteToWideChar(CP_ACP, 0, text.data(), narrowSize, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(wideLength), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), narrowSize, wide.data(), wideLength);
  return wide;
}

std::string ansiFromWide(const wchar_t* text) {
  // -1: up to and including the terminator, which pop_back() removes.
  const int size = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
  // At least one character, because a failed conversion reports 0.
  std::string narrow(static_cast<std::size_t>(size > 0 ? size : 1), '\0');
  WideCharToMultiByte(CP_ACP, 0, text, -1, narrow.data(), size, nullptr, nullptr);
  narrow.pop_back();
  return narrow;
}
