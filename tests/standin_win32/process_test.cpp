#include "standin_clock.h"
#include "standin_process.h"
#include "windows.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <thread>

namespace {

std::string narrowed(const std::wstring& wide, const char* replacement = nullptr) {
  char bytes[64] = {};
  WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, bytes, sizeof bytes, replacement, nullptr);
  return bytes;
}

TEST(WideCharToMultiByte, ConversionCountsTheTerminatorForALengthOfMinusOne) {
  char bytes[8];
  std::memset(bytes, 'x', sizeof bytes);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"Edit", -1, bytes, sizeof bytes, nullptr, nullptr), 5);
  EXPECT_STREQ(bytes, "Edit");
}

TEST(WideCharToMultiByte, ConversionConvertsExactlyTheCountedCharacters) {
  char bytes[8];
  std::memset(bytes, 'x', sizeof bytes);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"Edit", 2, bytes, sizeof bytes, nullptr, nullptr), 2);
  EXPECT_EQ(std::string(bytes, 3), "Edx");
}

TEST(WideCharToMultiByte, ConversionReplacesCharactersThatThePageLacks) {
  EXPECT_EQ(narrowed(L"a\u03b1b"), "a?b");
  EXPECT_EQ(narrowed(L"a\u03b1b", " "), "a b");
}

TEST(WideCharToMultiByte, ConversionReportsWhetherItReplacedACharacter) {
  BOOL used = TRUE;
  WideCharToMultiByte(CP_ACP, 0, L"plain", -1, nullptr, 0, " ", &used);
  EXPECT_EQ(used, FALSE);
  WideCharToMultiByte(CP_ACP, 0, L"\u4e2d", -1, nullptr, 0, " ", &used);
  EXPECT_EQ(used, TRUE);
}

TEST(WideCharToMultiByte, KnowsThePageBeyondLatin1) {
  EXPECT_EQ(narrowed(L"\u00e4\u20ac\u0178"), "\xE4\x80\x9F");
  EXPECT_EQ(narrowed(std::wstring{wchar_t{0x81}}), "\x81");
  EXPECT_EQ(narrowed(std::wstring{wchar_t{0x80}}), "?");
}

TEST(WideCharToMultiByte, ConversionReturnsTheNeededSizeForASizeOfZero) {
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"Edit", -1, nullptr, 0, nullptr, nullptr), 5);
}

TEST(WideCharToMultiByte, ConversionRefusesASmallBufferAndAWrongRequest) {
  char bytes[4];
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"Edit", -1, bytes, 4, nullptr, nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, nullptr, -1, bytes, 4, nullptr, nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"E", 0, bytes, 4, nullptr, nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"E", -2, bytes, 4, nullptr, nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(1, 0, L"E", -1, bytes, 4, nullptr, nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"E", -1, nullptr, 4, nullptr, nullptr), 0);
}

std::wstring moduleFileName(HMODULE module) {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
  return std::wstring(path, length);
}

TEST(GetModuleFileName, ModuleFileNameReturnsThePathThatWasSet) {
  int module = 0;
  standin::windows::setModulePath(&module, L"C:\\Apps\\Module.arx");
  EXPECT_EQ(moduleFileName(reinterpret_cast<HMODULE>(&module)), L"C:\\Apps\\Module.arx");
  standin::windows::setModulePath(&module, L"");
}

TEST(GetModuleFileName, ModuleFileNameReturnsTheFileOfTheAddress) {
  void* const address = dlsym(RTLD_DEFAULT, "GetCurrentThreadId");
  const std::wstring path = moduleFileName(static_cast<HMODULE>(address));
  EXPECT_NE(path.find(L"\\libstandin_win32.so"), std::wstring::npos);
  EXPECT_EQ(path.find(L'/'), std::wstring::npos) << "folders are separated as on Windows";
}

TEST(GetModuleFileName, ModuleFileNameReturnsTheProgramForNull) {
  const std::wstring path = moduleFileName(nullptr);
  EXPECT_EQ(path.substr(path.rfind(L'\\')), L"\\standin_win32_test");
}

TEST(GetModuleFileName, ModuleFileNameRefusesAHandleThatIsNoModule) {
  int local = 0;
  EXPECT_EQ(moduleFileName(reinterpret_cast<HMODULE>(&local)), L"");
}

TEST(GetModuleFileName, ModuleFileNameCutsAPathThatDoesNotFit) {
  int module = 0;
  standin::windows::setModulePath(&module, L"C:\\Module.arx");
  wchar_t path[5];
  EXPECT_EQ(GetModuleFileNameW(reinterpret_cast<HMODULE>(&module), path, 5), 5u);
  EXPECT_STREQ(path, L"C:\\M");
  standin::windows::setModulePath(&module, L"");
}

class Utf8Page : public testing::Test {
 protected:
  void SetUp() override { standin::windows::setAnsiCodePage(CP_UTF8); }
  void TearDown() override { standin::windows::setAnsiCodePage(1252); }
};

TEST_F(Utf8Page, AnsiCodePageIsTheOneThatWasSet) {
  EXPECT_EQ(GetACP(), 65001u);
  standin::windows::setAnsiCodePage(1252);
  EXPECT_EQ(GetACP(), 1252u);
}

TEST_F(Utf8Page, ConversionRefusesAReplacementCharacter) {
  char bytes[8];
  BOOL used = FALSE;
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"a", -1, bytes, 8, " ", nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"a", -1, bytes, 8, nullptr, &used), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"a", -1, bytes, 8, nullptr, nullptr), 2);
}

