#include "util/console.h"
#include "util/util.h"
#include "util/windows_util.h"

namespace {

constexpr const char* kDaemonKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\lm_daemon.exe";

std::string returnCode(LSTATUS code) {
  return "' (Return code: " + std::to_string(code) + "!)";
}

/// An open key, closed by the destructor. Failures of opening and closing are reported.
class Key {
 public:
  Key(HKEY mainKey, std::string_view name, REGSAM access) : mName(name) {
    const LSTATUS code = RegOpenKeyExW(mainKey, Util::widen(name).c_str(), 0, access, &mKey);
    mIsOpen = code == ERROR_SUCCESS;
    if (!mIsOpen) printLine("*** Error opening registry key '" + mName + returnCode(code));
  }
  ~Key() {
    if (!mIsOpen) return;
    const LSTATUS code = RegCloseKey(mKey);
    if (code != ERROR_SUCCESS) printLine("*** Error closing registry key '" + mName + returnCode(code));
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  bool isOpen() const { return mIsOpen; }
  HKEY get() const { return mKey; }
  const std::string& name() const { return mName; }

 private:
  const std::string mName;
  HKEY mKey = nullptr;
  bool mIsOpen = false;
};

/// Narrow text of `size` bytes of wide characters, without the terminator that may be among them.
std::string narrow(const std::wstring& text, DWORD size) {
  std::string result;
  // Only the low byte: the reverse of Util::widen().
  for (const wchar_t c : text.substr(0, size / sizeof(wchar_t))) result.push_back(static_cast<char>(c));
  if (!result.empty() && result.back() == '\0') result.pop_back();
  return result;
}

std::optional<std::string> read(HKEY mainKey, std::string_view keyName, std::string_view value) {
  const Key key(mainKey, keyName, KEY_QUERY_VALUE);
  if (!key.isOpen()) return std::nullopt;
  const std::wstring wideValue = Util::widen(value);
  DWORD size = 0;
  DWORD type = REG_NONE;
  // First the size, then the text. A value that grows in between fails with ERROR_MORE_DATA.
  LSTATUS code = RegQueryValueExW(key.get(), wideValue.c_str(), nullptr, &type, nullptr, &size);
  if (code == ERROR_SUCCESS && type != REG_SZ) code = ERROR_UNSUPPORTED_TYPE;
  // One more than asked for: the size is in bytes and may be odd.
  std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
  if (code == ERROR_SUCCESS)
    code = RegQueryValueExW(key.get(), wideValue.c_str(), nullptr, nullptr,
                            reinterpret_cast<BYTE*>(text.data()), &size);
  if (code == ERROR_SUCCESS) return narrow(text, size);
  printLine("*** Error reading registry value '" + std::string(value) + "' in key '" + key.name() +
            returnCode(code));
  return std::nullopt;
}

}  // namespace

bool Registry::setValue(std::string_view keyName, std::string_view value, std::string_view text) {
  const Key key(HKEY_CURRENT_USER, keyName, KEY_SET_VALUE);
  if (!key.isOpen()) return false;
  const std::wstring wideText = Util::widen(text);
  // In bytes, the terminator included; Windows adds none.
  const auto size = static_cast<DWORD>((wideText.size() + 1) * sizeof(wchar_t));
  const LSTATUS code = RegSetValueExW(key.get(), Util::widen(value).c_str(), 0, REG_SZ,
                                      reinterpret_cast<const BYTE*>(wideText.c_str()), size);
  if (code == ERROR_SUCCESS) return true;
  printLine("*** Error setting registry value '" + std::string(value) + "' into '" + key.name() +
            returnCode(code));
  return false;
}

std::optional<std::string> Registry::value(std::string_view key, std::string_view value) {
  return read(HKEY_CURRENT_USER, key, value);
}

bool Registry::deleteValue(std::string_view keyName, std::string_view value) {
  const Key key(HKEY_CURRENT_USER, keyName, KEY_SET_VALUE);
  if (!key.isOpen()) return false;
  const LSTATUS code = RegDeleteValueW(key.get(), Util::widen(value).c_str());
  if (code == ERROR_SUCCESS) return true;
  printLine("*** Error deleting registry value of '" + key.name() + returnCode(code));
  return false;
}

std::optional<std::string> Registry::daemonPath() {
  // An empty name is the default value of the key.
  return read(HKEY_LOCAL_MACHINE, kDaemonKey, "");
}

const char* Registry::mainKeyName(HKEY mainKey) {
  if (mainKey == HKEY_CLASSES_ROOT) return "HKEY_CLASSES_ROOT";
  if (mainKey == HKEY_CURRENT_USER) return "HKEY_CURRENT_USER";
  if (mainKey == HKEY_LOCAL_MACHINE) return "HKEY_LOCAL_MACHINE";
  if (mainKey == HKEY_USERS) return "HKEY_USERS";
  if (mainKey == HKEY_CURRENT_CONFIG) return "HKEY_CURRENT_CONFIG";
  return "Unknown registry main key!";
}
