// Values of the registry that are no texts.
#include "util/windows_util.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

TEST(RegistryTypes, OnlyATextIsReadAsOne) {
  HKEY key = nullptr;
  const DWORD number = 0x00410042;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\LumetraTypes", 0, nullptr, 0, KEY_SET_VALUE,
                            nullptr, &key, nullptr),
            ERROR_SUCCESS);
  RegSetValueExW(key, L"name", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
  RegCloseKey(key);
  testing::internal::CaptureStdout();
  EXPECT_EQ(Registry::value("Software\\LumetraTypes", "name"), std::nullopt);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "*** Error reading registry value 'name' in key 'Software\\LumetraTypes' (Return code: 1630!)\n");
  RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\LumetraTypes");
}

}  // namespace
