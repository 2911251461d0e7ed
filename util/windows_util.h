/// Operations that only Windows has: folders by its shell, processes, the user, the registry. Windows builds
/// only. Each failure is reported on standard output and by the result; none throws for it. Any thread.
#ifndef UTIL_WINDOWS_UTIL_H
#define UTIL_WINDOWS_UTIL_H

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

class WindowsUtil {
 public:
  /// Copies what is in the folder `source`, subfolders included, by xcopy. Returns the shell's result.
  static int copyFolder(std::string_view source, std::string_view destination);

  /// Removes the folder with everything in it by rmdir. Returns the shell's result.
  static int removeFolder(std::string_view path);

  /// Whether a process other than this one has an executable whose first 15 characters are those of `name`.
  /// Also true when the processes cannot be listed.
  static bool isProcessRunning(std::string_view name);

  /// The current user's name; empty on failure.
  static std::string getUserName();
};

/// String values of keys under HKEY_CURRENT_USER. A value of any other type cannot be read (return code
/// 1630).
class Registry {
 public:
  static bool setValue(std::string_view key, std::string_view value, std::string_view text);
  static std::optional<std::string> value(std::string_view key, std::string_view value);
  static bool deleteValue(std::string_view key, std::string_view value);

  /// Where the driver daemon is installed: the default value of its key under HKEY_LOCAL_MACHINE.
  static std::optional<std::string> daemonPath();

  /// "HKEY_CURRENT_USER" and the like; "Unknown registry main key!" for any other.
  static const char* mainKeyName(HKEY mainKey);
};

#endif