TEST_F(Utf8Page, ConversionWritesEveryLength) {
  char bytes[16];
  ASSERT_EQ(WideCharToMultiByte(CP_ACP, 0, L"a\u00e4\u20ac\U0001F600", -1, bytes, 16, nullptr, nullptr), 11);
  EXPECT_STREQ(bytes, "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST_F(Utf8Page, ConversionReplacesWhatIsNoCharacter) {
  char bytes[8];
  const wchar_t lone = 0xD800;
  ASSERT_EQ(WideCharToMultiByte(CP_ACP, 0, &lone, 1, bytes, 8, nullptr, nullptr), 3);
  EXPECT_EQ(std::string(bytes, 3), "\xEF\xBF\xBD");
}

std::wstring widened(const char* bytes) {
  wchar_t wide[32];
  const int count = MultiByteToWideChar(CP_ACP, 0, bytes, -1, wide, 32);
  return count > 0 ? std::wstring(wide, static_cast<std::size_t>(count) - 1) : L"refused";
}

TEST_F(Utf8Page, ConversionReadsEveryLength) {
  EXPECT_EQ(widened("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"), L"a\u00e4\u20ac\U0001F600");
}

TEST_F(Utf8Page, ConversionReplacesEachBrokenByte) {
  EXPECT_EQ(widened("\xE4"), L"\uFFFD");
  EXPECT_EQ(widened("\xC3z"), L"\uFFFDz");
  EXPECT_EQ(widened("\xC0\x80"), L"\uFFFD\uFFFD") << "longer than needed";
  EXPECT_EQ(widened("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD") << "a surrogate";
  EXPECT_EQ(widened("\xF5"), L"\uFFFD");
}

TEST(CurrentIds, ProcessIdIsTheSystems) {
  EXPECT_EQ(GetCurrentProcessId(), static_cast<DWORD>(getpid()));
}

TEST(CurrentIds, MainThreadHasNumberOne) {
  EXPECT_EQ(GetCurrentThreadId(), 1u);
}

TEST(CurrentIds, ThreadsAreNumberedInOrderOfTheirCreation) {
  std::atomic<bool> isYoungerDone{false};
  DWORD older = 0;
  DWORD younger = 0;
  std::thread first([&] {
    while (!isYoungerDone) std::this_thread::yield();
    older = GetCurrentThreadId();
  });
  std::thread second([&] {
    younger = GetCurrentThreadId();
    isYoungerDone = true;
  });
  first.join();
  second.join();
  EXPECT_LT(GetCurrentThreadId(), older);
  EXPECT_EQ(younger, older + 1);
}

TEST(CurrentIds, ThreadKeepsItsNumber) {
  std::thread([] { EXPECT_EQ(GetCurrentThreadId(), GetCurrentThreadId()); }).join();
}

std::string shown(const SYSTEMTIME& time) {
  char text[64];
  std::snprintf(text, sizeof text, "%u-%u-%u (%u) %u:%u:%u.%u", time.wYear, time.wMonth, time.wDay,
                time.wDayOfWeek, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds);
  return text;
}

class ReplayDate : public testing::Test {
 protected:
  void SetUp() override { standin::clock::start(standin::clock::Kind::kReplay); }
  void TearDown() override { standin::clock::start(standin::clock::Kind::kReal); }
  static std::string now(void (*read)(LPSYSTEMTIME)) {
    SYSTEMTIME time{};
    read(&time);
    return shown(time);
  }
};

TEST_F(ReplayDate, SystemTimeOfAReplayBeginsWith2013) {
  EXPECT_EQ(now(GetSystemTime), "2013-1-1 (2) 0:0:0.0");
}

TEST_F(ReplayDate, SystemTimeRunsWithTheReplay) {
  standin::clock::advanceTo(25 * 3600000 + 61042);
  EXPECT_EQ(now(GetSystemTime), "2013-1-2 (3) 1:1:1.42");
}

TEST_F(ReplayDate, SystemTimeBeginsAtTheDateThatWasSet) {
  standin::clock::setDate(951782399999);
  EXPECT_EQ(now(GetSystemTime), "2000-2-28 (1) 23:59:59.999");
}

TEST_F(ReplayDate, LocalTimeOfAReplayIsTheSameInEveryZone) {
  setenv("TZ", "XXX-5", 1);
  tzset();
  EXPECT_EQ(now(GetLocalTime), "2013-1-1 (2) 0:0:0.0");
  unsetenv("TZ");
  tzset();
}

TEST(GetLocalTime, LocalTimeFollowsTheZone) {
  standin::clock::start(standin::clock::Kind::kReal);
  setenv("TZ", "XXX-5", 1);
  tzset();
  SYSTEMTIME utc{};
  SYSTEMTIME local{};
  GetSystemTime(&utc);
  GetLocalTime(&local);
  unsetenv("TZ");
  tzset();
  const int minutes = (local.wHour - utc.wHour + 24) % 24 * 60 + local.wMinute - utc.wMinute;
  EXPECT_LE(std::abs(minutes - 300), 1);
}

TEST(GetSystemTime, SystemTimeIsTheMachinesUtcTime) {
  standin::clock::start(standin::clock::Kind::kReal);
  const std::time_t before = std::time(nullptr);
  SYSTEMTIME time{};
  GetSystemTime(&time);
  const std::time_t after = std::time(nullptr);
  std::tm fields{};
  fields.tm_year = time.wYear - 1900;
  fields.tm_mon = time.wMonth - 1;
  fields.tm_mday = time.wDay;
  fields.tm_hour = time.wHour;
  fields.tm_min = time.wMinute;
  fields.tm_sec = time.wSecond;
  const std::time_t read = timegm(&fields);
  EXPECT_LE(before, read);
  EXPECT_LE(read, after);
  EXPECT_EQ(fields.tm_wday, time.wDayOfWeek);
  EXPECT_LT(time.wMilliseconds, 1000);
}

}  // namespace
