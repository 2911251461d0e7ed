/// What the host and the module print on the command line.
#include "printing.h"

#include "listener.h"
#include "operation.h"

// clang-format off
#include "adscodes.h"
#include "acutads.h"
// clang-format on

#include <cstdarg>
#include <cwchar>
#include <vector>

using namespace standin::host;

namespace {

const Operation kPrintf("acutPrintf", Result::kTellsFailure);
/// The host's own limit is lower; a text beyond this is refused rather than cut.
constexpr std::size_t kLongestPrint = 16384;

/// The host's `%s` takes a wide string wherever it runs; elsewhere that is `%ls`.
std::wstring withWideStrings(const wchar_t* format) {
  std::wstring result;
  for (const wchar_t* c = format; *c != L'\0'; ++c) {
    result += *c;
    if (*c != L'%') continue;
    if (c[1] == L'%') {
      result += *++c;
      continue;
    }
    while (c[1] != L'\0' && std::wcschr(L"-+ #0123456789.*", c[1]) != nullptr) result += *++c;
    // %c as well: its argument is a wide character there too.
    if (c[1] == L's' || c[1] == L'c') result += L'l';
  }
  return result;
}

}  // namespace

namespace standin::host {

int modulePrint(const ACHAR* format, va_list arguments) {
  Call call(kPrintf);
  if (call.isToFail() || format == nullptr) return RTERROR;
  const std::wstring wideFormat = withWideStrings(format);
  std::vector<wchar_t> text(kLongestPrint);
  const int length = std::vswprintf(text.data(), text.size(), wideFormat.c_str(), arguments);
  // One C library returns the length it would have needed, another -1.
  if (length < 0 || static_cast<std::size_t>(length) >= text.size()) return RTERROR;
  ++runningCounts().modulePrints;
  call.leave();
  notify(&Listener::modulePrinted, std::wstring(text.data(), static_cast<std::size_t>(length)));
  return RTNORM;
}

void hostPrint(const std::wstring& text) {
  notify(&Listener::hostPrinted, text);
}

}  // namespace standin::host

int acutPrintf(const ACHAR* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  // An injected fault throws out of the call: va_end must follow in that case too.
  struct End {
    va_list& list;
    ~End() { va_end(list); }
  } const end{arguments};
  return standin::host::modulePrint(format, arguments);
}
