#include "standin_process.h"
#include "windows.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

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

TEST(CurrentIds, CurrentIdsAreTheSystems) {
  EXPECT_EQ(GetCurrentProcessId(), static_cast<DWORD>(getpid()));
  EXPECT_EQ(GetCurrentThreadId(), static_cast<DWORD>(gettid()));
  DWORD other = 0;
  std::thread([&other] { other = GetCurrentThreadId(); }).join();
  EXPECT_NE(other, GetCurrentThreadId());
}

TEST(GetSystemTime, SystemTimeIsTheMachinesUtcTime) {
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
