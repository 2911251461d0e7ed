// With the real SDK this export comes from its library; the other builds provide it.
// clang-format off
#include <windows.h>
#include "dbxEntryPoint.h"
// clang-format on

#include <cstdint>

namespace {

/// Release 19.0 of the host's interface: major in the high 16 bits, minor in the low.
constexpr std::uint32_t kVersion = 0x00130000;

/// 0 at load, and after a call with 0.
std::uint32_t theState = 0;

}  // namespace

/// Chains the arguments of a series of calls: each result depends on the calls before. The first call of a
/// series returns the version.
extern "C" __attribute__((used)) std::uint32_t nextApiVersion(std::uint32_t argument) {
  const bool isFirst = theState == 0;
  theState = (isFirst ? kVersion : theState) ^ argument;
  const std::uint32_t result = isFirst ? kVersion : theState;
  if (argument == 0) theState = 0;
  return result;
}

/// A reader of the file finds the version two bytes after the export's address without calling it: a short
/// jump leads over it.
extern "C" STANDIN_MODULE_EXPORT __attribute__((naked)) std::uint32_t acrxGetApiVersion(
    std::uint32_t /*argument*/) {
  __asm__(
      ".byte 0xEB, 0x04\n"
      ".long 0x00130000\n"
      "jmp nextApiVersion");
}
