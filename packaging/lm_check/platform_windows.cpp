#include "packaging/lm_check/machine.h"
#include "packaging/lm_check/platform.h"

#include <windows.h>

Findings machineFindings() {
  return checkMachine(gatherMachine());
}

std::string toUtf8(const std::string& text) {
  // Never more characters than bytes, in any code page.
  std::wstring wide(text.size(), L'\0');
  const int letters = MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                                          static_cast<int>(wide.size()));
  // UTF-8 takes at most three bytes for a 16-bit character; four is on the safe side.
  std::string result(static_cast<std::size_t>(4 * letters), '\0');
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide.data(), letters, result.data(),
                                        static_cast<int>(result.size()), nullptr, nullptr);
  result.resize(static_cast<std::size_t>(bytes));
  return result;
}
