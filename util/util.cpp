#include "util/util.h"

#include "util/console.h"
#include "util/native_file.h"
#include "util/platform.h"

#include <windows.h>

#include <cassert>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr DWORD kBeepHz = 440;
constexpr DWORD kBeepMs = 200;
constexpr std::uint32_t kMsPerSecond = 1000;

// English in every locale, so that a log reads alike on every machine; strftime would translate them.
constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr const char* kWeekdays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

/// Writes `value` (0 to 99) in two digits.
void writeTwoDigits(char* textP, unsigned value) {
  textP[0] = static_cast<char>('0' + value / 10);
  textP[1] = static_cast<char>('0' + value % 10);
}

}  // namespace

std::string Util::getUserProfileDir() {
  return platform::userProfile();
}

bool Util::fileExists(std::string_view path) {
  // By opening and not by status: a file that cannot be read is of no use to any caller.
  return NativeFile().openForReading(path);
}

bool Util::folderExists(std::string_view path) {
  return platform::isFolder(path);
}

bool Util::isFileLocked(std::string_view path) {
  return platform::isOpenDenied(path);
}

int Util::beepAndShowMessage(void* ownerWindowP, std::string_view text, std::string_view caption,
                             unsigned type) {
  Beep(kBeepHz, kBeepMs);
  return MessageBoxW(static_cast<HWND>(ownerWindowP), widen(text).c_str(), widen(caption).c_str(), type);
}

std::wstring Util::widen(std::string_view text) {
  std::wstring result;
  result.reserve(text.size());
  for (const char c : text) {
    // By way of signed char: plain char has no sign on every compiler.
    const auto character = static_cast<char16_t>(static_cast<signed char>(c));
    result.push_back(static_cast<wchar_t>(character));
  }
  return result;
}

std::string Util::dateText(const std::tm& time) {
  char text[48];
  // The remainders keep a value that is too large within the tables.
  std::snprintf(text, sizeof text, "%s %s %2d %04d", kWeekdays[time.tm_wday % 7], kMonths[time.tm_mon % 12],
                time.tm_mday, time.tm_year + 1900);
  return text;
}

std::string Util::localDate() {
  return dateText(platform::localTime());
}

std::uint32_t Util::utcMsOfDay() {
  SYSTEMTIME time = {};
  GetSystemTime(&time);
  // UTC, so that the times in a log do not jump when summer time begins or ends.
  const std::uint32_t minutes = time.wHour * 60u + time.wMinute;
  return (minutes * 60u + time.wSecond) * kMsPerSecond + time.wMilliseconds;
}

void Util::writeTimeOfDay(char* targetP, std::uint32_t msOfDay) {
  assert(msOfDay < 24u * 60 * 60 * kMsPerSecond && "a time of day is less than a day");
  const std::uint32_t ms = msOfDay % kMsPerSecond;
  const std::uint32_t seconds = msOfDay / kMsPerSecond;
  const std::uint32_t minutes = seconds / 60;
  writeTwoDigits(targetP, minutes / 60);
  targetP[2] = ':';
  writeTwoDigits(targetP + 3, minutes % 60);
  targetP[5] = ':';
  writeTwoDigits(targetP + 6, seconds % 60);
  targetP[8] = '.';
  targetP[9] = static_cast<char>('0' + ms / 100);
  writeTwoDigits(targetP + 10, ms % 100);
}

bool Util::makeDirectory(std::string_view path) {
  if (platform::makeFolder(path)) return true;
  // Building the text may change errno.
  const int code = errno;
  printErrorLine("Directory '" + std::string(path) + "' could not be created. Error: " + std::strerror(code));
  return false;
}

void Util::removeFolders(std::string_view path) {
  printLine("Util::removeFolders() is not implemented yet! '" + std::string(path) + "' not removed.");
}

void Util::stopForDebugging() {
  printLine("Stopped for debugging ...");
}

std::string Util::numberToString(long value, int base) {
  static constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuvwxyz";
  if (base < 2 || base > static_cast<int>(kDigits.size())) return "Base error";
  std::string result;
  // The remainder carries the sign of the value. Negating the value instead would overflow for LONG_MIN.
  std::ldiv_t parts = {value, 0};
  do {
    parts = std::ldiv(parts.quot, base);
    result.insert(result.begin(), kDigits[static_cast<std::size_t>(std::labs(parts.rem))]);
  } while (parts.quot != 0);
  return value < 0 ? "-" + result : result;
}
