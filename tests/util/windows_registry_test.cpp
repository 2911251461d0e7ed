// Values of the registry that are no texts.
#include "util/windows_util.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

TEST(RegistryTypes, RegistryReadsOnlyATextAsText) {
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

TEST(RegistryFaults, RegistryReportsAValueThatCannotBeSet) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\LumetraFaults", 0, nullptr, 0, KEY_SET_VALUE,
                            nullptr, &key, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(key);
  testing::internal::CaptureStdout();
  // No value's name is longer than 16383 characters.
  EXPECT_FALSE(Registry::setValue("Software\\LumetraFaults", std::string(20000, 'n'), "text"));
  const std::string output = testing::internal::GetCapturedStdout();
  const std::string start = "*** Error setting registry value '" + std::string(20000, 'n') +
                            "' into 'Software\\LumetraFaults' (Return code: ";
  EXPECT_EQ(output.substr(0, start.size()), start);
  EXPECT_EQ(output.substr(output.size() - 3), "!)\n");
  RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\LumetraFaults");
}

}  // namespace
