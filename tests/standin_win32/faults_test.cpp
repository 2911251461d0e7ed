#include "standin_clock.h"
#include "standin_desktop.h"
#include "standin_messages.h"
#include "standin_win32_faults.h"
#include "windows.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

namespace {

using standin::Misbehaviour;
using standin::windows::faults;

/// One successful call of each function; true when it succeeded.
const std::map<std::string, std::function<bool()>>& calls() {
  static HWND tree = nullptr;
  tree = standin::desktop::makeStandardDesktop().tree;
  static const std::map<std::string, std::function<bool()>> table{
      {"SetTimer", [] { return SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {}) != 0; }},
      {"KillTimer",
       [] {
         const UINT_PTR id = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {});
         return KillTimer(nullptr, id) != FALSE;
       }},
      {"Beep", [] { return Beep(440, 200) != FALSE; }},
      {"MessageBoxW", [] { return MessageBoxW(nullptr, L"", L"", MB_OK) == IDOK; }},
      {"GetModuleFileNameW",
       [] {
         wchar_t path[MAX_PATH];
         return GetModuleFileNameW(nullptr, path, MAX_PATH) != 0;
       }},
      {"WideCharToMultiByte",
       [] { return WideCharToMultiByte(CP_ACP, 0, L"a", -1, nullptr, 0, nullptr, nullptr) == 2; }},
      {"GetCursorPos",
       [] {
         POINT point;
         return GetCursorPos(&point) != FALSE;
       }},
      {"WindowFromPoint",
       [] {
         return WindowFromPoint({600, 450}) != nullptr;
       }},
      {"GetWindowRect",
       [] {
         RECT rect;
         return GetWindowRect(tree, &rect) != FALSE;
       }},
      {"GetClassNameW",
       [] {
         wchar_t name[64];
         return GetClassNameW(tree, name, 64) != 0;
       }},
      {"GetScrollInfo",
       [] {
         SCROLLINFO info{};
         info.cbSize = sizeof info;
         return GetScrollInfo(tree, SB_VERT, &info) != FALSE;
       }},
      {"GetTickCount", [] { return GetTickCount() < 100; }},
      {"SendMessageW", [] { return SendMessageW(tree, WM_VSCROLL, SB_LINEDOWN, 0) == 0; }}};
  return table;
}

class WindowsFaults : public testing::Test {
 protected:
  void SetUp() override {
    standin::clock::start(standin::clock::Kind::kReplay);
    faults().clear();
  }
  void TearDown() override {
    faults().clear();
    standin::clock::stop();
    standin::desktop::clear();
  }
};

TEST_F(WindowsFaults, EveryFunctionThatCanFailFailsExactlyWhereInjected) {
  for (const std::string& name : faults().names()) {
    if (!faults().canFail(name)) continue;
    const auto& call = calls().at(name);
    EXPECT_TRUE(call()) << name;
    ASSERT_TRUE(faults().inject(name, {Misbehaviour::kFail, 1, true}));
    EXPECT_FALSE(call()) << name;
    EXPECT_TRUE(call()) << name;
  }
}

TEST_F(WindowsFaults, EveryFunctionThrowsWhereInjected) {
  EXPECT_EQ(faults().names().size(), calls().size());
  for (const auto& [name, call] : calls()) {
    ASSERT_TRUE(faults().inject(name, {Misbehaviour::kThrow, 1, true})) << name;
    EXPECT_THROW(call(), standin::InjectedFault) << name;
    EXPECT_TRUE(call()) << name;
  }
}

TEST_F(WindowsFaults, FunctionsWithoutAFailureResultOnlyThrow) {
  EXPECT_FALSE(faults().inject("GetTickCount", {Misbehaviour::kFail, 1, true}));
  EXPECT_FALSE(faults().inject("SendMessageW", {Misbehaviour::kFail, 1, true}));
}

}  // namespace
